// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as the file that a password, a new password or an identity number stands in.

#include "tools/sigildesk/secrets.h"
#include "fuzz/memory_file.h"
#include "jobs/failure.h"

#include <cstring>

#include <sys/stat.h>

namespace {

template <class Ask>
void ask(const char* option, const std::string& path, Ask question)
{
    host::Arguments arguments;
    arguments.add(option, {path});
    host::Output output{host::OutputStyle()};
    const host::Session session{{"", SIGIL_TOOLKIT_MAKER, host::Language::English}, arguments, output};
    try {
        question(session);
    } catch (const host::Failure& failure) {
        require(!failure.message(host::Language::Korean).empty(), "why there is no secret is told");
    }
}

} // namespace

FUZZ_TARGET(tools_secrets, input)
{
    const fuzz::MemoryFile file(fuzz::text(input));
    chmod(file.path().c_str(), S_IRUSR | S_IWUSR);
    const std::string line = fuzz::text(input).substr(0, fuzz::text(input).find('\n'));
    ask("--password-file", file.path(), [&](const host::Session& session) {
        host::Secret secret = host::askPassword(session, "name").secret;
        require(line.starts_with(secret.chars()), "a password is the first line");
        require(std::strlen(secret.chars()) + 1 >= line.size(), "a password is the whole first line");
    });
    ask("--new-password-file", file.path(), [](const host::Session& session) {
        require(!host::askNewPassword(session, "name").empty(), "a new password is never empty");
    });
    ask("--identity-file", file.path(), [](const host::Session& session) { host::askIdentity(session, "name"); });
}
