// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The table of commands and options. A new command is a row here, its function in commands.h, and a file.
#include "commands.h"
#include "options.h"

#include <utility>

namespace host {

namespace {

using Options = std::vector<Option>;

/** Which certificates: every command that lists or looks up. */
const Options selecting = {
    {"--media", "disk|DIR", Value::Folder,
        {"Where to look: the home folder, or a mounted disk or any folder that holds NPKI, GPKI ... below it",
            "찾을 곳: 홈 폴더, 또는 NPKI, GPKI 등이 들어 있는 이동식 디스크나 폴더"}},
    {"--family", "NAME,...", Value::Words,
        {"Only these families: npki, gpki, mpki, ppki", "이 계열만: npki, gpki, mpki, ppki"},
        {"npki", "gpki", "mpki", "ppki"}},
    {"--issuer", "TEXT", Value::Text,
        {"Only those whose issuer's name holds this text", "발급자 이름에 이 글이 들어 있는 인증서만"}},
    {"--policy", "OID", Value::Text, {"Only those of this policy", "이 정책의 인증서만"}},
    {"--subject", "DN", Value::Text, {"Only those of this subject", "이 주체의 인증서만"}},
    {"--serial", "HEX", Value::Text, {"Only those of this serial number", "이 일련번호의 인증서만"}},
    {"--expired", "", Value::None, {"Only those that have expired", "만료된 인증서만"}},
    {"--valid", "", Value::None, {"Only those that are valid today", "지금 유효한 인증서만"}},
    {"--expires-within", "DAYS", Value::Number,
        {"Only those that are still valid and end within so many days",
            "아직 유효하고 이 날수 안에 끝나는 인증서만"}},
};

const Argument cert{"CERT", Value::Certificate,
    {"An index of the list, a file, a folder with a pair, serial:HEX, cn:NAME, or - for standard input",
        "목록의 번호, 파일, 인증서 폴더, serial:일련번호, cn:이름, 또는 표준 입력을 뜻하는 -"}};

const Options writing = {
    {"--out", "FILE", Value::File, {"Where to write", "쓸 파일"}},
    {"--force", "", Value::None, {"Replace what is there already", "이미 있는 파일을 바꿉니다"}},
};

const Options password = {
    {"--password-fd", "N", Value::Number,
        {"Read the password from this open descriptor, its first line",
            "이 디스크립터의 첫 줄을 비밀번호로 읽습니다"}},
    {"--password-file", "FILE", Value::File,
        {"Read the password from this file, which nobody else may read",
            "나만 읽을 수 있는 이 파일의 첫 줄을 비밀번호로 읽습니다"}},
};

const Options newPassword = {
    {"--new-password-fd", "N", Value::Number,
        {"Read the new password from this open descriptor", "이 디스크립터에서 새 비밀번호를 읽습니다"}},
    {"--new-password-file", "FILE", Value::File,
        {"Read the new password from this file, which nobody else may read",
            "나만 읽을 수 있는 이 파일에서 새 비밀번호를 읽습니다"}},
};

const Options trusting = {
    {"--trust", "FILE", Value::File,
        {"Trust the certificates in these files alone, DER or PEM", "이 파일들의 인증서만 신뢰합니다 (DER, PEM)"},
        {}, true},
};

const Argument file{"FILE", Value::File, {"The file", "파일"}};

const Option target{"--to", "DIR|disk", Value::Folder,
    {"The disk to write to: its folder, or disk for the home folder",
        "쓸 디스크: 그 폴더, 또는 홈 폴더를 뜻하는 disk"}};

Options joined(std::initializer_list<Options> groups)
{
    Options all;
    for (const Options& group : groups)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

} // namespace

const std::vector<Option>& globalOptions()
{
    static const Options options = {
        {"--folder", "DIR", Value::Folder,
            {"Library folder: toolkits, settings files and language files",
                "라이브러리 폴더: 툴킷, 설정 파일, 언어 파일"}},
        {"--toolkit", "maker|gpki", Value::Word,
            {"Which toolkit works (default: maker)", "사용할 툴킷 (기본: maker)"}, {"maker", "gpki"}},
        {"--language", "ko|en", Value::Word,
            {"Language of names and messages (default: by locale)", "이름과 메시지의 언어 (기본: 로캘)"},
            {"ko", "en"}},
        {"--json", "", Value::None,
            {"One JSON document on standard output, errors too", "표준 출력에 JSON 문서 하나만, 오류도 마찬가지"}},
        {"--quiet", "", Value::None, {"Results and errors, nothing else", "결과와 오류만"}},
        {"--color", "auto|always|never", Value::Word,
            {"Colours (default: auto, on a terminal)", "색 (기본: auto, 터미널에서만)"},
            {"auto", "always", "never"}},
        {"--help", "", Value::None, {"This text", "이 글"}},
        {"--version", "", Value::None, {"The version", "버전"}},
    };
    return options;
}

const std::vector<Command>& commands()
{
    static const std::vector<Command> table = {
        {"list", {"List the certificates, one line each.", "인증서를 한 줄에 하나씩 보여 줍니다."}, {}, selecting,
            "sigildesk list --expires-within 30", R"({"certificates": [certificate, ...]})", runList},
        {"show",
            {"Show all fields of a certificate, its fingerprints and the paths of its files.",
                "인증서의 모든 항목, 지문, 파일 경로를 보여 줍니다."},
            {cert}, selecting, "sigildesk show 0",
            R"({"certificate": certificate with all fields and "fingerprints": {"sha1", "sha256"}})", runShow},
        {"doctor",
            {"Say why certificates are listed or not, and how to mend it.",
                "인증서가 목록에 나오거나 나오지 않는 이유와 해결 방법을 알려 줍니다."},
            {{"PATH", Value::File,
                {"A file, a certificate's folder, a store or a disk (default: the medium)",
                    "파일, 인증서 폴더, 저장소 또는 디스크 (기본: 매체 전체)"},
                false, true}},
            joined({selecting}), "sigildesk doctor",
            R"({"findings": [{"path", "listed", "rule", "detail", "mend"}, ...], "folders": [{"path", "family", "found", "error", "candidates", "listed"}, ...], "checks": [{"check", "path", "ok", "detail", "mend"}, ...]})",
            runDoctor},
        {"verify",
            {"Verify a certificate: path, validity, policies, revocation.",
                "인증서를 검증합니다: 인증 경로, 유효 기간, 정책, 폐지 여부."},
            {cert},
            joined({{{"--time", "TIME", Value::Text,
                         {"Judge as of this day or time", "이 날이나 시각을 기준으로 검증합니다"}},
                        {"--purpose", "any|sign|encrypt", Value::Word,
                            {"Judge for this purpose", "이 용도로 검증합니다"}, {"any", "sign", "encrypt"}},
                        {"--no-revocation", "", Value::None,
                            {"Do not ask whether it is revoked", "폐지 여부를 확인하지 않습니다"}}},
                trusting, selecting}),
            "sigildesk verify 0 --trust root.pem --no-revocation",
            R"({"valid": bool, "steps": [{"step", "ok", "detail"}], "certificate": certificate})", runVerify},
        {"status",
            {"Ask whether a certificate is revoked: the responder (OCSP), else its revocation list.",
                "인증서의 폐지 여부를 OCSP로, 안 되면 폐지 목록으로 확인합니다."},
            {cert},
            joined({{{"--url", "URL", Value::Text, {"Ask this responder", "이 OCSP 서버에 묻습니다"}}}, trusting,
                selecting}),
            "sigildesk status 0 --trust authorities.pem --url http://127.0.0.1:8888/",
            R"({"valid": bool, "status": "good|revoked", "steps": [{"step", "ok", "detail"}], "certificate": certificate})",
            runStatus},
        {"unlock",
            {"Test the password of a key; with --out write the key for other programs (PKCS#8, PEM).",
                "키의 비밀번호를 확인합니다. --out이 있으면 다른 프로그램이 쓸 수 있는 키(PKCS#8, PEM)를 씁니다."},
            {cert},
            joined({{{"--km", "", Value::None, {"The key of the key-management pair", "암호용 키"}},
                        {"--plain", "", Value::None,
                            {"Write the key without encryption", "키를 암호화하지 않고 씁니다"}}},
                writing, password, newPassword, selecting}),
            "sigildesk unlock 0 --out key.pem --password-file password --new-password-file new-password",
            R"({"unlocked": true, "file": path or null, "certificate": certificate})", runUnlock},
        {"sign",
            {"Sign a file: a CMS message, or the bare signature.", "파일에 서명합니다: CMS 메시지 또는 서명 값."},
            {cert, file},
            joined(
                {{{"--attached", "", Value::None,
                      {"A message with the file in it, FILE.p7m (default)", "파일을 담은 메시지 FILE.p7m (기본)"}},
                     {"--detached", "", Value::None,
                         {"A message beside the file, FILE.p7s", "파일과 따로 있는 메시지 FILE.p7s"}},
                     {"--raw", "", Value::None,
                         {"The signature alone (SHA-256), FILE.sig", "서명 값만 (SHA-256), FILE.sig"}},
                     {"--timestamp", "URL", Value::Text,
                         {"Have the signature stamped by this authority",
                             "이 기관에서 서명의 시점확인을 받습니다"}}},
                    writing, password, selecting}),
            "sigildesk sign 0 contract.txt --detached --password-file password",
            R"({"file": path, "form": "attached|detached|raw", "certificate": certificate})", runSign},
        {"verify-file",
            {"Verify a CMS message, or a bare signature, and name its signers and times.",
                "CMS 메시지나 서명 값을 검증하고 서명자와 시각을 보여 줍니다."},
            {file},
            joined({{{"--signature", "FILE", Value::File,
                         {"The message or the signature, which stands beside FILE",
                             "FILE과 따로 있는 메시지나 서명 값"}},
                        {"--content", "FILE", Value::File,
                            {"The content, when FILE is a message without it",
                                "FILE이 내용 없는 메시지일 때 그 내용"}},
                        {"--certificate", "CERT", Value::Certificate,
                            {"The signer of a bare signature", "서명 값의 서명자 인증서"}}},
                trusting, writing, selecting}),
            "sigildesk verify-file contract.txt --signature contract.txt.p7s --trust root.pem",
            R"({"valid": bool, "steps": [{"step", "ok", "detail"}], "signers": [{"certificate", "signing_time", "timestamp"}], "content": path or null})",
            runVerifyFile},
        {"encrypt",
            {"Encrypt a file for the holders of certificates.", "인증서 주인만 풀 수 있게 파일을 암호화합니다."},
            {file},
            joined({{{"--to", "CERT", Value::Certificate, {"The recipients", "받는 사람"}, {}, true},
                        {"--cipher", "NAME", Value::Word,
                            {"The cipher (default: aes256)", "암호 알고리즘 (기본: aes256)"},
                            {"aes256", "aes192", "aes128", "aria256", "aria192", "aria128", "seed", "3des"}}},
                writing, selecting}),
            "sigildesk encrypt contract.txt --to 0",
            R"({"file": path, "cipher": name, "recipients": [certificate, ...]})", runEncrypt},
        {"decrypt", {"Decrypt a file that was encrypted for a certificate.", "인증서로 암호화된 파일을 풉니다."},
            {cert, file}, joined({writing, password, selecting}),
            "sigildesk decrypt 0 contract.txt.p7e --out again.txt --password-file password",
            R"({"file": path, "certificate": certificate})", runDecrypt},
        {"timestamp",
            {"Get a time-stamp token for a file (RFC 3161).", "파일의 시점확인 토큰을 받습니다 (RFC 3161)."},
            {file}, joined({{{"--url", "URL", Value::Text, {"The authority", "시점확인 기관"}}}, writing}),
            "sigildesk timestamp contract.txt --url http://127.0.0.1:8889/",
            R"({"file": path, "time": time, "policy": oid, "serial": hex})", runTimestamp},
        {"export",
            {"Write the pairs of a certificate into a PKCS#12 file.", "인증서와 키를 PKCS#12 파일로 내보냅니다."},
            {cert},
            joined({{{"--protection", "3des|seed|aes256", Value::Word,
                        {"How the file is protected (default: 3des)", "파일의 보호 방법 (기본: 3des)"},
                        {"3des", "seed", "aes256"}}},
                writing, password, newPassword, selecting}),
            "sigildesk export 0 --out mine.pfx --password-file password --new-password-file new-password",
            R"({"file": path, "pairs": number, "certificate": certificate})", runExport},
        {"identity",
            {"Tell whether an identity number belongs to a certificate.",
                "식별번호가 인증서 주인의 것인지 확인합니다."},
            {cert},
            joined({{{"--identity-fd", "N", Value::Number,
                         {"Read the identity number from this open descriptor",
                             "이 디스크립터에서 식별번호를 읽습니다"}},
                        {"--identity-file", "FILE", Value::File,
                            {"Read the identity number from this file, which nobody else may read",
                                "나만 읽을 수 있는 이 파일에서 식별번호를 읽습니다"}}},
                password, selecting}),
            "sigildesk identity 0 --identity-file number --password-file password",
            R"({"matches": bool, "certificate": certificate})", runIdentity},
        {"tokens",
            {"List the tokens (PKCS#11) and the certificates on them.",
                "보안토큰(PKCS#11)과 그 안의 인증서를 보여 줍니다."},
            {}, {}, "sigildesk tokens",
            R"({"tokens": [{"slot", "label", "maker", "model", "serial", "initialised", "certificates": [certificate, ...]}, ...]})",
            runTokens},
        {"pick",
            {"Open the selection dialog and print what was chosen. Needs a display.",
                "인증서 선택 대화 상자를 열고 고른 것을 보여 줍니다. 화면이 필요합니다."},
            {},
            {{"--sign", "FILE", Value::File,
                 {"Sign this file with the chosen key: a CMS message, FILE.p7m",
                     "고른 키로 이 파일에 서명합니다: CMS 메시지 FILE.p7m"}},
                {"--out", "DIR", Value::Folder,
                    {"Write the chosen certificates, and the message, into this folder",
                        "고른 인증서와 메시지를 이 폴더에 씁니다"}},
                writing.back()},
            "sigildesk pick --sign contract.txt --out chosen",
            R"({"certificate": {"subject", "name", "issuer", "issuer_name", "policy", "serial", "valid_from", "valid_to", "file"}, "files": [path, ...], "signature": path})",
            runPick},
        {"copy",
            {"Copy a certificate with its keys to another disk, where list finds it.",
                "인증서와 키를 목록이 찾는 형태로 다른 디스크에 복사합니다."},
            {cert}, joined({{target, writing.back()}, selecting}), "sigildesk copy 0 --to usb",
            R"({"certificate": certificate})", runCopy},
        {"import",
            {"File the pairs of a PKCS#12 file in a store, where list finds them.",
                "PKCS#12 파일의 인증서와 키를 목록이 찾는 곳에 넣습니다."},
            {file},
            joined({{target, writing.back(),
                        {"--media", "disk|DIR", Value::Folder, {"The same as --to", "--to와 같습니다"}}},
                password}),
            "sigildesk import mine.pfx --to usb --password-file new-password --force",
            R"({"certificate": certificate})", runImport},
        {"passwd", {"Change the password of a certificate's keys.", "인증서 키의 비밀번호를 바꿉니다."}, {cert},
            joined({password, newPassword, selecting}),
            "sigildesk passwd 0 --password-file password --new-password-file new-password",
            R"({"changed": true, "certificate": certificate})", runPasswd},
        {"delete", {"Delete a certificate with its keys.", "인증서와 키를 지웁니다."}, {cert},
            joined({{{"--yes", "", Value::None, {"Do not ask", "묻지 않습니다"}}}, selecting}),
            "sigildesk delete 0 --yes", R"({"deleted": true, "certificate": certificate})", runDelete},
        {"codes",
            {"Say what a result code means, and what to do. Without one, all of them.",
                "결과 코드의 뜻과 할 일을 알려 줍니다. 코드를 주지 않으면 모두 보여 줍니다."},
            {{"N", Value::Text, {"The code's number or name", "코드의 번호나 이름"}, false}}, {},
            "sigildesk codes 1113", R"({"codes": [{"code", "name", "layer", "sentence", "advice"}, ...]})",
            runCodes},
        {"completion", {"Print the completion script of a shell.", "셸의 자동 완성 스크립트를 보여 줍니다."},
            {{"SHELL", Value::Word, {"bash, zsh or fish", "bash, zsh, fish 중 하나"}, true, false,
                {"bash", "zsh", "fish"}}},
            {}, "sigildesk completion bash", R"({"shell": name, "script": text})", runCompletion},
        {"manual", {"Print the manual page.", "설명서(man)를 보여 줍니다."}, {}, {}, "sigildesk manual",
            R"({"page": text})", runManual},
    };
    return table;
}

} // namespace host
