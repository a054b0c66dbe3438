// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "doctor/hearing.h"

#include "certlist/codes.h"
#include "certlist/entry.h"
#include "doctor/certificate_damage.h"
#include "doctor/file_facts.h"

#include <sigildesk/util.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace sigil {

namespace {

std::string utf8(const char* cp949)
{
    std::string text(cp949);
    std::string out(2 * text.size() + 1, '\0'); // at most half as much again
    int length = 0;
    if (CUtil().UTF8ToMultibyte(text.data(), out.data(), &length) != 0)
        return text;
    out.resize(static_cast<std::size_t>(std::max(length, 0)));
    return out;
}

/** The rule of a file of the signing pair, that of its certificate or that of its key. */
std::string ruleFor(const tagCERTINFO& entry, const std::string& path, const char* what)
{
    return std::string(path == entry.szSignPriKeyPath ? "key_" : "certificate_") + what;
}

/** Why the toolkit could not read a file. */
Diagnosis unreadFile(const tagCERTINFO& entry, const std::string& path, ErrorLog& log)
{
    struct stat status { };
    const int error = lstat(path.c_str(), &status) == 0 ? 0 : errno; // the password database sets it too
    if (error == ENOENT || error == ENOTDIR)
        return by(ruleFor(entry, path, "missing"), {path});
    if (error != 0)
        return by("file_unreadable", {path, currentUser(), std::generic_category().message(error)});
    if (S_ISLNK(status.st_mode) && stat(path.c_str(), &status) != 0)
        return by("link_leads_nowhere", {path});
    if (faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) != 0)
        return by("file_unreadable", {path, currentUser(), ownerAndRights(status)});
    return by("file_unreadable", {path, currentUser(), utf8(log.text().toString())});
}

Diagnosis noFile(const std::string& path)
{
    struct stat status { };
    stat(path.c_str(), &status);
    return {&ruleOfKind(status.st_mode), {path}};
}

Diagnosis tooLarge(const tagCERTINFO& entry, const std::string& path)
{
    struct stat status { };
    stat(path.c_str(), &status);
    return by(ruleFor(entry, path, "too_large"), {path, std::to_string(status.st_size)});
}

/** The rule for content that is not what the file is for; @p prefix is "certificate" or "key". */
Diagnosis strangeContent(const std::string& prefix, Content content, std::string_view bytes,
    const std::string& path, const std::string& words)
{
    static const std::map<Content, const char*> others = {{Content::Certificate, "X.509"},
        {Content::EncryptedKey, "PKCS#8"}, {Content::PlainKey, "PKCS#8"}, {Content::Pkcs12, "PKCS#12"},
        {Content::Message, "PKCS#7"}, {Content::Request, "PKCS#10"}, {Content::RevocationList, "CRL"},
        {Content::Pem, "PEM"}, {Content::Text, "text"}};
    if (content == Content::Empty)
        return by(prefix + "_empty", {path});
    const Content proper = prefix == "key" ? Content::EncryptedKey : Content::Certificate;
    const auto other = others.find(content);
    if (content != proper && other != others.end())
        return by(prefix + "_of_other_kind", {path, other->second});
    const auto place = damagedPlace(bytes);
    if (!place || bytes.starts_with("-----"))
        return by(prefix + "_refused", {path, words});
    return place->cutShort()
        ? by(prefix + "_cut_short", {path, std::to_string(place->left), std::to_string(place->claimed)})
        : by(prefix + "_damaged", {path, std::to_string(place->offset)});
}

Diagnosis damaged(const tagCERTINFO& entry, ErrorLog& log)
{
    const std::string_view bytes = value(entry, field::signCert);
    return strangeContent(
        "certificate", contentOf(bytes), bytes, entry.szSignCertPath, utf8(log.text().toString()));
}

const char* filterRule(Drop drop)
{
    switch (drop) {
    case Drop::NoKmPair:
        return "km_pair_missing";
    case Drop::OtherFamily:
        return "family_differs";
    case Drop::OtherSubject:
        return "subject_not_wanted";
    case Drop::OtherSerial:
        return "serial_not_wanted";
    case Drop::OtherPolicy:
        return "policy_not_wanted";
    default:
        return "expired_left_out";
    }
}

/** What a filter looked at. */
std::string filteredValue(const tagCERTINFO& entry, Drop drop)
{
    switch (drop) {
    case Drop::OtherFamily:
    case Drop::OtherSubject:
        return utf8(entry.szSubjectDN);
    case Drop::OtherSerial:
        return entry.szSerialNum;
    case Drop::OtherPolicy:
        return entry.szPolicyID;
    default:
        return entry.szValidTo;
    }
}

Diagnosis dropped(const tagCERTINFO& entry, ErrorLog& log)
{
    const Reason& reason = log.reason();
    switch (reason.drop) {
    case Drop::FileNotRead:
        return unreadFile(entry, reason.what, log);
    case Drop::NotAFile:
        return noFile(reason.what);
    case Drop::FileTooLarge:
        return tooLarge(entry, reason.what);
    case Drop::NotACertificate:
        return damaged(entry, log);
    case Drop::FieldNotRead:
        return by("field_unreadable", {entry.szSignCertPath, reason.what, utf8(log.text().toString())});
    default:
        return by(filterRule(reason.drop), {filteredValue(entry, reason.drop)});
    }
}

/** What a rule says of an entry that a further choice leaves out. */
std::string choiceValue(const tagCERTINFO& entry, std::string_view rule)
{
    if (rule == "policy_not_wanted")
        return entry.szPolicyID;
    if (rule == "subject_not_wanted")
        return utf8(entry.szSubjectDN);
    if (rule == "serial_not_wanted")
        return entry.szSerialNum;
    if (rule == "issuer_not_wanted")
        return utf8(entry.szIssuerDN);
    return rule == "family_not_wanted" ? familyName(entry.nPKIType) : entry.szValidTo;
}

bool exists(const char* path)
{
    struct stat status { };
    return *path && lstat(path, &status) == 0;
}

/** The key-management pair of a certificate that is listed: half of one is none. */
void addKmTrouble(const tagCERTINFO& entry, Judged& judged)
{
    const bool hasCertificate = entry.nKmCertLen > 0;
    const bool hasKey = entry.nEncKmPriKeyLen > 0;
    if (hasCertificate == hasKey && (hasKey || !exists(entry.szKmCertPath)))
        return;
    const char* missing = hasKey ? entry.szKmCertPath : entry.szKmPriKeyPath;
    const char* present = hasKey ? entry.szKmPriKeyPath : entry.szKmCertPath;
    const std::string half = hasKey ? "km_certificate_" : "km_key_";
    judged.troubles.emplace_back(
        plainPath(present), by(half + (exists(missing) ? "unreadable" : "missing"), {plainPath(missing)}));
}

void addKeyTrouble(const tagCERTINFO& entry, Judged& judged)
{
    const std::string_view bytes = value(entry, field::encSignKey);
    const Content content = contentOf(bytes);
    if (content == Content::EncryptedKey) {
        const auto place = damagedPlace(bytes);
        // Bytes behind the end are met in files of some issuers, and no reader minds them.
        if (!place || place->behindTheEnd)
            return;
    }
    judged.troubles.emplace_back(judged.key, strangeContent("key", content, bytes, judged.key, ""));
}

} // namespace

void Hearing::searches(const Family& family, const std::string& path, int error)
{
    m_places.push_back({path, familyName(family.code), error});
}

void Hearing::judged(const tagCERTINFO& entry, int result, ErrorLog& log)
{
    Judged judged{plainPath(entry.szSignCertPath), plainPath(entry.szSignPriKeyPath), result == SIGIL_SUCCESS,
        by("listed"), {}, false};
    judged.hasFiles = exists(entry.szSignCertPath) || exists(entry.szSignPriKeyPath) ||
        exists(entry.szKmCertPath) || exists(entry.szKmPriKeyPath);
    const char* choice = judged.listed && m_leftOut ? m_leftOut(entry) : nullptr;
    if (!judged.listed)
        judged.diagnosis = dropped(entry, log);
    else if (choice)
        judged.diagnosis = by(choice, {choiceValue(entry, choice)});
    judged.listed = judged.listed && !choice;
    if (judged.listed) {
        addKeyTrouble(entry, judged);
        addKmTrouble(entry, judged);
    }
    if (!m_places.empty()) {
        ++m_places.back().candidates;
        m_places.back().listed += judged.listed ? 1 : 0;
    }
    struct stat status { };
    if (stat(judged.certificate.c_str(), &status) == 0)
        m_byFile.emplace(FileId{status.st_dev, status.st_ino}, m_candidates.size());
    m_byPath.emplace(judged.certificate, m_candidates.size());
    m_candidates.push_back(std::move(judged));
}

const Judged* Hearing::of(const std::string& certificate) const
{
    if (const auto found = m_byPath.find(plainPath(certificate)); found != m_byPath.end())
        return &m_candidates[found->second];
    struct stat status { };
    if (stat(certificate.c_str(), &status) != 0)
        return nullptr;
    const auto found = m_byFile.find({status.st_dev, status.st_ino});
    return found == m_byFile.end() ? nullptr : &m_candidates[found->second];
}

const char* familyName(int code)
{
    switch (code) {
    case SIGIL_FAMILY_GPKI:
        return "gpki";
    case SIGIL_FAMILY_NPKI:
        return "npki";
    case SIGIL_FAMILY_MPKI:
        return "mpki";
    default:
        return "ppki";
    }
}

} // namespace sigil
