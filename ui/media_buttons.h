// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The six media buttons of the selection dialog: their pictures, texts and states.
 */
#pragma once

class Ui_SelectCertDialog;

namespace sigil {

class LanguageTexts;

class MediaButtons {
public:
    /** @param form stays its dialog's */
    explicit MediaButtons(Ui_SelectCertDialog& form);

    /** Text and picture of a media button. @param state 0 disabled, 1 enabled, 2 enabled and in use
     *  @param bit 1 hard disk, 2 removable disk, 4 USIM, 8 token, 16 smart card, 32 phone; others: nothing happens */
    void SetButtonImage(int state, int bit, int language, const LanguageTexts& texts);

private:
    void giveCaptionsOneSize();

    Ui_SelectCertDialog& m_form;
};

} // namespace sigil
