// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Pairs that an authority issued, in the certificate list: in a store folder they are listed, unlocked and signed with.

#include "tests/toolkit/facade.h"
#include "tests/toolkit/server.h"
#include "tests/toolkit/workshop.h"

#include <sigildesk/sigildesk.h>

#include <gtest/gtest.h>

#include <filesystem>

using namespace toolkit_test;

namespace {

const std::string password = "enrolled1234!";

struct Released {
    ~Released() { CLP_MemFree(nullptr, reinterpret_cast<void**>(&data)); }
    std::string content() const { return data ? std::string(data, static_cast<std::size_t>(length)) : ""; }
    char* data = nullptr;
    int length = 0;
};

/** Asks an authority for both pairs and writes what it gives, key files as they come, where stores have them. */
void enrolInto(const Workshop& workshop, const std::string& folder, const Facade& facade, int port)
{
    Bytes certificate(facade);
    Bytes key(facade);
    Bytes kmCertificate(facade);
    Bytes kmKey(facade);
    ASSERT_EQ(CMPCertRequest2(facade.get(), text("127.0.0.1"), port, text("ref"), text("the secret"),
                  text("cn=Kim,ou=person,o=yessign,c=KR"), text(password), certificate.get(), key.get(),
                  kmCertificate.get(), kmKey.get()),
        0);
    std::filesystem::create_directories(workshop.path(folder));
    workshop.write(folder + "/signCert.der", certificate.content());
    workshop.write(folder + "/signPri.key", key.content());
    workshop.write(folder + "/kmCert.der", kmCertificate.content());
    workshop.write(folder + "/kmPri.key", kmKey.content());
}

} // namespace

TEST(EnrolledPair, IsListedAndSigns)
{
    const Workshop workshop;
    const std::string store = "disk/NPKI/yessign/USER/cn=Kim,ou=person,o=yessign,c=KR";
    workshop.certificate("ca", "/C=KR/O=Test/CN=CA", "basicConstraints=critical,CA:TRUE");
    const Facade facade(0);
    enrolInto(workshop, store, facade, Server::authority(workshop, "ca").port());
    sigildesk::ProcessorHandle processor;
    ASSERT_EQ(sigildesk::initialise(processor, 0, SIGIL_LANGUAGE_ENGLISH, text(SIGILDESK_LIBRARY_FOLDER)), 0);
    tagLOADCERTOPT options{};
    options.nPKITypes = SIGIL_FAMILY_GPKI | SIGIL_FAMILY_NPKI | SIGIL_FAMILY_MPKI | SIGIL_FAMILY_PPKI;
    ASSERT_EQ(CLP_SetType(processor.get(), &options), 0);
    ASSERT_EQ(CLP_SetMediaType(processor.get(), SIGIL_MEDIUM_REMOVABLE_DISK, text(workshop.path("disk")), 0), 0);
    ASSERT_EQ(CLP_LoadCertList(processor.get()), 0);
    ASSERT_EQ(CLP_GetCertCount(processor.get()), 1);
    tagCERTINFO info{};
    ASSERT_EQ(CLP_GetCertInfo(processor.get(), 0, &info), 0);
    EXPECT_STREQ(info.szSubjectDN, "cn=Kim,ou=person,o=yessign,c=KR");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(info.byKmCert), static_cast<std::size_t>(info.nKmCertLen)),
        workshop.read(store + "/kmCert.der"));

    Released key;
    Released kmKey;
    ASSERT_EQ(
        CLP_DecryptPriKey(processor.get(), 0, text(password), &key.data, &key.length, &kmKey.data, &kmKey.length),
        0);
    EXPECT_NE(kmKey.content(), key.content());
    Bytes certificate(
        facade, {reinterpret_cast<const char*>(info.bySignCert), static_cast<std::size_t>(info.nSignCertLen)});
    Bytes signer(facade, key.content());
    Bytes data(facade, "a text");
    Bytes message(facade);
    ASSERT_EQ(
        CMSMakeSignedData(facade.get(), 0, certificate.get(), signer.get(), data.get(), text(""), message.get()),
        0);
    workshop.write("message", message.content());
    EXPECT_EQ(
        workshop.run("openssl cms -verify -binary -purpose any -CAfile ca.pem -inform DER -in message 2>/dev/null"),
        "a text");
}
