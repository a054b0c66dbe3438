// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The C++ side of the C host.

#include "tests/ui/c_host.h"

#include "foundation/environment.h"
#include "tests/support/failing_allocator.h"
#include "tests/ui/driver.h"
#include "tests/ui/scripted_processor.h"
#include "ui/SigilDesk.h"
#include "ui/select_cert_dialog.h"

#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string_view>

namespace {

void (*pending)() = nullptr;

void fillProcessor()
{
    scripted::processor().entries = {scripted::sampleEntry("홍길동")};
    scripted::processor().signKey = "signkey";
    if (const char* folder = std::getenv("TRACE_FOLDER"))
        sigil::environment().traceFolder = folder;
}

void startPending()
{
    fillProcessor();
    if (pending)
        QTimer::singleShot(0, pending);
}
Q_COREAPP_STARTUP_FUNCTION(startPending)

} // namespace

// Fontconfig keeps its cache, and the offscreen platform does not give its screen back when an application object goes; leaks of the dialogs are looked
// for where the application stays, in openings_test.cpp.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\nleak:libqoffscreen.so\nleak:QScreen\nleak:QPlatformScreen\nleak:"
           "QWindowSystemInterface\n"
           "leak:QObject::QObject\nleak:QtSharedPointer::ExternalRefCountData\n";
}

void whenLoopRuns(void (*what)(void)) { pending = what; }

void makeApplication(int* argc, char** argv)
{
    static QApplication* const application =
        std::make_unique<QApplication>(*argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
}

void userChooses()
{
    driver::whenShown([](QDialog& dialog) {
        driver::types(dialog, "lineEdit_password", "TopSecret");
        driver::presses(dialog, "pushButton_ok");
    });
}

void userCancels()
{
    driver::whenShown([](QDialog& dialog) { driver::presses(dialog, "pushButton_cancel"); });
}

void userCloses()
{
    driver::whenShown([](QDialog& dialog) {
        std::printf("list: %s\n", scripted::processor().lastCallOf("CLP_SetMediaType").c_str());
        dialog.close();
    });
}

void loopEndsUnderTheDialog()
{
    driver::whenShown([](QDialog& dialog) {
        driver::types(dialog, "lineEdit_password", "TopSecret");
        QCoreApplication::exit(5);
    });
}

void printSharedDialog()
{
    std::printf("dialog '%s' shown=%d password='%s'\n", qPrintable(g_dlgUserCert->windowTitle()),
        g_dlgUserCert->isVisible(),
        qPrintable(driver::find<QLineEdit>(*g_dlgUserCert, "lineEdit_password").text()));
}

int sharedDialogHolds(const char* bytes)
{
    const std::string_view object(reinterpret_cast<const char*>(g_dlgUserCert), sizeof *g_dlgUserCert);
    return object.find(bytes) != std::string_view::npos;
}

void userCancelsWhileHolding(const char* bytes)
{
    driver::whenShown([=](QDialog& dialog) {
        std::printf("held %d\n", sharedDialogHolds(bytes));
        driver::presses(dialog, "pushButton_cancel");
    });
}

void quitLoop(int result) { QCoreApplication::exit(result); }

void endWhenLoopIsEnteredAgain()
{
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, qApp, [] {
        QTimer::singleShot(0, qApp, [] {
            std::puts("entered again");
            std::exit(0);
        });
    });
}

void refuseToStart(int code) { scripted::processor().results["CLP_Initalize"] = code; }

void clockLacksMemory(int lacks)
{
    static const auto usual = sigil::environment().uptime;
    sigil::environment().uptime = usual;
    if (lacks)
        sigil::environment().uptime = []() -> std::chrono::milliseconds { throw std::bad_alloc(); };
}

void userRunsDry()
{
    driver::whenShown([](QDialog& dialog) {
        clockLacksMemory(1);
        driver::presses(dialog, "pushButton_hdd");
    });
}

void lackMemoryOnce()
{
    allocations.refused = 0;
    allocations.counting = true;
}

void giveSharedObjects(int* argc, char** argv)
{
    g_pQApplication = std::make_unique<QApplication>(*argc, argv).release();
    g_dlgUserCert = std::make_unique<SelectCertDialog>(nullptr).release();
    QObject::connect(g_dlgUserCert, &QObject::destroyed, [](QObject*) { std::puts("the given dialog went"); });
}

int countSharedObjects() { return (g_pQApplication ? 1 : 0) + (g_dlgUserCert ? 1 : 0); }
