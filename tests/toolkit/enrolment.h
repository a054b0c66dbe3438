// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A user who asks authorities for certificates.
 */
#pragma once

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace toolkit_test {

inline const std::string subject = "cn=Kim,ou=person,o=Test,c=KR";
inline const std::string secret = "the secret";
inline const std::string password = "key password";
inline const std::string ecKey = "ec -pkeyopt ec_paramgen_curve:P-256";

class Enrolment : public testing::Test {
protected:
    Enrolment() { certificate("ca", "CA", "basicConstraints=critical,CA:TRUE"); }

    void certificate(const std::string& name, const std::string& commonName, const std::string& extensions,
        const std::string& issuer = {}, const std::string& key = ecKey) const
    {
        workshop.certificate(name, "/C=KR/O=Test/CN=" + commonName, extensions, issuer, "-days 365", key);
    }
    /** The `openssl` command's. */
    Server authority(const std::vector<std::string>& options = {}) const
    {
        return Server::authority(workshop, "ca", options);
    }
    void trust(const std::string& name) const
    {
        ByteString trusted(toolkit, workshop.read(name + ".crt"));
        ASSERT_EQ(toolkit("CERT_AddTrustedCert", trusted.get()), 0);
    }

    static std::string addressOf(const Server& server, const std::string& path)
    {
        return "http://127.0.0.1:" + std::to_string(server.port()) + path;
    }

    /** What a user asks for. */
    struct Application {
        std::string subject = toolkit_test::subject;
        std::string secret = toolkit_test::secret;
        std::string ca{}; ///< what the record of the authority's certificate holds
        bool withKeyManagement = false;
    };
    /** What came of it. */
    struct Result {
        int code = -1;
        std::string text{};
        std::string ca{};
        std::string certificate{};
        std::string key{};
        std::string kmCertificate{};
        std::string kmKey{};
    };
    /** @param path how the authority behaves, behind its address */
    Result request(const Server& server, const Application& application, const std::string& path = "/") const
    {
        ByteString ca(toolkit);
        if (!application.ca.empty())
            set(ca, application.ca);
        ByteString outputs[] = {ByteString(toolkit), ByteString(toolkit), ByteString(toolkit), ByteString(toolkit)};
        BINSTR* const none = nullptr;
        Result result;
        result.code = toolkit("CMP_CertRequest", text(addressOf(server, path)), 0, text("ref"),
            text(application.secret), text(application.subject), text(password), ca.get(), outputs[0].get(),
            outputs[1].get(), application.withKeyManagement ? outputs[2].get() : none,
            application.withKeyManagement ? outputs[3].get() : none);
        result.text = toolkit.errorText();
        result.ca = ca.bytes();
        result.certificate = outputs[0].bytes();
        result.key = outputs[1].bytes();
        result.kmCertificate = outputs[2].bytes();
        result.kmKey = outputs[3].bytes();
        return result;
    }
    Result request(const Server& server) const { return request(server, Application{}); }
    /** Without anything to show for it. */
    void expectFailure(const Result& result, int code, const std::string& words = {}) const
    {
        EXPECT_EQ(result.code, code) << result.text;
        EXPECT_THAT(result.text, testing::HasSubstr(words));
        EXPECT_EQ(result.certificate + result.key + result.kmCertificate + result.kmKey, "");
    }

    struct Renewal {
        bool newKey = true;
        std::string newPassword = "new password";
    };
    Result update(const Server& server, const std::string& certificate, const std::string& key,
        const std::string& ca, const Renewal& wish, const std::string& path = "/") const
    {
        ByteString old(toolkit, certificate);
        ByteString oldKey(toolkit, key);
        ByteString trusted(toolkit, ca);
        ByteString fresh(toolkit);
        ByteString freshKey(toolkit);
        Result result;
        result.code = toolkit("CMP_CertUpdate", text(addressOf(server, path)), 0, wish.newKey, text(password),
            text(wish.newPassword), old.get(), oldKey.get(), trusted.get(), fresh.get(), freshKey.get());
        result.text = toolkit.errorText();
        result.certificate = fresh.bytes();
        result.key = freshKey.bytes();
        return result;
    }
    int revoke(const Server& server, const std::string& name, int reason, ByteString& status,
        const std::string& ca = "ca") const
    {
        ByteString certificate(toolkit, workshop.read(name + ".crt"));
        ByteString key(toolkit, workshop.read(name + ".key"));
        ByteString trusted(toolkit, workshop.read(ca + ".crt"));
        return toolkit("CMP_CertRevoke", text("127.0.0.1"), server.port(), reason, certificate.get(), key.get(),
            trusted.get(), status.get());
    }

    void set(ByteString& record, const std::string& bytes) const
    {
        std::string copy = bytes;
        toolkit.bare("BINSTR_Delete", record.get());
        toolkit.bare("BINSTR_SetData", reinterpret_cast<unsigned char*>(copy.data()), static_cast<int>(copy.size()),
            record.get());
    }
    std::string opened(const std::string& keyFile, const std::string& keyPassword) const
    {
        ByteString file(toolkit, keyFile);
        ByteString key(toolkit);
        EXPECT_EQ(toolkit("PRIKEY_Decrypt", text(keyPassword), file.get(), key.get()), 0) << toolkit.errorText();
        return key.bytes();
    }
    /** The `openssl` command verifies the certificate's path and a signature of its key, and tells the subject. */
    std::string provenSubject(
        const std::string& certificate, const std::string& keyFile, const std::string& keyPassword = password) const
    {
        workshop.write("made.crt", certificate);
        workshop.write("made.key", opened(keyFile, keyPassword));
        workshop.write("text", "what is signed");
        workshop.run(
            "openssl x509 -inform DER -in made.crt -out made.pem && openssl verify -CAfile ca.pem made.pem");
        workshop.run("openssl dgst -sha256 -sign made.key -keyform DER -out signature text"
                     " && openssl x509 -in made.pem -pubkey -noout -out public.pem"
                     " && openssl dgst -sha256 -verify public.pem -signature signature text");
        return workshop.run("openssl x509 -in made.pem -noout -subject -nameopt RFC2253");
    }

    Workshop workshop;
    ToolkitLibrary toolkit{"HVTK_"};
};

} // namespace toolkit_test
