// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A dialog that is busy: what must wait rests, what need not wait goes on.
 */
#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

namespace sigil {

/** Disables the controls of a dialog that answer to the user, but for some, and shows the pointer of a busy program. At the
 *  end everything is as it was. */
class RestingControls {
public:
    /** @param resting   disabled, those of them that are enabled
     *  @param keyboard  has the keyboard meanwhile, so that a key typed ahead presses nothing */
    RestingControls(QDialog* dialog, const std::vector<QWidget*>& resting, QWidget* keyboard);
    ~RestingControls();
    RestingControls(const RestingControls&) = delete;
    RestingControls& operator=(const RestingControls&) = delete;

private:
    QDialog* m_dialog;
    QPointer<QWidget> m_keyboard;
    std::vector<QWidget*> m_resting;
};

} // namespace sigil
