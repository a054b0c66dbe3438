// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The entry points of the dialogs, with C linkage.

#include "ui/SigilDesk.h"

#include "foundation/secret.h"
#include "foundation/text_field.h"
#include "ui/select_cert_dialog.h"

#include <sigildesk/dialogs.h>
#include <sigildesk/log.h>

#include <QApplication>
#include <chrono>
#include <memory>
#include <new>
#include <thread>
#include <utility>

// Plain pointers: a host may leave the process from inside the event loop, and Qt does not take kindly to an application
// object that is destroyed after that.
QApplication* g_pQApplication = nullptr;
SelectCertDialog* g_dlgUserCert = nullptr;

namespace {

/** Applies the caller's options. @return 0, else the entry point's result */
int applyOptions(SelectCertDialog& dialog, tagINITOPT* init, tagLOADSELECTCERTOPTION* load, tagEXTRAOPTION* extra)
{
    const int rv = dialog.SetInitOption(init, load, extra);
    if (rv != 0)
        return rv;
    dialog.SetLibraryFolder(sigil::fieldText(init->szLibraryFolder));
    dialog.InitSetControl();
    return 0;
}

void openMedium(SelectCertDialog& dialog, const tagLOADSELECTCERTOPTION* load)
{
    dialog.SetInitMediaCert(load && load->byMemoryCert != 0 ? SIGIL_MEDIUM_MEMORY : SIGIL_MEDIUM_HARD_DISK);
}

/** Runs the dialog, unless the user gave up while it listed. @return what it was closed with; 1000 when memory ran out */
int run(SelectCertDialog& dialog) { return dialog.State().isGivenUp() ? QDialog::Rejected : dialog.exec(); }

/** @return the entry point's result */
int handOut(SelectCertDialog& dialog, bool accepted, tagSELCERTINFO* result)
{
    if (!accepted)
        return SIGIL_CANCELLED;
    dialog.GetSelectCertinfo(result);
    return 0;
}

/** What ShowUserCertInit made goes with its call, whichever way that ends. */
class SharedObjectsOfOneCall {
public:
    SharedObjectsOfOneCall() = default;
    ~SharedObjectsOfOneCall()
    {
        std::unique_ptr<SelectCertDialog>(std::exchange(g_dlgUserCert, nullptr)).reset();
        QCoreApplication::exit(0);
        std::unique_ptr<QApplication>(std::exchange(g_pQApplication, nullptr)).reset();
    }
    SharedObjectsOfOneCall(const SharedObjectsOfOneCall&) = delete;
    SharedObjectsOfOneCall& operator=(const SharedObjectsOfOneCall&) = delete;
};

/** Leaves no key in the shared dialog, whichever way a call ends. */
class KeysOfOneCall {
public:
    explicit KeysOfOneCall(SelectCertDialog& dialog)
        : m_dialog(dialog)
    {
    }
    ~KeysOfOneCall() { m_dialog.State().forgetKeys(); }
    KeysOfOneCall(const KeysOfOneCall&) = delete;
    KeysOfOneCall& operator=(const KeysOfOneCall&) = delete;

private:
    SelectCertDialog& m_dialog;
};

} // namespace

// A host in C knows no exceptions: every entry point keeps them inside.

int ShowUserCertInit(int argc, char** argv)
try {
    const SharedObjectsOfOneCall shared;
    if (!g_pQApplication)
        g_pQApplication = std::make_unique<QApplication>(argc, argv).release();
    if (!g_dlgUserCert)
        g_dlgUserCert = std::make_unique<SelectCertDialog>(nullptr).release();
    int result = 0;
    do
        result = QApplication::exec();
    while (g_dlgUserCert->State().finishFlag() != 1);
    return result;
} catch (const std::bad_alloc&) {
    return SIGIL_NO_MEMORY;
}

int ShowUserCert(void*, void*, tagINITOPT* pInit, tagLOADSELECTCERTOPTION* pLoad, void*, tagEXTRAOPTION* pExtra,
    tagSELCERTINFO* pResult)
try {
    // Without ShowUserCertInit there is nothing to wait for; hosts rely on the call not coming back with a code.
    while (!g_pQApplication)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const sigil::TracesCleared cleared;
    SelectCertDialog& dialog = *g_dlgUserCert;
    if (dialog.IsListing()) // for another call, which is still on the stack
        return SIGIL_CANCELLED;
    const KeysOfOneCall keys(dialog);
    int rv = applyOptions(dialog, pInit, pLoad, pExtra);
    if (rv != 0)
        return rv;
    dialog.State().startCall();
    rv = dialog.Initalize();
    LOG_LEVEL("DEBUG", __FILE__, __LINE__, __func__, "Initalize : %d", rv);
    if (rv != 0)
        return rv;
    openMedium(dialog, pLoad);
    dialog.setModal(true);
    if (run(dialog) == SIGIL_NO_MEMORY)
        return SIGIL_NO_MEMORY;
    if (!dialog.State().isDecided())
        dialog.reject(); // the host ended the event loop under the dialog, which is still shown
    const int result = handOut(dialog, dialog.State().acceptedFlag() == 1, pResult);
    LOG_LEVEL("DEBUG", __FILE__, __LINE__, __func__, "ShowUserCert end");
    return result;
} catch (const std::bad_alloc&) {
    return SIGIL_NO_MEMORY;
}

int ShowUserCert_T(
    tagINITOPT* pInit, tagLOADSELECTCERTOPTION* pLoad, void*, tagEXTRAOPTION* pExtra, tagSELCERTINFO* pResult)
try {
    const sigil::TracesCleared cleared;
    SelectCertDialog dialog;
    int rv = applyOptions(dialog, pInit, pLoad, pExtra);
    if (rv == 0)
        rv = dialog.Initalize();
    if (rv != 0)
        return rv;
    openMedium(dialog, pLoad);
    const int ended = run(dialog);
    return ended == SIGIL_NO_MEMORY ? ended : handOut(dialog, ended == QDialog::Accepted, pResult);
} catch (const std::bad_alloc&) {
    return SIGIL_NO_MEMORY;
}
