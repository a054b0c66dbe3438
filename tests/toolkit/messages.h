// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the tests of messages share: certificates for signers and recipients, and the steps around a call.
 */
#pragma once

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace toolkit_test {

/** A folder with certificates that one root issued: `rsa`, `ec` and `other` (RSA) for every use, `pss` for RSASSA-PSS alone,
 *  `encipher` for keys alone and without a subject key identifier. Made once. */
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

/** A DER element by hand, for messages that no program at hand writes. */
std::string element(char tag, const std::string& body);
/** The elements in a DER element, whole. */
std::vector<std::string> children(const std::string& der);
/** A DER element with @p other wherever @p old stands in it as a whole element. Lengths around it are not the shortest. */
std::string replaced(const std::string& der, const std::string& old, const std::string& other);
/** Whether a reader of messages may answer a changed one with this code. */
bool isMessageCode(int code);
/** A message signed with SHA-256 that names it 40,000 times. */
std::string namingItsHashOften(const std::string& message);

/** Messages in memory on the face that is the parameter. Where one face has no option, 0 is all that it has. What a step
 *  makes comes back, or "code N". */
class FaceMessages : public MessageTest, public testing::WithParamInterface<const char*> {
protected:
    FaceMessages()
        : MessageTest(GetParam())
    {
    }

    static const std::string content;
    static const std::string sessionKeyHex;

    std::string sign(const std::string& signer, int option = 0, const std::string& what = content);
    std::string addSigner(const std::string& signer, const std::string& message, int option = 0);
    int process(const std::string& message, ByteString& data, int option = 0, int* count = nullptr);
    /** The content of a verified message. */
    std::string processed(const std::string& message, const std::string& detached = {});
    /** Subject and signing time of a signer of the message verified last. */
    std::string signerSubject(int index);
    /** @param recipients names of certificates, with blanks between them */
    std::string envelope(
        const std::string& recipients, int cipher, int option = 0, const std::string& what = content);
    std::string opened(const std::string& recipient, const std::string& message);
    void setSessionKey(int cipher);
    /** Under the session key. */
    std::string encrypted(const std::string& what);
    std::string decrypted(const std::string& message, const std::string& key);

    std::string time = "2026-01-02 03:04:05"; ///< of signing
};

/** "HVTK" or "GPKI" */
std::string faceName(const testing::TestParamInfo<const char*>& face);

} // namespace toolkit_test
