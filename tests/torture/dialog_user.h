// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Who works with the dialogs of a session: looks at the one on top in each turn of the event loop, posts what a mouse and a
 *  keyboard would, and closes a dialog that there is nothing left to do in. What it does itself is no event.
 */
#pragma once

#include <QDialog>
#include <QObject>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace torture {

/** Something that is done once in the next dialog of a class. */
struct Move {
    std::string dialog; ///< class; "listing" for a selection dialog that lists
    std::function<void(QDialog&)> make;
};
using Moves = std::vector<Move>;

/** Presses and releases the mouse on a button. */
Move presses(const char* dialog, const char* button);
/** The same on the page of a tab widget. */
Move turnsTo(const char* dialog, const char* tabs, int page);
/** The same on a row of a table. */
Move clicks(const char* dialog, const char* table, int row);
/** Types a text into a field, character by character. */
Move types(const char* dialog, const char* field, const std::string& text);
/** Has the file chooser take a file. */
Move chooses(const std::string& file);

class DialogUser : public QObject {
public:
    /** @param accusations  texts of boxes that blame a file or a password */
    explicit DialogUser(QStringList accusations);

    /** Begins with these moves. */
    void plan(const Moves& moves);
    /** Ends @p leaves, the application's event loop, when there is no dialog. */
    void planToLeave(int leaves);
    void stop();
    /** Whether the first box that was shown blamed something. */
    bool wasBlamed() const { return m_blamed; }

protected:
    void timerEvent(QTimerEvent* event) override;
    bool event(QEvent* event) override;

private:
    void look(QDialog& dialog);
    void act(QDialog& dialog, const std::string& name);
    /** Until what was posted has been delivered. */
    void waits();

    const QStringList m_accusations;
    const Moves* m_moves = nullptr;
    std::vector<bool> m_made;
    int m_timer = 0;
    int m_leaves = 0;
    bool m_waits = false;
    const QDialog* m_top = nullptr; ///< in the turn before, only to be compared
    bool m_boxSeen = false;
    bool m_blamed = false;
};

} // namespace torture
