// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// pick: the selection dialog.
#include "pick_module.h"

#include "certificate.h"
#include "commands.h"
#include "files.h"
#include "foundation/secret.h"
#include "library_folder.h"
#include "signing.h"
#include "text.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace host {

namespace {

constexpr Words noDisplay{
    "the dialog needs a display, and none could be opened: {}", "대화 상자에는 화면이 필요한데 열 수 없습니다: {}"};
constexpr Words noDialogs{"the dialogs are not installed: {}", "대화 상자가 설치되어 있지 않습니다: {}"};
constexpr Words folderTooLong{
    "the library folder's path is longer than 259 bytes", "라이브러리 폴더 경로가 259바이트보다 깁니다"};
constexpr Words signedWords{"signed", "서명"};

/** The result record, wiped before its memory is given back: it holds private keys. */
class Selection {
public:
    Selection() = default;
    ~Selection() { sigil::wipe(m_record.get(), sizeof *m_record); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    tagSELCERTINFO* operator->() const { return m_record.get(); }
    tagSELCERTINFO* get() const { return m_record.get(); }

private:
    std::unique_ptr<tagSELCERTINFO> m_record = std::make_unique<tagSELCERTINFO>();
};

std::string_view item(const unsigned char* data, int length)
{
    return {reinterpret_cast<const char*>(data), static_cast<std::size_t>(length)};
}

Output* outputOfThisRun = nullptr;

void tellThatThereIsNoDisplay(const char* reason)
{
    outputOfThisRun->tell(Failure(failed, "no_display", noDisplay, {reason}));
    static_cast<void>(std::fflush(nullptr));
    _exit(failed);
}

/** The module stands in the folder that is installed with the command, which need not be the one of --folder. */
PickFunction openModule(const std::string& folder)
{
    const std::string file = (std::filesystem::path(folder) / pickModuleName).string();
    void* module = dlopen(file.c_str(), RTLD_NOW); // stays open: Qt does not like to go
    void* function = module ? dlsym(module, pickFunctionName) : nullptr;
    if (!function)
        throw Failure(failed, "no_dialogs", noDialogs, {dlerror()});
    return reinterpret_cast<PickFunction>(function);
}

int openDialog(Session& session, PickFunction pick, const Selection& chosen)
{
    tagINITOPT init{};
    if (session.folder.size() >= sizeof init.szLibraryFolder)
        throw Failure(failed, "path_too_long", folderTooLong);
    session.folder.copy(init.szLibraryFolder, sizeof init.szLibraryFolder - 1);
    init.nLanguage = static_cast<int>(session.language());
    const auto load = std::make_unique<tagLOADSELECTCERTOPTION>();
    load->nPKITypes = SIGIL_FAMILY_GPKI | SIGIL_FAMILY_NPKI | SIGIL_FAMILY_MPKI | SIGIL_FAMILY_PPKI;
    load->nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    outputOfThisRun = &session.output;
    return pick(&init, load.get(), chosen.get(), tellThatThereIsNoDisplay);
}

/** A member of what is printed: its name for a person and in JSON. Two texts of the record are UTF-8, the others CP949. */
struct Member {
    Words words;
    const char* key;
    std::string value;
};

std::vector<Member> membersOf(const tagSELCERTINFO& chosen)
{
    return {{{"subject", "주체"}, "subject", chosen.szSubjectDN},
        {{"shown as", "이름"}, "name", utf8(chosen.szSubjectName)},
        {{"issuer", "발급자"}, "issuer", utf8(chosen.szIssuerDN)},
        {{"issuer shown as", "발급기관"}, "issuer_name", utf8(chosen.szIssuerName)},
        {{"policy", "정책"}, "policy", chosen.szCertPolicy},
        {{"serial number", "일련번호"}, "serial", chosen.szSerialNum},
        {{"valid from", "유효 시작"}, "valid_from", utf8(chosen.szValidFrom)},
        {{"valid to", "유효 끝"}, "valid_to", utf8(chosen.szValidTo)},
        {{"file", "파일"}, "file", chosen.szSignCertPath}};
}

/** Where a file of the result goes: into the folder of --out. */
std::string inFolder(const Session& session, const std::string& name)
{
    const std::filesystem::path folder = session.arguments.text("--out");
    return (folder / name).string();
}

std::vector<std::string> writeCertificates(Session& session, const Selection& chosen)
{
    std::vector<std::string> written;
    if (!session.arguments.has("--out"))
        return written;
    std::filesystem::create_directories(session.arguments.text("--out"));
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

std::string sign(const Session& session, const Selection& chosen, const std::string& file)
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
    const PickFunction pick = openModule(installedFolder());
    const Selection chosen;
    const int code = openDialog(session, pick, chosen);
    if (code != SIGIL_SUCCESS)
        throw Failure::ofCode(code);
    Json json = Json::object();
    std::vector<std::vector<Cell>> rows;
    for (const Member& member : membersOf(*chosen.get())) {
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
