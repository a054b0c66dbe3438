// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// ShowUserCert_T over sample stores, offscreen: from the call to the first paint of the window, the longest time between two
// turns of the window's events, and what the process has grown by when all is listed. The opening of a Qt window of the same
// size, which no dialog can undercut, is measured beside it.

#include "bench/process.h"

#include "foundation/environment.h"
#include "tests/support/sample_store.h"

#include <sigildesk/codes.h>
#include <sigildesk/dialogs.h>

#include <QApplication>
#include <QDialog>
#include <QTableView>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

std::string home; // what the injected environment answers

/** Watches one opening, from its making on, and closes the dialog once it is listed and painted. */
class Opening : public QObject {
public:
    Opening()
    {
        qApp->installEventFilter(this);
        connect(&m_turns, &QTimer::timeout, this, [this] { turn(); });
        m_turns.start(0);
    }

    double painted = 0;    ///< ms from the start to the end of the first paint
    double longestGap = 0; ///< ms between two turns, after the first paint
    double turns = 0;
    double grown = 0; ///< MB

private:
    double since(Clock::time_point start) const
    {
        return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && painted == 0 && qobject_cast<QDialog*>(watched)) {
            painted = since(m_start); // its children follow at once
            m_lastTurn = Clock::now();
        }
        return false;
    }
    void turn()
    {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || painted == 0)
            return;
        ++turns;
        longestGap = std::max(longestGap, since(m_lastTurn));
        m_lastTurn = Clock::now();
        const auto* list = dialog->findChild<QTableView*>();
        if (list && list->model()->rowCount() == 0)
            return;
        grown = residentMegabytes() - m_before;
        dialog->reject();
    }

    Clock::time_point m_start = Clock::now();
    Clock::time_point m_lastTurn = m_start;
    double m_before = residentMegabytes();
    QTimer m_turns;
};

struct Figures {
    std::vector<double> painted, gaps;
    double grown = 0, turns = 0;
};

void showSelection()
{
    tagINITOPT init{};
    std::snprintf(init.szLibraryFolder, sizeof init.szLibraryFolder, "%s", SIGILDESK_LIBRARY_FOLDER);
    init.nLanguage = SIGIL_LANGUAGE_KOREAN;
    tagLOADSELECTCERTOPTION load{};
    load.nPKITypes = SIGIL_FAMILY_NPKI;
    tagSELCERTINFO result{};
    if (ShowUserCert_T(&init, &load, nullptr, nullptr, &result) != SIGIL_CANCELLED)
        throw std::runtime_error("ShowUserCert_T");
}

void showBareDialog()
{
    QDialog dialog;
    dialog.setFixedSize(391, 460);
    dialog.exec();
}

template <class Show>
Figures measured(int runs, Show show)
{
    Figures figures;
    for (int run = 0; run < runs; ++run) {
        Opening opening;
        show();
        figures.painted.push_back(opening.painted);
        figures.gaps.push_back(opening.longestGap);
        figures.turns = opening.turns;
        if (run == 0)
            figures.grown = opening.grown;
    }
    return figures;
}

void print(const char* what, int certificates, const Figures& figures)
{
    std::printf("%-10s %12d %6zu %10.1f %10.1f %10.1f %12.1f %8.0f %10.1f\n", what, certificates,
        figures.painted.size(), figures.painted.front(), percentile(figures.painted, 0.5),
        percentile(figures.painted, 0.95), percentile(figures.gaps, 1), figures.turns, figures.grown);
    std::fflush(stdout); // the next store takes its time
}

void measure(int count, int runs)
{
    const SampleStore store({"--count", std::to_string(count)});
    home = store.folder().string();
    print("bare", 0, measured(runs, showBareDialog));
    print("selection", count, measured(runs, showSelection));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    sigil::environment().homeFolder = [] { return home; };
    std::printf("first paint in ms: of the first run, median and 95th percentile; longest gap in ms after it\n");
    std::printf("%-10s %12s %6s %10s %10s %10s %12s %8s %10s\n", "window", "certificates", "runs", "first",
        "median", "95 %", "longest gap", "turns", "grown MB");
    for (const auto& [count, runs] : {std::pair(100, 60), std::pair(10000, 3)})
        measure(count, runs);
}
