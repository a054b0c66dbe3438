// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/pair_reader.h"

#include "certlist/codes.h"
#include "certlist/toolkit_calls.h"

namespace sigil {

namespace {

constexpr char parsingCert[] = "CLoadDISK::ParsingCert()";

} // namespace

int PairReader::read(ToolkitBytes& certificate, int keyPairType, tagCERTINFO& entry)
{
    const int rc = readSignPair(certificate, entry);
    return rc == SIGIL_SUCCESS ? readKmPair(keyPairType == SIGIL_KEY_PAIR_BOTH, entry) : rc;
}

int PairReader::readFile(char* path, const EntryField& field, tagCERTINFO& entry)
{
    ToolkitBytes content(m_toolkit);
    return readFile(path, field, content, entry);
}

int PairReader::readFile(char* path, const EntryField& field, ToolkitBytes& content, tagCERTINFO& entry)
{
    const Drop drop = dropOf(path);
    if (drop != Drop::None)
        return m_log.because(drop, path, 0, SIGIL_CERTIFICATE_UNREADABLE);
    const int rc = MediaDiskReadFile(m_toolkit, path, content.get());
    if (rc != SIGIL_SUCCESS)
        return m_log.because(Drop::FileNotRead, path, rc, rc);
    if (!setBytes(entry, field, bytesOf(content)))
        return m_log.because(Drop::FileTooLarge, path, 0, SIGIL_CERTIFICATE_UNREADABLE);
    return SIGIL_SUCCESS;
}

// What is no file or would not fit into an entry is not read; a path that leads nowhere is left to the toolkit.
Drop PairReader::dropOf(const char* path)
{
    struct stat status;
    if (!m_check.isNeeded || !m_folder.statusOf(path, status))
        return Drop::None;
    const bool fits = status.st_size <= static_cast<off_t>(field::signCert.capacity);
    const Drop drop = !S_ISREG(status.st_mode) ? Drop::NotAFile : fits ? Drop::None : Drop::FileTooLarge;
    m_check.metUnfit |= drop != Drop::None;
    return drop;
}

int PairReader::readSignPair(ToolkitBytes& certificate, tagCERTINFO& entry)
{
    int rc = readFile(entry.szSignCertPath, field::signCert, certificate, entry);
    if (rc != SIGIL_SUCCESS) // the shortened name is the one that readers of the log know
        return unreadable("MediaDiskReadFil()", rc);
    rc = readFile(entry.szSignPriKeyPath, field::encSignKey, entry);
    return rc == SIGIL_SUCCESS ? SIGIL_SUCCESS : unreadable("MediaDiskReadFile()", rc);
}

int PairReader::unreadable(const char* callee, int rc)
{
    if (rc == SIGIL_CERTIFICATE_UNREADABLE) // our own refusal: the toolkit has no words on it
        return m_log.refused(parsingCert, nullptr, callee, rc, nullptr);
    return m_log.failed(parsingCert, nullptr, callee, rc, SIGIL_CERTIFICATE_UNREADABLE);
}

int PairReader::readKmPair(bool wanted, tagCERTINFO& entry)
{
    if (!*entry.szKmCertPath) // then the key has no path either
        return wanted ? m_log.because(Drop::NoKmPair, nullptr, 0, SIGIL_FILTERED_OUT) : SIGIL_SUCCESS;
    const int certificate = readKmFile(entry.szKmCertPath, field::kmCert, entry);
    const int key = readKmFile(entry.szKmPriKeyPath, field::encKmKey, entry);
    if (!wanted || (certificate == SIGIL_SUCCESS && key == SIGIL_SUCCESS))
        return SIGIL_SUCCESS;
    setText(entry, field::kmCertPath, {});
    setText(entry, field::kmKeyPath, {});
    return m_log.because(Drop::NoKmPair, nullptr, 0, SIGIL_FILTERED_OUT);
}

// A missing file is no news, but one that is there and has no room costs the certificate its pair.
int PairReader::readKmFile(char* path, const EntryField& field, tagCERTINFO& entry)
{
    const int rc = readFile(path, field, entry);
    return rc == SIGIL_CERTIFICATE_UNREADABLE ? m_log.refused(parsingCert, nullptr, "MediaDiskReadFile()", rc,
                                                    "key-management file is no file or too large")
                                              : rc;
}

} // namespace sigil
