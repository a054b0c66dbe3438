// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The library's exported functions over the open toolkit: a handle and its byte strings.
 */
#pragma once

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <gtest/gtest.h>

#include <string>

namespace toolkit_test {

inline char* text(const std::string& value) { return const_cast<char*>(value.c_str()); }

/** A façade handle on the open toolkit. */
class Facade {
public:
    explicit Facade(int type)
    {
        EXPECT_EQ(sigildesk::initialise(m_handle, type, text(SIGILDESK_LIBRARY_FOLDER)), 0);
    }
    void* get() const { return m_handle.get(); }

private:
    sigildesk::CryptoHandle m_handle;
};

/** A byte string of a handle. */
class Bytes {
public:
    explicit Bytes(const Facade& facade, std::string content = {})
        : m_facade(facade)
    {
        HV_BINSTR_Create(m_facade.get(), &m_record);
        if (!content.empty())
            HV_BINSTR_SetData(m_facade.get(), reinterpret_cast<unsigned char*>(content.data()),
                static_cast<int>(content.size()), &m_record);
    }
    ~Bytes() { HV_BINSTR_Delete(m_facade.get(), &m_record); }
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;
    BINSTR* get() { return &m_record; }
    std::string content() const
    {
        return {reinterpret_cast<const char*>(m_record.pData), static_cast<std::size_t>(m_record.nLength)};
    }

private:
    const Facade& m_facade;
    BINSTR m_record{};
};

} // namespace toolkit_test
