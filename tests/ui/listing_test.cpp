// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A listing that takes long: the window shows itself, says so and can be closed; nothing else can be done meanwhile. Time
// is what the test says, a file after the other.

#include "foundation/environment.h"
#include "tests/ui/fixture.h"
#include "ui/SigilDesk.h"

#include <sigildesk/dialogs.h>

#include <QTimer>

#include <cstring>
#include <utility>

using driver::presses;
using driver::whenShown;

namespace {

std::chrono::milliseconds uptime; // what the injected environment answers

class ListingTest : public SelectionInBothLanguages {
protected:
    void SetUp() override
    {
        SelectionInBothLanguages::SetUp();
        sigil::environment().uptime = [] { return uptime; };
        scripted::processor().onFile = [this](int) {
            uptime += std::chrono::milliseconds(10);
            ++filesRead;
        };
    }
    void TearDown() override
    {
        sigil::environment() = m_machine;
        SelectionInBothLanguages::TearDown();
    }
    /** From now on a listing reads that many files, of 10 ms each. */
    void listingReads(int files) { scripted::processor().files = files; }
    /** The dialog after a short listing, as the entry points run it. */
    void openModal()
    {
        setUp(GetParam()).SetInitMediaCert(1);
        dialog->setModal(true);
        dialog->show();
    }
    /** Runs @p action when the listing first hands the time back. */
    void meanwhile(const std::function<void()>& action) { QTimer::singleShot(0, dialog.get(), action); }
    QString message(const char* key) { return driver::message(GetParam(), key); }
    /** What can be done: names of the controls that are enabled. */
    QStringList enabled()
    {
        QStringList names;
        for (const QWidget* each :
            dialog->findChildren<QWidget*>(QRegularExpression("^(pushButton|tableView|lineEdit)")))
            if (each->isEnabled())
                names << each->objectName();
        return names;
    }
    int showAlone()
    {
        tagINITOPT init = initOptions(GetParam());
        return ShowUserCert_T(&init, &load, nullptr, nullptr, &result);
    }

    int filesRead = 0;
    tagSELCERTINFO result{};

private:
    sigil::Environment m_machine = sigil::environment();
};

INSTANTIATE_TEST_SUITE_P(Languages, ListingTest, testing::Values(korean, english));

TEST_P(ListingTest, KeepsTheTimeToItselfWhenItIsShort)
{
    listingReads(9);
    setUp(GetParam());
    bool handedBack = false;
    QTimer::singleShot(0, dialog.get(), [&] { handedBack = true; });
    dialog->SetInitMediaCert(1);
    EXPECT_EQ(filesRead, 9);
    EXPECT_FALSE(handedBack);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(rows(), 3);
}

TEST_P(ListingTest, ShowsItsWindowBusyWhenItTakesLonger)
{
    listingReads(20);
    setUp(GetParam());
    int seen = 0;
    whenShown([&](QDialog& shown) {
        seen = filesRead;
        EXPECT_EQ(&shown, dialog.get());
        EXPECT_EQ(status(), message("MSG_SELECTCERT_LISTING"));
        EXPECT_EQ(widget<QLineEdit>("lineEdit_msg").accessibleDescription(), status());
        EXPECT_EQ(enabled(), QStringList({"lineEdit_msg", "pushButton_cancel"}));
        EXPECT_EQ(shown.focusWidget()->objectName(), "lineEdit_msg");
        EXPECT_EQ(shown.cursor().shape(), Qt::BusyCursor);
        EXPECT_EQ(rows(), 0);
    });
    dialog->SetInitMediaCert(1);
    EXPECT_EQ(seen, 10) << "after 100 ms";
    EXPECT_EQ(filesRead, 20);
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(status(), message("MSG_SELECTCERT_SELCERTINPUTPWD"));
    EXPECT_TRUE(enabled().contains("pushButton_ok"));
    EXPECT_EQ(dialog->focusWidget()->objectName(), "lineEdit_password");
    EXPECT_EQ(dialog->cursor().shape(), Qt::ArrowCursor);
}

TEST_P(ListingTest, HandsTheTimeBackOftenEnoughForAWindowToLive)
{
    listingReads(100);
    setUp(GetParam());
    std::vector<std::chrono::milliseconds> turns = {uptime};
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { turns.push_back(uptime); });
    timer.start(0);
    dialog->SetInitMediaCert(1);
    ASSERT_GE(turns.size(), 20U);
    for (std::size_t i = 1; i < turns.size(); ++i)
        EXPECT_LE(turns[i] - turns[i - 1], std::chrono::milliseconds(100));
}

TEST_P(ListingTest, IsEndedByEveryWayOfGivingUp)
{
    const std::function<void(QDialog&)> ways[] = {
        [](QDialog& shown) { presses(shown, "pushButton_cancel"); },
        [](QDialog& shown) { shown.close(); },
        [](QDialog& shown) { QTest::keyClick(shown.focusWidget(), Qt::Key_Escape); },
    };
    listingReads(1000);
    for (const auto& giveUp : ways) {
        filesRead = 0;
        std::memset(&result, 0xEE, sizeof result);
        whenShown(giveUp);
        EXPECT_EQ(showAlone(), SIGIL_CANCELLED);
        EXPECT_EQ(filesRead, 10) << "nothing is read after that";
        EXPECT_EQ(result.szSubjectDN[0], '\xEE') << "the caller's record is left alone";
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

TEST_P(ListingTest, OfAButtonIsGivenUpWithAnEmptyList)
{
    openModal();
    ASSERT_EQ(rows(), 3);
    listingReads(1000);
    meanwhile([this] { presses(*dialog, "pushButton_cancel"); });
    presses(*dialog, "pushButton_hdd");
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->State().acceptedFlag(), 0);
    EXPECT_EQ(dialog->State().lastResult(), SIGIL_CANCELLED);
    EXPECT_EQ(dialog->State().count(), 0);
    EXPECT_EQ(rows(), 0);
    EXPECT_FALSE(dialog->IsListing());
}

TEST_P(ListingTest, OfAChosenDiskShowsItselfTheSameWayAndPutsTheStatusLineBack)
{
    openModal();
    const QString before = status();
    listingReads(20);
    QString busy;
    whenShown([&](QDialog& chooser) {
        driver::clicksRow(chooser, "tableView_remobable", 1);
        meanwhile([&] { busy = status(); });
        presses(chooser, "pushButton_ok");
    });
    presses(*dialog, "pushButton_remove");
    EXPECT_EQ(filesRead, 20);
    EXPECT_EQ(busy, message("MSG_SELECTCERT_LISTING"));
    EXPECT_EQ(status(), before);
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(dialog->State().medium(), SIGIL_MEDIUM_REMOVABLE_DISK);
    EXPECT_FALSE(enabled().contains("pushButton_remove")) << "used once";
}

TEST_P(ListingTest, LetsNothingElseBeDoneMeanwhile)
{
    openModal();
    driver::types(*dialog, "lineEdit_password", "secret");
    const auto calls = scripted::processor().calls.size();
    listingReads(20);
    meanwhile([this] {
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return); // a box or an unlocked key would follow
        QTest::keyClicks(dialog->focusWidget(), "typed ahead ");
        for (const char* button :
            {"pushButton_ok", "pushButton_hdd", "pushButton_remove", "pushButton_find", "pushButton_view"})
            presses(*dialog, button);
        EXPECT_EQ(password(), "secret");
    });
    presses(*dialog, "pushButton_hdd");
    EXPECT_EQ(scripted::processor().calls.size(), calls + 2) << "the medium and the list";
    EXPECT_EQ(rows(), 3);
    EXPECT_FALSE(dialog->State().isDecided());
}

TEST_P(ListingTest, TellsOfAnExpiredFirstCertificateBetweenTheListAndTheLoop)
{
    load.nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    scripted::processor().entries = {scripted::sampleEntry("x", 5)};
    listingReads(20);
    driver::Box box;
    int listed = 0;
    whenShown([&](QDialog&) {
        whenShown([&](QDialog& shown) {
            listed = rows();
            box.shown = shown.parentWidget() == dialog.get();
            shown.accept();
        });
    });
    setUp(GetParam()).SetInitMediaCert(1);
    EXPECT_TRUE(box.shown) << "beside the window, which is there";
    EXPECT_EQ(listed, 1);
    EXPECT_EQ(filesRead, 20);
}

TEST_P(ListingTest, RefusesACallThatTheHostMakesMeanwhile)
{
    tagINITOPT init = initOptions(GetParam());
    g_pQApplication = qApp;
    dialog = std::make_unique<SelectCertDialog>();
    g_dlgUserCert = dialog.get();
    const auto show = [&] { return ShowUserCert(nullptr, nullptr, &init, &load, nullptr, nullptr, &result); };
    listingReads(20);
    int inner = 0;
    whenShown([&](QDialog&) { inner = show(); });
    QTimer loop;
    QObject::connect(&loop, &QTimer::timeout, [&] {
        if (rows() > 0) // the listing has ended, and the dialog runs
            presses(*dialog, "pushButton_cancel");
    });
    loop.start(0);
    EXPECT_EQ(show(), SIGIL_CANCELLED);
    EXPECT_EQ(inner, SIGIL_CANCELLED);
    EXPECT_EQ(scripted::processor().countOf("CLP_LoadCertList"), 1);
    EXPECT_EQ(filesRead, 20) << "the listing went on";
    EXPECT_EQ(std::exchange(g_dlgUserCert, nullptr), dialog.get());
    g_pQApplication = nullptr;
}

} // namespace
