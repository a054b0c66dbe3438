// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages in files: streamed, whole or not at all, and the same messages as in memory.

#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace toolkit_test;
namespace fs = std::filesystem;

namespace {

/** Long enough for many pieces, and not of whole ones. */
const std::string& longContent()
{
    static const std::string made = [] {
        std::string bytes;
        for (int i = 0; bytes.size() < 300'001; ++i)
            bytes += std::to_string(i * 7919);
        return bytes.substr(0, 300'001);
    }();
    return made;
}

class MessageFiles : public MessageTest, public testing::WithParamInterface<const char*> {
protected:
    MessageFiles()
        : MessageTest(GetParam())
    {
        write("content", longContent());
        remove("message", "cipher", "out");
        folder = fs::path(path("content")).parent_path().string();
        EXPECT_EQ(toolkit(hvtk() ? "MEDIA_Load" : "STORAGE_Load", text(folder)), 0);
    }
    static std::string path(const std::string& name) { return messageWorkshop().path(name); }
    template <class... Names>
    static void remove(const Names&... names)
    {
        (fs::remove(path(names)), ...);
    }
    static bool exists(const std::string& name) { return fs::exists(path(name)); }
    /** No temporary file stays behind. */
    static bool isTidy(const std::string& name)
    {
        for (const auto& entry : fs::directory_iterator(fs::path(path("content")).parent_path()))
            if (entry.path().filename().string().starts_with(name + "."))
                return false;
        return true;
    }
    int sign(bool attached, const std::string& signer = "rsa", const std::string& target = "message")
    {
        ByteString certificate(toolkit, file(signer + ".crt"));
        ByteString key(toolkit, file(signer + ".key"));
        std::string name = hvtk() ? "CMS_MakeSignedData_WithContent_File" : "CMS_MakeSignedData_File";
        if (!attached)
            name = hvtk() ? "CMS_MakeSignedData_File" : "CMS_MakeSignedData_NoContent_File";
        return toolkit(name, certificate.get(), key.get(), text(source), text(time), text(target));
    }
    /** The signer's name and signing time, or "code N". */
    std::string verify(bool attached, const std::string& contentFile)
    {
        ByteString certificate(toolkit);
        std::array<char, 25> when{};
        const std::string name =
            !hvtk() && !attached ? "CMS_ProcessSignedData_NoContent_File" : "CMS_ProcessSignedData_File";
        if (const int code = toolkit(name, text(contentFile), text(message), certificate.get(), when.data()))
            return "code " + std::to_string(code);
        write("got.crt", certificate.bytes());
        return nameOf("got.crt") + " " + when.data();
    }
    int envelope(int cipher, bool withCiphertext, const std::string& recipient = "rsa")
    {
        ByteString certificate(toolkit, file(recipient + ".crt"));
        if (withCiphertext)
            return toolkit(hvtk() ? "CMS_MakeEnvelopedData_WithContent_File" : "CMS_MakeEnvelopedData_File",
                certificate.get(), text(source), cipher, text(message));
        return toolkit(hvtk() ? "CMS_MakeEnvelopedData_File" : "CMS_MakeEnvelopedData_NoContent_File",
            certificate.get(), text(source), cipher, text(message), text(cipherFile));
    }
    int open(bool withCiphertext, const std::string& recipient = "rsa")
    {
        ByteString certificate(toolkit, file(recipient + ".crt"));
        ByteString key(toolkit, file(recipient + ".key"));
        if (withCiphertext)
            return toolkit(hvtk() ? "CMS_ProcessEnvelopedData_WithContent_File" : "CMS_ProcessEnvelopedData_File",
                certificate.get(), key.get(), text(message), text(out));
        return toolkit(hvtk() ? "CMS_ProcessEnvelopedData_File" : "CMS_ProcessEnvelopedData_NoContent_File",
            certificate.get(), key.get(), text(message), text(cipherFile), text(out));
    }

    std::string folder;
    std::string time = "2026-01-02 03:04:05";
    std::string source = "content";
    std::string message = "message";
    std::string cipherFile = "cipher";
    std::string out = "out";
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, MessageFiles, testing::Values("HVTK_", "GPKI_"),
    [](const auto& face) { return std::string(face.param, 4); });

TEST_P(MessageFiles, AttachedMessagesCarryTheFile)
{
    for (const std::string signer : {"rsa", "ec"}) {
        ASSERT_EQ(sign(true, signer), 0) << toolkit.errorText();
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
        EXPECT_EQ(read("read"), longContent());
        EXPECT_EQ(verify(true, "out"), "CN = " + signer + " 2026-01-02 03:04:05") << toolkit.errorText();
        EXPECT_EQ(read("out"), longContent());
        EXPECT_EQ(verify(true, "out"), "code 3302") << "nothing is overwritten by what a message says";
        remove("out");
    }
    EXPECT_TRUE(isTidy("message"));
}

TEST_P(MessageFiles, DetachedMessagesAreVerifiedWithTheFile)
{
    ASSERT_EQ(sign(false), 0) << toolkit.errorText();
    run("openssl cms -verify -inform DER -in message -content content -CAfile root.pem -binary -out read");
    EXPECT_EQ(read("read"), longContent());
    EXPECT_EQ(verify(false, "content"), "CN = rsa 2026-01-02 03:04:05");
    write("changed", longContent() + "x");
    EXPECT_EQ(verify(false, "changed"), "code 3901");
    EXPECT_EQ(verify(false, "not there"), "code 3300");
}

TEST_P(MessageFiles, StreamedMessagesOfOpensslAreRead)
{
    run("openssl cms -sign -binary -nodetach -stream -outform DER -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    EXPECT_THAT(verify(true, "out"), testing::StartsWith("CN = rsa ")) << toolkit.errorText();
    EXPECT_EQ(read("out"), longContent());
    remove("out");
    run("openssl cms -encrypt -binary -stream -aes128 -outform DER -in content -out message -recip rsa.pem");
    EXPECT_EQ(open(true), 0) << toolkit.errorText();
    EXPECT_EQ(read("out"), longContent());
}

TEST_P(MessageFiles, AChangedMessageLeavesNoFile)
{
    ASSERT_EQ(sign(true), 0);
    std::string changed = read("message");
    changed[1000] = static_cast<char>(changed[1000] ^ 1);
    write("message", changed);
    EXPECT_EQ(verify(true, "out"), "code 3901");
    EXPECT_FALSE(exists("out"));
    changed.resize(changed.size() - 1);
    write("message", changed);
    EXPECT_EQ(verify(true, "out"), "code 3900");
    EXPECT_FALSE(exists("out"));
    EXPECT_TRUE(isTidy("out"));
}

TEST_P(MessageFiles, WhatAMakingFunctionWritesIsReplaced)
{
    write("message", "what was there");
    source = "not there";
    EXPECT_EQ(sign(true), SIGIL_TK_FILE_NOT_FOUND);
    EXPECT_EQ(read("message"), "what was there");
    source = "content";
    EXPECT_EQ(sign(true), 0);
    EXPECT_NE(read("message"), "what was there");
    EXPECT_EQ(sign(true, "rsa", "no folder/message"), SIGIL_TK_FILE_WRITE);
}

TEST_P(MessageFiles, WhatAMessageSaysReplacesNothing)
{
    ASSERT_EQ(envelope(0, true), 0) << toolkit.errorText();
    const std::string whole = read("message");
    write("out", "what was there");
    EXPECT_EQ(open(true), SIGIL_TK_FILE_WRITE);
    EXPECT_EQ(read("out"), "what was there");
    out = message;
    EXPECT_EQ(open(true), SIGIL_TK_FILE_WRITE);
    EXPECT_EQ(read("message"), whole);
    ASSERT_EQ(envelope(0, false), 0);
    out = cipherFile;
    EXPECT_EQ(open(false), SIGIL_TK_FILE_WRITE);
    remove("out");
    fs::create_symlink("elsewhere", path("out"));
    out = "out";
    EXPECT_EQ(open(false), SIGIL_TK_FILE_WRITE);
    EXPECT_FALSE(exists("elsewhere"));
    EXPECT_TRUE(isTidy("out") && isTidy("message") && isTidy("cipher"));
}

TEST_P(MessageFiles, ASignatureDoesNotReplaceWhatItSigns)
{
    fs::create_symlink("content", path("link"));
    for (const std::string target : {"content", "./content", "link"}) {
        source = target == "link" ? "content" : "link";
        EXPECT_EQ(sign(false, "rsa", target), target == "link" ? 0 : SIGIL_TK_ARGUMENT) << target;
        EXPECT_EQ(read("content"), longContent());
    }
    remove("link");
    source = "content";
    cipherFile = "../" + fs::path(folder).filename().string() + "/message";
    EXPECT_EQ(envelope(0, false), SIGIL_TK_ARGUMENT) << "two files under one name";
    EXPECT_FALSE(exists("message"));
}

TEST_P(MessageFiles, OnlyFilesAreReplaced)
{
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    fs::create_directory(path("folder"));
    for (const std::string target : {"pipe", "folder"}) {
        EXPECT_EQ(sign(true, "rsa", target), SIGIL_TK_FILE_WRITE) << target;
        message = target;
        EXPECT_EQ(envelope(0, false), SIGIL_TK_FILE_WRITE) << target;
        EXPECT_FALSE(exists("cipher")) << "half of what was to be written";
    }
    EXPECT_TRUE(fs::is_fifo(path("pipe")) && fs::is_directory(path("folder")));
    remove("pipe", "folder");
}

TEST_P(MessageFiles, ALinkIsReplacedAndNotWhatItLeadsTo)
{
    write("other", "what was there");
    fs::create_symlink("other", path("message"));
    ASSERT_EQ(sign(true), 0) << toolkit.errorText();
    EXPECT_FALSE(fs::is_symlink(path("message")));
    EXPECT_EQ(read("other"), "what was there");
    remove("other");
}

TEST_P(MessageFiles, WithoutRoomNothingAppears)
{
    const rlimit small{100'000, RLIM_INFINITY};
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::array codes{sign(true), envelope(0, true), envelope(0, false)};
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_THAT(codes, testing::Each(SIGIL_TK_FILE_WRITE));
    EXPECT_FALSE(exists("message") || exists("cipher"));
    EXPECT_TRUE(isTidy("message") && isTidy("cipher"));
}

TEST_P(MessageFiles, EnvelopesCarryTheFile)
{
    for (const std::string recipient : {"rsa", "ec"}) {
        for (const int cipher :
            {0, static_cast<int>(SIGIL_TK_CIPHER_ARIA256), static_cast<int>(SIGIL_TK_CIPHER_3DES)}) {
            ASSERT_EQ(envelope(cipher, true, recipient), 0) << toolkit.errorText();
            run("openssl cms -decrypt -provider default -provider legacy -inform DER -in message -recip " +
                recipient + ".pem -inkey " + recipient + ".key.pem -binary -out read");
            EXPECT_EQ(read("read"), longContent()) << cipher;
            ASSERT_EQ(open(true, recipient), 0) << toolkit.errorText();
            EXPECT_EQ(read("out"), longContent());
            remove("out");
        }
    }
    EXPECT_EQ(open(true, "other"), SIGIL_TK_CMS_NOBODY);
    EXPECT_FALSE(exists("out"));
}

TEST_P(MessageFiles, TheCiphertextMayHaveAFileOfItsOwn)
{
    ASSERT_EQ(envelope(SIGIL_TK_CIPHER_AES256, false), 0) << toolkit.errorText();
    EXPECT_EQ(read("cipher").size() % 16, 0U);
    run("openssl cms -cmsout -print -inform DER -in message");
    EXPECT_THAT(read("output.txt"), testing::HasSubstr("encryptedContent: <ABSENT>"));
    run("openssl cms -decrypt -inform DER -in message -content cipher -recip rsa.pem -inkey rsa.key.pem -binary "
        "-out read");
    EXPECT_EQ(read("read"), longContent());
    ASSERT_EQ(open(false), 0) << toolkit.errorText();
    EXPECT_EQ(read("out"), longContent());
    remove("cipher", "out");
    EXPECT_EQ(open(false), SIGIL_TK_FILE_NOT_FOUND);
    EXPECT_EQ(open(true), SIGIL_TK_CMS_CONTENT) << "the message has none";
    EXPECT_FALSE(exists("out"));
    write("cipher", "not looked at");
    ASSERT_EQ(envelope(SIGIL_TK_CIPHER_AES256, true), 0);
    ASSERT_EQ(open(false), 0) << "what the message has is taken";
    EXPECT_EQ(read("out"), longContent());
}

TEST_P(MessageFiles, AnEmptyFileIsAContent)
{
    write("empty", "");
    source = "empty";
    ASSERT_EQ(sign(true), 0) << toolkit.errorText();
    EXPECT_THAT(verify(true, "out"), testing::StartsWith("CN = rsa "));
    EXPECT_EQ(read("out"), "");
    remove("out");
    ASSERT_EQ(envelope(0, true), 0);
    EXPECT_EQ(open(true), 0);
    EXPECT_EQ(read("out"), "");
}

TEST_P(MessageFiles, OptionsOfTheContextHoldForFilesToo)
{
    if (!hvtk()) {
        EXPECT_FALSE(toolkit.has("CMS_SetOption"));
        return;
    }
    ASSERT_EQ(toolkit("CMS_SetOption", static_cast<int>(SIGIL_TK_MESSAGE_DETACHED)), 0);
    EXPECT_EQ(sign(true), SIGIL_TK_OPTION) << "detached with content";
    EXPECT_EQ(sign(false), 0);
    ASSERT_EQ(toolkit("CMS_SetOption", static_cast<int>(SIGIL_TK_MESSAGE_NO_ATTRIBUTES)), 0);
    ASSERT_EQ(sign(true), 0);
    EXPECT_EQ(verify(true, "out"), "CN = rsa ");
}

TEST_P(MessageFiles, MemoryDoesNotGrowWithTheFile)
{
    constexpr std::uintmax_t size = 256'000'001;
    constexpr long bound = 16L * 1024; // KiB
    const auto memory = [](const std::string& field) {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;)
            if (long value = 0; word == field && status >> value)
                return value;
        return 0L;
    };
    fs::resize_file(path("content"), size);        // zeroes behind what is there
    std::ofstream("/proc/self/clear_refs") << "5"; // forgets the highest use so far
    const long before = memory("VmRSS:");
    ASSERT_EQ(sign(true), 0) << toolkit.errorText();
    ASSERT_THAT(verify(true, "out"), testing::StartsWith("CN = rsa ")) << toolkit.errorText();
    remove("out");
    ASSERT_EQ(envelope(SIGIL_TK_CIPHER_AES128, true), 0) << toolkit.errorText();
    ASSERT_EQ(open(true), 0) << toolkit.errorText();
    EXPECT_EQ(fs::file_size(path("out")), size);
    EXPECT_GT(memory("VmHWM:"), 0);
    EXPECT_LT(memory("VmHWM:") - before, bound);
    remove("out", "message", "content");
}
