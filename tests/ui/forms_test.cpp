// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The forms as they are before any language is set: names, classes, places and built-in texts.

#include "tests/ui/driver.h"
#include "ui/cert_view_detail_form.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/cert_view_normal_form.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"
#include "ui/select_cert_dialog.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLabel>
#include <QListView>
#include <QTabWidget>
#include <QTextEdit>

namespace {

struct Placed {
    const char* name;
    const char* className;
    QRect place;
};

const Placed selectionWidgets[] = {
    {"groupBox", "QGroupBox", {10, 90, 371, 96}},
    {"pushButton_hdd", "QPushButton", {4, 24, 58, 68}},
    {"pushButton_remove", "QPushButton", {64, 24, 58, 68}},
    {"pushButton_smcert", "QPushButton", {124, 24, 58, 68}},
    {"pushButton_token", "QPushButton", {184, 24, 58, 68}},
    {"pushButton_smcard", "QPushButton", {244, 24, 58, 68}},
    {"pushButton_phone", "QPushButton", {304, 24, 58, 68}},
    {"tableView_certlist", "QTableView", {10, 190, 371, 148}},
    {"label_find", "QLabel", {10, 340, 281, 31}},
    {"pushButton_find", "QPushButton", {300, 342, 81, 26}},
    {"label_pwd", "QLabel", {10, 370, 91, 21}},
    {"lineEdit_password", "QLineEdit", {100, 372, 281, 21}},
    {"lineEdit_msg", "QLineEdit", {10, 396, 371, 21}},
    {"pushButton_ok", "QPushButton", {10, 420, 122, 34}},
    {"pushButton_cancel", "QPushButton", {136, 420, 122, 34}},
    {"pushButton_view", "QPushButton", {260, 420, 120, 34}},
    {"label_logo", "QLabel", {10, 10, 371, 81}},
};

const char* const mediaButtons[] = {"pushButton_hdd", "pushButton_remove", "pushButton_smcert", "pushButton_token",
    "pushButton_smcard", "pushButton_phone"};

void expectFixed(const QWidget& widget, int width, int height)
{
    EXPECT_EQ(widget.minimumSize(), QSize(width, height));
    EXPECT_EQ(widget.maximumSize(), QSize(width, height));
}

QString labelText(QWidget& dialog, const char* name) { return driver::find<QLabel>(dialog, name).text(); }
QString buttonText(QWidget& dialog, const char* name) { return driver::find<QPushButton>(dialog, name).text(); }

} // namespace

TEST(SelectionForm, HasItsWidgetsInTheirPlaces)
{
    SelectCertDialog dialog;
    expectFixed(dialog, 391, 460);
    for (const Placed& placed : selectionWidgets) {
        auto& widget = driver::find<QWidget>(dialog, placed.name);
        EXPECT_STREQ(widget.metaObject()->className(), placed.className) << placed.name;
        EXPECT_EQ(widget.geometry(), placed.place) << placed.name;
    }
    for (const char* button : mediaButtons)
        EXPECT_EQ(driver::find<QWidget>(dialog, button).parentWidget()->objectName(), "groupBox") << button;
}

TEST(SelectionForm, HasItsProperties)
{
    SelectCertDialog dialog;
    EXPECT_EQ(driver::find<QGroupBox>(dialog, "groupBox").font().pointSize(), 9);
    EXPECT_FALSE(driver::find<QGroupBox>(dialog, "groupBox").isFlat());
    auto& password = driver::find<QLineEdit>(dialog, "lineEdit_password");
    EXPECT_EQ(password.maxLength(), 1024);
    EXPECT_EQ(password.echoMode(), QLineEdit::Password);
    expectFixed(password, 281, 21);
    auto& status = driver::find<QLineEdit>(dialog, "lineEdit_msg");
    EXPECT_FALSE(status.hasFrame());
    EXPECT_TRUE(status.isReadOnly());
    EXPECT_FALSE(driver::find<QPushButton>(dialog, "pushButton_ok").autoDefault());
    for (const char* button : {"pushButton_find", "pushButton_cancel", "pushButton_view"})
        EXPECT_TRUE(driver::find<QPushButton>(dialog, button).autoDefault()) << button;
    EXPECT_FALSE(driver::find<QPushButton>(dialog, "pushButton_ok").isDefault());
    for (const char* button : mediaButtons) {
        EXPECT_FALSE(driver::find<QPushButton>(dialog, button).autoDefault()) << button;
        EXPECT_EQ(buttonText(dialog, button), "") << button;
    }
}

TEST(SelectionForm, HasItsBuiltInTexts)
{
    SelectCertDialog dialog;
    EXPECT_EQ(dialog.windowTitle(), "Dialog");
    EXPECT_EQ(driver::find<QGroupBox>(dialog, "groupBox").title(), QStringLiteral("저장매체 선택"));
    EXPECT_EQ(labelText(dialog, "label_find"), QStringLiteral("인증서가 없을 경우 '찾아보기'버튼을 이용하십시오."));
    EXPECT_EQ(buttonText(dialog, "pushButton_find"), QStringLiteral("찾아보기"));
    EXPECT_EQ(labelText(dialog, "label_pwd"), QStringLiteral("인증서 비밀번호"));
    EXPECT_EQ(buttonText(dialog, "pushButton_cancel"), "cancel");
    EXPECT_EQ(buttonText(dialog, "pushButton_view"), "view");
    EXPECT_EQ(labelText(dialog, "label_logo"), "IMAGE");
}

TEST(PasswordForm, IsAsDesigned)
{
    PasswordDialog dialog;
    expectFixed(dialog, 400, 110);
    EXPECT_EQ(dialog.font().pointSize(), 9);
    EXPECT_EQ(dialog.windowTitle(), "Dialog");
    EXPECT_EQ(labelText(dialog, "label_title"), QStringLiteral("비밀번호 입력"));
    EXPECT_EQ(labelText(dialog, "label_pwd"), QStringLiteral("비밀번호"));
    EXPECT_EQ(buttonText(dialog, "pushButton_ok"), "OK");
    EXPECT_EQ(buttonText(dialog, "pushButton_cancel"), "Cancel");
    EXPECT_STREQ(dialog.Password(), "");
}

TEST(RemovableForm, IsAsDesigned)
{
    RemoveableDialog dialog;
    expectFixed(dialog, 322, 219);
    EXPECT_EQ(dialog.font().pointSize(), 9);
    EXPECT_EQ(dialog.font().family(), ".Helvetica Neue DeskInterface");
    EXPECT_EQ(dialog.windowTitle(), "Dialog");
    EXPECT_EQ(labelText(dialog, "label_text"), QStringLiteral("이동식 디스크 목록"));
    EXPECT_EQ(buttonText(dialog, "pushButton_ok"), "ok");
    EXPECT_EQ(buttonText(dialog, "pushButton_cancel"), "cancel");
    driver::find<QTableView>(dialog, "tableView_remobable");
    EXPECT_STREQ(dialog.ChosenDrive(), "");
    EXPECT_EQ(dialog.LastResult(), 0);
}

TEST(RemovableForm, GivesTheFocusToItsText)
{
    RemoveableDialog dialog;
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, driver::patience));
    EXPECT_EQ(dialog.focusWidget()->objectName(), "label_text");
}

TEST(ViewerForm, IsAsDesigned)
{
    CertViewMainDialog dialog;
    expectFixed(dialog, 350, 408);
    EXPECT_EQ(dialog.font().pointSize(), 9);
    EXPECT_EQ(dialog.windowTitle(), "Dialog");
    auto& tabs = driver::find<QTabWidget>(dialog, "tabWidget");
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.widget(0)->objectName(), "tab_normal");
    EXPECT_EQ(tabs.widget(1)->objectName(), "tab_detail");
    EXPECT_EQ(tabs.tabText(0), "Tab 1");
    EXPECT_EQ(tabs.tabText(1), "Tab 2");
    EXPECT_EQ(buttonText(dialog, "pushButton_verify"), "veify");
    driver::find<QPushButton>(dialog, "pushButton_ok");
    EXPECT_EQ(dialog.LastResult(), 0);
}

TEST(SummaryForm, IsAsDesigned)
{
    CertViewNormalForm form;
    expectFixed(form, 330, 325);
    EXPECT_EQ(form.font().pointSize(), 9);
    EXPECT_EQ(labelText(form, "label_infotitle"), QStringLiteral("인증서 정보"));
    EXPECT_EQ(labelText(form, "label_certusagetitle"), QStringLiteral("인증서 용도"));
    EXPECT_EQ(labelText(form, "label_explain"), QStringLiteral("* 자세한 정보는 인증기관의 설명을 참조하십시오."));
    for (const char* label : {"label_usagetitle", "label_subjecttitle", "label_issuertitle", "label_validitytitle",
             "label_statustitle", "label_subject", "label_issuer", "label_validity", "label_usage", "label_status"})
        EXPECT_EQ(labelText(form, label), "TextLabel") << label;
    driver::find<QLabel>(form, "label_certimage");
    EXPECT_EQ(driver::find<QListView>(form, "listView").editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST(DetailForm, IsAsDesigned)
{
    CertViewDetailForm form;
    expectFixed(form, 330, 327);
    EXPECT_EQ(form.font().pointSize(), 9);
    driver::find<QTableView>(form, "tableView_certinfolist");
    EXPECT_TRUE(driver::find<QTextEdit>(form, "textEdit_certinfo").isReadOnly());
}
