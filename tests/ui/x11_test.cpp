// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// One run on a real X server, which the program starts itself: keys and clicks come from outside, through the server.

#include "tests/ui/background.h"
#include "tests/ui/fixture.h"

#include <QGroupBox>
#include <QProcess>

#include <functional>

namespace {

class X11Test : public SelectionTest {
protected:
    /** Runs xdotool while the dialog handles what comes in. */
    void tool(const QStringList& arguments)
    {
        QProcess process;
        process.start("xdotool", arguments);
        waitFor([&] { return process.state() == QProcess::NotRunning; });
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    }
    /** What a tool sends is on its way when the tool has ended. */
    static void waitFor(const std::function<bool()>& event)
    {
        ASSERT_TRUE(QTest::qWaitFor(event, driver::patience));
    }
    void waitForPassword(const char* typed)
    {
        waitFor([&] { return password() == typed; });
    }
    void waitForEnd()
    {
        waitFor([&] { return !dialog->isVisible(); });
    }
    void openFocused(int language)
    {
        open(language);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get(), driver::patience));
        tool({"windowfocus", QString::number(dialog->winId())});
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get(), driver::patience));
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
    waitForPassword("Secret1");
    tool({"key", "KP_Enter", "2"});
    waitForPassword("Secret12");
    EXPECT_TRUE(dialog->isVisible()) << "the keypad's Enter does nothing";
    tool({"key", "Return"});
    waitForEnd();
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "CLP_DecryptPriKey 0 Secret12");
}

TEST_F(X11Test, CancelsWithEscapeAndWithTheAltKey)
{
    for (const char* key : {"Escape", "alt+c"}) {
        openFocused(english);
        tool({"key", key});
        SCOPED_TRACE(key);
        waitForEnd();
        EXPECT_EQ(dialog->State().acceptedFlag(), 0) << key;
    }
}

TEST_F(X11Test, ListsAgainWithAClickOnTheHardDisk)
{
    openFocused(korean);
    const int before = scripted::processor().countOf("CLP_LoadCertList");
    clicks("pushButton_hdd");
    waitFor([&] { return scripted::processor().countOf("CLP_LoadCertList") == before + 1; });
    clicks("pushButton_cancel");
    waitForEnd();
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const Background server(virtualServer());
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
