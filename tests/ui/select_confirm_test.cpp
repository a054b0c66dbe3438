// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The selection dialog: password, keys, keyboard, viewer button.

#include "tests/ui/fixture.h"

#include <QClipboard>
#include <QLabel>

#include <cstring>
#include <memory>
#include <string_view>

using driver::answerBox;
using driver::Box;
using driver::presses;
using driver::types;
using driver::whenShown;

class ConfirmTest : public SelectionTest {
protected:
    /** Presses OK and returns the box that was shown. */
    Box confirm(const char* button = "pushButton_ok")
    {
        Box box;
        answerBox(box);
        presses(*dialog, button);
        return box;
    }
    void expectBox(const char* key)
    {
        const Box box = confirm();
        EXPECT_EQ(box.text, driver::message(korean, key));
        EXPECT_FALSE(box.text.isEmpty());
        EXPECT_EQ(box.caption, driver::ui(korean, "DLG_SELCERT_CAPITON"));
        EXPECT_EQ(box.icon, QMessageBox::Information);
        EXPECT_EQ(box.buttons, 1);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_NE(dialog->State().acceptedFlag(), 1);
    }
    std::unique_ptr<tagSELCERTINFO> result()
    {
        auto record = std::make_unique<tagSELCERTINFO>();
        std::memset(record.get(), 0xEE, sizeof *record);
        dialog->GetSelectCertinfo(record.get());
        return record;
    }
};

TEST_F(ConfirmTest, HandsOutTheCertificateWithItsKeys)
{
    open();
    driver::clicksRow(*dialog, "tableView_certlist", 1);
    types(*dialog, "lineEdit_password", "Secret1!");
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(dialog->result(), 1);
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(password(), "");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "CLP_DecryptPriKey 1 Secret1!");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_GetPriKeyRandom"), "CLP_GetPriKeyRandom 1 Secret1!");
    const auto out = result();
    EXPECT_EQ(out->nMediaType, 1u);
    EXPECT_STREQ(out->szSubjectDN, "cn=김하늘,ou=개인,o=예제,c=KR");
    EXPECT_EQ(bytes(out->bySignPriKey, out->nSignPriKeyLen), "sign key");
    EXPECT_EQ(bytes(out->byKmPriKey, out->nKmPriKeyLen), "km key");
    EXPECT_EQ(bytes(out->byRandom, out->nRandomLen), std::string("ran\0dom", 7)) << "whole, with its zero byte";
    EXPECT_EQ(out->byEncKmPriKey[100], 0) << "the caller's record was zero-filled";
}

TEST_F(ConfirmTest, TakesNoKeyManagementKeyWhenThereIsNone)
{
    scripted::processor().kmKey.clear();
    scripted::processor().random.clear();
    open();
    types(*dialog, "lineEdit_password", "x");
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(result()->nKmPriKeyLen, 0);
    EXPECT_EQ(result()->nRandomLen, 0);
}

TEST_F(ConfirmTest, ForgetsTheKeysWhenTold)
{
    open();
    types(*dialog, "lineEdit_password", "x");
    presses(*dialog, "pushButton_ok");
    dialog->State().forgetKeys();
    EXPECT_EQ(result()->nSignPriKeyLen, 0);
    EXPECT_EQ(result()->bySignPriKey[0], 0);
}

TEST_F(ConfirmTest, LeavesNoSecretInTheMemoryOfTheDialog)
{
    const auto memory = std::make_unique<char[]>(sizeof(SelectCertDialog));
    auto* inPlace = std::construct_at(reinterpret_cast<SelectCertDialog*>(memory.get()));
    const auto holds = [&](std::string_view secret) {
        return std::string_view(memory.get(), sizeof(SelectCertDialog)).find(secret) != std::string_view::npos;
    };
    load.byMemoryCert = 1;
    load.nMemorySignPriKeyLen = 10;
    std::memcpy(load.byMemorySignPriKey, "memory key", 10);
    tagINITOPT init = initOptions();
    inPlace->SetInitOption(&init, &load, nullptr);
    inPlace->InitSetControl();
    inPlace->Initalize();
    inPlace->SetInitMediaCert(1);
    types(*inPlace, "lineEdit_password", "x");
    presses(*inPlace, "pushButton_ok");
    EXPECT_TRUE(holds("memory key")) << "otherwise this test would not look at the right place";
    EXPECT_FALSE(holds("sign key")) << "keys that were unlocked are staged elsewhere, where no core finds them";
    std::destroy_at(inPlace);
    EXPECT_FALSE(holds("memory key"));
    EXPECT_FALSE(holds("sign key"));
    EXPECT_FALSE(holds("km key"));
}

TEST_F(ConfirmTest, AsksForAPassword)
{
    open();
    expectBox("MSG_SELECTCERT_INPUTPASSWORD");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
}

TEST_F(ConfirmTest, TakesAPasswordOf1023BytesAndRefusesOneOf1024)
{
    open();
    auto& field = widget<QLineEdit>("lineEdit_password");
    field.setText(QString(1024, 'p'));
    expectBox("MSG_SELECTCERT_PASSWORD_MAX");
    field.setText(QString(512, QChar(0xAC00)));
    expectBox("MSG_SELECTCERT_PASSWORD_MAX");
    field.setText(QString(1023, 'p'));
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_EQ(
        scripted::processor().lastCallOf("CLP_DecryptPriKey"), "CLP_DecryptPriKey 0 " + std::string(1023, 'p'));
}

TEST_F(ConfirmTest, AsksForASelection)
{
    open();
    types(*dialog, "lineEdit_password", "x");
    widget<QTableView>("tableView_certlist").clearSelection();
    expectBox("MSG_SELECTCERT_NOTSELECTCERT");
}

TEST_F(ConfirmTest, ExplainsWhatTheProcessorRefused)
{
    struct Refusal {
        const char* function;
        int code;
        const char* key;
    };
    const Refusal refusals[] = {
        {"CLP_DecryptPriKey", 1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR"},
        {"CLP_DecryptPriKey", 1164, "MSG_SELECTCERT_GETPRIKEY"},
        {"CLP_GetPriKeyRandom", 1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT"},
        {"CLP_GetPriKeyRandom", 1164, "DLG_CERTPASSWORD_WRONG_PKCS11"},
    };
    for (const Refusal& refusal : refusals) {
        scripted::processor().results = {{refusal.function, refusal.code}};
        open();
        types(*dialog, "lineEdit_password", "wrong");
        expectBox(refusal.key);
        EXPECT_EQ(dialog->State().lastResult(), refusal.code);
        EXPECT_EQ(password(), "wrong") << "the field keeps its text";
        EXPECT_EQ(rows(), 3) << "the list stays";
        dialog.reset();
        EXPECT_EQ(scripted::processor().openBuffers, 0) << "also what a failed call handed out is given back";
    }
}

TEST_F(ConfirmTest, IsSilentAboutOtherCodes)
{
    for (const char* function : {"CLP_DecryptPriKey", "CLP_GetPriKeyRandom"}) {
        scripted::processor().results = {{function, 1118}};
        open();
        types(*dialog, "lineEdit_password", "x");
        presses(*dialog, "pushButton_ok");
        EXPECT_EQ(dialog->State().lastResult(), 1118);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_NE(dialog->State().acceptedFlag(), 1);
    }
}

TEST_F(ConfirmTest, CountsAnEmptyKeyAsNone)
{
    scripted::processor().signKey.clear();
    open();
    types(*dialog, "lineEdit_password", "x");
    expectBox("DLG_CERTPASSWORD_WRONG_PKCS11");
    EXPECT_EQ(dialog->State().lastResult(), 1114);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_GetPriKeyRandom"), "") << "not asked without a key";
}

TEST_F(ConfirmTest, TellsThatAKeyDoesNotFitTheResult)
{
    for (const std::size_t length : {2049u, 4097u}) {
        scripted::processor().signKey.assign(length, 'k');
        open();
        types(*dialog, "lineEdit_password", "x");
        expectBox("MSG_SELECTCERT_KEY_MAX");
        EXPECT_EQ(dialog->State().lastResult(), 1114);
        EXPECT_EQ(scripted::processor().lastCallOf("CLP_GetPriKeyRandom"), "");
    }
    scripted::processor().signKey.assign(2048, 'k');
    open();
    types(*dialog, "lineEdit_password", "x");
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_EQ(result()->nSignPriKeyLen, 2048);
}

TEST_F(ConfirmTest, CountsAKeyThatDoesNotFitAsNoneAfterOneThatDid)
{
    open();
    char password[] = "x";
    ASSERT_EQ(dialog->SetSelectCertInfo(0, password), 0);
    scripted::processor().signKey.assign(2049, 'k');
    Box box;
    answerBox(box);
    EXPECT_EQ(dialog->SetSelectCertInfo(0, password), 1114);
}

TEST_F(ConfirmTest, TellsThatAKeyManagementKeyDoesNotFitAndLeavesItOut)
{
    for (const std::size_t length : {2049u, 4097u}) {
        scripted::processor().kmKey.assign(length, 'k');
        open();
        types(*dialog, "lineEdit_password", "x");
        EXPECT_EQ(confirm().text, driver::message(korean, "MSG_SELECTCERT_KMKEY_MAX"));
        EXPECT_EQ(dialog->State().acceptedFlag(), 1);
        EXPECT_EQ(result()->nKmPriKeyLen, 0);
    }
}

TEST_F(ConfirmTest, LeavesOutAKeyManagementKeyAndARandomValueThatDoNotFit)
{
    scripted::processor().kmKey.assign(2049, 'k');
    scripted::processor().random.assign(1025, 'r');
    open();
    types(*dialog, "lineEdit_password", "x");
    confirm();
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_EQ(bytes(result()->bySignPriKey, result()->nSignPriKeyLen), "sign key");
    EXPECT_EQ(result()->nKmPriKeyLen, 0);
    EXPECT_EQ(result()->byKmPriKey[0], 0);
    EXPECT_EQ(result()->nRandomLen, 0);
}

TEST_F(ConfirmTest, WantsAKeyOfACertificateInMemoryToo)
{
    load.byMemoryCert = 1;
    setUp();
    char password[] = "x";
    const std::pair<int, const char*> lengths[] = {
        {0, "DLG_CERTPASSWORD_WRONG_PKCS11"}, {2049, "MSG_SELECTCERT_KEY_MAX"}};
    for (const auto& [length, text] : lengths) {
        scripted::processor().entries[0].nSignPriKeyLen = length;
        dialog->SetInitMediaCert(6);
        Box box;
        answerBox(box);
        EXPECT_EQ(dialog->SetSelectCertInfo(0, password), 1114);
        EXPECT_EQ(box.text, driver::message(korean, text));
    }
}

TEST_F(ConfirmTest, RefusesTheCallersMemoryCertificate)
{
    load.byMemoryCert = 1;
    setUp().SetInitMediaCert(6);
    dialog->show();
    types(*dialog, "lineEdit_password", "any");
    expectBox("MSG_SELECTCERT_PASSWORD_DIFFERENT");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_GetPriKeyRandom"), "");
}

TEST_F(ConfirmTest, AsksNothingOfTheProcessorForKeysInMemory)
{
    load.byMemoryCert = 1;
    scripted::processor().results["CLP_GetPriKeyRandom"] = 1113;
    scripted::processor().entries[0].nSignPriKeyLen = 3;
    setUp().SetInitMediaCert(6);
    char password[] = "x";
    EXPECT_EQ(dialog->SetSelectCertInfo(0, password), 1113) << "without a box off the disks";
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
}

TEST_F(ConfirmTest, RefusesARowThatThereIsNot)
{
    open();
    char password[] = "x";
    for (int row : {-1, 3})
        EXPECT_EQ(dialog->SetSelectCertInfo(row, password), 1001);
}

TEST_F(ConfirmTest, IsGivenUpWithCancelEscapeAndTheCloseButton)
{
    const std::function<void()> ways[] = {[&] { presses(*dialog, "pushButton_cancel"); },
        [&] { QTest::keyClick(dialog.get(), Qt::Key_Escape); }, [&] { dialog->close(); }};
    for (const auto& giveUp : ways) {
        open();
        types(*dialog, "lineEdit_password", "secret");
        giveUp();
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), 0);
        EXPECT_EQ(dialog->State().acceptedFlag(), 0);
        EXPECT_EQ(password(), "");
    }
}

TEST_F(ConfirmTest, IsConfirmedWithReturnFromTheFieldTheListAndOk)
{
    for (const char* name : {"lineEdit_password", "tableView_certlist", "pushButton_ok"}) {
        open();
        types(*dialog, "lineEdit_password", "x");
        QTest::keyClick(&driver::find<QWidget>(*dialog, name), Qt::Key_Return);
        EXPECT_EQ(dialog->State().acceptedFlag(), 1) << name;
    }
}

TEST_F(ConfirmTest, IsGivenUpWithReturnOnFocusedCancel)
{
    open();
    types(*dialog, "lineEdit_password", "x");
    QTest::keyClick(&widget("pushButton_cancel"), Qt::Key_Return);
    EXPECT_EQ(dialog->State().acceptedFlag(), 0);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
}

TEST_F(ConfirmTest, IgnoresTheKeypadEnterAndAllOtherKeys)
{
    open();
    types(*dialog, "lineEdit_password", "x");
    for (const char* name : {"lineEdit_password", "tableView_certlist", "pushButton_cancel"})
        for (int key : {Qt::Key_Enter, Qt::Key_F1, Qt::Key_PageUp})
            QTest::keyClick(&driver::find<QWidget>(*dialog, name), Qt::Key(key), Qt::KeypadModifier);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->State().acceptedFlag(), -1);
}

TEST_F(ConfirmTest, KeepsThePasswordOutOfTheClipboard)
{
    open();
    types(*dialog, "lineEdit_password", "secret");
    auto& field = widget<QLineEdit>("lineEdit_password");
    field.selectAll();
    field.copy();
    field.cut();
    EXPECT_FALSE(QApplication::clipboard()->text().contains("secret"));
}

TEST_F(ConfirmTest, KeepsTheStateThatTheViewerFound)
{
    load.nSelectFlags = SIGIL_SELECT_LOCK_EXPIRED;
    open();
    driver::clicksRow(*dialog, "tableView_certlist", 2);
    ASSERT_TRUE(dialog->State().isLocked(2));
    whenShown([](QDialog& viewer) {
        presses(viewer, "pushButton_verify");
        presses(viewer, "pushButton_ok");
    });
    presses(*dialog, "pushButton_view");
    EXPECT_FALSE(dialog->State().isLocked(2)) << "verified";
    EXPECT_EQ(dialog->State().entry(2)->nValidStatus, SIGIL_VALIDITY_VALID);
}

TEST_F(ConfirmTest, OpensTheViewerFromItsButtonAndByADoubleClick)
{
    open();
    int viewers = 0;
    const auto look = [&](QDialog& viewer) {
        EXPECT_STREQ(viewer.metaObject()->className(), "CertViewMainDialog");
        EXPECT_TRUE(viewer.isModal());
        EXPECT_EQ(viewer.parentWidget(), dialog.get());
        EXPECT_EQ(driver::find<QLabel>(viewer, "label_subject").text(), QStringLiteral("김하늘"));
        ++viewers;
        presses(viewer, "pushButton_ok");
    };
    driver::clicksRow(*dialog, "tableView_certlist", 1);
    whenShown(look);
    presses(*dialog, "pushButton_view");
    whenShown(look);
    driver::doubleClicksRow(*dialog, "tableView_certlist", 1);
    EXPECT_EQ(viewers, 2);
    EXPECT_TRUE(dialog->isVisible()) << "a double click does not confirm";
    EXPECT_EQ(dialog->findChild<QWidget*>("CertViewMainDialog"), nullptr) << "gone after use";
}

TEST_F(ConfirmTest, AsksForASelectionBeforeViewing)
{
    open();
    widget<QTableView>("tableView_certlist").clearSelection();
    EXPECT_EQ(confirm("pushButton_view").text, driver::message(korean, "MSG_SELECTCERT_NOTSELECTCERT"));
}
