// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the open toolkit says of a certificate that does not verify, in the language of the dialogs.
 */
#pragma once

#include <QString>

namespace sigil {

class LanguageTexts;

/** A sentence of the toolkit in another language stands for the whole of @p cause, its English detail too. What is not
 *  known, or is in that language already, stays as it is. */
QString causeIn(const LanguageTexts& texts, const QString& cause);

} // namespace sigil
