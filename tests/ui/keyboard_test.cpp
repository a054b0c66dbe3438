// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Where the keyboard is and goes.

#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/language_texts.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include <QLabel>

using driver::answerBox;
using driver::Box;
using driver::presses;
using driver::types;
using driver::whenShown;

namespace {

/** Every Alt key of a dialog is there once. */
void expectOwnAltKeys(QWidget& dialog)
{
    QStringList keys;
    for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
        keys << QKeySequence::mnemonic(button->text()).toString();
    for (QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy())
            keys << QKeySequence::mnemonic(label->text()).toString();
    keys.removeAll(QString());
    EXPECT_GT(keys.size(), 1);
    EXPECT_EQ(keys.removeDuplicates(), 0) << qPrintable(keys.join(' '));
}

class KeyboardTest : public SelectionTest {
protected:
    QLineEdit& field() { return widget<QLineEdit>("lineEdit_password"); }
    /** The field has the keyboard, and typing replaces what it holds. */
    void expectNextTry(const char* after)
    {
        EXPECT_EQ(dialog->focusWidget(), &field()) << after;
        EXPECT_EQ(field().selectedText().size(), field().text().size()) << after;
    }
};

} // namespace

TEST_P(SelectionInBothLanguages, GivesEveryAltKeyOnce)
{
    expectOwnAltKeys(open(GetParam()));
    PasswordDialog password;
    password.SetCaller(GetParam(), SIGILDESK_LIBRARY_FOLDER);
    password.InitSetControl();
    expectOwnAltKeys(password);
    RemoveableDialog drives;
    drives.SetCaller(GetParam(), SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    expectOwnAltKeys(drives);
    tagCERTINFO entry = scripted::sampleEntry("x");
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(GetParam()), nullptr, &entry);
    viewer.InitSetControl();
    expectOwnAltKeys(viewer);
}

TEST_F(KeyboardTest, ReachesThePagesOfTheViewerBeforeItsButtons)
{
    CertViewMainDialog viewer;
    QStringList order;
    auto& tabs = driver::find<QWidget>(viewer, "tabWidget");
    for (QWidget* each = tabs.nextInFocusChain(); each != &tabs; each = each->nextInFocusChain())
        if ((each->focusPolicy() & Qt::TabFocus) &&
            !QRegularExpression("^(qt_|Scroll)").match(each->objectName()).hasMatch() && each->objectName() != "")
            order << each->objectName();
    EXPECT_EQ(order,
        QStringList(
            {"listView", "tableView_certinfolist", "textEdit_certinfo", "pushButton_verify", "pushButton_ok"}));
}

TEST_F(KeyboardTest, IsInThePasswordFieldAfterAClickOnARow)
{
    open();
    types(*dialog, "lineEdit_password", "x");
    driver::clicksRow(*dialog, "tableView_certlist", 1);
    expectNextTry("a click on a row");
    load.nSelectFlags = SIGIL_SELECT_LOCK_EXPIRED;
    open();
    driver::clicksRow(*dialog, "tableView_certlist", 2);
    EXPECT_NE(dialog->focusWidget(), &field()) << "a locked field takes no key";
}

TEST_F(KeyboardTest, ReturnsToThePasswordFieldAfterABoxAboutThePassword)
{
    scripted::processor().results["CLP_DecryptPriKey"] = 1113;
    open();
    types(*dialog, "lineEdit_password", "wrong");
    widget("pushButton_ok").setFocus();
    Box box;
    answerBox(box);
    presses(*dialog, "pushButton_ok");
    ASSERT_TRUE(box.shown);
    expectNextTry("a wrong password");
    EXPECT_EQ(field().selectedText().size(), 5);
}

TEST_F(KeyboardTest, ReturnsToThePasswordFieldAfterAMediumWasChosen)
{
    open();
    widget("pushButton_remove").setFocus();
    whenShown([](QDialog& chooser) {
        driver::clicksRow(chooser, "tableView_remobable", 1);
        presses(chooser, "pushButton_ok");
    });
    presses(*dialog, "pushButton_remove");
    expectNextTry("a removable disk");
    widget("pushButton_hdd").setFocus();
    presses(*dialog, "pushButton_hdd");
    expectNextTry("the hard disk");
}

TEST_F(KeyboardTest, ReturnsToThePasswordFieldAfterAnImport)
{
    scripted::processor().importCert = scripted::processor().importKey = "bytes";
    open();
    QTemporaryDir folder;
    QFile file(folder.filePath("mine.p12"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    widget("pushButton_find").setFocus();
    whenShown([&](QDialog& chooser) {
        driver::find<QLineEdit>(chooser, "fileNameEdit").setText(file.fileName());
        whenShown([](QDialog& asking) {
            types(asking, "lineEdit_password", "x");
            presses(asking, "pushButton_ok");
        });
        QMetaObject::invokeMethod(&chooser, "accept");
    });
    presses(*dialog, "pushButton_find");
    expectNextTry("an import");
}

TEST_F(KeyboardTest, ReturnsToTheFieldOfThePasswordDialogAfterABox)
{
    PasswordDialog asking;
    asking.show();
    auto& typed = driver::find<QLineEdit>(asking, "lineEdit_password");
    typed.setText(QString(1024, 'p'));
    driver::find<QPushButton>(asking, "pushButton_ok").setFocus();
    Box box;
    answerBox(box);
    presses(asking, "pushButton_ok");
    EXPECT_EQ(asking.focusWidget(), &typed);
    EXPECT_EQ(typed.selectedText().size(), 1024);
}

TEST_F(KeyboardTest, ReachesTheDrivesWithAnArrowKey)
{
    RemoveableDialog drives;
    drives.SetCaller(korean, SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    drives.GetRemovableDisk();
    drives.show();
    drives.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&drives, driver::patience));
    auto& list = driver::find<QTableView>(drives, "tableView_remobable");
    EXPECT_FALSE(list.selectionModel()->hasSelection());
    QWidget* const label = drives.focusWidget();
    QTest::keyClick(label, Qt::Key_F1);
    EXPECT_EQ(drives.focusWidget(), label) << "no arrow";
    QTest::keyClick(label, Qt::Key_Up);
    EXPECT_EQ(drives.focusWidget(), &list);
    EXPECT_TRUE(list.selectionModel()->isRowSelected(0, {}));
    list.clearSelection();
    label->setFocus();
    QTest::keyClick(label, Qt::Key_Down);
    EXPECT_EQ(drives.focusWidget(), &list);
    EXPECT_TRUE(list.selectionModel()->isRowSelected(0, {}));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_STREQ(drives.ChosenDrive(), "/media/DATA");
}

TEST_F(KeyboardTest, SelectsADriveWheneverAKeyLeadsToTheDrives)
{
    RemoveableDialog drives;
    drives.SetCaller(korean, SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    drives.GetRemovableDisk();
    drives.show();
    auto& list = driver::find<QTableView>(drives, "tableView_remobable");
    for (const auto& [reason, selects] : {std::pair{Qt::TabFocusReason, true}, {Qt::BacktabFocusReason, true},
             {Qt::ShortcutFocusReason, true}, {Qt::MouseFocusReason, false}}) {
        list.clearSelection();
        QFocusEvent event(QEvent::FocusIn, reason);
        QApplication::sendEvent(&list, &event);
        EXPECT_EQ(list.selectionModel()->isRowSelected(0, {}), selects) << reason;
    }
}

TEST_F(KeyboardTest, TellsThatCapsLockIsOn)
{
    open(english);
    const QString before = status();
    const QString hint = driver::message(english, "MSG_SELECTCERT_CAPSLOCK");
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers, const char* text) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(&field(), &event);
    };
    press(Qt::Key_A, Qt::NoModifier, "A");
    EXPECT_EQ(status(), hint);
    press(Qt::Key_1, Qt::NoModifier, "1");
    EXPECT_EQ(status(), hint) << "a digit says nothing";
    press(Qt::Key_A, Qt::NoModifier, "a");
    EXPECT_EQ(status(), before);
    press(Qt::Key_A, Qt::ShiftModifier, "A");
    EXPECT_EQ(status(), before);
    press(Qt::Key_A, Qt::ShiftModifier, "a");
    EXPECT_EQ(status(), hint);
    press(Qt::Key_CapsLock, Qt::NoModifier, "");
    EXPECT_EQ(status(), before);
    press(Qt::Key_A, Qt::NoModifier, "A");
    presses(*dialog, "pushButton_hdd");
    EXPECT_EQ(status(), before);
}

TEST_F(KeyboardTest, TellsThatCapsLockIsOnInThePasswordDialog)
{
    PasswordDialog asking;
    asking.SetCaller(english, SIGILDESK_LIBRARY_FOLDER);
    asking.InitSetControl();
    auto& title = driver::find<QLabel>(asking, "label_title");
    QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "A");
    QCoreApplication::sendEvent(&driver::find<QLineEdit>(asking, "lineEdit_password"), &event);
    EXPECT_EQ(title.text(), driver::message(english, "MSG_SELECTCERT_CAPSLOCK"));
    types(asking, "lineEdit_password", "a");
    EXPECT_EQ(title.text(), driver::ui(english, "DLG_CERTPASSWORD_INPUT"));
}
