// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "pick_module.h"

#include <QApplication>

#include <cstdlib>
#include <memory>

namespace {

void (*displayIsMissing)(const char* reason) = nullptr;

/** Qt ends a program that finds no display with abort(). */
void leaveWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtFatalMsg)
        return;
    displayIsMissing(qPrintable(message.simplified()));
    std::_Exit(EXIT_FAILURE);
}

} // namespace

extern "C" SIGIL_EXPORT int sigildesk_pick(
    tagINITOPT* init, tagLOADSELECTCERTOPTION* load, tagSELCERTINFO* chosen, void (*noDisplay)(const char* reason))
{
    int argc = 1;
    char name[] = "sigildesk";
    char* argv[] = {name, nullptr};
    displayIsMissing = noDisplay;
    const auto usual = qInstallMessageHandler(leaveWithoutDisplay);
    const QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    const auto extra = std::make_unique<tagEXTRAOPTION>();
    return ShowUserCert_T(init, load, nullptr, extra.get(), chosen);
}
