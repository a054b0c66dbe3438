// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  CLoadMemory: one certificate that the caller hands over as bytes.
 */
#pragma once

#include "certlist/certificate_loader.h"
#include "certlist/entry.h"

class CLoadMemory : public sigil::CertificateLoader {
public:
    /** @param szHomePath  library folder with the settings files */
    CLoadMemory(int nLanguage, const char* szHomePath);

    void setMedium(int nMedium) { m_nMediaType = nMedium; }

    /** Takes a certificate with its key (not encrypted) as the list's only entry. One that the options leave out or
     *  that cannot be read is refused silently: the list is then empty and the result 0.
     *  @return 0; 1001 a signing part is missing, or a part is longer than its field (the entry of before stays);
     *          1117 the options ask for key-management pairs, which are never served from memory */
    int LoadCertList(const char* signCert, int signCertLen, const char* signKey, int signKeyLen, const char* kmCert,
        int kmCertLen, const char* kmKey, int kmKeyLen);
    /** Judges the entry. @return 0 keep; 1122 unreadable; 1502 not wanted */
    int ParsingCert(tagCERTINFO* entry);
    /** Makes the entry the loader's own. */
    void CopyCertInfo(const tagCERTINFO* entry);
    static void ClearCertInfo(tagCERTINFO* entry);
    /** Keeps the identity random value in the entry. @return 0; 1001 no entry; 1118; 1119 */
    int GetPrikeyRandom();

    int count() const { return m_bLoaded ? 1 : 0; }
    const sigil::PackedEntry& entry() const { return m_entry; }

private:
    void clear();

    sigil::PackedEntry m_entry;
    bool m_bLoaded = false;
};
