/** @file
 *  What the tests of messages share: certificates for signers and recipients, and the steps around a call.
 */
#pragma once

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gtest/gtest.h>

#include <string>

namespace toolkit_test {

/** A folder with certificates that one root issued: `rsa`, `ec` and `other` (RSA) for every use, `encipher` for keys alone
 *  and without a subject key identifier. Made once. */
const Workshop& messageWorkshop();

class MessageTest : public testing::Test {
protected:
    explicit MessageTest(const std::string& prefix)
        : toolkit(prefix)
        , m_hvtk(prefix == "HVTK_")
    {
    }

    bool hvtk() const { return m_hvtk; }
    static std::string file(const std::string& name) { return messageWorkshop().read(name); }
    static std::string read(const std::string& name) { return messageWorkshop().read(name); }
    static void write(const std::string& name, const std::string& bytes) { messageWorkshop().write(name, bytes); }
    static void run(const std::string& command) { messageWorkshop().run(command); }
    /** "CN = rsa" */
    static std::string nameOf(const std::string& certificate);
    /** A list of the named certificates. */
    static std::string listOf(const std::string& names);
    /** The last OCTET STRING of @p size bytes; empty when there is none. */
    static std::string octetsIn(const std::string& der, int size);
    /** The signature of a message with one RSA-2048 signer. */
    static std::string signatureIn(const std::string& message) { return octetsIn(message, 256); }
    /** An NSS database `nss` with all keys. */
    static void makeNssDatabase();

    /** What a call hands out, or "code N". */
    template <class Call>
    std::string make(Call call)
    {
        ByteString out(toolkit);
        const int code = call(out.get());
        return code == 0 ? out.bytes() : "code " + std::to_string(code);
    }

    ToolkitLibrary toolkit;

private:
    bool m_hvtk;
};

} // namespace toolkit_test
