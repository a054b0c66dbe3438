// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The owner of a toolkit byte string, for the layers above.
 */
#pragma once

#include "foundation/secret.h"

#include <sigildesk/binary.h>
#include <sigildesk/crypto/frame.h>

#include <new>

namespace sigil {

/** What a toolkit answers that lacks memory. */
constexpr int toolkitNoMemory = 3002;

/** Whether the toolkit lacked memory: it has refused nothing. The façade's own 1000 is none, since it also says that a field is
 *  missing. */
inline bool isShortage(int code) { return code == toolkitNoMemory; }

/** One byte string in toolkit memory. It is created on a façade handle and released on the same handle on every path;
 *  the handle must outlive it. The bytes are wiped before they go back: many are keys. */
class ToolkitBytes {
public:
    /** An empty byte string, to receive an output. */
    explicit ToolkitBytes(void* facade)
        : m_facade(facade)
    {
        HV_BINSTR_Create(m_facade, &m_bytes);
    }
    /** A byte string filled with a copy of @p length bytes; empty when there are none or the toolkit refuses. Throws as
     *  set(). */
    ToolkitBytes(void* facade, const void* data, int length)
        : ToolkitBytes(facade)
    {
        set(data, length);
    }
    ~ToolkitBytes() { release(); }
    ToolkitBytes(const ToolkitBytes&) = delete;
    ToolkitBytes& operator=(const ToolkitBytes&) = delete;

    /** Replaces the contents with a copy of @p length bytes. Throws std::bad_alloc when the toolkit lacks memory: the call
     *  that is to work on them would refuse nothing instead. @return HV_BINSTR_SetData's result; 1001 for none */
    int set(const void* data, int length)
    {
        clear();
        // The toolkits take the bytes as writable but only read them.
        const int code =
            HV_BINSTR_SetData(m_facade, static_cast<unsigned char*>(const_cast<void*>(data)), length, &m_bytes);
        if (code == toolkitNoMemory)
            throw std::bad_alloc();
        return code;
    }

    /** Gives the contents back to the toolkit, so that the record can receive another output. */
    void clear()
    {
        release();
        m_bytes = BINSTR{};
        HV_BINSTR_Create(m_facade, &m_bytes);
    }

    /** The record, as input or output of one call. */
    BINSTR* get() { return &m_bytes; }
    char* data() const { return reinterpret_cast<char*>(m_bytes.pData); }
    int size() const { return m_bytes.nLength; }
    bool empty() const { return !m_bytes.pData || m_bytes.nLength < 1; }

    /** The contents in memory of the library's own. */
    CBinary copy() const { return empty() ? CBinary() : CBinary(data(), size()); }

private:
    void release()
    {
        wipe(data(), empty() ? 0 : static_cast<std::size_t>(size()));
        HV_BINSTR_Delete(m_facade, &m_bytes); // harmless when nothing was filled
    }

    void* m_facade;
    BINSTR m_bytes{};
};

} // namespace sigil
