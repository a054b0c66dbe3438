// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the list depends on: library folder, toolkit, settings files, home folder, removable disks.
#include "doctor/doctor.h"

#include "doctor/file_facts.h"
#include "foundation/environment.h"

#include <sigildesk/certlist.h>
#include <sigildesk/crypto.h>
#include <sigildesk/util.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace sigil {

namespace {

constexpr BothLanguages folderThere{"The library folder is there.", "라이브러리 폴더가 있습니다."};
constexpr BothLanguages folderMissing{
    "The library folder is missing or may not be entered.", "라이브러리 폴더가 없거나 들어갈 수 없습니다."};
constexpr BothLanguages nameFolder{"Install the library, or name its folder with --folder.",
    "라이브러리를 설치하거나 --folder로 폴더를 지정하십시오."};
constexpr BothLanguages toolkitWorks{"The toolkit starts.", "툴킷이 시작됩니다."};
constexpr BothLanguages settingsThere{"{0}: {1} bytes.", "{0}: {1}바이트."};
constexpr BothLanguages settingsMissing{"{0} is missing or no file.", "{0} 파일이 없거나 일반 파일이 아닙니다."};
constexpr BothLanguages restoreSettings{
    "Restore {0} from the installation.", "설치본에서 {0} 파일을 되살리십시오."};
constexpr BothLanguages homeThere{"Certificates are looked for below {0}.", "{0} 아래에서 인증서를 찾습니다."};
constexpr BothLanguages homeDiffers{
    "Certificates are looked for below {0}, the home folder of the password database, "
    "and not below HOME, which is {1}.",
    "HOME({1})이 아니라 사용자 데이터베이스의 홈 폴더 {0} 아래에서 인증서를 찾습니다."};
constexpr BothLanguages homeMissing{
    "The user has no home folder, or it is missing.", "사용자의 홈 폴더가 없습니다."};
constexpr BothLanguages giveHome{"Give the user a home folder, or name a folder with --media.",
    "홈 폴더를 만들거나 --media로 폴더를 지정하십시오."};
constexpr BothLanguages diskThere{
    "A removable disk is mounted at {0}.", "이동식디스크가 {0}에 마운트되어 있습니다."};
constexpr BothLanguages diskUnread{
    "The removable disk at {0} may not be read.", "{0}의 이동식디스크를 읽을 수 없습니다."};
constexpr BothLanguages mountAnew{"Mount the disk for this user.", "이 사용자가 읽을 수 있게 다시 마운트하십시오."};
constexpr BothLanguages noDisk{"No removable disk is mounted.", "마운트된 이동식디스크가 없습니다."};

std::string codeText(int code, int language, bool advice)
{
    SigilCodeText text{};
    sigil_code_text(code, language, &text);
    return advice ? text.advice : std::string(text.sentence) + " (" + std::to_string(code) + ")";
}

Check libraryFolder(const DoctorQuestion& question)
{
    const bool there = access(question.libraryFolder.c_str(), R_OK | X_OK) == 0;
    return {"library_folder", question.libraryFolder, there,
        (there ? folderThere : folderMissing).in(question.language), there ? "" : nameFolder.in(question.language)};
}

Check toolkit(const DoctorQuestion& question)
{
    void* handle = nullptr;
    std::string folder = question.libraryFolder;
    const int code = HV_Initalize(&handle, question.toolkit, folder.data());
    HV_Finish(handle);
    const bool ok = code == SIGIL_SUCCESS;
    const char* file = question.toolkit == SIGIL_TOOLKIT_GPKI ? "/libgpkiapi_v15.so" : "/libHVCToolkitV30.so";
    return {"toolkit", question.libraryFolder + file, ok,
        ok ? toolkitWorks.in(question.language) : codeText(code, question.language, false),
        ok ? "" : codeText(code, question.language, true)};
}

Check settingsFile(const DoctorQuestion& question, const std::string& name, bool needed)
{
    const std::string path = question.libraryFolder + "/" + name;
    struct stat status { };
    const bool there = stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    const std::string size = std::to_string(status.st_size);
    return {"settings", path, there || !needed,
        there ? settingsThere.in(question.language, {name, size}) : settingsMissing.in(question.language, {name}),
        there ? "" : restoreSettings.in(question.language, {name})};
}

/** What the list says of its settings; it is the one who reads them. */
Check settings(const DoctorQuestion& question)
{
    void* handle = nullptr;
    std::string folder = question.libraryFolder;
    const int code = CLP_Initalize(&handle, nullptr, question.toolkit, question.language, folder.data());
    CLP_UnInitalize(handle);
    const bool ok = code == SIGIL_SUCCESS;
    return {"list", question.libraryFolder, ok, codeText(code, question.language, false),
        ok ? "" : codeText(code, question.language, true)};
}

Check homeFolder(const DoctorQuestion& question)
{
    const std::string home = environment().homeFolder();
    const bool ok = !home.empty() && access(home.c_str(), X_OK) == 0;
    const char* named = std::getenv("HOME");
    const bool differs = named && *named && plainPath(named) != plainPath(home);
    const std::string detail =
        differs ? homeDiffers.in(question.language, {home, named}) : homeThere.in(question.language, {home});
    return {"home_folder", home, ok, ok ? detail : homeMissing.in(question.language),
        ok ? "" : giveHome.in(question.language)};
}

void addDisks(const DoctorQuestion& question, std::vector<Check>& checks)
{
    CUtil util;
    int count = 0;
    util.GetRemDriveCount(true, &count);
    std::vector<tagDRIVEINFO> disks(static_cast<std::size_t>(count));
    util.GetRemDriveInfo(true, disks.data());
    for (const tagDRIVEINFO& disk : disks) {
        const bool ok = access(disk.szMountDir, R_OK | X_OK) == 0;
        checks.push_back({"removable_disk", disk.szMountDir, ok,
            (ok ? diskThere : diskUnread).in(question.language, {disk.szMountDir}),
            ok ? "" : mountAnew.in(question.language)});
    }
    if (disks.empty())
        checks.push_back({"removable_disk", "", true, noDisk.in(question.language), ""});
}

} // namespace

std::vector<Check> examineSurroundings(const DoctorQuestion& question)
{
    const std::string suffix = question.language == SIGIL_LANGUAGE_ENGLISH ? "_ENG.conf" : "_KOR.conf";
    std::vector<Check> checks{libraryFolder(question), toolkit(question), settings(question),
        settingsFile(question, "Policy" + suffix, true), settingsFile(question, "Issuer" + suffix, false),
        settingsFile(question, question.language == SIGIL_LANGUAGE_ENGLISH ? "ENG.ini" : "KOR.ini", false),
        settingsFile(question, "HVCToolkitV30.conf", false), settingsFile(question, "TWAPI_LOG.ini", false),
        homeFolder(question)};
    addDisks(question, checks);
    return checks;
}

} // namespace sigil
