// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The validity of one of many certificates.
 */
#pragma once

namespace sigil {

/** CUtil::GetValidity() by the zone that the process last noticed (noticeZone()), which a list asks for once. */
int validityInKnownZone(bool otherKeySize, int family, const char* policyText, const char* notBefore,
    const char* notAfter, int fromSize, char* fromOut, int toSize, char* toOut, int* remainDays, int* state);

} // namespace sigil
