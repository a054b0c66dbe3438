// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The logo of the selection dialog.
 */
#pragma once

class QLabel;
class QPixmap;

namespace sigil {

class SelectionOptions;

class SelectionLogo {
public:
    /** @param label stays its dialog's */
    explicit SelectionLogo(QLabel* label)
        : m_label(label)
    {
    }

    /** Shows the logo that the options ask for, or else the default one. @param usim whether the USIM can be used */
    void SetLogoImage(const SelectionOptions& options, bool usim);

private:
    bool showWanted(const SelectionOptions& options);
    /** Shows the logo that the options hold as a BMP image in base64. @return whether it is shown */
    bool LoadDataforSetPixmap(const SelectionOptions& options);
    bool show(const QPixmap& logo);

    QLabel* m_label;
};

} // namespace sigil
