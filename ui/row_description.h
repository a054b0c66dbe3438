/** @file
 *  What a row of the list has no column for: the state of its certificate, and what tells two of one name apart.
 */
#pragma once

#include <sigildesk/records.h>

#include <QString>

namespace sigil {

class LanguageTexts;

/** "This certificate has expired.", "Ends in 12 days."; empty when the state is not known. */
QString stateOf(const tagCERTINFO& entry, const LanguageTexts& texts);

/** The state, serial number, issuer and dates, a line each; a line whose value is empty is left out. */
QString describe(const tagCERTINFO& entry, const LanguageTexts& texts);

} // namespace sigil
