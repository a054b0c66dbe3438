// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Opening and closing each dialog again and again leaves nothing behind.

#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/language_texts.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include <malloc.h>

namespace {

constexpr int openings = 100;

/** Bytes in use on the heap; under a sanitizer, whose own end-of-program check does the work, always 0. */
std::size_t heapInUse() { return mallinfo2().uordblks; }

void expectFlat(const std::function<void()>& openAndClose)
{
    for (int i = 0; i < 5; ++i)
        openAndClose(); // caches fill
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const std::size_t before = heapInUse();
    const int widgets = QApplication::allWidgets().size();
    for (int i = 0; i < openings; ++i)
        openAndClose();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    // Far less than any widget is: a leaked one in each opening would show.
    EXPECT_LT(static_cast<double>(heapInUse()) - static_cast<double>(before), openings * 1000.0);
}

} // namespace

TEST_F(SelectionTest, ManyOpeningsStayFlat)
{
    expectFlat([this] {
        open();
        dialog->close();
        dialog.reset();
        scripted::processor().calls.clear();
    });
}

TEST_F(SelectionTest, KeepsOfACertificateWhatTheListShows)
{
    open();
    scripted::processor().entries.resize(500, scripted::sampleEntry("x"));
    const std::size_t before = heapInUse();
    driver::presses(*dialog, "pushButton_hdd");
    EXPECT_EQ(rows(), 500);
    EXPECT_LT(heapInUse() - before, 500 * sizeof(tagCERTINFO) / 20);
}

TEST_F(SelectionTest, ManyPasswordDialogsStayFlat)
{
    expectFlat([] {
        PasswordDialog password;
        password.SetCaller(korean, SIGILDESK_LIBRARY_FOLDER);
        password.InitSetControl();
        password.show();
        password.close();
    });
}

TEST_F(SelectionTest, ManyDriveChoosersStayFlat)
{
    expectFlat([] {
        RemoveableDialog drives;
        drives.SetCaller(korean, SIGILDESK_LIBRARY_FOLDER, nullptr);
        drives.InitSetControl();
        drives.GetRemovableDisk();
        drives.show();
        drives.close();
        scripted::processor().calls.clear();
    });
}

TEST_F(SelectionTest, ManyViewersStayFlat)
{
    tagCERTINFO entry = scripted::sampleEntry("x");
    expectFlat([&] {
        CertViewMainDialog viewer;
        viewer.SetCertificate(driver::texts(korean), nullptr, &entry);
        viewer.InitSetControl();
        viewer.show();
        viewer.close();
    });
}
