// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Shows the selection dialog for the command and the C library, which link no Qt and are not to end with it. What is said on
// the standard input, a socket, stands in jobs/dialog_exchange.h.

#include "foundation/secret.h"
#include "jobs/dialog_exchange.h"

#include <QApplication>
#include <QSocketNotifier>

#include <cstdlib>
#include <memory>
#include <sys/prctl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int channel = STDIN_FILENO;

/** Ends at once: Qt does not like to go, and with the process goes all that it holds. */
[[noreturn]] void leave() { std::_Exit(EXIT_SUCCESS); }

/** Qt ends a program that finds no display with abort(). */
void leaveWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtFatalMsg)
        return;
    host::DialogAnswer answer{SIGIL_NO_DISPLAY, {}, {}};
    qstrncpy(answer.reason, qPrintable(message.simplified()), sizeof answer.reason);
    host::sendRecord(channel, answer);
    leave();
}

/** The application, as windows and their managers know it. */
void openDisplay()
{
    static int count = 1;
    static char name[] = "sigildesk";
    static char* words[] = {name, nullptr};
    const auto usual = qInstallMessageHandler(leaveWithoutDisplay);
    static QApplication* const application = std::make_unique<QApplication>(count, words).release();
    Q_UNUSED(application)
    qInstallMessageHandler(usual);
}

void answer(host::DialogRequest& request)
{
    std::vector<host::DialogAnswer, sigil::SecretAllocator<host::DialogAnswer>> answer(1);
    const auto extra = std::make_unique<tagEXTRAOPTION>();
    answer.front().code =
        ShowUserCert_T(&request.init, &request.load, nullptr, extra.get(), &answer.front().chosen);
    host::sendRecord(channel, answer.front());
}

} // namespace

int main()
{
    prctl(PR_SET_DUMPABLE, 0);
    host::DialogRequest request{};
    if (!host::sendRecord(channel, host::dialogGreeting) || !host::receiveRecord(channel, request))
        return EXIT_FAILURE;
    openDisplay();
    const QSocketNotifier nobodyWaits(channel, QSocketNotifier::Read); // who waits sends no more
    QObject::connect(&nobodyWaits, &QSocketNotifier::activated, qApp, leave);
    answer(request);
    leave();
}
