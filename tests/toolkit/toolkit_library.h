// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A toolkit as a host meets it: a shared library opened at run time, functions looked up by name.
 */
#pragma once

#include <sigildesk/binstr.h>
#include <sigildesk/open_toolkit.h>

#include <string>
#include <string_view>

namespace toolkit_test {

/** One opened library with one context. */
class ToolkitLibrary {
public:
    /** @param prefix "HVTK_" or "GPKI_" */
    explicit ToolkitLibrary(const std::string& prefix);
    ~ToolkitLibrary();
    ToolkitLibrary(const ToolkitLibrary&) = delete;
    ToolkitLibrary& operator=(const ToolkitLibrary&) = delete;

    bool has(const std::string& function) const { return find(function) != nullptr; }
    void* context() const { return m_context; }
    std::string errorText() const;

    /** Calls "PREFIX" + @p function on the context. */
    template <class... Arguments>
    int operator()(const std::string& function, Arguments... arguments) const
    {
        return reinterpret_cast<int (*)(void*, Arguments...)>(require(function))(m_context, arguments...);
    }
    /** Calls a function that takes no context. */
    template <class... Arguments>
    int bare(const std::string& function, Arguments... arguments) const
    {
        return reinterpret_cast<int (*)(Arguments...)>(require(function))(arguments...);
    }

private:
    void* find(const std::string& function) const;
    void* require(const std::string& function) const;

    std::string m_prefix;
    void* m_handle;
    void* m_context = nullptr;
};

/** A toolkit byte string that is released on the way out. */
class ByteString {
public:
    explicit ByteString(const ToolkitLibrary& library)
        : m_library(library)
    {
        m_library.bare("BINSTR_Create", &m_record);
    }
    ByteString(const ToolkitLibrary& library, std::string_view bytes)
        : ByteString(library)
    {
        std::string copy(bytes);
        m_library.bare("BINSTR_SetData", reinterpret_cast<unsigned char*>(copy.data()),
            static_cast<int>(copy.size()), &m_record);
    }
    ~ByteString() { m_library.bare("BINSTR_Delete", &m_record); }
    ByteString(const ByteString&) = delete;
    ByteString& operator=(const ByteString&) = delete;

    BINSTR* get() { return &m_record; }
    std::string bytes() const
    {
        return {reinterpret_cast<const char*>(m_record.pData), static_cast<std::size_t>(m_record.nLength)};
    }
    bool empty() const { return m_record.pData == nullptr && m_record.nLength == 0; }

private:
    const ToolkitLibrary& m_library;
    BINSTR m_record{};
};

/** A text argument: the toolkits take non-const texts. */
inline char* text(const std::string& value) { return const_cast<char*>(value.c_str()); }

} // namespace toolkit_test
