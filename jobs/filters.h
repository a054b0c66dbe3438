// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What certificates are chosen by.
 */
#pragma once

#include "jobs/certificate.h"

#include <string>

namespace host {

/** Whether one of its policies is this one, with dots or blanks between the numbers. */
bool hasPolicy(const Certificate& certificate, const std::string& wanted);

/** Whether @p part stands in the issuer's distinguished name, or in the name that is shown. */
bool isFromIssuer(const Certificate& certificate, const std::string& part);

/** Whether the subject is this distinguished name, whatever the case and the blanks after commas. */
bool hasSubject(const Certificate& certificate, const std::string& subject);

/** Whether the common name is this one, whatever the case. */
bool isNamed(const Certificate& certificate, const std::string& name);

/** Whether the serial number is this one, with or without what people write between its digits. */
bool hasSerial(const Certificate& certificate, const std::string& serial);

bool isValidNow(const Certificate& certificate);

/** Whether it is valid, and not for more than @p days. */
bool endsWithin(const Certificate& certificate, int days);

} // namespace host
