// One run on a real X server, which the program starts itself: keys and clicks come from outside, through the server.

#include "tests/ui/background.h"
#include "tests/ui/fixture.h"

#include <QGroupBox>
#include <QProcess>

namespace {

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
    const Background server(virtualServer());
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
