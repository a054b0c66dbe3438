// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/late_library.h"

#include "toolkit/engine/base/error.h"

#include <dlfcn.h>

namespace toolkit {

namespace {

void* present(void* found)
{
    if (!found) {
        const char* const reason = dlerror();
        fail(SIGIL_TK_FETCH, reason ? reason : "");
    }
    return found;
}

} // namespace

LateLibrary::LateLibrary(const char* file)
    : m_library(present(dlopen(file, RTLD_NOW | RTLD_LOCAL)))
{
}

void* LateLibrary::find(const char* name) const { return present(dlsym(m_library, name)); }

} // namespace toolkit
