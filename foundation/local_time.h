// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Local calendar time and its text forms.
 */
#pragma once

#include <ctime>
#include <string>

namespace sigil {

/** @p seconds since the epoch as a local calendar time; that of the epoch itself when it lies beyond all years. */
tm localTime(std::time_t seconds);

/** Notices that the host has changed its zone, as localtime(3) does with every date. That costs a look at the disk:
 *  what works on several dates asks once and goes on with localTimeInKnownZone(). */
void noticeZone();

/** As localTime(), by the zone that the process last noticed. */
tm localTimeInKnownZone(std::time_t seconds);

/** The time of day by the environment's clock, in whole seconds. */
std::time_t currentTime();

/** A calendar time in a format of strftime(3) that consists of numbers, which no locale writes differently; at most
 *  127 bytes. */
[[gnu::format(strftime, 2, 0)]] std::string formatTime(const tm& time, const char* format);

/** The current local time in such a format. */
[[gnu::format(strftime, 1, 0)]] std::string currentTimeText(const char* format);

} // namespace sigil
