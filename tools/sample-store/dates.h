// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Days and times, all in UTC.
 */
#pragma once

#include <ctime>
#include <string>

namespace sample {

inline constexpr std::time_t oneDay = 24L * 60 * 60;

/** True for an existing day written YYYY-MM-DD, from 1970 to 2037. */
bool isDay(const std::string& text);

/** Midnight of a day written YYYY-MM-DD; throws std::invalid_argument when it is not one. */
std::time_t parseDay(const std::string& text);

/** Midnight of the day that @p time lies in. */
inline std::time_t startOfDay(std::time_t time) { return time - time % oneDay; }

/** "YYYY-MM-DD HH:MM:SS". */
std::string dateText(std::time_t time);

} // namespace sample
