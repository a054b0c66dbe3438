// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Notices while a password is typed that Caps Lock is on.
 */
#pragma once

#include <QObject>
#include <functional>

class QLineEdit;

namespace sigil {

/** Qt does not tell the state of Caps Lock on every platform; a typed letter does: its case is not that of Shift. */
class CapsLockHint : public QObject {
public:
    /** @param field owns the hint
     *  @param show  is run when a letter shows that Caps Lock is on (true) and when it no longer is, or the field is
     *               left (false) */
    CapsLockHint(QLineEdit* field, std::function<void(bool on)> show);

    bool eventFilter(QObject* field, QEvent* event) override;

private:
    void turn(bool on);

    std::function<void(bool)> m_show;
    bool m_on = false;
};

} // namespace sigil
