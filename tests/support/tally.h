// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Counts what a test program tries, and tells it when the program ends: "tally: mutations of messages 4711".
 */
#pragma once

#include <cstddef>
#include <string>

void tally(const std::string& what, std::size_t times = 1);
