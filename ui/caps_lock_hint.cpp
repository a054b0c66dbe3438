// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/caps_lock_hint.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <utility>

namespace sigil {

CapsLockHint::CapsLockHint(QLineEdit* field, std::function<void(bool on)> show)
    : QObject(field)
    , m_show(std::move(show))
{
    field->installEventFilter(this);
}

bool CapsLockHint::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::FocusOut)
        turn(false);
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<QKeyEvent&>(*event);
    const QChar letter = key.text().isEmpty() ? QChar() : key.text().at(0);
    if (key.key() == Qt::Key_CapsLock)
        turn(false); // pressed: on or off shows with the next letter
    else if (letter.isUpper() || letter.isLower())
        turn(letter.isUpper() != key.modifiers().testFlag(Qt::ShiftModifier));
    return false;
}

void CapsLockHint::turn(bool on)
{
    if (std::exchange(m_on, on) != on)
        m_show(on);
}

} // namespace sigil
