// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Invented people, companies and their numbers.
 */
#pragma once

#include "tools/sample-store/random.h"

#include <string>

namespace sample {

struct Person {
    std::string name;  ///< UTF-8, "홍길동"
    std::string latin; ///< "HONG GILDONG"
};

Person inventPerson(Random& random);

/** A company's name in UTF-8, some with a blank or parentheses in it. */
std::string inventCompany(Random& random);

/** A 13-digit resident number that nobody has: its day of birth is 00. */
std::string inventResidentNumber(Random& random);

/** A 10-digit business number that no tax office gives out: it begins with 000. */
std::string inventBusinessNumber(Random& random);

/** @p count decimal digits. */
std::string inventDigits(Random& random, int count);

} // namespace sample
