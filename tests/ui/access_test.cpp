// Keyboard and assistive use.

#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/language_texts.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include <QAccessible>
#include <QListView>
#include <QTabWidget>
#include <QTextEdit>

namespace {

/** Every control that a user acts on or reads has a name. */
void expectNames(QWidget& dialog)
{
    int controls = 0;
    for (QWidget* widget : dialog.findChildren<QWidget*>(
             QRegularExpression("^(pushButton|lineEdit|tableView|listView|textEdit|tabWidget)"))) {
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(face) << qPrintable(widget->objectName());
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty()) << qPrintable(widget->objectName());
        ++controls;
    }
    EXPECT_GT(controls, 2);
}

/** Names of the controls in the order of the Tab key, from @p first on. */
QStringList tabOrder(QWidget& first)
{
    QStringList order;
    QWidget* widget = &first;
    do {
        if (widget->focusPolicy() & Qt::TabFocus && !widget->objectName().startsWith("qt_") &&
            widget->objectName() != "")
            order << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != &first);
    return order;
}

} // namespace

TEST_P(SelectionInBothLanguages, NamesEveryControl)
{
    open(GetParam());
    expectNames(*dialog);
    PasswordDialog password;
    password.SetCaller(GetParam(), SIGILDESK_LIBRARY_FOLDER);
    password.InitSetControl();
    expectNames(password);
    RemoveableDialog drives;
    drives.SetCaller(GetParam(), SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    expectNames(drives);
    tagCERTINFO entry = scripted::sampleEntry("x");
    CertViewMainDialog viewer;
    viewer.SetCertificate(sigil::languageFile(SIGILDESK_LIBRARY_FOLDER, GetParam()).c_str(), nullptr, &entry);
    viewer.InitSetControl();
    expectNames(viewer);
}

TEST_P(SelectionInBothLanguages, GivesEachPushButtonItsOwnAltKey)
{
    open(GetParam());
    QSet<QString> keys;
    for (const char* name : {"pushButton_ok", "pushButton_cancel", "pushButton_view", "pushButton_find"}) {
        const QKeySequence key = QKeySequence::mnemonic(widget(name).text());
        EXPECT_FALSE(key.isEmpty()) << name;
        keys << key.toString();
    }
    EXPECT_EQ(keys.size(), 4);
}

TEST_F(SelectionTest, IsWalkedThroughInReadingOrder)
{
    open();
    EXPECT_EQ(tabOrder(widget("pushButton_hdd")),
        QStringList({"pushButton_hdd", "pushButton_remove", "pushButton_smcert", "pushButton_token",
            "pushButton_smcard", "pushButton_phone", "tableView_certlist", "pushButton_find", "lineEdit_password",
            "pushButton_ok", "pushButton_cancel", "pushButton_view"}));
}

TEST_F(SelectionTest, BeginsInThePasswordField)
{
    open();
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    EXPECT_EQ(dialog->focusWidget()->objectName(), "lineEdit_password");
}

TEST_F(SelectionTest, LeavesTheListWithTheTabKey)
{
    open();
    EXPECT_FALSE(widget<QTableView>("tableView_certlist").tabKeyNavigation());
}
