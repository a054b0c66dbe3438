// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The frame of both libraries: contexts, error texts, byte strings, and what they leave alone.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/face.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/objects.h>
#include <openssl/provider.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <future>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <thread>

using namespace toolkit_test;

namespace {

class Frame : public testing::TestWithParam<const char*> {
protected:
    ToolkitLibrary toolkit{GetParam()};
};

std::string nameOf(const testing::TestParamInfo<const char*>& info) { return std::string(info.param, 4); }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, Frame, testing::Values("HVTK_", "GPKI_"), nameOf);

TEST_P(Frame, ACallWithoutAContextIsRefused)
{
    std::array<char, 64> out{"untouched"};
    void* none = nullptr;
    EXPECT_EQ(toolkit.bare("CERT_GetUID", none, 64, out.data()), SIGIL_TK_CONTEXT);
    EXPECT_EQ(toolkit.bare("API_GetErrInfo", none, 64, out.data()), SIGIL_TK_CONTEXT);
    EXPECT_STREQ(out.data(), "untouched");
    EXPECT_EQ(toolkit.bare("API_Init", static_cast<void**>(nullptr), text("")), SIGIL_TK_ARGUMENT);
}

TEST_P(Frame, FinishClearsTheContextAndIsHarmlessTwice)
{
    void* context = nullptr;
    ASSERT_EQ(toolkit.bare("API_Init", &context, text("")), 0);
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(toolkit.bare("API_Finish", &context), 0);
    EXPECT_EQ(context, nullptr);
    EXPECT_EQ(toolkit.bare("API_Finish", &context), 0);
    EXPECT_EQ(toolkit.bare("API_Finish", static_cast<void**>(nullptr)), 0);
}

TEST_P(Frame, AThreadOutlivesAContextThatItUsed)
{
    void* context = nullptr;
    std::promise<void> used;
    std::promise<void> gone;
    std::thread user([&] {
        ByteString random(toolkit);
        EXPECT_EQ(toolkit.bare("API_Init", &context, text("")), 0);
        EXPECT_EQ(toolkit.bare("CRYPT_GenRandom", context, 16, random.get()), 0);
        used.set_value();
        gone.get_future().wait();
    });
    used.get_future().wait();
    mallopt(M_PERTURB, 0x55); // whoever reads what was released goes wrong
    EXPECT_EQ(toolkit.bare("API_Finish", &context), 0);
    gone.set_value();
    user.join();
    mallopt(M_PERTURB, 0);
}

TEST_P(Frame, TheTextOfTheLastFailureIsKeptAndCut)
{
    ByteString garbage(toolkit, "garbage");
    EXPECT_EQ(toolkit("CERT_Load", garbage.get()), SIGIL_TK_CERT_MALFORMED);
    EXPECT_THAT(toolkit.errorText(), testing::StartsWith("The certificate is damaged ("));
    std::array<char, 8> small;
    EXPECT_EQ(toolkit("API_GetErrInfo", 8, small.data()), 0);
    EXPECT_STREQ(small.data(), "The cer");
    EXPECT_EQ(toolkit("API_GetErrInfo", 0, small.data()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit("API_GetErrInfo", 8, static_cast<char*>(nullptr)), SIGIL_TK_ARGUMENT);
}

TEST_P(Frame, AReasonIsToldOnce)
{
    ByteString garbage(toolkit, "-----BEGIN CERTIFICATE-----\n!\n-----END CERTIFICATE-----\n");
    EXPECT_EQ(toolkit("CERT_Load", garbage.get()), SIGIL_TK_CERT_MALFORMED);
    EXPECT_EQ(toolkit.errorText(), "The certificate is damaged: base64 length");
    ByteString file(toolkit, "0");
    std::array<BINSTR, 4> out{};
    const int code = GetParam() == std::string("HVTK_")
        ? toolkit("PFX_Import", text("p"), file.get(), out.data(), &out[1], &out[2])
        : toolkit("PFX_Import", text("p"), file.get(), out.data(), &out[1], &out[2], &out[3]);
    EXPECT_EQ(code, SIGIL_TK_PFX_MALFORMED);
    EXPECT_THAT(toolkit.errorText(), testing::StartsWith("The PKCS#12 file is damaged ("));
}

TEST(Calls, FailuresOfOtherKindsAreTold)
{
    void* context = nullptr;
    ASSERT_EQ(toolkit::init(&context), 0);
    const auto textOf = [&] {
        std::array<char, 80> text{};
        EXPECT_EQ(toolkit::errorText(context, text.size(), text.data()), 0);
        return std::string(text.data());
    };
    EXPECT_EQ(
        toolkit::call(context, [](toolkit::Context&) { throw std::logic_error("an odd one"); }), SIGIL_TK_INTERNAL);
    EXPECT_THAT(textOf(), testing::EndsWith(": an odd one"));
    EXPECT_EQ(toolkit::call(context, [](toolkit::Context&) { throw 1; }), SIGIL_TK_INTERNAL);
    EXPECT_THAT(textOf(), testing::Not(testing::HasSubstr("odd")));
    EXPECT_EQ(toolkit::call([] { throw 1; }), SIGIL_TK_INTERNAL);
    EXPECT_EQ(toolkit::finish(&context), 0);
}

TEST_P(Frame, AHostsErrnoStaysAsItIs)
{
    ByteString garbage(toolkit, "garbage");
    errno = EADDRINUSE;
    toolkit("CERT_Load", garbage.get());
    EXPECT_EQ(errno, EADDRINUSE);
    toolkit.bare("BINSTR_SetData", nullptr, 0, garbage.get());
    EXPECT_EQ(errno, EADDRINUSE);
}

TEST_P(Frame, TheLibraryKeepsNothingForEachThread)
{
    // Such storage is made at its first use, where lack of memory ends the host.
    const std::string file = GetParam() == std::string("HVTK_") ? "libHVCToolkitV30.so" : "libgpkiapi_v15.so";
    const Workshop workshop;
    const std::string segments = workshop.run(std::string("readelf -lW ") + SIGILDESK_LIBRARY_FOLDER + "/" + file);
    EXPECT_THAT(segments, testing::HasSubstr("LOAD"));
    EXPECT_THAT(segments, testing::Not(testing::HasSubstr("TLS")));
}

TEST_P(Frame, ByteStringsAreCopiesWithATerminator)
{
    BINSTR record{reinterpret_cast<unsigned char*>(1), 7};
    EXPECT_EQ(toolkit.bare("BINSTR_Create", &record), 0);
    EXPECT_EQ(record.pData, nullptr);
    EXPECT_EQ(record.nLength, 0);
    std::array<unsigned char, 3> bytes{'a', 'b', 'c'};
    EXPECT_EQ(toolkit.bare("BINSTR_SetData", bytes.data(), 3, &record), 0);
    EXPECT_NE(record.pData, bytes.data());
    EXPECT_STREQ(reinterpret_cast<char*>(record.pData), "abc");
    EXPECT_EQ(toolkit.bare("BINSTR_Delete", &record), 0);
    EXPECT_EQ(record.pData, nullptr);
    EXPECT_EQ(toolkit.bare("BINSTR_Delete", &record), 0);
    EXPECT_EQ(toolkit.bare("BINSTR_Delete", static_cast<BINSTR*>(nullptr)), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit.bare("BINSTR_Create", static_cast<BINSTR*>(nullptr)), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit.bare("BINSTR_SetData", bytes.data(), 0, &record), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit.bare("BINSTR_SetData", bytes.data(), -1, &record), SIGIL_TK_ARGUMENT);
}

TEST_P(Frame, TheHostsOpenSslStaysAsItIs)
{
    ERR_clear_error();
    ERR_raise(ERR_LIB_USER, 42);
    const unsigned long before = ERR_peek_last_error();
    ByteString garbage(toolkit, "garbage");
    toolkit("CERT_Load", garbage.get());
    EXPECT_EQ(ERR_peek_last_error(), before);
    EXPECT_EQ(ERR_peek_error(), before);
    ERR_clear_error();
    EXPECT_EQ(OSSL_PROVIDER_available(nullptr, "legacy"), 0);
    EVP_CIPHER* const seed = EVP_CIPHER_fetch(nullptr, "SEED-CBC", nullptr);
    EXPECT_EQ(seed, nullptr);
    EVP_CIPHER_free(seed);
    EXPECT_EQ(OBJ_txt2nid("1.2.410.200004.1.15"), NID_undef);
    EXPECT_EQ(OBJ_txt2nid("1.2.410.200004.10.1.1.3"), NID_undef);
    ERR_clear_error();
}

TEST_P(Frame, AHostMayCloseTheLibraryWithoutFinishing)
{
    void* context = nullptr;
    ASSERT_EQ(toolkit.bare("API_Init", &context, text("")), 0);
    EXPECT_NE(context, nullptr); // released with the library; the leak checker would tell otherwise
}

TEST_P(Frame, ContextsThatNobodyFinishesTakeLittle)
{
    // As in a host that keeps one session open and opens and closes a thousand others.
    const auto used = [] {
        const auto info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const auto work = [&] {
        void* context = nullptr;
        ByteString random(toolkit);
        EXPECT_EQ(toolkit.bare("API_Init", &context, text("")), 0);
        EXPECT_EQ(toolkit.bare("CRYPT_GenRandom", context, 16, random.get()), 0);
    };
    work();
    const std::size_t before = used();
    for (int i = 0; i < 1000; ++i)
        work();
    EXPECT_LT(used(), before + 8 * 1024 * 1024);
}

TEST(Library, WhatNeedsNoAlgorithmGoesWithoutOpenSslsModules)
{
    ASSERT_EQ(setenv("OPENSSL_MODULES", "/nowhere", 1), 0);
    const toolkit::Library library;
    EXPECT_NE(library.readingContext(), nullptr);
    for (int time = 0; time < 2; ++time) {
        try {
            library.digest("SHA256");
            ADD_FAILURE() << "a module was found";
        } catch (const toolkit::Error& error) {
            EXPECT_EQ(error.code(), SIGIL_TK_NO_PROVIDER);
        }
    }
    unsetenv("OPENSSL_MODULES");
    EXPECT_NE(library.digest("SHA256"), nullptr) << "what failed is tried again";
}

TEST(Library, IsSharedUntilMemoryWasShort)
{
    toolkit::Context first;
    const toolkit::Library second;
    EXPECT_EQ(second.context(), first.library().context());
    EXPECT_EQ(
        toolkit::call(&first, [](toolkit::Context&) { toolkit::fail(SIGIL_TK_NO_MEMORY); }), SIGIL_TK_NO_MEMORY);
    const toolkit::Library later;
    EXPECT_NE(later.context(), first.library().context());
    EXPECT_EQ(toolkit::Library().context(), later.context());
}

TEST_P(Frame, TwoContextsInTwoThreadsDoNotDisturbEachOther)
{
    Workshop workshop;
    workshop.certificate("one", "/C=KR/O=yessign/CN=one", "");
    workshop.certificate("two", "/C=KR/O=yessign/CN=two", "");
    const auto reads = [&](const std::string& name) {
        const ToolkitLibrary own(GetParam());
        ByteString certificate(own, workshop.read(name + ".crt"));
        int right = 0;
        for (int i = 0; i < 50; ++i) {
            std::array<char, 64> uid{};
            own("CERT_Load", certificate.get());
            own("CERT_GetUID", 64, uid.data());
            right += uid.data() == name;
        }
        EXPECT_EQ(right, 50);
    };
    std::thread first(reads, "one");
    std::thread second(reads, "two");
    first.join();
    second.join();
}

TEST_P(Frame, WhereNothingCanBeHandedOutThereIsAnArgumentMissing)
{
    const Workshop workshop;
    workshop.certificate("user", "/CN=user", "");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    std::array<char, 4096> room{};
    char* const some = room.data();
    char* const none = nullptr;
    unsigned char byte = 0;
    BINSTR record{};
    EXPECT_EQ(toolkit.bare("BINSTR_SetData", static_cast<unsigned char*>(nullptr), 1, &record), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit.bare("BINSTR_SetData", &byte, 0, &record), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit("CERT_GetUID", 64, none), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit("CERT_GetUID", 0, some), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit("CERT_GetSubjectName", 4096, none), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(toolkit("CERT_GetSubjectName", 0, some), SIGIL_TK_ARGUMENT);
    if (GetParam() == std::string("GPKI_")) {
        int number = 0;
        int* const noNumber = nullptr;
        EXPECT_EQ(toolkit("OCSP_GetCertStatus", 0, noNumber, some, &number), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("OCSP_GetCertStatus", 0, &number, none, &number), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("OCSP_GetCertStatus", 0, &number, some, noNumber), SIGIL_TK_ARGUMENT);
        return;
    }
    for (const auto& [first, second] : {std::pair(none, some), std::pair(some, none)}) {
        EXPECT_EQ(toolkit("API_GetInfo", first, second), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("CERT_GetValidity", first, second), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("CERT_GetPubKey", 4096, first, second), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("CERT_GetPubKey2", first, second, &record), SIGIL_TK_ARGUMENT);
    }
    EXPECT_EQ(toolkit("CERT_GetPubKey", 0, some, some), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(record.pData, nullptr);
}

TEST_P(Frame, AByteStringOfNoLengthIsReleasedToo)
{
    BINSTR record{static_cast<unsigned char*>(std::calloc(1, 1)), 0};
    EXPECT_EQ(toolkit.bare("BINSTR_Delete", &record), 0);
    EXPECT_EQ(record.pData, nullptr);
}
