// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The shared dialog, set up again for one call after the other: what a call leaves behind and what it does not.

#include "tests/ui/fixture.h"

#include <cstring>

using driver::answerBox;
using driver::Box;
using driver::clicksRow;
using driver::presses;
using driver::types;
using driver::whenShown;

class ReuseTest : public SelectionTest {
protected:
    void giveMemoryCertificate()
    {
        load.byMemoryCert = 1;
        load.nMemorySignCertLen = 11;
        std::memcpy(load.byMemorySignCert, "certificate", 11);
        load.nMemorySignPriKeyLen = 3;
        std::memcpy(load.byMemorySignPriKey, "key", 3);
    }
    bool canType() { return widget<QLineEdit>("lineEdit_password").isEnabled(); }
    bool isRowSelected() { return widget<QTableView>("tableView_certlist").selectionModel()->hasSelection(); }
};

TEST_F(ReuseTest, UnlocksThePasswordThatACallBeforeLocked)
{
    load.nSelectFlags = SIGIL_SELECT_LOCK_EXPIRED;
    open();
    clicksRow(*dialog, "tableView_certlist", 2);
    ASSERT_FALSE(canType());
    presses(*dialog, "pushButton_cancel");

    load.nSelectFlags = 0;
    scripted::processor().entries.erase(
        scripted::processor().entries.begin(), scripted::processor().entries.begin() + 2);
    setUpAgain().SetInitMediaCert(1);
    dialog->show();
    EXPECT_TRUE(canType());
    types(*dialog, "lineEdit_password", "x");
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(dialog->State().acceptedFlag(), 1) << "expired, but no lock was asked for";
}

TEST_F(ReuseTest, ShowsNoRowOfTheCallBeforeForTheCallersCertificate)
{
    open();
    ASSERT_TRUE(isRowSelected());
    presses(*dialog, "pushButton_cancel");

    giveMemoryCertificate();
    setUpAgain().SetInitMediaCert(6);
    EXPECT_EQ(dialog->State().medium(), 6);
    EXPECT_EQ(rows(), 0);
    EXPECT_FALSE(isRowSelected());
}

TEST_F(ReuseTest, KeepsNoCertificateOfTheCallBeforeWhenTheCallersIsRefused)
{
    open();
    giveMemoryCertificate();
    scripted::processor().results["CLP_LoadMemoryCert"] = 1117;
    setUpAgain().SetInitMediaCert(6);
    EXPECT_EQ(dialog->State().lastResult(), 1117);
    EXPECT_EQ(dialog->State().count(), 0);
    EXPECT_EQ(rows(), 0);
}

TEST_F(ReuseTest, ReturnsToTheHardDiskAfterTheCallersCertificate)
{
    giveMemoryCertificate();
    setUp().SetInitMediaCert(6);
    load.byMemoryCert = 0;
    setUpAgain().SetInitMediaCert(1);
    EXPECT_EQ(dialog->State().medium(), 1);
    EXPECT_EQ(rows(), 3);
    EXPECT_TRUE(isRowSelected());
}

TEST_F(ReuseTest, NeverPairsACertificateWithTheKeyOfTheCallBefore)
{
    giveMemoryCertificate();
    setUp().SetInitMediaCert(6);
    load.nMemorySignPriKeyLen = 0;
    setUpAgain().SetInitMediaCert(6);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_LoadMemoryCert"), "CLP_LoadMemoryCert certificate|-|-|-");
}

TEST_F(ReuseTest, DecidesEveryCallAnew)
{
    open();
    types(*dialog, "lineEdit_password", "x");
    presses(*dialog, "pushButton_ok");
    ASSERT_EQ(dialog->State().acceptedFlag(), 1);
    setUpAgain();
    EXPECT_EQ(dialog->State().acceptedFlag(), -1);
    EXPECT_EQ(dialog->State().finishFlag(), 0);
}

TEST_F(ReuseTest, TakesTheNumbersOfEveryCallAnew)
{
    load.nSelectFlags = SIGIL_SELECT_EXCLUDE_EXPIRED;
    load.nPKITypes = 15;
    load.nKeyPairType = 2;
    setUp();
    EXPECT_EQ(scripted::processor().options.bExcludeExpired, 1);
    load = {};
    setUpAgain();
    EXPECT_EQ(scripted::processor().options.bExcludeExpired, 0);
    EXPECT_EQ(scripted::processor().options.nPKITypes, 0);
    EXPECT_EQ(scripted::processor().options.nKeyPairType, 0);
}

TEST_F(ReuseTest, TellsAboutExpiryOnlyInTheCallThatAsksForIt)
{
    load.nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    open();
    load.nMessageFlags = 0;
    setUpAgain().SetInitMediaCert(1);
    clicksRow(*dialog, "tableView_certlist", 2); // with a box, this would wait for ever
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(ReuseTest, OffersTheRemovableDiskAgain)
{
    open();
    whenShown([](QDialog& chooser) {
        clicksRow(chooser, "tableView_remobable", 1);
        presses(chooser, "pushButton_ok");
    });
    presses(*dialog, "pushButton_remove");
    ASSERT_FALSE(widget("pushButton_remove").isEnabled());
    setUpAgain().SetInitMediaCert(1);
    EXPECT_TRUE(widget("pushButton_remove").isEnabled());
    EXPECT_EQ(dialog->State().medium(), 1);
}

TEST_F(ReuseTest, ShowsTheTextsOfTheLanguageOfEveryCall)
{
    open(korean);
    setUpAgain(english);
    EXPECT_EQ(dialog->windowTitle(), driver::ui(english, "DLG_SELCERT_CAPITON"));
    EXPECT_EQ(widget<QTableView>("tableView_certlist").model()->headerData(0, Qt::Horizontal).toString(),
        driver::ui(english, "DLG_CERTLISTCTRL_DN"));
}
