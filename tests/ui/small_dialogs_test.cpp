// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The password dialog and the chooser of removable disks.

#include "tests/ui/driver.h"
#include "tests/ui/scripted_processor.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include <gtest/gtest.h>

#include <QLabel>

#include <sys/resource.h>

#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

using driver::answerBox;
using driver::Box;
using driver::presses;
using driver::types;

class SmallDialogs : public testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        scripted::processor() = {};
        scripted::processor().drives = {
            scripted::sampleDrive(0, "/media/USB"), scripted::sampleDrive(1, "/media/자료")};
        password.SetCaller(GetParam(), SIGILDESK_LIBRARY_FOLDER);
        password.InitSetControl();
        drives.SetCaller(GetParam(), SIGILDESK_LIBRARY_FOLDER, &scripted::processor());
        drives.InitSetControl();
    }
    QString ui(const char* key) { return driver::ui(GetParam() == 1 ? 1 : 2, key); }
    QString message(const char* key) { return driver::message(GetParam() == 1 ? 1 : 2, key); }

    PasswordDialog password;
    RemoveableDialog drives;
};
INSTANTIATE_TEST_SUITE_P(Languages, SmallDialogs, testing::Values(1, 2, 9));

TEST_P(SmallDialogs, PasswordShowsItsTexts)
{
    EXPECT_EQ(password.windowTitle(), ui("DLG_CERTPASSWORD_CAPITON"));
    EXPECT_EQ(driver::find<QLabel>(password, "label_title").text(), ui("DLG_CERTPASSWORD_INPUT"));
    EXPECT_EQ(driver::find<QLabel>(password, "label_pwd").text(), ui("DLG_STATIC_CERTPASSWORD"));
    EXPECT_EQ(driver::find<QPushButton>(password, "pushButton_ok").text(), ui("DLG_BUTTON_OK"));
    EXPECT_EQ(driver::find<QPushButton>(password, "pushButton_cancel").text(), ui("DLG_BUTTON_CANCEL"));
    EXPECT_EQ(driver::find<QLineEdit>(password, "lineEdit_password").echoMode(), QLineEdit::Password);
}

TEST_P(SmallDialogs, PasswordIsHandedOutAfterOk)
{
    password.show();
    types(password, "lineEdit_password", "Secret");
    presses(password, "pushButton_ok");
    EXPECT_EQ(password.result(), 1);
    EXPECT_STREQ(password.Password(), "Secret");
    EXPECT_EQ(driver::find<QLineEdit>(password, "lineEdit_password").text(), "") << "not left in the field";
}

TEST_P(SmallDialogs, PasswordIsAskedForWhenEmpty)
{
    password.show();
    Box box;
    answerBox(box);
    presses(password, "pushButton_ok");
    EXPECT_EQ(box.text, message("MSG_SELECTCERT_INPUTPASSWORD"));
    EXPECT_EQ(box.caption, ui("DLG_SELCERT_CAPITON"));
    EXPECT_TRUE(password.isVisible());
}

TEST_P(SmallDialogs, PasswordThatIsTooLongIsToldAndNotCut)
{
    password.show();
    auto& field = driver::find<QLineEdit>(password, "lineEdit_password");
    for (const QString& tooLong : {QString(1024, 'p'), QString(512, QChar(0xAC00))}) {
        field.setText(tooLong);
        Box box;
        answerBox(box);
        presses(password, "pushButton_ok");
        EXPECT_EQ(box.text, message("MSG_SELECTCERT_PASSWORD_MAX"));
        EXPECT_EQ(box.caption, ui("DLG_SELCERT_CAPITON"));
        EXPECT_TRUE(password.isVisible());
        EXPECT_STREQ(password.Password(), "");
    }
    field.setText(QString(1023, 'p'));
    presses(password, "pushButton_ok");
    EXPECT_EQ(std::strlen(password.Password()), 1023u);
}

TEST_P(SmallDialogs, PasswordIsNotLeftInTheMemoryOfTheDialog)
{
    const auto memory = std::make_unique<char[]>(sizeof(PasswordDialog));
    auto* inPlace = std::construct_at(reinterpret_cast<PasswordDialog*>(memory.get()));
    const auto holdsIt = [&] {
        return std::string_view(memory.get(), sizeof(PasswordDialog)).find("TopSecret") != std::string_view::npos;
    };
    types(*inPlace, "lineEdit_password", "TopSecret");
    presses(*inPlace, "pushButton_ok");
    EXPECT_TRUE(holdsIt()) << "otherwise this test would not look at the right place";
    std::destroy_at(inPlace);
    EXPECT_FALSE(holdsIt());
}

TEST_P(SmallDialogs, PasswordKnowsTwoKeys)
{
    password.show();
    auto& field = driver::find<QLineEdit>(password, "lineEdit_password");
    types(password, "lineEdit_password", "x");
    QTest::keyClick(&field, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(&field, Qt::Key_F1);
    EXPECT_TRUE(password.isVisible());
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(password.result(), 1);
    password.show();
    types(password, "lineEdit_password", "y");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(password.result(), 0);
    EXPECT_EQ(field.text(), "");
    EXPECT_STREQ(password.Password(), "x");
}

TEST_P(SmallDialogs, AreGivenUpWithReturnOnFocusedCancel)
{
    drives.GetRemovableDisk();
    for (QDialog* dialog : {static_cast<QDialog*>(&password), static_cast<QDialog*>(&drives)}) {
        dialog->show();
        dialog->setResult(-1);
        QTest::keyClick(&driver::find<QPushButton>(*dialog, "pushButton_cancel"), Qt::Key_Return);
        EXPECT_EQ(dialog->result(), 0);
        EXPECT_FALSE(dialog->isVisible());
    }
    EXPECT_STREQ(password.Password(), "");
    EXPECT_STREQ(drives.ChosenDrive(), "");
}

TEST_P(SmallDialogs, DrivesShowTheirTexts)
{
    EXPECT_EQ(drives.windowTitle(), ui("DLG_REMOVABLE_CAPTION"));
    EXPECT_EQ(driver::find<QLabel>(drives, "label_text").text(), ui("DLG_REMOVABLE_TITLE"));
    EXPECT_EQ(driver::find<QPushButton>(drives, "pushButton_ok").text(), ui("DLG_BUTTON_OK"));
    EXPECT_EQ(driver::find<QPushButton>(drives, "pushButton_cancel").text(), ui("DLG_BUTTON_CANCEL"));
}

TEST_P(SmallDialogs, DrivesAreListedInOrder)
{
    ASSERT_EQ(drives.GetRemovableDisk(), 0);
    auto& list = driver::find<QTableView>(drives, "tableView_remobable");
    EXPECT_EQ(list.model()->headerData(0, Qt::Horizontal).toString(), ui("DLG_REMOVABLE_LIST"));
    EXPECT_EQ(list.model()->columnCount(), 1);
    ASSERT_EQ(list.model()->rowCount(), 2);
    EXPECT_EQ(driver::cell(drives, "tableView_remobable", 0, 0), "/USB (/media/USB)");
    EXPECT_EQ(driver::cell(drives, "tableView_remobable", 1, 0), QStringLiteral("/자료 (/media/자료)"));
    EXPECT_EQ(list.font().pointSize(), 8);
    EXPECT_EQ(list.columnWidth(0), 284);
    EXPECT_EQ(list.selectionBehavior(), QAbstractItemView::SelectRows);
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(list.editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST_P(SmallDialogs, DrivesThatCannotBeListedGive1111)
{
    scripted::processor().results = {{"CLP_GetRemDriveCount", 1001}};
    EXPECT_EQ(drives.GetRemovableDisk(), 1111);
    scripted::processor().results = {{"CLP_GetRemDrive", 1001}};
    EXPECT_EQ(drives.GetRemovableDisk(), 1111);
    scripted::processor().results.clear();
    scripted::processor().driveCount = 0;
    EXPECT_EQ(drives.GetRemovableDisk(), 1111);
    EXPECT_EQ(drives.LastResult(), 1111);
}

TEST_P(SmallDialogs, DrivesMountedSinceTheCountAreNotListed)
{
    scripted::processor().drives.resize(12, scripted::sampleDrive(2, "/media/NEW"));
    scripted::processor().driveCount = 2;
    EXPECT_EQ(drives.GetRemovableDisk(), 0);
    EXPECT_EQ(driver::find<QTableView>(drives, "tableView_remobable").model()->rowCount(), 2);
}

// The sanitizer ends the program when memory runs out, before anybody can handle it.
#ifndef __SANITIZE_ADDRESS__
TEST_P(SmallDialogs, DrivesThatNoMemoryIsLeftForGive1000)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
    rlimit little = before;
    little.rlim_cur = rlim_t{8} << 30; // bytes: plenty for the test, nothing for 2^31 drives
    ASSERT_EQ(setrlimit(RLIMIT_AS, &little), 0);
    scripted::processor().driveCount = std::numeric_limits<int>::max();
    EXPECT_EQ(drives.GetRemovableDisk(), 1000);
    setrlimit(RLIMIT_AS, &before);
    EXPECT_EQ(drives.LastResult(), 1000);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_GetRemDrive"), "") << "there is no room to fill";
}
#endif

TEST_P(SmallDialogs, DriveIsChosenWithOkAndByADoubleClick)
{
    drives.GetRemovableDisk();
    drives.show();
    driver::clicksRow(drives, "tableView_remobable", 0);
    presses(drives, "pushButton_ok");
    EXPECT_EQ(drives.result(), 1);
    EXPECT_STREQ(drives.ChosenDrive(), "/media/USB");
    drives.setResult(0);
    drives.show();
    driver::doubleClicksRow(drives, "tableView_remobable", 1);
    EXPECT_EQ(drives.result(), 1);
    EXPECT_EQ(std::string(drives.ChosenDrive()), scripted::eucKr("/media/자료"));
}

TEST_P(SmallDialogs, DrivePathIsCutTo259Characters)
{
    std::memset(scripted::processor().drives[0].szMountDir, 'd', 260);
    drives.GetRemovableDisk();
    drives.show();
    driver::clicksRow(drives, "tableView_remobable", 0);
    presses(drives, "pushButton_ok");
    EXPECT_EQ(std::strlen(drives.ChosenDrive()), 259u);
}

TEST_P(SmallDialogs, DriveIsAskedForWhenNoneIsSelected)
{
    drives.GetRemovableDisk();
    drives.show();
    EXPECT_EQ(drives.BoxResult(), 0);
    Box box;
    answerBox(box);
    presses(drives, "pushButton_ok");
    EXPECT_EQ(box.text, ui("DLG_REMOVABLE_TITLE"));
    EXPECT_EQ(box.caption, ui("DLG_REMOVABLE_CAPTION"));
    EXPECT_EQ(drives.BoxResult(), QMessageBox::Ok);
    EXPECT_TRUE(drives.isVisible());
}

TEST_P(SmallDialogs, DrivesKnowTwoKeys)
{
    drives.GetRemovableDisk();
    drives.show();
    driver::clicksRow(drives, "tableView_remobable", 0);
    QTest::keyClick(&drives, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_TRUE(drives.isVisible());
    QTest::keyClick(&drives, Qt::Key_Return);
    EXPECT_EQ(drives.result(), 1);
    drives.show();
    QTest::keyClick(&drives, Qt::Key_Escape);
    EXPECT_EQ(drives.result(), 0);
    presses(drives, "pushButton_cancel");
    EXPECT_FALSE(drives.isVisible());
}
