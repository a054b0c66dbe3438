// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is shown where no font has Korean letters: English, instead of a box for every letter.
 */
#pragma once

#include <QString>

namespace sigil {

class LanguageTexts;

/** @p language, or English where Korean cannot be read. Certificates keep their Korean names. */
int readableLanguage(int language);

/** @p title, with the reason where a dialog is not in the @p language that was asked for.
 *  @param texts of the readable language */
QString withReason(const QString& title, int language, const LanguageTexts& texts);

} // namespace sigil
