// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A folder of its own for a test, programs run in it, and certificates made by the `openssl` command.
 */
#pragma once

#include "tests/support/files.h"
#include "toolkit/engine/base/bytes.h"

#include <string>

namespace toolkit_test {

class Workshop {
public:
    std::string path(const std::string& name) const { return m_folder.path(name); }
    void write(const std::string& name, const std::string& bytes) const { m_folder.write(name, bytes); }
    std::string read(const std::string& name) const { return readFile(path(name)); }
    /** Runs a shell command in the folder and returns its output; fails the test when the command fails. */
    std::string run(const std::string& command) const;
    /** Exit status of a shell command in the folder; its output is dropped. */
    int tryRun(const std::string& command) const;

    /** Makes NAME.crt (DER), NAME.key (PKCS#8, DER) and NAME.pem/NAME.key.pem.
     *  @param subject "/C=KR/O=.../CN=..." in UTF-8
     *  @param extensions lines of an extension section
     *  @param issuer name of another one made here; empty for a self-signed one
     *  @param options more options of `openssl x509`/`openssl req`, for example "-days 30" */
    void certificate(const std::string& name, const std::string& subject, const std::string& extensions,
        const std::string& issuer = {}, const std::string& options = "-days 365",
        const std::string& keyAlgorithm = "rsa:2048") const;

private:
    TemporaryFolder m_folder;
    mutable int m_sharedKeys = 0; ///< that certificates have taken
};

/** The random value of the keys that the tests know, as digits. */
constexpr const char* randomHex = "a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3";

inline std::string stringOf(toolkit::View bytes) { return {toolkit::chars(bytes), bytes.size()}; }

/** Sections behind an extension "SEQUENCE:identify": identity data of the number 0000001111111 and the random value
 *  a0 a1 ... b3. */
std::string identitySections(const std::string& realName);
/** Last lines of an extension section: these identity data as the only alternative name. */
std::string identityExtension();

std::string fromHex(const std::string& hex);
std::string toHex(const std::string& bytes);
std::string sha256Hex(const std::string& bytes);

} // namespace toolkit_test
