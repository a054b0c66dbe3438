// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What all dialogs do alike: information boxes, the two keys that they know, and passwords in fields.
 */
#pragma once

#include "foundation/secret.h"

#include <sigildesk/codes.h>

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <functional>
#include <new>
#include <string_view>

class QAbstractItemModel;
class QDialog;
class QKeyEvent;
class QLineEdit;
class QTableView;
class QWidget;

namespace sigil {

class LanguageTexts;

/** Shows @p text as it is, without markup, in an information box with one OK button of the dialogs' language, and waits
 *  for it.  @return the button that closed the box, a QMessageBox::StandardButton */
int showInformation(QWidget* parent, const LanguageTexts& texts, const QString& caption, const QString& text);

/** Runs what Qt asks a dialog for: no exception may pass through its event loop. When memory runs out, the dialog ends with
 *  1000 as what QDialog::exec() returns. */
template <class Dialog, class Action>
void guard(Dialog& dialog, Action action)
{
    try {
        action();
    } catch (const std::bad_alloc&) {
        dialog.done(SIGIL_NO_MEMORY);
    }
}

/** Gives a dialog the icon of the library where the host's windows have none of their own. */
void giveIcon(QDialog* dialog);

/** Escape runs @p cancel and Return runs @p confirm; the keypad's Enter deliberately does neither. Every key ends here:
 *  the dialog's base class must not see it, or Enter would press a default button. A focused button has taken Return
 *  before, see letReturnPressButtons(). */
void takeKey(QKeyEvent* event, const std::function<void()>& cancel, const std::function<void()>& confirm);

/** Lets Return press the button of @p dialog that has the focus, whether or not it is auto-default, instead of
 *  confirming the dialog; a key that is held presses it once. The keypad's Enter presses none. */
void letReturnPressButtons(QDialog* dialog);

/** A tooltip that shows @p text as it is, line by line, whatever markup a certificate holds. */
QString toolTipOf(const QString& text);

/** Gives the headers of a table tooltips with their texts, which a narrow column cuts. */
void tipHeaders(QAbstractItemModel& model);

/** Has a screen reader say @p text, which @p widget shows from now on, wherever the keyboard is. */
void announce(QWidget* widget, const QString& text);

/** Makes a list of whole rows, one at a time, that cannot be edited. */
void showWholeRows(QTableView* table);

/** Puts the keyboard into a password field, with what it holds selected, so that the next try replaces it. A locked
 *  field is left alone. */
void askForPassword(QLineEdit* field);

/** Has a password field, which must be empty, type into memory that is large enough at once: of what a growing text leaves
 *  behind nobody knows. */
void giveRoom(QLineEdit* field);

/** Empties a password field and overwrites the text that it held. */
void wipeField(QLineEdit* field);

/** The text of a password field in the local 8-bit encoding; overwritten when it goes. */
class TypedPassword {
public:
    explicit TypedPassword(const QLineEdit* field);
    ~TypedPassword() { wipe(m_bytes.data(), static_cast<std::size_t>(m_bytes.capacity())); }
    TypedPassword(const TypedPassword&) = delete;
    TypedPassword& operator=(const TypedPassword&) = delete;

    std::string_view bytes() const { return {m_bytes.constData(), static_cast<std::size_t>(m_bytes.size())}; }

private:
    QByteArray m_bytes;
};

} // namespace sigil
