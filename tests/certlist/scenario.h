// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A host's session that calls every function of the certificate list, for the torture tests.
 */
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>

/** Results of a session, in fixed memory: the torture tests let memory run out. */
struct Codes {
    std::array<int, 64> code{};
    std::size_t count = 0;
    void add(int result) { code.at(count++) = result; }
};

/** Texts of a session, made beforehand. */
struct SessionTexts {
    SessionTexts(const std::filesystem::path& library, const std::filesystem::path& disk);

    char library[260] = {};
    char disk[260] = {};
    char exported[260] = {};
    char imported[260] = {};
    char certificate[1024] = {};
    int certificateLength = 0;
    char key[64] = {};
    int keyLength = 0;
};

/** Runs the session; every buffer that is handed out is released. */
Codes runSession(SessionTexts& texts);
