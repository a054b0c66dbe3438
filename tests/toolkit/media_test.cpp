// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Files as both faces read and write them.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace toolkit_test;
namespace fs = std::filesystem;

namespace {

/** The storage functions of either face, with the arguments that they have in common. */
class Media : public testing::TestWithParam<const char*> {
protected:
    bool hvtk() const { return GetParam() == std::string("HVTK_"); }
    std::string name(const std::string& operation) const
    {
        const bool frame = operation == "Load" || operation == "Unload";
        return (hvtk() ? (frame ? "MEDIA_" : "MEDIA_DISK_") : "STORAGE_") + operation;
    }
    int readFile(const std::string& path, ByteString& out)
    {
        return toolkit(name("ReadFile"), text(path), out.get());
    }
    int writeFile(const std::string& path, const std::string& bytes)
    {
        ByteString data(toolkit, bytes);
        return toolkit(name("WriteFile"), text(path), data.get());
    }
    int readCert(const std::string& path, ByteString& out)
    {
        return hvtk() ? toolkit(name("ReadCert"), text(path), out.get())
                      : toolkit(name("ReadCert"), 1, text(path), 1, out.get());
    }
    int writeCert(const std::string& path, ByteString& certificate)
    {
        return hvtk() ? toolkit(name("WriteCert"), text(path), certificate.get())
                      : toolkit(name("WriteCert"), 1, text(path), 1, certificate.get());
    }
    int deleteCert(const std::string& path)
    {
        return hvtk() ? toolkit(name("DeleteCert"), text(path)) : toolkit(name("DeleteCert"), 1, text(path), 1);
    }
    int readPriKey(const std::string& path, const std::string& password, ByteString& out)
    {
        return hvtk() ? toolkit(name("ReadPriKey"), text(path), text(password), out.get())
                      : toolkit(name("ReadPriKey"), 1, text(path), text(password), 1, out.get());
    }
    int writePriKey(int algorithm, const std::string& path, const std::string& password, ByteString& key)
    {
        return hvtk() ? toolkit(name("WritePriKey"), algorithm, text(path), text(password), key.get())
                      : toolkit(name("WritePriKey"), 1, text(path), text(password), 1, algorithm, key.get());
    }
    int deletePriKey(const std::string& path, const std::string& password)
    {
        return hvtk() ? toolkit(name("DeletePriKey"), text(password), text(path))
                      : toolkit(name("DeletePriKey"), 1, text(path), text(password), 1);
    }
    std::string at(const std::string& file) const { return workshop.path(file); }

    ToolkitLibrary toolkit{GetParam()};
    Workshop workshop;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Faces, Media, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(Media, AFileIsReplacedInOneStepAndKeptFromOthers)
{
    workshop.write("file", "old");
    chmod(at("file").c_str(), 0644);
    ASSERT_EQ(writeFile(at("file"), std::string("new\0bytes", 9)), 0);
    EXPECT_EQ(workshop.read("file"), std::string("new\0bytes", 9));
    EXPECT_EQ(fs::status(at("file")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(std::distance(fs::directory_iterator(at(".")), fs::directory_iterator()), 1) << "no temporary file";
    ByteString out(toolkit);
    ASSERT_EQ(readFile(at("file"), out), 0);
    EXPECT_EQ(out.bytes(), workshop.read("file"));
}

TEST_P(Media, WritingIntoAMissingFolderFailsWithoutATrace)
{
    EXPECT_EQ(writeFile(at("none/file"), "x"), SIGIL_TK_FILE_WRITE);
    EXPECT_EQ(writeFile("", "x"), SIGIL_TK_ARGUMENT);
    fs::create_directory(at("folder"));
    EXPECT_EQ(writeFile(at("folder"), "x"), SIGIL_TK_FILE_WRITE) << "a folder is not replaced";
    EXPECT_EQ(std::distance(fs::directory_iterator(at(".")), fs::directory_iterator()), 1);
}

TEST_P(Media, OnlyRegularFilesAreRead)
{
    ByteString out(toolkit);
    EXPECT_EQ(readFile(at("none"), out), SIGIL_TK_FILE_NOT_FOUND);
    EXPECT_EQ(readFile(at("."), out), SIGIL_TK_FILE_READ);
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(readFile(at("pipe"), out), SIGIL_TK_FILE_READ) << "and it does not wait for a writer";
    EXPECT_EQ(readFile("/dev/zero", out), SIGIL_TK_FILE_READ);
    workshop.write("large", "");
    ASSERT_EQ(truncate(at("large").c_str(), 65L * 1024 * 1024), 0);
    EXPECT_EQ(readFile(at("large"), out), SIGIL_TK_FILE_READ);
    EXPECT_TRUE(out.empty());
    workshop.write("empty", "");
    EXPECT_EQ(readFile(at("empty"), out), 0);
    EXPECT_EQ(out.get()->nLength, 0);
    EXPECT_EQ(out.get()->pData, nullptr); // which a host would not release
    if (geteuid() != 0) {
        workshop.write("secret", "x");
        chmod(at("secret").c_str(), 0);
        EXPECT_EQ(readFile(at("secret"), out), SIGIL_TK_FILE_READ);
    }
}

TEST_P(Media, RelativePathsBeginAtTheLoadedFolder)
{
    workshop.write("file", "here");
    EXPECT_EQ(toolkit(name("Load"), text(at("file"))), SIGIL_TK_FILE_NOT_FOUND);
    ASSERT_EQ(toolkit(name("Load"), text(at("."))), 0);
    ByteString out(toolkit);
    EXPECT_EQ(readFile("file", out), 0);
    EXPECT_EQ(out.bytes(), "here");
    ASSERT_EQ(toolkit(name("Unload")), 0);
    ByteString none(toolkit);
    EXPECT_EQ(readFile("file", none), SIGIL_TK_FILE_NOT_FOUND);
}

TEST_P(Media, CertificatesAreCheckedOnTheWay)
{
    workshop.certificate("user", "/CN=user", "");
    ByteString certificate(toolkit);
    ASSERT_EQ(readCert(at("user.pem"), certificate), 0);
    EXPECT_EQ(certificate.bytes(), workshop.read("user.crt")) << "PEM becomes DER";
    ASSERT_EQ(writeCert(at("copy.crt"), certificate), 0);
    EXPECT_EQ(workshop.read("copy.crt"), workshop.read("user.crt"));
    ByteString garbage(toolkit, "garbage");
    EXPECT_EQ(writeCert(at("garbage.crt"), garbage), SIGIL_TK_CERT_MALFORMED);
    EXPECT_FALSE(fs::exists(at("garbage.crt")));
    workshop.write("garbage", "garbage");
    ByteString none(toolkit);
    EXPECT_EQ(readCert(at("garbage"), none), SIGIL_TK_CERT_MALFORMED);
    ASSERT_EQ(deleteCert(at("copy.crt")), 0);
    EXPECT_FALSE(fs::exists(at("copy.crt")));
    EXPECT_EQ(deleteCert(at("copy.crt")), SIGIL_TK_FILE_NOT_FOUND);
}

TEST_P(Media, KeysAreWrittenReadAndDeletedUnderTheirPassword)
{
    workshop.certificate("user", "/CN=user", "");
    ByteString key(toolkit, workshop.read("user.key"));
    ASSERT_EQ(writePriKey(64, at("signPri.key"), "secret1!", key), 0);
    workshop.run(
        "openssl pkcs8 -provider legacy -provider default -inform DER -in signPri.key -passin pass:secret1! "
        "-topk8 -nocrypt -outform DER -out back.key && cmp back.key user.key");
    ByteString none(toolkit);
    EXPECT_EQ(readPriKey(at("signPri.key"), "wrong", none), 2004);
    EXPECT_TRUE(none.empty());
    ByteString back(toolkit);
    ASSERT_EQ(readPriKey(at("signPri.key"), "secret1!", back), 0);
    EXPECT_EQ(back.bytes(), key.bytes());
    EXPECT_EQ(deletePriKey(at("signPri.key"), "wrong"), 2004);
    EXPECT_TRUE(fs::exists(at("signPri.key")));
    EXPECT_EQ(deletePriKey(at("signPri.key"), "secret1!"), 0);
    EXPECT_FALSE(fs::exists(at("signPri.key")));
    EXPECT_EQ(deletePriKey(at("signPri.key"), "secret1!"), SIGIL_TK_FILE_NOT_FOUND);
    EXPECT_EQ(writePriKey(99, at("signPri.key"), "secret1!", key), SIGIL_TK_KEY_OPTION);
    EXPECT_FALSE(fs::exists(at("signPri.key")));
}

TEST_P(Media, KeysOfOtherProgramsAreOpened)
{
    workshop.certificate("user", "/CN=user", "");
    const auto opens = [&](const std::string& file) {
        ByteString opened(toolkit);
        EXPECT_EQ(readPriKey(at(file), "secret1!", opened), 0) << file << ": " << toolkit.errorText();
        ByteString certificate(toolkit, workshop.read("user.crt"));
        EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), opened.get()), 0) << file;
    };
    int made = 0;
    for (const std::string option : {"-v2 aes-256-cbc", "-v2 aria-128-cbc -v2prf hmacWithSHA512", "-v2 des3",
             "-v2 seed-cbc -v2prf hmacWithSHA1", "-v1 PBE-SHA1-3DES", "-v1 PBE-MD5-DES"}) {
        const std::string file = "openssl" + std::to_string(made++);
        workshop.run("openssl pkcs8 -provider legacy -provider default -topk8 -in user.key.pem -outform DER -out " +
            file + " -passout pass:secret1! " + option);
        opens(file);
    }
    for (const std::string cipher : {"aes-256", "3des-pkcs12", "3des"}) {
        workshop.run("certtool --to-p8 --load-privkey user.key.pem --password secret1! --outder --outfile " +
            cipher + " --pkcs-cipher=" + cipher);
        opens(cipher);
    }
}

TEST(GpkiStorage, HasNoOtherMediumThanDisksAndCards)
{
    const ToolkitLibrary toolkit("GPKI_");
    ByteString out(toolkit);
    for (const int medium : {-1, 0, 3}) {
        EXPECT_EQ(toolkit("STORAGE_ReadCert", medium, text("/tmp"), 1, out.get()), SIGIL_TK_MEDIUM);
        EXPECT_EQ(toolkit("STORAGE_ReadPriKey", medium, text("/tmp"), text("p"), 1, out.get()), SIGIL_TK_MEDIUM);
        EXPECT_EQ(toolkit("STORAGE_DeleteCert", medium, text("/tmp/none"), 1), SIGIL_TK_MEDIUM);
    }
}
