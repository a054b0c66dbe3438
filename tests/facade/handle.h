// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A façade handle for tests.
 */
#pragma once

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <string>

namespace {

/** A handle of one toolkit type, bound to the libraries of @p folder and finished with the object. */
class Handle {
public:
    Handle(int type, std::string folder)
        : m_result(sigildesk::initialise(m_handle, type, folder.data()))
    {
    }

    operator void*() const { return m_handle.get(); } // NOLINT: stands where the handle itself does
    /** What HV_Initalize answered. */
    int result() const { return m_result; }

private:
    sigildesk::CryptoHandle m_handle;
    int m_result;
};

/** In what the toolkit types differ, for tests that run over both. */
struct Type {
    int number;
    const char* prefix;
    int notLoaded;

    std::string symbol(const char* name) const { return std::string(prefix) + name; }
};

constexpr Type bothTypes[] = {{0, "HVTK_", 1023}, {1, "GPKI_", 1024}};

} // namespace
