// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Sessions, what they hand out, and versions.
#include "sigil/call.h"
#include "sigil/installed_folder.h"

#include "foundation/secret.h"
#include "jobs/failure.h"

#include <cstdlib>

using host::need;

namespace {

host::Language languageOf(int language)
{
    need(language == 0 || language == SIGIL_LANGUAGE_KOREAN || language == SIGIL_LANGUAGE_ENGLISH, "the language");
    return language == SIGIL_LANGUAGE_KOREAN ? host::Language::Korean : host::Language::English;
}

} // namespace

int sigil_open(const SigilOpenOptions* options, SigilSession** session)
{
    if (!session)
        return SIGIL_BAD_ARGUMENT;
    *session = nullptr;
    try {
        const SigilOpenOptions wanted = host::known(options);
        auto opened = std::make_unique<SigilSession>();
        opened->setting = {
            wanted.folder ? wanted.folder : host::installedFolder(), wanted.toolkit, languageOf(wanted.language)};
        opened->crypto = std::make_unique<const host::Crypto>(opened->setting);
        *session = opened.release();
        return SIGIL_SUCCESS;
    } catch (...) {
        return host::codeOfException(nullptr);
    }
}

void sigil_close(SigilSession* session) { delete session; }

const char* sigil_error_text(const SigilSession* session) { return session ? session->error.c_str() : ""; }

void sigil_free(SigilBytes* bytes)
{
    if (!bytes)
        return;
    sigil::wipe(bytes->data, bytes->size);
    std::free(bytes->data); // NOLINT(*-malloc): it comes from C
    *bytes = {};
}

const char* sigil_version(void) { return SIGILDESK_VERSION; }
