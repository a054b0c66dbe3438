// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/log.h>
#include <sigildesk/util.h>

#include <cerrno>
#include <climits>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class Trace : public EnvironmentTest {
protected:
    Trace()
    {
        sigil::environment().traceFolder = folder.path();
        setClock("2024-03-01 09:05:07", 42'999'999);
    }
    std::string file() const { return folder.path("tarnwick_20240301.log"); }
    std::string trace() const { return readFile(file()); }
};

class ErrorLog : public EnvironmentTest {
protected:
    ErrorLog() { setClock("2024-03-01 09:05:07"); }

    std::string record(const char* where, const char* name, const char* callee, int code, const char* message)
    {
        std::filesystem::remove(folder.path("error.log"));
        EXPECT_EQ(CUtil().SetLogInfo(
                      Arg(folder.path("error.log")), Arg(where), Arg(name), Arg(callee), code, Arg(message)),
            0);
        return readFile(folder.path("error.log"));
    }
};

class PluginLog : public EnvironmentTest {
protected:
    PluginLog()
    {
        sigil::environment().pluginFolder = folder.path();
        setClock("2024-03-01 09:05:07");
    }
    void configure(const std::string& logFolder) { folder.write("ERROR_LOG", "[ERROR]\nPATH=" + logFolder + "\n"); }
    std::string file() const { return folder.path("2024-03-01_A.log"); }
};

const std::string longText(10'000, 'x');

} // namespace

TEST_F(Trace, WritesOneLine)
{
    LOG_LEVEL("DEBUG", "src/Entry.cpp", 42, "Ns::Run", "x=%d", 5);
    EXPECT_EQ(trace(), "[tw4np][09:05:07.042][DEBUG][Entry.cpp:42][Run] x=5\n");
}

TEST_F(Trace, AppendsInTheFileOfTheDay)
{
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "one");
    LOG_LEVEL("ERROR", "a.cpp", 2, "f", "two");
    setClock("2024-03-02 00:00:00");
    LOG_LEVEL("DEBUG", "a.cpp", 3, "f", "three");
    EXPECT_EQ(
        trace(), "[tw4np][09:05:07.042][DEBUG][a.cpp:1][f] one\n[tw4np][09:05:07.042][ERROR][a.cpp:2][f] two\n");
    EXPECT_EQ(readFile(folder.path("tarnwick_20240302.log")), "[tw4np][00:00:00.000][DEBUG][a.cpp:3][f] three\n");
}

TEST_F(Trace, UsesLocalTime)
{
    setZone("KST-9");
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_EQ(trace(), "[tw4np][18:05:07.042][DEBUG][a.cpp:1][f] text\n");
}

TEST_F(Trace, CutsFileAndFunctionNames)
{
    struct Case {
        const char* file;
        const char* function;
        const char* expected;
    };
    const Case cases[] = {
        {"a.cpp", "f", "[a.cpp:7][f]"},
        {"/x/y/a.cpp", "A::B::f", "[a.cpp:7][f]"},
        {"x\\y\\a.cpp", "f", "[a.cpp:7][f]"},
        {"x/y\\a.cpp", "f", "[y\\a.cpp:7][f]"},
        {"x/", "A::", "[:7][]"},
        {"x\\", "A:f", "[:7][f]"},
        {"", "", "[:7][]"},
    };
    for (const Case& c : cases) {
        std::filesystem::remove(file());
        LOG_LEVEL("DEBUG", c.file, 7, c.function, "text");
        EXPECT_EQ(trace(), std::string("[tw4np][09:05:07.042][DEBUG]") + c.expected + " text\n");
    }
}

TEST_F(Trace, WritesNothingWithoutANameOfTheThree)
{
    LOG_LEVEL(nullptr, "a.cpp", 1, "f", "text");
    LOG_LEVEL("DEBUG", nullptr, 1, "f", "text");
    LOG_LEVEL("DEBUG", "a.cpp", 1, nullptr, "text");
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Trace, WritesALineWithoutAMessage)
{
    const decltype(&LOG_LEVEL) log = LOG_LEVEL; // whose messages no compiler looks at
    log("DEBUG", "a.cpp", 1, "f", nullptr);
    EXPECT_EQ(trace(), "[tw4np][09:05:07.042][DEBUG][a.cpp:1][f] \n");
}

TEST_F(Trace, CutsTheMessageAt4095Bytes)
{
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "%s", longText.c_str());
    EXPECT_EQ(trace(), "[tw4np][09:05:07.042][DEBUG][a.cpp:1][f] " + std::string(4095, 'x') + "\n");
}

TEST_F(Trace, KeepsLongNamesWhole)
{
    LOG_LEVEL(longText.c_str(), longText.c_str(), 1, longText.c_str(), "text");
    EXPECT_EQ(trace(), "[tw4np][09:05:07.042][" + longText + "][" + longText + ":1][" + longText + "] text\n");
}

TEST_F(Trace, LosesTheLineSilentlyWithoutItsFolder)
{
    sigil::environment().traceFolder = folder.path("missing");
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_FALSE(std::filesystem::exists(folder.path("missing")));
}

TEST_F(Trace, IsReadableForItsOwnerOnly)
{
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    struct stat status { };
    ASSERT_EQ(stat(file().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0600u);
}

TEST_F(Trace, FollowsNoPlantedLink)
{
    const std::string victim = folder.write("victim", "precious\n");
    std::filesystem::create_symlink(victim, file());
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_EQ(readFile(victim), "precious\n");

    std::filesystem::remove(file());
    std::filesystem::create_hard_link(victim, file());
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_EQ(readFile(victim), "precious\n");
}

TEST_F(Trace, CreatesNothingBehindADanglingLink)
{
    std::filesystem::create_symlink(folder.path("target"), file());
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_FALSE(std::filesystem::exists(folder.path("target")));
}

TEST_F(Trace, HangsOnNoPipe)
{
    ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    std::filesystem::remove(file());
    std::filesystem::create_directory(file());
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_TRUE(std::filesystem::is_empty(file()));
}

TEST_F(Trace, LeavesAFileOfAnotherUserAlone)
{
    folder.write("tarnwick_20240301.log", "");
    // Only root can give a file away; for anyone else the owner test above holds with his own files.
    const bool given = chown(file().c_str(), 12345, 12345) == 0;
    LOG_LEVEL("DEBUG", "a.cpp", 1, "f", "text");
    EXPECT_EQ(trace().empty(), given);
}

TEST_F(ErrorLog, Records)
{
    struct Case {
        const char* where;
        const char* name;
        const char* callee;
        int code;
        const char* message;
        const char* expected;
    };
    const Case cases[] = {
        {"CLoadExtra::VerifyCert()", "ERR_VERIFYCERT", "CertVerify()", 1008, "expired",
            "2024-03-01 09:05:07 >> CLoadExtra::VerifyCert() - ERR_VERIFYCERT >> CertVerify() : 1008 (Msg : "
            "expired)\r\n"},
        {"F()", nullptr, "", 3, nullptr, "2024-03-01 09:05:07 >> F() >>\r\n"},
        {"F()", nullptr, nullptr, 3, "", "2024-03-01 09:05:07 >> F() >>\r\n"},
        {"F()", "", nullptr, 3, nullptr, "2024-03-01 09:05:07 >> F() -  >>\r\n"},
        {"F()", nullptr, "G()", -5, nullptr, "2024-03-01 09:05:07 >> F() >> G() : -5\r\n"},
        {"F()", "ERR_PASS", nullptr, 3, "text", "2024-03-01 09:05:07 >> F() - ERR_PASS >> (Msg : text)\r\n"},
        {"", nullptr, nullptr, 0, nullptr, "2024-03-01 09:05:07 >>  >>\r\n"},
        {"%s%n", "%s", "%d", 1, "%n", "2024-03-01 09:05:07 >> %s%n - %s >> %d : 1 (Msg : %n)\r\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(record(c.where, c.name, c.callee, c.code, c.message), c.expected);
}

TEST_F(ErrorLog, Appends)
{
    const std::string path = folder.write("error.log", "before\n");
    CUtil().SetLogInfo(Arg(path), Arg("F()"), nullptr, nullptr, 0, nullptr);
    CUtil().SetLogInfo(Arg(path), Arg("G()"), nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(readFile(path), "before\n2024-03-01 09:05:07 >> F() >>\r\n2024-03-01 09:05:07 >> G() >>\r\n");
}

TEST_F(ErrorLog, KeepsLongTextsWhole)
{
    EXPECT_EQ(record(longText.c_str(), longText.c_str(), longText.c_str(), 1, longText.c_str()),
        "2024-03-01 09:05:07 >> " + longText + " - " + longText + " >> " + longText + " : 1 (Msg : " + longText +
            ")\r\n");
}

TEST_F(ErrorLog, IsOffWithoutFileOrPlace)
{
    EXPECT_EQ(CUtil().SetLogInfo(nullptr, Arg("F()"), nullptr, nullptr, 0, nullptr), 0);
    EXPECT_EQ(CUtil().SetLogInfo(Arg(""), Arg("F()"), nullptr, nullptr, 0, nullptr), 0);
    EXPECT_EQ(CUtil().SetLogInfo(Arg(folder.path("error.log")), nullptr, Arg("E"), Arg("G()"), 0, Arg("m")), 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path("error.log")));
}

TEST_F(ErrorLog, DropsTheRecordWhenTheFileCannotBeWritten)
{
    EXPECT_EQ(CUtil().SetLogInfo(Arg(folder.path("no/error.log")), Arg("F()"), nullptr, nullptr, 0, nullptr), 0);
    EXPECT_EQ(CUtil().SetLogInfo(Arg(folder.path()), Arg("F()"), nullptr, nullptr, 0, nullptr), 0);
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(CUtil().SetLogInfo(Arg(folder.path("pipe")), Arg("F()"), nullptr, nullptr, 0, nullptr), 0);
    EXPECT_EQ(CUtil().SetLogInfo(Arg("/dev/full"), Arg("F()"), nullptr, nullptr, 0, nullptr), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1); // nothing but the pipe
}

TEST_F(ErrorLog, MayBeALinkToTheFile)
{
    const std::string target = folder.write("target", "");
    std::filesystem::create_symlink(target, folder.path("link"));
    CUtil().SetLogInfo(Arg(folder.path("link")), Arg("F()"), nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(readFile(target), "2024-03-01 09:05:07 >> F() >>\r\n");
}

TEST_F(PluginLog, WritesTheTextWithTheTime)
{
    configure(folder.path());
    EXPECT_EQ(CUtil().WriteLogData(Arg("one"), 3), 0);
    EXPECT_EQ(CUtil().WriteLogData(Arg("two\n"), 4), 0);
    EXPECT_EQ(readFile(file()), "[2024-03-01 09:05:07] one[2024-03-01 09:05:07] two\n");
}

TEST_F(PluginLog, WritesNothingWithoutAFolder)
{
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 4), 0); // no settings
    configure("");
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 4), 0);
    folder.write("ERROR_LOG", "[OTHER]\nPATH=" + folder.path() + "\n");
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 4), 0);
    folder.write("ERROR_LOG", "[ERROR]\nOTHER=" + folder.path() + "\n");
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 4), 0);
    EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(PluginLog, ReportsAFileThatCannotBeOpened)
{
    configure(folder.path("missing"));
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 4), -1);
}

TEST_F(PluginLog, ComparesTheBytesWrittenWithTheLength)
{
    configure(folder.path());
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 26), 0); // "[2024-03-01 09:05:07] text"
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 27), -1);
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), INT_MAX), -1);
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), 0), 0);
    EXPECT_EQ(CUtil().WriteLogData(Arg("text"), -1), 0);
    EXPECT_EQ(CUtil().WriteLogData(nullptr, 0), 0);
}

TEST_F(PluginLog, CutsTheTextAt4095Bytes)
{
    configure(folder.path());
    EXPECT_EQ(CUtil().WriteLogData(Arg(longText), static_cast<int>(longText.size())), -1);
    EXPECT_EQ(readFile(file()), "[2024-03-01 09:05:07] " + std::string(4095, 'x'));
}

TEST(Logs, LogFilePathDoesNothing)
{
    char path[] = "path";
    EXPECT_EQ(CUtil().LogFilePath(path), 0);
    EXPECT_EQ(CUtil().LogFilePath(nullptr), 0);
    EXPECT_STREQ(path, "path");
}

TEST(Logs, GetSystemErrorIsErrno)
{
    CUtil util; // made before: looking up the home folder may change errno
    for (int code : {0, ENOENT, EACCES}) {
        errno = code;
        EXPECT_EQ(util.GetSystemError(), code);
    }
}
