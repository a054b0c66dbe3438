// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Files of certificates and keys, as the disk loader writes, reads and deletes them.

#include "tests/certlist/transfer.h"

#include "certlist/load_disk.h"

#include <sigildesk/handles.h>

namespace fs = std::filesystem;

namespace {

/** Operations of the disk loader that no function of the boundary calls with all of their arguments. */
class LoaderFiles : public Transfer {
protected:
    void SetUp() override
    {
        ASSERT_EQ(sigildesk::initialise(toolkit, 0, Text(library.string())), 0);
        loader.bind(toolkit.get(), logFile.c_str());
        loader.setOptions(options);
        addKm(addNpki("b"));
        ASSERT_EQ(loader.LoadCertList(), 0);
        certificate = Text(signCert);
        plainKey = Text(signKey);
    }

    sigildesk::CryptoHandle toolkit;
    CLoadDISK loader{1, library.c_str()};
    CBinary certificate, plainKey, none;
};

TEST_F(LoaderFiles, WriteCertNKey)
{
    Text certPath((disk / "c").string());
    Text keyPath((disk / "k").string());
    Text password("p");
    EXPECT_EQ(loader.WriteCertNKey(true, false, nullptr, 0, certPath, nullptr, certificate, none), 0);
    EXPECT_EQ(readFile(disk / "c"), signCert);
    EXPECT_FALSE(fs::exists(disk / "k"));
    EXPECT_EQ(loader.WriteCertNKey(false, true, password, 0, certPath, keyPath, certificate, plainKey), 0);
    EXPECT_EQ(readFile(disk / "k"), signKey);
    EXPECT_EQ(loader.WriteCertNKey(false, false, password, 48, certPath, keyPath, certificate, plainKey), 0);
    EXPECT_EQ(readFile(disk / "k"), fake::encrypted(signKey, "p"));
    EXPECT_EQ(loader.WriteCertNKey(true, false, nullptr, 0, nullptr, nullptr, certificate, none), 1001);
    EXPECT_EQ(loader.WriteCertNKey(true, false, nullptr, 0, certPath, nullptr, none, none), 1001);
    EXPECT_EQ(loader.WriteCertNKey(false, false, nullptr, 0, certPath, keyPath, certificate, plainKey), 1001);
    EXPECT_EQ(loader.WriteCertNKey(false, false, password, 0, certPath, nullptr, certificate, plainKey), 1001);
    EXPECT_EQ(loader.WriteCertNKey(false, false, password, 0, certPath, keyPath, certificate, none), 1001);
    EXPECT_EQ(loader.WriteFile(none, certPath), 1001);
}

TEST_F(LoaderFiles, ReadCertNKey)
{
    sigil::CertNKey out;
    EXPECT_EQ(loader.ReadCertNKey(true, -1, out), 1001);
    EXPECT_EQ(loader.ReadCertNKey(true, 2, out), 1001);
    EXPECT_EQ(loader.ReadCertNKey(true, 1, out), 0); // an index equal to the count passes, kept, and yields nothing
    EXPECT_FALSE(out.hasSignPair());
    EXPECT_EQ(loader.ReadCertNKey(true, 0, out), 0);
    EXPECT_EQ(sigil::bytesOf(out.signKey), fake::encrypted(signKey, goodPassword));
    EXPECT_EQ(sigil::bytesOf(out.kmKey), fake::encrypted(kmKey, goodPassword));
    EXPECT_EQ(loader.ReadCertNKey(false, 0, out), 0);
    EXPECT_TRUE(sigil::bytesOf(out.signKey).empty()); // nothing was decrypted
}

TEST_F(LoaderFiles, ReadCertNKeyFromPath)
{
    writeFile(disk / "c", signCert);
    writeFile(disk / "k", signKey);
    writeFile(disk / "empty", "");
    const auto read = [&](const char* certFile, const char* keyFile) {
        return loader.ReadCertNKeyFromPath(
            Text((disk / certFile).string()), Text((disk / keyFile).string()), certificate, plainKey);
    };
    EXPECT_EQ(read("c", "k"), 0);
    EXPECT_EQ(sigil::bytesOf(plainKey), signKey);
    EXPECT_EQ(read("c", "empty"), 1123);
    EXPECT_EQ(lastLog(), "CLoadDISK::ReadCertNKeyFromPath() - ERR_READCERTNKEY >> (Msg : Cert&Key data is null)");
    EXPECT_EQ(read("empty", "k"), 1123);
    EXPECT_EQ(lastLog(), "CLoadDISK::ReadCertNKeyFromPath() - ERR_READCERTNKEY >> (Msg : Cert&Key data is null)");
    EXPECT_EQ(read("c", "missing"), 1123);
    EXPECT_EQ(read("missing", "k"), 1123);
}

/** The GPKI library is told the kind of key and certificate, which the maker's toolkit is not. */
TEST_F(LoaderFiles, DeleteTakesTheKeyThenTheCertificateOfEachPair)
{
    toolkit.reset();
    ASSERT_EQ(sigildesk::initialise(toolkit, 1, Text(library.string())), 0);
    loader.bind(toolkit.get(), logFile.c_str());
    doubles::answer("GPKI_STORAGE_ReadFile", doubles::fills(1, "bytes"));
    doubles::answer("GPKI_CERT_GetValidity", doubles::writesText("2024-01-01 00:00:00 ~ 2030-01-01 00:00:00"));
    addKm(addNpki("c", {}, "KICA"));
    ASSERT_EQ(loader.LoadCertList(), 0);

    std::vector<std::string> deletions;
    const auto deletes = [&](const char* what, std::size_t kind) {
        return [&deletions, what, kind](const doubles::Call& call) {
            deletions.push_back(std::string(what) + std::to_string(call.integer(kind)) + " " +
                fs::path(call.pointer<char>(1)).filename().string());
            return 0;
        };
    };
    doubles::answer("GPKI_STORAGE_DeletePriKey", deletes("key ", 3));
    doubles::answer("GPKI_STORAGE_DeleteCert", deletes("certificate ", 2));
    EXPECT_EQ(loader.DeleteCertNKey(1, Text(goodPassword)), 0);
    EXPECT_EQ(deletions,
        (std::vector<std::string>{
            "key 1 signPri.key", "certificate 1 signCert.der", "key 2 kmPri.key", "certificate 2 kmCert.der"}));
}

TEST_F(LoaderFiles, IndicesOutsideTheList)
{
    CBinary pfx;
    EXPECT_EQ(loader.MakePKCS12(1, Text("p"), pfx), 1001);
    EXPECT_EQ(loader.MakePKCS12(0, Text("p"), pfx), 1127); // nothing was decrypted
    EXPECT_EQ(loader.DeleteCertNKey(1, Text("p")), 1001);
    EXPECT_EQ(loader.DeleteCertNKey(0, nullptr), 1001);
}

} // namespace
