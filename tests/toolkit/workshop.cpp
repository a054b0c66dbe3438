// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/workshop.h"

#include "tests/support/tally.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace toolkit_test {
namespace {

/** Runs of programs that read or write messages, responses, stamps and key files by themselves. */
void countRuns(const std::string& command)
{
    constexpr std::array programs{"certtool --p", "cmsutil", "ocsptool", "openssl cms", "openssl ocsp",
        "openssl pkcs12", "openssl ts", "pk12util"};
    for (const std::string program : programs)
        for (std::size_t at = 0; (at = command.find(program, at)) != command.npos; ++at)
            tally("runs of " + program.substr(0, program.find(" --")));
}

/** File with the RSA key of 2048 bits of this number. Making one takes longer than all else about a certificate, so all
 *  workshops of the build tree have the same keys in turn. */
fs::path sharedKey(int number)
{
    const fs::path folder = SIGILDESK_TEST_KEYS;
    fs::path key = folder / (std::to_string(number) + ".pem");
    if (fs::exists(key))
        return key;
    fs::create_directories(folder);
    const fs::path made = folder / (std::to_string(number) + "." + std::to_string(getpid()));
    const std::string make =
        "openssl genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out '" + made.string() + "' 2>/dev/null";
    EXPECT_EQ(std::system(make.c_str()), 0) << make;
    fs::rename(made, key); // whole from the start, and another program's is as good
    return key;
}

} // namespace

int Workshop::tryRun(const std::string& command) const
{
    countRuns(command);
    const int status = std::system(("cd '" + m_folder.path() + "' && (" + command + ") >output.txt 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string Workshop::run(const std::string& command) const
{
    const int status = tryRun(command);
    EXPECT_EQ(status, 0) << command << "\n" << read("output.txt");
    return read("output.txt");
}

void Workshop::certificate(const std::string& name, const std::string& subject, const std::string& extensions,
    const std::string& issuer, const std::string& options, const std::string& keyAlgorithm) const
{
    write(name + ".cnf",
        "[req]\ndistinguished_name=dn\nstring_mask=utf8only\nutf8=yes\n[dn]\n[ext]\n" + extensions + "\n");
    const std::string key = name + ".key.pem";
    const bool shared = keyAlgorithm == "rsa:2048";
    if (shared)
        fs::copy_file(sharedKey(m_sharedKeys++), path(key), fs::copy_options::overwrite_existing);
    run("openssl req -utf8 -new -config " + name + ".cnf " +
        (shared ? "-key " + key : "-newkey " + keyAlgorithm + " -nodes -keyout " + key) + " -subj '" + subject +
        "' -out " + name + ".csr");
    const std::string signer =
        issuer.empty() ? "-signkey " + name + ".key.pem" : "-CA " + issuer + ".pem -CAkey " + issuer + ".key.pem";
    run("openssl x509 -req -in " + name + ".csr -sha256 " + signer + " -extfile " + name + ".cnf -extensions ext " +
        (options.find("-set_serial") == options.npos && !issuer.empty() ? "-CAcreateserial " : "") + options +
        " -out " + name + ".pem");
    run("openssl x509 -in " + name + ".pem -outform DER -out " + name +
        ".crt && openssl pkcs8 -topk8 -nocrypt -in " + name + ".key.pem -outform DER -out " + name + ".key");
}

std::string identitySections(const std::string& realName)
{
    return "[identify]\nrealName=FORMAT:UTF8,UTF8:" + realName + R"(
userInfo=SEQUENCE:info
[info]
attribute=SEQUENCE:attribute
[attribute]
type=OID:1.2.410.200004.10.1.1.1
value=SEQUENCE:vid
[vid]
hash=SEQUENCE:hash
value=EXPLICIT:0,FORMAT:HEX,OCT:98a8495714503f3be48bce33d512bbb529db8a841a90082b292a1530f371e22d
[hash]
algorithm=OID:2.16.840.1.101.3.4.2.1
)";
}

std::string identityExtension()
{
    return "\nsubjectAltName=otherName:1.2.410.200004.10.1.1;SEQUENCE:identify\n" + identitySections("name");
}

std::string fromHex(const std::string& hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

std::string toHex(const std::string& bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (const char c : bytes) {
        hex += digits[static_cast<unsigned char>(c) >> 4];
        hex += digits[static_cast<unsigned char>(c) & 15];
    }
    return hex;
}

std::string sha256Hex(const std::string& bytes)
{
    std::string hash(32, '\0');
    EVP_Digest(
        bytes.data(), bytes.size(), reinterpret_cast<unsigned char*>(hash.data()), nullptr, EVP_sha256(), nullptr);
    return toHex(hash);
}

} // namespace toolkit_test
