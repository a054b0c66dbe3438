// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/resting_controls.h"

#include <algorithm>
#include <iterator>

namespace sigil {

RestingControls::RestingControls(QDialog* dialog, const std::vector<QWidget*>& resting, QWidget* keyboard)
    : m_dialog(dialog)
    , m_keyboard(dialog->focusWidget())
{
    std::copy_if(resting.begin(), resting.end(), std::back_inserter(m_resting),
        [&](const QWidget* widget) { return widget->isEnabledTo(dialog); });
    keyboard->setFocus(); // first: a disabled control would hand the keyboard to the next one, which may be Cancel
    for (QWidget* widget : m_resting)
        widget->setEnabled(false);
    dialog->setCursor(Qt::BusyCursor);
}

RestingControls::~RestingControls()
{
    m_dialog->unsetCursor();
    for (QWidget* widget : m_resting)
        widget->setEnabled(true);
    if (m_keyboard)
        m_keyboard->setFocus();
}

} // namespace sigil
