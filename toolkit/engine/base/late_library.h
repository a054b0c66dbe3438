// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Libraries that few hosts come to need. Loading the clients of the network takes longer than all the rest of a start, and most
 *  hosts never fetch anything, so the engine's libraries are not linked with them.
 */
#pragma once

namespace toolkit {

/** A library that is loaded when this is made. It stays loaded, since it may have begun things of its own. */
class LateLibrary {
public:
    /** Throws SIGIL_TK_FETCH when the library is not installed. @param file  name of the version that this was compiled with */
    explicit LateLibrary(const char* file);

    /** Throws SIGIL_TK_FETCH when the library has none of that name. */
    void* find(const char* name) const;

private:
    void* m_library;
};

/** A function of such a library; called as the function itself is. */
template <class Function>
class LateFunction {
public:
    LateFunction(const LateLibrary& library, const char* name)
        : m_function(reinterpret_cast<Function*>(library.find(name)))
    {
    }
    operator Function*() const { return m_function; }

private:
    Function* m_function;
};

} // namespace toolkit

/** Member of a structure with a LateLibrary named `library`: the function @p prefix @p name  under the second part of its
 *  name. */
// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared cannot stand in them
#define SIGIL_LATE_FUNCTION(prefix, name)                                                                          \
    ::toolkit::LateFunction<decltype(::prefix##name)> name { library, #prefix #name }
// NOLINTEND(bugprone-macro-parentheses)
