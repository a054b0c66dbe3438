// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// How a processor starts: the toolkit, the library folder, the settings files.

#include "tests/certlist/scripted.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <map>

namespace fs = std::filesystem;

// The linker sends every fread and fdopen of the test program here.
extern "C" std::size_t __real_fread(void* data, std::size_t size, std::size_t count, std::FILE* file);
extern "C" std::size_t __wrap_fread(void* data, std::size_t size, std::size_t count, std::FILE* file);
extern "C" std::FILE* __real_fdopen(int descriptor, const char* mode);
extern "C" std::FILE* __wrap_fdopen(int descriptor, const char* mode);

namespace {

using Start = Scripted;

bool lacksMemory = false; // for a stream

fs::path unreadableFile; // as on a broken disk

TEST_F(Start, ToolkitThatLacksMemoryIsNotSaidToRefuse)
{
    doubles::answer("HVTK_API_Init", 3002);
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 1000);
}

TEST_F(Start, NullHandleVariableAndNullFolder)
{
    EXPECT_EQ(CLP_Initalize(nullptr, nullptr, 0, 1, Text("x")), 1001);
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, nullptr), 1007); // the façade refuses a missing folder
    EXPECT_NE(clp, nullptr);
}

TEST_F(Start, ToolkitThatDoesNotLoadOrStart)
{
    TemporaryFolder empty;
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, empty.chars()), 1010);
    finish();
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 1, 1, empty.chars()), 1010);
    finish();
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 2, 1, Text(library.string())), 1007);
    finish();
    doubles::answer("HVTK_API_Init", 77);
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 1007);
    // Such a processor still answers, and finds nothing.
    EXPECT_EQ(CLP_SetMediaType(clp, 1, nullptr, 0), 0);
    EXPECT_EQ(setOptions(), 0);
    EXPECT_EQ(CLP_LoadCertList(clp), 1115);
    EXPECT_EQ(count(), 0);
}

TEST_F(Start, FolderIsCutAt259Bytes)
{
    const std::string folder(300, 'f');
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(folder)), 1010);
}

TEST_F(Start, SettingsFilesThatAreMissingOrWrong)
{
    const LeaksForgiven forgiven;
    const auto initialised = [&] {
        finish();
        return CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string()));
    };
    fs::remove(library / "Policy_KOR.conf");
    EXPECT_EQ(initialised(), 1100);
    EXPECT_EQ(log(), (std::vector<std::string>{"CLoadDISK::SetPolicyIDNameList() - ERR_LOADCONF >> fopen : 1100"}));
    writeFile(library / "Policy_KOR.conf", "");
    EXPECT_EQ(initialised(), 1102);
    EXPECT_EQ(lastLog(), "CLoadDISK::SetPolicyIDNameList() - ERR_FILEREAD_NODATA >> fseek : 1102");
    writeFile(library / "Policy_KOR.conf", "1.2=a\n");
    fs::resize_file(library / "Policy_KOR.conf", INT_MAX); // takes no room on the disk
    EXPECT_EQ(initialised(), 1102);
    EXPECT_EQ(lastLog(), "CLoadDISK::SetPolicyIDNameList() - ERR_FILEREAD_NODATA >> fseek : 1102");
    writeFile(library / "Policy_KOR.conf", "1.2=a\n");
    unreadableFile = library / "Policy_KOR.conf";
    EXPECT_EQ(initialised(), 1102);
    unreadableFile.clear();
    EXPECT_EQ(lastLog(), "CLoadDISK::SetPolicyIDNameList() - ERR_FILEREAD_NODATA >> fread : 1102");
    fs::remove(library / "Policy_KOR.conf");
    fs::create_directory(library / "Policy_KOR.conf");
    EXPECT_EQ(initialised(), 1102);
    fs::remove(library / "Policy_KOR.conf");
    ASSERT_EQ(mkfifo((library / "Policy_KOR.conf").c_str(), 0600), 0);
    EXPECT_EQ(initialised(), 1102); // and does not wait for somebody who writes into it
    fs::remove(library / "Policy_KOR.conf");
    fs::create_symlink("/dev/zero", library / "Policy_KOR.conf");
    EXPECT_EQ(initialised(), 1102);
    EXPECT_EQ(lastLog(), "CLoadDISK::SetPolicyIDNameList() - ERR_FILEREAD_NODATA >> fseek : 1102");
    fs::remove(library / "Policy_KOR.conf");
    writeFile(library / "Policy_KOR.conf", "1.2=a\n");
    writeFile(library / "Issuer_KOR.conf", "[Info_count]\nIssuer_Info=1\n[Issuer_Info1]\nname=x\n");
    EXPECT_EQ(initialised(), 1100);
    EXPECT_EQ(lastLog(), "CLoadDISK::SetIssuerNameList() - ERR_LOADCONF >> (Msg : read fail( Isser_info,cn info))");
    writeFile(library / "Issuer_KOR.conf", "[Info_count]\nIssuer_Info=1\n[Issuer_Info1]\ncn=x\nname=\n");
    EXPECT_EQ(initialised(), 1100);
    EXPECT_EQ(
        lastLog(), "CLoadDISK::SetIssuerNameList() - ERR_LOADCONF >> (Msg : read fail( Isser_info,name info))");
    // The same handle can be tried again once the files are there.
    writeFile(library / "Issuer_KOR.conf", "[Info_count]\nIssuer_Info=1\n[Issuer_Info1]\ncn=x\nname=y\n");
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 0);
}

TEST_F(Start, SecondInitalizeDoesNotReadTheSettingsAgain)
{
    const LeaksForgiven forgiven;
    addNpki("a", {{"subject", "cn=a"}});
    start();
    ASSERT_EQ(load(), 0);
    fs::remove(library / "Policy_KOR.conf");
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 0);
    EXPECT_EQ(count(), 1); // nor are the loaders made anew
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(entry()->szPolicyName, "personal");
}

TEST_F(Start, SecondInitalizeOpensTheToolkitAgain)
{
    const LeaksForgiven forgiven;
    start();
    fs::create_directories(home / "NPKI/yessign/USER/broken"); // gives a record on every listing
    writeFile(library / "TWAPI_LOG.ini", "[TW_Info]\nPATH=" + (disk / "other.log").string() + "\n");
    doubles::forgetCalls();
    ASSERT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_API_Init").size(), 1u);
    EXPECT_EQ(load(), 1115);
    EXPECT_FALSE(log().empty()); // the loaders keep the log that they were given first
    EXPECT_FALSE(fs::exists(disk / "other.log"));
    TemporaryFolder empty;
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, empty.chars()), 1010);
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 2, 1, Text(library.string())), 1007);
}

TEST_F(Start, EverySettingsFileIsReadOnce)
{
    std::string issuers = "[Info_count]\nIssuer_Info=38\n";
    for (int i = 1; i <= 38; ++i)
        issuers += "[Issuer_Info" + std::to_string(i) + "]\ncn=a\nname=b\n";
    writeFile(library / "Issuer_KOR.conf", issuers);
    const int watch = inotify_init1(IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(watch, library.c_str(), IN_OPEN), 0);
    start();
    std::map<std::string, int> opened;
    alignas(inotify_event) char events[64 * 1024];
    for (ssize_t at = 0, size = read(watch, events, sizeof events); at < size;) {
        const auto* event = reinterpret_cast<const inotify_event*>(events + at);
        ++opened[event->len ? event->name : ""];
        at += static_cast<ssize_t>(sizeof *event + event->len);
    }
    close(watch);
    EXPECT_EQ(opened["Policy_KOR.conf"], 1);
    EXPECT_EQ(opened["Issuer_KOR.conf"], 1);
}

TEST_F(Start, StartingAsksForNoHomeFolder)
{
    const auto before = sigil::environment().homeFolder;
    static int lookUps;
    lookUps = 0;
    sigil::environment().homeFolder = [] { return std::to_string(++lookUps); };
    start();
    sigil::environment().homeFolder = before;
    EXPECT_EQ(lookUps, 0); // each of them reads the users' file
}

TEST_F(Start, EnglishSettings)
{
    writeFile(library / "Policy_ENG.conf", "1.2.410.200005.1.1.1=Personal, general\n");
    writeFile(library / "Issuer_ENG.conf",
        "[Info_count]\nIssuer_Info=1\n[Issuer_Info1]\ncn=yessignCA Class 1\nname=KFTC\n");
    addNpki("a");
    start(2);
    ASSERT_EQ(load(), 0);
    EXPECT_STREQ(entry()->szPolicyName, "Personal, general");
    EXPECT_STREQ(entry()->szIssuerName, "KFTC");
}

TEST_F(Start, AnyOtherLanguageTakesTheKoreanSettings)
{
    writeFile(library / "Policy_ENG.conf", "1.2.410.200005.1.1.1=Personal, general\n");
    addNpki("a");
    for (int language : {0, 3, -1}) {
        start(language);
        ASSERT_EQ(load(), 0);
        EXPECT_STREQ(entry()->szPolicyName, "personal");
        finish();
    }
}

TEST_F(Start, EmptyLogPathSwitchesTheErrorLogOff)
{
    writeFile(library / "TWAPI_LOG.ini", "[TW_Info]\nPATH=\n");
    fs::create_directories(home / "NPKI/yessign/USER/broken");
    start();
    EXPECT_EQ(load(), 1115);
    EXPECT_TRUE(log().empty());
}

TEST_F(Start, MemoryForTheSettingsRunsOut)
{
    const LeaksForgiven forgiven;
    lacksMemory = true;
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 1000);
    lacksMemory = false;
    finish();
    EXPECT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 0);
}

} // namespace

extern "C" std::FILE* __wrap_fdopen(int descriptor, const char* mode)
{
    return lacksMemory ? nullptr : __real_fdopen(descriptor, mode);
}

extern "C" std::size_t __wrap_fread(void* data, std::size_t size, std::size_t count, std::FILE* file)
{
    const bool broken =
        !unreadableFile.empty() && fs::equivalent("/proc/self/fd/" + std::to_string(fileno(file)), unreadableFile);
    return broken ? 0 : __real_fread(data, size, count, file);
}
