// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// show: all fields of a certificate.
#include "commands.h"
#include "selection.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

namespace host {

namespace {

/** A field of the certificate: its name for a person and in JSON. */
struct Field {
    Words words;
    const char* key;
    std::string Certificate::*value;
};

const Field fields[] = {
    {{"name", "이름"}, "name", &Certificate::name},
    {{"subject", "주체"}, "subject", &Certificate::subject},
    {{"issuer", "발급자"}, "issuer", &Certificate::issuer},
    {{"issuer shown as", "발급기관"}, "issuer_name", &Certificate::issuerName},
    {{"serial number", "일련번호"}, "serial", &Certificate::serial},
    {{"version", "버전"}, "version", &Certificate::version},
    {{"signature algorithm", "서명 알고리즘"}, "signature_algorithm", &Certificate::signatureAlgorithm},
    {{"public key", "공개키"}, "key_algorithm", &Certificate::keyAlgorithm},
    {{"key length", "키 길이"}, "key_length", &Certificate::keyLength},
    {{"use", "용도"}, "use", &Certificate::use},
    {{"policy", "정책"}, "policy", &Certificate::policy},
    {{"policies in full", "정책 전체"}, "policies", &Certificate::policies},
    {{"key usage", "키 사용"}, "key_usage", &Certificate::keyUsage},
    {{"alternative name", "다른 이름"}, "subject_alternative_name", &Certificate::alternativeName},
    {{"authority key", "발급자 키"}, "authority_key_id", &Certificate::authorityKeyId},
    {{"subject key", "주체 키"}, "subject_key_id", &Certificate::subjectKeyId},
    {{"revocation list", "폐지 목록"}, "revocation_list", &Certificate::revocationList},
    {{"authority access", "발급자 정보"}, "authority_access", &Certificate::authorityAccess},
};

constexpr Words validWords{"valid", "유효 기간"};
constexpr Words daysWords{"days left", "남은 날"};
constexpr Words familyWords{"family", "계열"};

struct FileField {
    Words words;
    std::string PairFiles::*path;
};

const FileField fileFields[] = {
    {{"certificate file", "인증서 파일"}, &PairFiles::certificate},
    {{"key file", "키 파일"}, &PairFiles::key},
    {{"km certificate file", "암호용 인증서 파일"}, &PairFiles::kmCertificate},
    {{"km key file", "암호용 키 파일"}, &PairFiles::kmKey},
};

void addRow(Session& session, std::vector<std::vector<Cell>>& rows, const Words& words, const std::string& value)
{
    if (!value.empty())
        rows.push_back({Cell(session.say(words)), Cell(value)});
}

} // namespace

int runShow(Session& session)
{
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    const Crypto crypto(session);
    const std::string sha1 = fingerprint(crypto, SIGIL_TK_HASH_SHA1, certificate.der);
    const std::string sha256 = fingerprint(crypto, SIGIL_TK_HASH_SHA256, certificate.der);

    Json json = jsonOf(certificate);
    std::vector<std::vector<Cell>> rows;
    for (const Field& field : fields) {
        json[field.key] = certificate.*field.value;
        addRow(session, rows, field.words, certificate.*field.value);
    }
    json["fingerprints"] = {{"sha1", sha1}, {"sha256", sha256}};
    addRow(session, rows, validWords, isoTime(certificate.from) + " - " + isoTime(certificate.to));
    addRow(session, rows, daysWords, std::to_string(certificate.daysLeft));
    addRow(session, rows, familyWords, familyName(certificate.family));
    addRow(session, rows, {"SHA-1", "SHA-1"}, sha1);
    addRow(session, rows, {"SHA-256", "SHA-256"}, sha256);
    for (const FileField& field : fileFields)
        addRow(session, rows, field.words, certificate.files.*field.path);
    session.output.document({{"certificate", json}});
    session.output.table(rows);
    return done;
}

} // namespace host
