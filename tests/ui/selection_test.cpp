// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the selection dialog decides and tells. No display and no application: nothing here is shown.

#include "tests/ui/scripted_processor.h"
#include "ui/selection.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <cstring>
#include <memory>

using sigil::Outcome;
using sigil::Selection;
using sigil::Step;
using sigil::tellingOf;
namespace code = sigil::code;

namespace {

/** Text and caption of a telling; "-" when nothing is told, "status line" when there is no box. */
std::string told(const sigil::Telling* telling)
{
    if (!telling)
        return "-";
    return std::string(telling->textKey) + " / " + (telling->captionKey ? telling->captionKey : "status line");
}

class DecisionTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(QCoreApplication::instance(), nullptr);
        scripted::processor() = {};
        scripted::processor().entries = {scripted::sampleEntry("홍길동"), scripted::sampleEntry("이바다", 5)};
        scripted::processor().signKey = "sign key";
        ASSERT_EQ(selection->options().take(&init, &load, nullptr), 0);
        ASSERT_EQ(selection->connect(), 0);
    }
    void TearDown() override
    {
        selection.reset();
        EXPECT_EQ(scripted::processor().openBuffers, 0);
        EXPECT_EQ(scripted::processor().handles, 0);
    }
    void lockExpired()
    {
        load.nSelectFlags = SIGIL_SELECT_LOCK_EXPIRED;
        selection->options().take(&init, &load, nullptr);
    }
    Outcome importWith(const char* password)
    {
        char path[] = "/x.p12";
        std::string text = password;
        return selection->importFile(path, text.data());
    }

    tagINITOPT init{};
    tagLOADSELECTCERTOPTION load{};
    std::unique_ptr<Selection> selection = std::make_unique<Selection>();
};

} // namespace

TEST(Tellings, AreThoseOfTheTable)
{
    struct Line {
        Step step;
        int code;
        const char* told;
    };
    const Line lines[] = {
        {Step::TypePassword, code::missing, "MSG_SELECTCERT_INPUTPASSWORD / DLG_SELCERT_CAPITON"},
        {Step::TypePassword, code::tooLong, "MSG_SELECTCERT_PASSWORD_MAX / DLG_SELCERT_CAPITON"},
        {Step::TypePassword, 1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT / DLG_SELCERT_CAPITON"},
        {Step::ChooseRow, code::missing, "MSG_SELECTCERT_NOTSELECTCERT / DLG_SELCERT_CAPITON"},
        {Step::UseRow, code::expired, "MSG_SELECTCERT_EXIRED / DLG_SELCERT_CAPITON"},
        {Step::DecryptKeys, 1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR / DLG_SELCERT_CAPITON"},
        {Step::DecryptKeys, 1164, "MSG_SELECTCERT_GETPRIKEY / DLG_SELCERT_CAPITON"},
        {Step::DecryptKeys, 1114, "-"},
        {Step::DecryptKeys, 1118, "-"},
        {Step::UseKey, 1114, "DLG_CERTPASSWORD_WRONG_PKCS11 / DLG_SELCERT_CAPITON"},
        {Step::UseKey, code::tooLong, "MSG_SELECTCERT_KEY_MAX / DLG_SELCERT_CAPITON"},
        {Step::UseKmKey, code::tooLong, "MSG_SELECTCERT_KMKEY_MAX / DLG_SELCERT_CAPITON"},
        {Step::FetchRandomOfDisk, 1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT / DLG_SELCERT_CAPITON"},
        {Step::FetchRandomOfDisk, 1164, "DLG_CERTPASSWORD_WRONG_PKCS11 / DLG_SELCERT_CAPITON"},
        {Step::FetchRandom, 1113, "-"},
        {Step::FetchRandom, 1164, "DLG_CERTPASSWORD_WRONG_PKCS11 / DLG_SELCERT_CAPITON"},
        {Step::FetchRandom, 0, "-"},
        {Step::ListDrives, 1111, "MSG_SELECTCERT_REMDRIVE_GETINFOFAIL / DLG_REMOVABLE_CAPTION"},
        {Step::ListDisk, 0, "-"},
        {Step::ListDisk, 1115, "MSG_SELECTCERT_NOCERT / status line"},
        {Step::ListDisk, 1007, "-"},
        {Step::OpenHardDisk, 0, "MSG_SELECTCERT_SELCERTINPUTPWD / status line"},
        {Step::TakePair, 0, "-"},
        {Step::TakePair, code::missing, "MSG_SELECTCERT_NOCERT_SIGN / DLG_SELCERT_CAPITON"},
        {Step::TakePair, 1115, "MSG_SELECTCERT_NOCERT / DLG_SELCERT_CAPITON"},
        {Step::TakePair, 1117, "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT / MSG_MANAGEUSER_ALERT_TITLE_IMPORT"},
        {Step::Import, 0, "MSG_SELECTCERT_SELCERTINPUTPWD / status line"},
        {Step::Import, 1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT / DLG_SELCERT_CAPITON"},
        {Step::Import, -1, "MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT / MSG_MANAGEUSER_ALERT_TITLE_IMPORT"},
        {Step::Import, 1115, "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT / MSG_MANAGEUSER_ALERT_TITLE_IMPORT"},
    };
    for (const Line& line : lines)
        EXPECT_EQ(told(tellingOf(line.step, line.code)), line.told) << int(line.step) << " " << line.code;
}

TEST_F(DecisionTest, ListsADiskAndUnlocksARow)
{
    EXPECT_TRUE(selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr).relisted);
    EXPECT_EQ(selection->count(), 2);
    const Outcome outcome = selection->confirm(0, "secret");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.telling, nullptr);
    EXPECT_EQ(selection->acceptedFlag(), 1);
    tagSELCERTINFO result{};
    selection->handOut(&result);
    EXPECT_EQ(std::memcmp(result.bySignPriKey, "sign key", 8), 0);
}

TEST_F(DecisionTest, KeepsNothingOfAListingThatIsGivenUp)
{
    scripted::processor().files = 2;
    for (int last : {1, 2, 3, 4}) { // the files are read in two pauses, the entries in two
        int pauses = 0;
        const Outcome outcome =
            selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr, [&] { return ++pauses != last; });
        EXPECT_EQ(pauses, last);
        EXPECT_EQ(outcome.code, SIGIL_CANCELLED);
        EXPECT_EQ(outcome.telling, nullptr);
        EXPECT_EQ(selection->count(), 0);
    }
    EXPECT_FALSE(scripted::processor().pause) << "nobody is asked any more";
}

TEST_F(DecisionTest, ChecksThePasswordBeforeTheRowAndTheRowBeforeTheProcessor)
{
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr);
    lockExpired();
    EXPECT_EQ(selection->confirm(-1, "").telling, tellingOf(Step::TypePassword, code::missing));
    EXPECT_EQ(selection->confirm(-1, std::string(1024, 'x')).telling, tellingOf(Step::TypePassword, code::tooLong));
    EXPECT_EQ(selection->confirm(-1, "x").telling, tellingOf(Step::ChooseRow, code::missing));
    EXPECT_EQ(selection->confirm(1, "x").telling, tellingOf(Step::UseRow, code::expired));
    EXPECT_EQ(selection->confirm(1, "x").value, "2025-10-31");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
    EXPECT_EQ(selection->acceptedFlag(), -1);
}

TEST_F(DecisionTest, RefusesALockedRowToEveryCaller)
{
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr);
    lockExpired();
    char password[] = "x";
    EXPECT_EQ(selection->unlock(1, password).code, 1001);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
    EXPECT_EQ(selection->unlock(0, password).code, 0);
}

TEST_F(DecisionTest, ConfirmsAnImportWithItsOwnPassword)
{
    scripted::processor().importCert = scripted::processor().importKey = "bytes";
    scripted::processor().entries[0].nSignPriKeyLen = 1;
    EXPECT_TRUE(importWith("Secret").relisted);
    selection->rememberPassword("Secret");
    EXPECT_EQ(selection->confirm(0, "other").telling, tellingOf(Step::TypePassword, SIGIL_WRONG_PASSWORD));
    EXPECT_EQ(selection->confirm(0, "sECRET").code, 0);
}

TEST_F(DecisionTest, KeepsItsEntriesWhenAFileHoldsNoPair)
{
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr);
    const Outcome outcome = importWith("x");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.telling, tellingOf(Step::TakePair, code::missing));
    EXPECT_FALSE(outcome.relisted);
    EXPECT_EQ(selection->count(), 2);
}

TEST_F(DecisionTest, TakesABufferWithoutBytesForNoItem)
{
    scripted::processor().handsOutEmpty = true;
    scripted::processor().importCert = "certificate";
    EXPECT_EQ(importWith("x").telling, tellingOf(Step::TakePair, code::missing)) << "its key has no bytes";
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr);
    scripted::processor().signKey.clear();
    EXPECT_EQ(selection->confirm(0, "x").code, SIGIL_KEY_NOT_DECRYPTED);
}

TEST_F(DecisionTest, FillsNoRowThatWentWhileItPaused)
{
    int pauses = 0;
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr, [&] {
        if (++pauses == 1)
            selection->InitVariable();
        return true;
    });
    EXPECT_EQ(pauses, 2);
    EXPECT_EQ(selection->count(), 0);
}

TEST_F(DecisionTest, KnowsOfAnEntryThatCannotBeFetchedItsStateAlone)
{
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr);
    scripted::processor().entryResults[1] = 1001;
    sigil::EntryRecord entry = selection->entry(1);
    EXPECT_STREQ(entry->szSubjectDN, "");
    EXPECT_EQ(entry->nValidStatus, 5);
}

TEST_F(DecisionTest, TellsAndKeepsNothingOfARowThatIsNotThere)
{
    load.nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    selection->options().take(&init, &load, nullptr);
    selection->listDisk(SIGIL_MEDIUM_HARD_DISK, nullptr);
    EXPECT_NE(selection->select(1).telling, nullptr);
    for (const int row : {-1, 2}) {
        EXPECT_EQ(selection->select(row).telling, nullptr) << row;
        tagCERTINFO entry{};
        entry.nValidStatus = 4711;
        selection->keepStatus(row, entry);
    }
    EXPECT_EQ(selection->rows()[0].validStatus, 3);
    EXPECT_EQ(selection->rows()[1].validStatus, 5);
}
