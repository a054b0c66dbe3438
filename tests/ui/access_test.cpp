// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

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

/** Every control that a user acts on or reads has a name of its own, which is not the window's. */
void expectNames(QWidget& dialog)
{
    QStringList names = {dialog.windowTitle()};
    for (QWidget* widget : dialog.findChildren<QWidget*>(QRegularExpression(
             "^(pushButton|lineEdit|tableView|listView|textEdit|tabWidget|label_logo|label_certimage)"))) {
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(face) << qPrintable(widget->objectName());
        const QString name = face->text(QAccessible::Name);
        EXPECT_FALSE(name.isEmpty()) << qPrintable(widget->objectName());
        EXPECT_FALSE(names.contains(name)) << qPrintable(widget->objectName());
        names << name;
    }
    EXPECT_GT(names.size(), 3);
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

/** Return presses the button that has the focus, once and no other one; the keypad's Enter presses none. */
void expectReturnPresses(QWidget& dialog, const char* name)
{
    QString pressed;
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        button->disconnect(&dialog); // what the press does is not looked at here
        QObject::connect(
            button, &QPushButton::clicked, &dialog, [&pressed, button] { pressed += button->objectName(); });
    }
    auto& button = driver::find<QPushButton>(dialog, name);
    QTest::keyClick(&button, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(pressed, "") << name;
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(pressed, name);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QCoreApplication::sendEvent(&button, &held);
    EXPECT_EQ(pressed, name) << "a key that is held presses once";
    for (QPushButton* each : dialog.findChildren<QPushButton*>())
        each->disconnect(&dialog);
}

} // namespace

TEST_F(SelectionTest, PressesTheFocusedButtonWithReturn)
{
    open();
    for (const char* name : {"pushButton_hdd", "pushButton_remove", "pushButton_find", "pushButton_ok",
             "pushButton_cancel", "pushButton_view"})
        expectReturnPresses(*dialog, name);
    PasswordDialog password;
    RemoveableDialog drives;
    for (QWidget* chooser : {static_cast<QWidget*>(&password), static_cast<QWidget*>(&drives)})
        for (const char* name : {"pushButton_ok", "pushButton_cancel"})
            expectReturnPresses(*chooser, name);
    CertViewMainDialog viewer;
    for (const char* name : {"pushButton_verify", "pushButton_ok"})
        expectReturnPresses(viewer, name);
}

TEST_F(SelectionTest, MarksNoButtonAsWhatReturnDoesUnlessItIs)
{
    open();
    for (QPushButton* button : dialog->findChildren<QPushButton*>())
        EXPECT_FALSE(button->isVisible() && button->isDefault()) << qPrintable(button->objectName());
    CertViewMainDialog viewer;
    viewer.show();
    EXPECT_TRUE(driver::find<QPushButton>(viewer, "pushButton_ok").isDefault());
    EXPECT_FALSE(driver::find<QPushButton>(viewer, "pushButton_verify").isDefault());
}

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
    viewer.SetCertificate(driver::texts(GetParam()), nullptr, &entry);
    viewer.InitSetControl();
    expectNames(viewer);
}

TEST_P(SelectionInBothLanguages, BindsTheValuesOfTheViewerToTheirCaptions)
{
    tagCERTINFO entry = scripted::sampleEntry("x");
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(GetParam()), nullptr, &entry);
    viewer.InitSetControl();
    const std::pair<const char*, const char*> bound[] = {{"label_subject", "label_subjecttitle"},
        {"label_issuer", "label_issuertitle"}, {"label_validity", "label_validitytitle"},
        {"label_usage", "label_usagetitle"}, {"label_status", "label_statustitle"}};
    for (const auto& [value, caption] : bound) {
        auto* face = QAccessible::queryAccessibleInterface(&driver::find<QWidget>(viewer, value));
        const auto relations = face->relations(QAccessible::Label);
        ASSERT_EQ(relations.size(), 1) << value;
        EXPECT_EQ(relations[0].first->object()->objectName(), caption);
    }
}

TEST_P(SelectionInBothLanguages, DescribesTheStatusLineByWhatItSays)
{
    open(GetParam());
    scripted::processor().results["CLP_LoadCertList"] = 1115;
    driver::presses(*dialog, "pushButton_hdd");
    EXPECT_EQ(widget<QLineEdit>("lineEdit_msg").accessibleDescription(),
        driver::message(GetParam(), "MSG_SELECTCERT_NOCERT"));
}

TEST_P(SelectionInBothLanguages, SaysThePictureOfTheViewerInWords)
{
    tagCERTINFO entry = scripted::sampleEntry("x", 4);
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(GetParam()), &scripted::processor(), &entry);
    viewer.InitSetControl();
    const auto words = [&] { return driver::find<QWidget>(viewer, "label_certimage").accessibleName(); };
    EXPECT_EQ(words(), driver::ui(GetParam(), "DLG_CERVIEWNORAL_CERTRENEWAL"));
    driver::presses(viewer, "pushButton_verify");
    EXPECT_EQ(words(), driver::ui(GetParam(), "DLG_CERVIEWNORAL_CERTVALID"));
    EXPECT_EQ(driver::find<QWidget>(viewer, "label_status").accessibleDescription(), words());
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
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get(), driver::patience));
    EXPECT_EQ(dialog->focusWidget()->objectName(), "lineEdit_password");
}

TEST_F(SelectionTest, LeavesTheListWithTheTabKey)
{
    open();
    EXPECT_FALSE(widget<QTableView>("tableView_certlist").tabKeyNavigation());
}
