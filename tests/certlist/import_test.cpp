// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Import of PKCS#12 files.

#include "tests/certlist/transfer.h"

#include <sys/stat.h>

#include <algorithm>
#include <tuple>

namespace fs = std::filesystem;

namespace {

TEST_F(Transfer, ImportOfASigningPair)
{
    ASSERT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 0);
    EXPECT_EQ(cert.text(), signCert);
    EXPECT_EQ(key.text(), signKey);
    EXPECT_EQ(key.at(*key.length()), '\0');
    EXPECT_FALSE(kmCertOut.given());
    EXPECT_FALSE(kmKeyOut.given());
    EXPECT_TRUE(log().empty());
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

// Kept: hosts get the signing pair a second time in place of the key-management pair.
TEST_F(Transfer, ImportOfTwoPairsGivesTheSigningPairTwice)
{
    ASSERT_EQ(import(fake::pfx("pfx", {kmCert, signCert}, {signKey, kmKey})), 0);
    EXPECT_EQ(cert.text(), signCert);
    EXPECT_EQ(key.text(), signKey);
    EXPECT_EQ(kmCertOut.text(), signCert);
    EXPECT_EQ(kmKeyOut.text(), signKey);
}

TEST_F(Transfer, ImportOfAKeyManagementPairAloneGivesNothing)
{
    EXPECT_EQ(import(fake::pfx("pfx", {kmCert}, {kmKey})), 0);
    EXPECT_FALSE(cert.given());
    EXPECT_FALSE(kmCertOut.given());
}

TEST_F(Transfer, ImportPassesOverACertificateWithoutItsKey)
{
    const std::string stranger = fake::certificate({{"pair", "S9"}});
    EXPECT_EQ(import(fake::pfx("pfx", {stranger, signCert}, {signKey, kmKey})), 0);
    EXPECT_EQ(cert.text(), signCert);
}

TEST_F(Transfer, LaterPairOfTheSameKindReplacesTheEarlierOne)
{
    const std::string other = fake::certificate({{"pair", "P2"}});
    EXPECT_EQ(import(fake::pfx("pfx", {signCert, other}, {signKey, fake::key("P2")})), 0);
    EXPECT_EQ(cert.text(), other);
    EXPECT_EQ(key.text(), fake::key("P2"));
}

TEST_F(Transfer, ImportWithAWrongPasswordDoesNotTryAgain)
{
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey}), "wrong"), 1113);
    EXPECT_EQ(doubles::callsOf("HVTK_PFX_ImportMultiPair2").size(), 1u);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_INVALIDPASSWORD", "PFXImportMultiPair2()", 4505));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, ImportTriesTheOtherMode)
{
    std::vector<int> modes;
    doubles::answer("HVTK_PFX_ImportMultiPair2", [&](const doubles::Call& call) {
        modes.push_back(call.integer(0));
        for (std::size_t output : {3, 4, 5}) // the façade wants them filled
            EXPECT_EQ(call.pointer<BINSTR>(output)->nLength, 1);
        if (call.integer(0) != 16)
            return 77;
        EXPECT_EQ(fake::replace(call.pointer<BINSTR>(3), fake::list({signCert})), 0); // in the toolkit's memory
        EXPECT_EQ(fake::replace(call.pointer<BINSTR>(4), fake::list({signKey})), 0);
        EXPECT_EQ(fake::replace(call.pointer<BINSTR>(5), "authorities"), 0);
        return 0;
    });
    EXPECT_EQ(import("file"), 0);
    EXPECT_EQ(modes, (std::vector<int>{0, 16}));
    EXPECT_EQ(cert.text(), signCert);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
    doubles::answer("HVTK_PFX_ImportMultiPair2", 77);
    EXPECT_EQ(import("file"), 1129);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_IMPORTCERT", "PFXImportMultiPair2()", 77));
    // Only the first attempt tells a wrong password.
    doubles::answer(
        "HVTK_PFX_ImportMultiPair2", [](const doubles::Call& call) { return call.integer(0) == 16 ? 4505 : 77; });
    EXPECT_EQ(import("file"), 1129);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_IMPORTCERT", "PFXImportMultiPair2()", 4505));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, KeysOfAnImportThatFailedAreWiped)
{
    doubles::answer("HVTK_PFX_ImportMultiPair2", [](const doubles::Call& call) {
        fake::replace(call.pointer<BINSTR>(4), "secret");
        return 77;
    });
    std::vector<std::string> released;
    doubles::answer("HVTK_BINSTR_Delete", [&](const doubles::Call& call) {
        released.push_back(doubles::contents(call.pointer<BINSTR>(0)));
        return doubles::release(call.pointer<BINSTR>(0));
    });
    EXPECT_EQ(import("file"), 1129);
    EXPECT_EQ(std::count(released.begin(), released.end(), std::string(6, '\0')), 2); // of both attempts
    EXPECT_EQ(std::count(released.begin(), released.end(), "secret"), 0);
}

TEST_F(Transfer, ImportOfAFileWithoutPairs)
{
    EXPECT_EQ(import(fake::pfx("pfx", {signCert, kmCert}, {signKey})), 1115);
    EXPECT_EQ(lastLog(), "CLoadDISK::GetPKCS12() - ERR_NOTEXISTCERT >> UTILGetObjectCount() : 1115");
    doubles::answer("HVTK_UTIL_GetObjectCount", 0); // counts nothing
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 1115);
}

TEST_F(Transfer, ImportOfAFileThatIsMissingIsLeftToTheToolkit)
{
    EXPECT_EQ(CLP_ImportPFX(clp, Text((disk / "missing.pfx").string()), Text("pfx"), cert.to(), nullptr, key.to(),
                  nullptr, kmCertOut.to(), nullptr, kmKeyOut.to(), nullptr),
        fake::fileError);
    EXPECT_EQ(
        lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_READCERTNKEY", "MediaDiskReadFile()", fake::fileError));
}

TEST_F(Transfer, ImportReadsRegularFilesAlone)
{
    const fs::path pipe = disk / "pipe.pfx";
    doubles::forgetCalls();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const fs::path& path : {pipe, fs::path("/dev/zero"), disk}) {
        EXPECT_EQ(CLP_ImportPFX(clp, Text(path.string()), Text("pfx"), cert.to(), nullptr, key.to(), nullptr,
                      kmCertOut.to(), nullptr, kmKeyOut.to(), nullptr),
            1129);
        EXPECT_EQ(lastLog(),
            "CLoadDISK::GetPKCS12() - ERR_IMPORTCERT >> MediaDiskReadFile() : 1129 (Msg : not a regular file)");
    }
    EXPECT_TRUE(doubles::callsOf("HVTK_MEDIA_DISK_ReadFile").empty());
    const fs::path link = disk / "link.pfx";
    writeFile(disk / "real.pfx", fake::pfx("pfx", {signCert}, {signKey}));
    fs::create_symlink("real.pfx", link);
    EXPECT_EQ(CLP_ImportPFX(clp, Text(link.string()), Text("pfx"), cert.to(), cert.length(), key.to(), key.length(),
                  kmCertOut.to(), nullptr, kmKeyOut.to(), nullptr),
        0);
    EXPECT_EQ(cert.text(), signCert);
}

/** A certificate and a key that tell which key they have in common, in the bytes of their usual forms. */
std::string shortElement(char tag, const std::string& content)
{
    return tag + std::string(1, static_cast<char>(content.size())) + content;
}
std::string tellingCertificate(const std::string& modulus)
{
    const std::string number = shortElement(0x02, "1");
    const std::string some = shortElement(0x30, "x");
    const std::string publicKey = std::string(1, '\0') + shortElement(0x30, shortElement(0x02, modulus) + number);
    const std::string subjectKey = shortElement(0x30, some + shortElement(0x03, publicKey));
    return shortElement(0x30, shortElement(0x30, number + some + some + some + some + subjectKey));
}
std::string tellingKey(const std::string& modulus)
{
    const std::string number = shortElement(0x02, "0");
    const std::string key = shortElement(0x30, number + shortElement(0x02, modulus));
    return shortElement(0x30, number + shortElement(0x30, "x") + shortElement(0x04, key));
}

TEST_F(Transfer, ImportAsksOncePerCertificateThatTellsItsKey)
{
    constexpr int pairs = 300;
    std::vector<std::string> certificates, keys;
    for (int i = 0; i < pairs; ++i) {
        certificates.push_back(tellingCertificate("modulus " + std::to_string(i)));
        keys.push_back(tellingKey("modulus " + std::to_string(pairs - 1 - i)));
    }
    doubles::answer("HVTK_CERT_Load", 0);
    doubles::answer("HVTK_CERT_GetKeyUsage", doubles::writesText("digitalSignature"));
    doubles::answer("HVTK_PRIKEY_CheckKeyPair", 0);
    EXPECT_EQ(import(fake::pfx("pfx", certificates, keys)), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").size(), std::size_t{pairs});
    EXPECT_EQ(cert.text(), certificates.back());
    EXPECT_EQ(key.text(), keys.front());
}

TEST_F(Transfer, ImportOfTooManyPairsIsRefused)
{
    // Certificates that do not tell their key, with no key that belongs to them: each asks about every key.
    std::vector<std::string> certificates(1001, fake::certificate({{"pair", "S9"}}));
    std::vector<std::string> keys(1001, signKey);
    EXPECT_EQ(import(fake::pfx("pfx", certificates, keys)), 1129);
    EXPECT_EQ(
        lastLog(), "CLoadDISK::GetPKCS12() - ERR_IMPORTCERT >> PriKeyCheckKeyPair() : 1129 (Msg : too many pairs)");
    EXPECT_TRUE(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").empty());
    certificates.resize(100);
    keys.resize(100);
    EXPECT_EQ(import(fake::pfx("pfx", certificates, keys)), 1129);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").size(), 1000u);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, ImportSteps)
{
    const std::tuple<const char*, const char*, int> rows[] = {
        {"HVTK_MEDIA_DISK_ReadFile", "MediaDiskReadFile()", 77},
        {"HVTK_UTIL_GetObjectCount", "UTILGetObjectCount()", 1129}, {"HVTK_UTIL_GetObject", "UTILGetObject()", 77},
        {"HVTK_CERT_Load", "CertLoad()", 77}, {"HVTK_CERT_GetKeyUsage", "CertGetKeyUsage()", 77}};
    for (const auto& [symbol, callee, result] : rows) {
        fake::install();
        doubles::answer(symbol, 77);
        EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), result) << symbol;
        EXPECT_NE(lastLog().find(std::string(callee) + " : 77 (Msg : words of the toolkit)"), std::string::npos);
        EXPECT_EQ(doubles::callsOf("HVTK_CERT_Unload").size(), 1u) << symbol;
        EXPECT_EQ(doubles::liveByteStrings(), 0) << symbol;
        EXPECT_FALSE(cert.given());
    }
}

TEST_F(Transfer, ImportStopsWhenTheKeysCannotBeCounted)
{
    int counted = 0;
    doubles::answer("HVTK_UTIL_GetObjectCount", [&](const doubles::Call& call) {
        *call.pointer<int>(1) = 1;
        return ++counted == 2 ? 77 : 0;
    });
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 1129);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_IMPORTCERT", "UTILGetObjectCount()", 77));
    EXPECT_EQ(counted, 2);
}

TEST_F(Transfer, ImportStopsWhenAKeyCannotBeTaken)
{
    int taken = 0;
    doubles::answer("HVTK_UTIL_GetObject", [&](const doubles::Call& call) {
        if (++taken == 2)
            return 77;
        doubles::fill(call.pointer<BINSTR>(2), signCert);
        return 0;
    });
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 77);
}

} // namespace
