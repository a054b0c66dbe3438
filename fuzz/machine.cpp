// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "fuzz/machine.h"

#include "foundation/environment.h"
#include "foundation/families.h"

#include <sigildesk/codes.h>

#include <openssl/bio.h>
#include <openssl/pem.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <dlfcn.h>
#include <unistd.h>

namespace fuzz {

namespace {

std::string home;

/** Two of each kind: a pair, keys under several protections, what holds them, and messages. */
constexpr std::array sampleFiles{"toolkit_certificate/bare.pem", "toolkit_key_file/plain.pem",
    "toolkit_key_file/pbes2_seed.pem", "toolkit_pkcs12/3des.pem", "toolkit_certificate/full.pem",
    "toolkit_key_file/seed_sha1.pem", "toolkit_signed_message/attached.pem",
    "toolkit_encrypted_message/recipients.pem", "toolkit_time_stamp/token.pem",
    "toolkit_object_list/certificates.pem"};

/** What a PEM block holds. */
std::string contentOfPem(const std::string& path)
{
    const std::unique_ptr<BIO, int (*)(BIO*)> file(BIO_new_file(path.c_str(), "r"), BIO_free);
    char* name = nullptr;
    char* header = nullptr;
    unsigned char* data = nullptr;
    long size = 0;
    require(file && PEM_read_bio(file.get(), &name, &header, &data, &size) == 1, "a sample is PEM");
    std::string content(reinterpret_cast<char*>(data), static_cast<std::size_t>(size));
    OPENSSL_free(name);
    OPENSSL_free(header);
    OPENSSL_free(data);
    return content;
}

void write(const std::string& path, std::string_view bytes)
{
    std::error_code failure;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), failure);
    if (!failure)
        writeFile(path, bytes);
}

/** The names of a certificate's files; of families that keep them beside each other, behind the certificate's own. */
std::string storeFile(const sigil::CertificateFiles& files, Script& script, const std::string& name)
{
    const std::array endings{files.signCert, files.signKey, files.kmCert, files.kmKey};
    const std::string ending = script.oneOf(endings);
    if (!files.mark)
        return files.separator + name + ending;
    const std::string certificate = name + files.mark;
    return certificate.substr(0, certificate.size() - ending.size()) + ending;
}

} // namespace

Machine::Machine()
{
    home = m_folder.path();
    sigil::Environment& environment = sigil::environment();
    environment.homeFolder = [] { return home; };
    environment.mountTable = path("mtab");
    environment.traceFolder = environment.pluginFolder = home;
    setenv("HOME", home.c_str(), 1);
    require(chdir(home.c_str()) == 0, "the machine has its folder");
}

Machine::~Machine() { static_cast<void>(!chdir("/")); }

const std::vector<std::string>& samples()
{
    static const std::vector<std::string> all = [] {
        std::vector<std::string> contents;
        for (const char* const file : sampleFiles)
            contents.push_back(contentOfPem(std::string(SIGILDESK_FUZZ_CORPUS "/") + file));
        return contents;
    }();
    return all;
}

std::string content(Script& script)
{
    constexpr unsigned own = 240;
    constexpr unsigned changed = 200;
    const unsigned kind = script.number();
    if (kind >= own)
        return text(script.bytes());
    std::string sample = samples()[kind % samples().size()];
    if (kind >= changed) {
        const std::size_t high = script.number();
        sample[(high << 8U | script.number()) % sample.size()] = static_cast<char>(script.number());
    }
    return sample;
}

std::string password(Script& script)
{
    const std::array words{std::string("password"), std::string("another"), std::string()};
    return script.oneOf(words);
}

std::string fileName(Script& script)
{
    std::string name = text(script.word());
    name = name.substr(0, name.find('\0'));
    std::replace(name.begin(), name.end(), '/', '_');
    return name.empty() || name.front() == '.' ? "name" : name;
}

void addStoreFile(const Machine& machine, Script& script)
{
    const sigil::Family& family = script.oneOf(sigil::families());
    const std::string base = script.number(2) == 0 ? machine.disk() : machine.path();
    const std::string folder = script.oneOf(family.hardDisk.folders);
    const std::string name = script.number(4) == 0 ? fileName(script) : "cn=name,ou=unit,o=yessign,c=kr";
    const std::string file = storeFile(family.files, script, name);
    write(base + folder + file, content(script));
}

std::string& libraryFolder()
{
    static std::string folder = [] {
        // The fuzzer does not get over code that goes away.
        for (const char* const toolkit : {"libHVCToolkitV30.so", "libgpkiapi_v15.so"})
            require(dlopen((std::string(SIGILDESK_LIBRARY_FOLDER "/") + toolkit).c_str(), RTLD_NOW | RTLD_NODELETE),
                "a toolkit can be loaded");
        return std::string(SIGILDESK_LIBRARY_FOLDER);
    }();
    return folder;
}

void requireStated(int code, const char* function)
{
    SigilCodeText text{};
    if (sigil_code_text(code, SIGIL_LANGUAGE_ENGLISH, &text) == SIGIL_SUCCESS)
        return;
    std::fprintf(stderr, "%s answers %d, which nothing names\n", function, code);
    std::abort();
}

} // namespace fuzz
