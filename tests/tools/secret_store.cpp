// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/tools/secret_store.h"

#include "tests/support/command.h"
#include "tests/tools/toolkit.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr std::array passwords{"password", "new", "wrong"};
constexpr std::array characterSets{"UTF-16LE", "UTF-16BE", "CP949"};

void shell(const std::string& folder, const std::string& command)
{
    const Outcome outcome = run({"sh", "-c", "cd " + folder + " && " + command});
    if (outcome.status != 0)
        throw std::runtime_error(command + ": " + outcome.err);
}

std::string findBelow(const std::string& folder, const std::string& name)
{
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().filename() == name || (name.front() == '.' && entry.path().extension() == name))
            return entry.path();
    throw std::runtime_error("no " + name);
}

/** In a process of its own, which takes what it learns with it. */
template <class Work>
void elsewhere(Work work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("the secrets could not be found out");
}

} // namespace

SecretStore::SecretStore()
{
    for (const std::string name : passwords) {
        // Korean, in a form in which this process does not know it: its own copies would be found.
        shell(path(""),
            R"(printf '\353\271\204\353\260\200\353\262\210\355\230\270-%s' $(openssl rand -hex 8) > )" + name);
        for (const std::string set : characterSets)
            shell(path(""), "iconv -f UTF-8 -t " + set + " " + name + " > " + name + "." + set);
    }
    shell(path(""),
        "chmod 600 * && mkdir home && " SAMPLE_STORE_PROGRAM
        " --target home --password \"$(cat password)\" --count 1 --families npki --state valid --keys 2"
        " --key-bits 2048 --key-variant A --pairs both --pfx --format json > report");
    shell(path(""), R"sh(sed 's/.*"identity": "\([^"]*\)".*/\1/; /^[0-9]*$/!d' report | tr -d '\n' > identity)sh");
    shell(path(""), "test -s identity && chmod 600 identity");
    elsewhere([this] {
        Toolkit toolkit;
        const std::string password = readFile(path("password"));
        const std::string sign = toolkit.decryptKey(readFile(find("signPri.key")), password);
        writeFile(path("sign"), sign);
        writeFile(path("km"), toolkit.decryptKey(readFile(find("kmPri.key")), password));
        writeFile(path("random"), toolkit.randomOf(sign));
    });
}

std::string SecretStore::find(const std::string& name) const { return findBelow(home(), name); }

MappedFile& SecretStore::operator[](const std::string& name)
{
    auto& mapped = m_mapped[name];
    if (!mapped) {
        const std::string own = path(name);
        mapped = std::make_unique<MappedFile>(fs::exists(own) ? own : find(name == "pfx" ? ".pfx" : name));
    }
    return *mapped;
}

SecretHunt SecretStore::hunt()
{
    constexpr std::size_t privateExponentAt = 303; // behind a modulus of 2048 bits and the public exponent
    SecretHunt hunt;
    for (const std::string key : {"sign", "km"})
        hunt.add(key + " key", (*this)[key].bytes().substr(privateExponentAt));
    hunt.add("identity number", (*this)["identity"].bytes());
    hunt.add("random value", (*this)["random"].bytes());
    for (const std::string name : passwords) {
        hunt.add(name == "password" ? name : name + " password", (*this)[name].bytes());
        for (const std::string set : characterSets)
            hunt.add(name + " in " + set, (*this)[name + "." + set].bytes());
    }
    return hunt;
}
