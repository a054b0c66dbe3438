// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a row of the list has no column for: the state of its certificate, and what tells two of one name apart.
 */
#pragma once

#include <QString>

namespace sigil {

class LanguageTexts;
struct CertificateRow;

/** "This certificate has expired.", "Ends in 12 days."; empty when the state is not known. */
QString stateOf(const CertificateRow& row, const LanguageTexts& texts);

/** The state, serial number, issuer and dates, a line each; a line whose value is empty is left out. */
QString describe(const CertificateRow& row, const LanguageTexts& texts);

} // namespace sigil
