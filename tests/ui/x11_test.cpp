// One run on a real X server, which the program starts itself: keys and clicks come from outside, through the server.

#include "tests/ui/fixture.h"

#include <QGroupBox>
#include <QProcess>

#include <array>
#include <csignal>
#include <cstdlib>
#include <unistd.h>

namespace {

/** A virtual X server; ends with the program. */
class VirtualServer {
public:
    VirtualServer()
    {
        std::array<int, 2> display{};
        if (pipe(display.data()) != 0)
            qFatal("no pipe");
        m_process = fork();
        if (m_process == 0) {
            const std::string fd = std::to_string(display[1]);
            execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
                nullptr);
            _exit(127);
        }
        close(display[1]);
        std::string number;
        for (char c = 0; read(display[0], &c, 1) == 1 && c != '\n';)
            number += c;
        if (number.empty())
            qFatal("Xvfb did not start");
        qputenv("DISPLAY", (":" + number).c_str());
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    ~VirtualServer() { kill(m_process, SIGTERM); }
    VirtualServer(const VirtualServer&) = delete;
    VirtualServer& operator=(const VirtualServer&) = delete;

private:
    pid_t m_process;
};

class X11Test : public SelectionTest {
protected:
    /** Runs xdotool while the dialog handles what comes in. */
    void tool(const QStringList& arguments)
    {
        QProcess process;
        process.start("xdotool", arguments);
        ASSERT_TRUE(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 10000));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        QTest::qWait(50);
    }
    void openFocused(int language)
    {
        open(language);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
        tool({"windowfocus", QString::number(dialog->winId())});
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        widget<QLineEdit>("lineEdit_password").setFocus();
    }
    void clicks(const char* button)
    {
        const QPoint place = widget(button).mapToGlobal(widget(button).rect().center());
        tool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click", "1"});
    }
};

} // namespace

TEST_F(X11Test, ConfirmsWithTypedKeysAndReturn)
{
    openFocused(english);
    tool({"type", "Secret1"});
    EXPECT_EQ(password(), "Secret1");
    tool({"key", "KP_Enter"});
    EXPECT_TRUE(dialog->isVisible()) << "the keypad's Enter does nothing";
    tool({"key", "Return"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->isVisible(); }));
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "CLP_DecryptPriKey 0 Secret1");
}

TEST_F(X11Test, CancelsWithEscapeAndWithTheAltKey)
{
    for (const char* key : {"Escape", "alt+c"}) {
        openFocused(english);
        tool({"key", key});
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->isVisible(); })) << key;
        EXPECT_EQ(dialog->State().acceptedFlag(), 0) << key;
    }
}

TEST_F(X11Test, ListsAgainWithAClickOnTheHardDisk)
{
    openFocused(korean);
    const int before = scripted::processor().countOf("CLP_LoadCertList");
    clicks("pushButton_hdd");
    EXPECT_TRUE(QTest::qWaitFor([&] { return scripted::processor().countOf("CLP_LoadCertList") == before + 1; }));
    clicks("pushButton_cancel");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->isVisible(); }));
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const VirtualServer server;
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
