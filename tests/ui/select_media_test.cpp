// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The selection dialog: media, list, and what a click on a row does.

#include "tests/ui/fixture.h"

#include <QTableView>
#include <QTemporaryDir>

using driver::answerBox;
using driver::Box;
using driver::clicksRow;
using driver::whenShown;

TEST_P(SelectionInBothLanguages, ListsTheHardDisk)
{
    open(GetParam());
    EXPECT_EQ(dialog->State().medium(), 1);
    EXPECT_EQ(dialog->State().count(), 3);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_SetMediaType"), "CLP_SetMediaType 1");
    ASSERT_EQ(rows(), 3);
    const QString expected[] = {
        QStringLiteral("홍길동"), QStringLiteral("예제인증기관"), QStringLiteral("개인 범용"), "2027-10-31"};
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 0, column), expected[column]);
    EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 2, 0), QStringLiteral("이바다")) << "not sorted";
    EXPECT_EQ(status(), driver::message(GetParam(), "MSG_SELECTCERT_SELCERTINPUTPWD"));
    EXPECT_EQ(widget("pushButton_hdd").iconSize(), QSize(52, 62)) << "pressed";
}

TEST_F(SelectionTest, SelectsTheFirstRowAndColoursNone)
{
    open();
    auto& list = widget<QTableView>("tableView_certlist");
    EXPECT_TRUE(list.selectionModel()->isRowSelected(0, {}));
    for (int row = 0; row < 3; ++row)
        EXPECT_FALSE(list.model()->index(row, 0).data(Qt::BackgroundRole).isValid());
}

TEST_P(SelectionInBothLanguages, TellsTwoCertificatesOfOneNameApart)
{
    scripted::processor().entries = {scripted::sampleEntry("홍길동"), scripted::sampleEntry("홍길동", 4),
        scripted::sampleEntry("<b>홍길동</b>", 5)};
    qstrncpy(scripted::processor().entries[1].szSerialNum, "0c0d0e", 8);
    open(GetParam());
    const QAbstractItemModel* model = widget<QTableView>("tableView_certlist").model();
    const auto tip = [&](int row, int column) {
        return model->index(row, column).data(Qt::ToolTipRole).toString();
    };
    for (int column = 0; column < 4; ++column) {
        EXPECT_TRUE(tip(0, column).contains(driver::cell(*dialog, "tableView_certlist", 0, column)));
        EXPECT_TRUE(tip(0, column).contains("01a2b3"));
        EXPECT_TRUE(tip(1, column).contains("0c0d0e"));
        EXPECT_TRUE(tip(0, column).contains(QStringLiteral("cn=예제인증기관,o=예제,c=KR")));
        EXPECT_TRUE(tip(0, column).contains("2025-11-01") && tip(0, column).contains("2027-10-31"));
    }
    EXPECT_TRUE(tip(2, 0).contains(QStringLiteral("&lt;b&gt;홍길동"))) << "shown as it is";
}

TEST_P(SelectionInBothLanguages, SaysTheStateOfEveryRow)
{
    open(GetParam());
    const auto ui = [this](const char* key) { return driver::ui(GetParam(), key); };
    const QAbstractItemModel* model = widget<QTableView>("tableView_certlist").model();
    const QString states[] = {ui("DLG_CERVIEWNORAL_CERTVALID"),
        driver::message(GetParam(), "MSG_SELECTCERT_ENDSIN").replace("%s", "12"),
        ui("DLG_CERVIEWNORAL_CERTEXPIRED")};
    for (int row = 0; row < 3; ++row)
        for (int role : {int(Qt::AccessibleDescriptionRole), int(Qt::ToolTipRole)})
            EXPECT_TRUE(model->index(row, 0).data(role).toString().contains(states[row])) << row;
}

TEST_F(SelectionTest, SaysThatItEndsSoonWhenTheDaysAreNotKnown)
{
    scripted::processor().entries[1].nRemainDays = 0;
    scripted::processor().entries[2].nValidStatus = 6;
    open();
    const QAbstractItemModel* model = widget<QTableView>("tableView_certlist").model();
    const auto description = [&](int row) {
        return model->index(row, 0).data(Qt::AccessibleDescriptionRole).toString();
    };
    EXPECT_TRUE(description(1).contains(driver::ui(korean, "DLG_CERVIEWNORAL_CERTRENEWAL")));
    EXPECT_TRUE(description(2).startsWith(driver::ui(korean, "DLG_CERVIEWDETAIL_FIELDSERIAL"))) << "no known state";
}

TEST_P(SelectionInBothLanguages, TellsThatAMediumHoldsNoCertificate)
{
    scripted::processor().results["CLP_LoadCertList"] = 1115;
    open(GetParam());
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(status(), driver::message(GetParam(), "MSG_SELECTCERT_NOCERT"));
    EXPECT_EQ(dialog->State().lastResult(), 1115);
    EXPECT_STREQ(dialog->State().lastError(), "LoadCertDisk() m_nRv : 1115");
}

TEST_F(SelectionTest, CountsAnEmptyListAsNoCertificate)
{
    scripted::processor().entries.clear();
    open();
    EXPECT_EQ(dialog->State().lastResult(), 1115);
    EXPECT_EQ(status(), driver::message(korean, "MSG_SELECTCERT_NOCERT"));
}

TEST_F(SelectionTest, KeepsOtherLoadErrorsToItself)
{
    for (const char* function : {"CLP_LoadCertList", "CLP_SetMediaType"}) {
        scripted::processor().results = {{function, 1007}};
        open();
        EXPECT_EQ(dialog->State().lastResult(), 1007);
        EXPECT_EQ(status(), "") << "only a medium without certificates is told";
        EXPECT_STREQ(dialog->State().lastError(), "LoadCertDisk() m_nRv : 1007");
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        dialog.reset();
    }
}

TEST_F(SelectionTest, LeavesAnEntryThatCannotBeReadEmpty)
{
    scripted::processor().entryResults[1] = 1122;
    open();
    ASSERT_EQ(rows(), 3);
    EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 1, 0), "");
    EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 2, 0), QStringLiteral("이바다"));
}

TEST_F(SelectionTest, ShowsNothingOfTheEntryBeforeInAnEmptyField)
{
    scripted::processor().entries[1].szPolicyName[0] = '\0';
    scripted::processor().entries[1].szIssuerName[0] = '\0';
    open();
    EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 1, 1), "");
    EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 1, 2), "");
}

TEST_F(SelectionTest, ReplacesTheListOnEveryLoad)
{
    open();
    scripted::processor().entries.resize(1);
    QTest::mouseClick(&widget("pushButton_hdd"), Qt::LeftButton);
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(dialog->State().count(), 1);
}

TEST_F(SelectionTest, ListsARemovableDisk)
{
    open();
    whenShown([](QDialog& chooser) {
        clicksRow(chooser, "tableView_remobable", 1);
        driver::presses(chooser, "pushButton_ok");
    });
    driver::presses(*dialog, "pushButton_remove");
    EXPECT_EQ(dialog->State().medium(), 2);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_SetMediaType"), "CLP_SetMediaType 2 /media/DATA");
    EXPECT_EQ(rows(), 3);
    EXPECT_FALSE(widget("pushButton_remove").isEnabled()) << "it can be used once";
    EXPECT_TRUE(widget("pushButton_hdd").isEnabled());
    EXPECT_EQ(widget("pushButton_hdd").iconSize(), QSize(50, 60)) << "no longer pressed";
}

TEST_F(SelectionTest, DisablesTheRemovableButtonAfterItsFirstUse)
{
    open();
    whenShown([](QDialog& chooser) { driver::presses(chooser, "pushButton_cancel"); });
    driver::presses(*dialog, "pushButton_remove");
    EXPECT_FALSE(widget("pushButton_remove").isEnabled());
    EXPECT_TRUE(widget("pushButton_hdd").isEnabled());
    EXPECT_EQ(widget("pushButton_hdd").iconSize(), QSize(50, 60));
    EXPECT_EQ(dialog->State().medium(), 2) << "also when no drive was chosen, on purpose";
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_SetMediaType"), "CLP_SetMediaType 1")
        << "the list is left alone";
}

TEST_P(SelectionInBothLanguages, TellsThatNoRemovableDiskCouldBeListed)
{
    open(GetParam());
    for (int count : {0, 2}) {
        scripted::processor().driveCount = count;
        scripted::processor().results["CLP_GetRemDrive"] = 1001;
        Box box;
        answerBox(box);
        driver::presses(*dialog, "pushButton_remove");
        EXPECT_EQ(box.text, driver::message(GetParam(), "MSG_SELECTCERT_REMDRIVE_GETINFOFAIL"));
        EXPECT_EQ(box.caption, driver::ui(GetParam(), "DLG_REMOVABLE_CAPTION"));
        EXPECT_EQ(dialog->State().lastResult(), 1111);
        EXPECT_EQ(dialog->State().medium(), 1);
        EXPECT_TRUE(widget("pushButton_remove").isEnabled());
    }
}

TEST_F(SelectionTest, OffersOnlyTheTwoDisks)
{
    open();
    const auto calls = scripted::processor().calls.size();
    for (const char* name : {"pushButton_smcert", "pushButton_token", "pushButton_smcard", "pushButton_phone"}) {
        driver::presses(*dialog, name);
        EXPECT_FALSE(widget(name).isEnabled());
    }
    EXPECT_EQ(scripted::processor().calls.size(), calls);
}

class MemoryTest : public SelectionTest {
protected:
    void SetUp() override
    {
        SelectionTest::SetUp();
        scripted::processor().entries.resize(1);
        load.byMemoryCert = 1;
        qstrncpy(reinterpret_cast<char*>(load.byMemorySignCert), "certificate", 4096);
        qstrncpy(reinterpret_cast<char*>(load.byMemorySignPriKey), "key", 4096);
        load.nMemorySignCertLen = 11;
        load.nMemorySignPriKeyLen = 3;
    }
};

TEST_F(MemoryTest, TakesTheCallersCertificateAndShowsNoRow)
{
    setUp().SetInitMediaCert(6);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_SetMediaType"), "CLP_SetMediaType 6");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_LoadMemoryCert"), "CLP_LoadMemoryCert certificate|key|-|-");
    EXPECT_EQ(dialog->State().medium(), 6);
    EXPECT_EQ(dialog->State().count(), 1);
    EXPECT_EQ(rows(), 0);
}

TEST_F(MemoryTest, TakesAnItemOnlyWithALength)
{
    load.nMemorySignPriKeyLen = 0;
    setUp().SetInitMediaCert(6);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_LoadMemoryCert"), "CLP_LoadMemoryCert certificate|-|-|-");
}

TEST_F(MemoryTest, NeverReadsBehindAnItem)
{
    load.nMemorySignCertLen = 1 << 30;
    setUp().SetInitMediaCert(6);
    EXPECT_LT(scripted::processor().lastCallOf("CLP_LoadMemoryCert").size(), 4096u + 100u);
}

TEST_F(MemoryTest, ReturnsWhatTheProcessorRefuses)
{
    setUp();
    for (const char* function : {"CLP_SetMediaType", "CLP_LoadMemoryCert"}) {
        scripted::processor().results = {{function, 1117}};
        EXPECT_EQ(dialog->State().LoadMemoryCert(nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0), 1117);
    }
}

TEST_F(MemoryTest, CountsARefusedCertificateAsNone)
{
    setUp();
    scripted::processor().entries.clear();
    EXPECT_EQ(dialog->State().LoadMemoryCert(nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0), 1115);
    EXPECT_EQ(dialog->State().lastResult(), 1115);
}

TEST_F(MemoryTest, ReturnsTheResultOfTheLastEntry)
{
    setUp();
    scripted::processor().entryResults[0] = 1122;
    EXPECT_EQ(dialog->State().LoadMemoryCert(nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0), 1122);
}

class ExpiredTest : public SelectionTest {
protected:
    bool canType() { return widget<QLineEdit>("lineEdit_password").isEnabled(); }
};

TEST_F(ExpiredTest, LocksThePasswordOnlyOnBitOneOfTheSelectionFlags)
{
    open();
    clicksRow(*dialog, "tableView_certlist", 2);
    EXPECT_TRUE(canType());
    load.nSelectFlags = 2;
    open();
    clicksRow(*dialog, "tableView_certlist", 2);
    EXPECT_FALSE(canType());
    clicksRow(*dialog, "tableView_certlist", 1);
    EXPECT_TRUE(canType()) << "one that expires soon is usable";
}

TEST_F(ExpiredTest, LocksThePasswordForARowReachedWithTheKeyboard)
{
    load.nSelectFlags = 2;
    open();
    auto& list = widget<QTableView>("tableView_certlist");
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_TRUE(canType());
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_FALSE(canType());
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_TRUE(canType());
}

TEST_F(ExpiredTest, GoesByTheSelectedRowNotByTheCurrentOne)
{
    load.nSelectFlags = 2;
    open();
    auto& list = widget<QTableView>("tableView_certlist");
    clicksRow(*dialog, "tableView_certlist", 2);
    list.selectionModel()->setCurrentIndex(list.model()->index(1, 0), QItemSelectionModel::NoUpdate);
    EXPECT_FALSE(canType());
}

TEST_F(ExpiredTest, EmptiesThePasswordThatWasTypedForAnotherRow)
{
    load.nSelectFlags = 2;
    open();
    driver::types(*dialog, "lineEdit_password", "x");
    clicksRow(*dialog, "tableView_certlist", 2);
    EXPECT_EQ(password(), "");
    EXPECT_FALSE(widget<QLineEdit>("lineEdit_password").isUndoAvailable());
    Box box;
    answerBox(box);
    driver::presses(*dialog, "pushButton_ok");
    EXPECT_EQ(box.text, driver::message(korean, "MSG_SELECTCERT_INPUTPASSWORD"));
    EXPECT_NE(dialog->State().acceptedFlag(), 1);
}

TEST_F(ExpiredTest, KeepsThePasswordForARowThatIsNotLocked)
{
    load.nSelectFlags = 2;
    open();
    driver::types(*dialog, "lineEdit_password", "x");
    clicksRow(*dialog, "tableView_certlist", 1);
    EXPECT_EQ(password(), "x");
}

TEST_F(ExpiredTest, EmptiesThePasswordWhenAListBeginsWithALockedRow)
{
    load.nSelectFlags = 2;
    open();
    scripted::processor().entries[0] = scripted::sampleEntry("x", 5);
    char drive[] = "/media/USB", file[] = "/x.p12", word[] = "x";
    scripted::processor().importCert = scripted::processor().importKey = "bytes";
    const std::function<void()> lists[] = {[&] { driver::presses(*dialog, "pushButton_hdd"); },
        [&] { dialog->LoadCertDisk(2, drive); }, [&] { dialog->LoadCertPKCS12(file, word); }};
    for (const auto& list : lists) {
        driver::find<QLineEdit>(*dialog, "lineEdit_password").setEnabled(true);
        driver::types(*dialog, "lineEdit_password", "x");
        list();
        EXPECT_EQ(password(), "");
        EXPECT_FALSE(canType());
    }
}

TEST_F(ExpiredTest, IsNotHandedOutWhateverTheFieldHolds)
{
    load.nSelectFlags = 2;
    open();
    clicksRow(*dialog, "tableView_certlist", 2);
    widget<QLineEdit>("lineEdit_password").setText("x");
    Box box;
    answerBox(box);
    driver::presses(*dialog, "pushButton_ok");
    EXPECT_EQ(box.text, driver::message(korean, "MSG_SELECTCERT_EXIRED").replace("%s", "2025-10-31"));
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
    EXPECT_NE(dialog->State().acceptedFlag(), 1);
}

TEST_F(ExpiredTest, LeavesThePasswordOpenWhenThereIsNoRow)
{
    load.nSelectFlags = 2;
    open();
    clicksRow(*dialog, "tableView_certlist", 2);
    scripted::processor().entries.clear();
    driver::presses(*dialog, "pushButton_hdd");
    EXPECT_TRUE(canType());
}

TEST_F(ExpiredTest, UnlocksThePasswordWhenAnotherDiskIsListed)
{
    load.nSelectFlags = 2;
    open();
    driver::clicksRow(*dialog, "tableView_certlist", 2);
    ASSERT_FALSE(canType());
    char drive[] = "/media/USB";
    EXPECT_EQ(dialog->LoadCertDisk(2, drive), 0);
    EXPECT_TRUE(canType());
}

TEST_F(ExpiredTest, KnowsBothCodesOfExpiry)
{
    load.nSelectFlags = 2;
    for (int status = 0; status <= 6; ++status) {
        scripted::processor().entries[0].nValidStatus = status;
        open();
        EXPECT_EQ(canType(), status != 2 && status != 5) << status;
    }
}

TEST_F(ExpiredTest, IsToldOnlyOnBitTwoOfTheMessageFlags)
{
    load.nMessageFlags = 3;
    open();
    clicksRow(*dialog, "tableView_certlist", 2);
    load.nMessageFlags = 4;
    for (int language : {korean, english}) {
        open(language);
        Box box;
        answerBox(box);
        clicksRow(*dialog, "tableView_certlist", 2);
        EXPECT_EQ(box.text, driver::message(language, "MSG_SELECTCERT_EXIRED").replace("%s", "2025-10-31"));
        EXPECT_EQ(box.caption, driver::ui(language, "DLG_SELCERT_CAPITON"));
        EXPECT_EQ(box.buttons, 1);
    }
}

TEST_F(ExpiredTest, IsToldWhenTheFirstCertificateOfTheHardDiskHasExpired)
{
    load.nMessageFlags = 4;
    scripted::processor().entries[0] = scripted::sampleEntry("x", 5);
    setUp();
    Box box;
    answerBox(box);
    dialog->SetInitMediaCert(1);
    EXPECT_TRUE(box.shown);
}

TEST_F(ExpiredTest, IsToldInAtMost1023Characters)
{
    const QTemporaryDir folder;
    QFile texts(folder.filePath("KOR.ini"));
    ASSERT_TRUE(texts.open(QIODevice::WriteOnly));
    texts.write("[Message]\nMSG_SELECTCERT_EXIRED = " + QByteArray(1015, 'x') + "%s\n");
    texts.close();
    load.nMessageFlags = 4;
    setUp();
    tagINITOPT init = initOptions(korean, qPrintable(folder.path()));
    dialog->SetInitOption(&init, &load, nullptr);
    dialog->InitSetControl();
    dialog->SetInitMediaCert(1);
    Box box;
    answerBox(box);
    dialog->SetExpiredCert(2);
    EXPECT_EQ(box.text, QString(1015, 'x') + "2025-10-");
}

TEST_F(ExpiredTest, IgnoresARowThatThereIsNot)
{
    load.nMessageFlags = 4;
    load.nSelectFlags = 2;
    setUp();
    for (int row : {-1, 0, 3})
        dialog->SetExpiredCert(row);
    EXPECT_TRUE(canType());
}

TEST_F(SelectionTest, AsksForASelectionWhenAClickSelectedNothing)
{
    open();
    widget<QTableView>("tableView_certlist").clearSelection();
    Box box;
    answerBox(box);
    dialog->on_tableView_certlist_clicked({});
    EXPECT_EQ(box.text, driver::message(korean, "MSG_SELECTCERT_NOTSELECTCERT"));
    EXPECT_EQ(box.caption, driver::ui(korean, "DLG_SELCERT_CAPITON"));
}
