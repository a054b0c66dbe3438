#include "tests/foundation/support.h"

#include <ctime>
#include <pwd.h>
#include <unistd.h>

namespace {

class HomeFolder : public EnvironmentTest {
protected:
    void setPasswordFile(const std::string& content)
    {
        sigil::environment().passwordFile = folder.write("passwd", content);
    }
    static std::string homeFolder() { return sigil::environment().homeFolder(); }
    /** The line of a user of the process's number. */
    static std::string line(const std::string& name, const std::string& home)
    {
        return name + ":x:" + std::to_string(getuid()) + ":1:full name:" + home + ":/bin/sh\n";
    }
    static std::string homeFolderOfTheMachine()
    {
        const passwd* entry = getpwuid(getuid());
        return entry ? entry->pw_dir : "";
    }

    const std::string other = "other:x:" + std::to_string(getuid() + 1) + ":1::/home/other:/bin/sh\n";
};

} // namespace

// Without a test in between, the library asks the machine, at the places that hosts and packagers know.

TEST(Environment, HasTheFixedPlaces)
{
    EXPECT_EQ(sigil::environment().passwordFile, "/etc/passwd");
    EXPECT_EQ(sigil::environment().mountTable, "/etc/mtab");
    EXPECT_EQ(sigil::environment().traceFolder, "/tmp");
    EXPECT_EQ(sigil::environment().pluginFolder, "/opt/CorvennaPlugin/i386");
}

TEST(Environment, HasTheMachinesClock)
{
    const std::time_t before = std::time(nullptr);
    const timespec now = sigil::environment().now();
    EXPECT_GE(now.tv_sec, before);
    EXPECT_LE(now.tv_sec, std::time(nullptr) + 1);
    EXPECT_LT(now.tv_nsec, 1'000'000'000);
}

TEST_F(HomeFolder, IsThatOfThePasswordDatabase) { EXPECT_EQ(homeFolder(), homeFolderOfTheMachine()); }

TEST_F(HomeFolder, IsReadFromThePasswordFile)
{
    struct Case {
        std::string content;
        std::string home;
    };
    const std::string longName(10'000, 'n');
    const Case cases[] = {
        {line("hong", "/home/hong"), "/home/hong"},
        {other + line("hong", "/home/hong") + other, "/home/hong"},
        {line("hong", "/home/first") + line("hong", "/home/second"), "/home/first"},
        {"no entry at all\n\n# comment\n" + line("hong", "/home/hong"), "/home/hong"},
        {line(longName, "/home/long") + line("hong", "/home/hong"), "/home/long"},
        {other + line("hong", ""), ""},
        // such a line stands for users of another database
        {line("+hong", "/home/plus") + line("-hong", "/home/minus") + line("hong", "/home/hong"), "/home/hong"},
    };
    for (const Case& c : cases) {
        setPasswordFile(c.content);
        EXPECT_EQ(homeFolder(), c.home) << c.content.substr(0, 200);
    }
}

TEST_F(HomeFolder, OfAUserWhoIsNotInTheFileComesFromTheNameService)
{
    const std::string home = homeFolderOfTheMachine();
    setPasswordFile(other);
    EXPECT_EQ(homeFolder(), home);
    setPasswordFile("hong:x:" + std::string(3'000'000, ' '));
    EXPECT_EQ(homeFolder(), home);
    sigil::environment().passwordFile = folder.path("missing");
    EXPECT_EQ(homeFolder(), home);
}

TEST_F(HomeFolder, LeavesTheEntryThatTheHostHasLookedUpAlone)
{
    const passwd* daemon = getpwnam("daemon");
    ASSERT_NE(daemon, nullptr);
    const std::string home = daemon->pw_dir;
    for (const char* file : {"/etc/passwd", "/nowhere"}) {
        sigil::environment().passwordFile = file;
        homeFolder();
        EXPECT_STREQ(daemon->pw_name, "daemon") << file;
        EXPECT_EQ(daemon->pw_dir, home) << file;
    }
}
