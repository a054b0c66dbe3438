// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// pick: the selection dialog.
#include "certificate.h"
#include "commands.h"
#include "files.h"
#include "jobs/dialog.h"
#include "library_folder.h"
#include "signing.h"
#include "text.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace host {

namespace {

constexpr Words signedWords{"signed", "서명"};
constexpr Words noFolder{"cannot make the folder {}: {}", "{} 폴더를 만들 수 없습니다: {}"};

/** A member of what is printed: its name for a person and in JSON. Two texts of the record are UTF-8, the others CP949. */
struct Member {
    Words words;
    const char* key;
    std::string value;
};

std::vector<Member> membersOf(const DialogChoice& chosen)
{
    return {{{"subject", "주체"}, "subject", chosen->szSubjectDN},
        {{"shown as", "이름"}, "name", utf8(chosen->szSubjectName)},
        {{"issuer", "발급자"}, "issuer", utf8(chosen->szIssuerDN)},
        {{"issuer shown as", "발급기관"}, "issuer_name", utf8(chosen->szIssuerName)},
        {{"policy", "정책"}, "policy", chosen->szCertPolicy},
        {{"serial number", "일련번호"}, "serial", chosen->szSerialNum},
        {{"valid from", "유효 시작"}, "valid_from", utf8(chosen->szValidFrom)},
        {{"valid to", "유효 끝"}, "valid_to", utf8(chosen->szValidTo)},
        {{"file", "파일"}, "file", chosen->szSignCertPath}};
}

/** Where a file of the result goes: into the folder of --out. */
std::string inFolder(const Session& session, const std::string& name)
{
    const std::filesystem::path folder = session.arguments.text("--out");
    return (folder / name).string();
}

std::vector<std::string> writeCertificates(Session& session, const DialogChoice& chosen)
{
    std::vector<std::string> written;
    if (!session.arguments.has("--out"))
        return written;
    const std::string folder = session.arguments.text("--out");
    std::error_code error;
    if (std::filesystem::create_directories(folder, error); error)
        throw Failure(failed, "file_not_written", noFolder, {folder, reason(error.value())});
    const auto write = [&](const char* name, std::string_view content) {
        if (content.empty())
            return;
        written.push_back(inFolder(session, name));
        writeFile(session, written.back(), content);
    };
    write("signCert.der", item(chosen->bySignCert, chosen->nSignCertLen));
    write("kmCert.der", item(chosen->byKmCert, chosen->nKmCertLen));
    return written;
}

std::string sign(const Session& session, const DialogChoice& chosen, const std::string& file)
{
    const Crypto crypto(session);
    Bytes certificate(crypto.handle());
    Bytes key(crypto.handle());
    set(crypto, certificate, item(chosen->bySignCert, chosen->nSignCertLen));
    set(crypto, key, item(chosen->bySignPriKey, chosen->nSignPriKeyLen));
    const std::string name = file + endingOf(SignatureForm::Attached);
    std::string target =
        session.arguments.has("--out") ? inFolder(session, std::filesystem::path(name).filename().string()) : name;
    WrittenFile written(session, target);
    signFile(session, crypto, certificate, key, SignatureForm::Attached, file, written, {});
    return target;
}

} // namespace

int runPick(Session& session)
{
    const std::string file = session.arguments.text("--sign");
    if (!file.empty())
        mustExist(file);
    // The program is in the folder that is installed with the command, which need not be the one of --folder.
    const DialogChoice chosen = chooseInDialog(installedFolder(), dialogRequest(session));
    Json json = Json::object();
    std::vector<std::vector<Cell>> rows;
    for (const Member& member : membersOf(chosen)) {
        json[member.key] = member.value;
        rows.push_back({Cell(session.say(member.words)), Cell(member.value)});
    }
    Json document{{"certificate", json}, {"files", writeCertificates(session, chosen)}};
    if (!file.empty()) {
        document["signature"] = sign(session, chosen, file);
        rows.push_back({Cell(session.say(signedWords)), Cell(document["signature"].get<std::string>())});
    }
    session.output.document(document);
    session.output.table(rows);
    return done;
}

} // namespace host
