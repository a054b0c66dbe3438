// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CertGetPubKeyInfo, which is assembled from several toolkit calls.

#include "tests/doubles/recorder.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

std::vector<std::string> workingCalls()
{
    std::vector<std::string> names;
    for (const doubles::Call& call : doubles::calls())
        if (call.symbol.find("GetErrInfo") == std::string::npos)
            names.push_back(call.symbol);
    return names;
}

using Names = std::vector<std::string>;

} // namespace

class PublicKey : public testing::Test {
protected:
    explicit PublicKey(int type)
        : handle(type, DOUBLES_FOLDER)
    {
        algorithm.fill('z');
        keyLength.fill('z');
        publicKey.fill('z');
    }
    int read()
    {
        doubles::forgetCalls();
        return CertGetPubKeyInfo(handle, algorithm.data(), keyLength.data(), 90, publicKey.data(), &der);
    }
    std::string algorithmField() const { return {algorithm.data(), algorithm.size()}; }
    std::string keyLengthField() const { return {keyLength.data(), keyLength.size()}; }

    static inline const std::string untouched = std::string(64, 'z');
    Handle handle;
    std::array<char, 64> algorithm{}, keyLength{}, publicKey{};
    BINSTR der{};
};

class MakerPublicKey : public PublicKey {
protected:
    MakerPublicKey()
        : PublicKey(0)
    {
        doubles::reset();
        doubles::answer("HVTK_CERT_GetPubKey", [this](const doubles::Call& call) {
            EXPECT_EQ(call.integer(0), 90);
            EXPECT_EQ(std::string(call.pointer<char>(1), 50), std::string(50, '\0'));
            EXPECT_EQ(call.pointer<char>(2), publicKey.data());
            std::memcpy(call.pointer<char>(1), "RSA", 3);
            return 0;
        });
        doubles::answer("HVTK_CERT_GetPubKey2", [this](const doubles::Call& call) {
            EXPECT_STREQ(call.pointer<char>(0), "RSA");
            EXPECT_EQ(call.pointer<char>(1), keyLength.data());
            std::memcpy(call.pointer<char>(1), "2048 Bits", 10);
            doubles::fill(call.pointer<BINSTR>(2), "der");
            return secondResult;
        });
    }
    int secondResult = 0;
};

class GpkiPublicKey : public PublicKey {
protected:
    GpkiPublicKey()
        : PublicKey(1)
    {
        doubles::reset();
        doubles::answer("GPKI_CERT_GetPubKeyAlg", doubles::writesText("RSA"));
        doubles::answer("GPKI_CERT_GetPubKeyLen", doubles::writesText("2048 Bits"));
        doubles::answer("GPKI_CERT_GetPubKey", doubles::writesText("30 82"));
    }
};

TEST_F(MakerPublicKey, IsReadInTwoSteps)
{
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(workingCalls(),
        (Names{"HVTK_BINSTR_Create", "HVTK_CERT_GetPubKey", "HVTK_CERT_GetPubKey2", "HVTK_BINSTR_SetData",
            "HVTK_BINSTR_Delete"}));
    EXPECT_EQ(algorithmField(), "RSA" + std::string(46, '\0') + std::string(15, 'z')) << "exactly 49 bytes";
    EXPECT_EQ(keyLengthField(), std::string("2048 Bits\0", 10) + std::string(54, 'z')) << "by the toolkit alone";
    EXPECT_EQ(doubles::contents(&der), "der");
    EXPECT_EQ(doubles::liveByteStrings(), 1) << "the caller's alone";
    EXPECT_EQ(HV_BINSTR_Delete(handle, &der), 0);
}

TEST_F(MakerPublicKey, FirstFailureEndsIt)
{
    doubles::answer("HVTK_CERT_GetPubKey", 41);
    EXPECT_EQ(read(), 41);
    EXPECT_EQ(workingCalls(), (Names{"HVTK_BINSTR_Create", "HVTK_CERT_GetPubKey"}));
    EXPECT_EQ(algorithmField(), untouched);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(MakerPublicKey, SecondFailureCopiesNothingAndStillReleases)
{
    secondResult = 42;
    EXPECT_EQ(read(), 42);
    EXPECT_EQ(workingCalls(),
        (Names{"HVTK_BINSTR_Create", "HVTK_CERT_GetPubKey", "HVTK_CERT_GetPubKey2", "HVTK_BINSTR_Delete"}));
    EXPECT_EQ(algorithmField(), untouched);
    EXPECT_EQ(der.nLength, 0);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(MakerPublicKey, ResultsOfTheByteStringFunctionsDoNotCount)
{
    doubles::answer("HVTK_BINSTR_SetData", 43);
    EXPECT_EQ(read(), 0);
    EXPECT_STREQ(algorithm.data(), "RSA");
    doubles::answer("HVTK_BINSTR_Delete", 44);
    doubles::answer("HVTK_BINSTR_Create", 45);
    EXPECT_EQ(read(), 0);
}

TEST_F(MakerPublicKey, WithoutBytesNothingIsSetOrReleased)
{
    doubles::answer("HVTK_CERT_GetPubKey2", 0);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(workingCalls(), (Names{"HVTK_BINSTR_Create", "HVTK_CERT_GetPubKey", "HVTK_CERT_GetPubKey2"}));
    EXPECT_STREQ(algorithm.data(), "RSA");
    EXPECT_EQ(keyLengthField(), untouched) << "only the GPKI library fills the local text";
}

TEST_F(MakerPublicKey, EmptyAlgorithmIsNotCopied)
{
    doubles::answer("HVTK_CERT_GetPubKey", 0);
    doubles::answer("HVTK_CERT_GetPubKey2", 0);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(algorithmField(), untouched);
}

TEST_F(GpkiPublicKey, IsReadInThreeSteps)
{
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(workingCalls(),
        (Names{"GPKI_BINSTR_Create", "GPKI_CERT_GetPubKeyAlg", "GPKI_CERT_GetPubKeyLen", "GPKI_CERT_GetPubKey"}));
    EXPECT_EQ(doubles::calls()[1].integer(0), 50);
    EXPECT_EQ(doubles::calls()[2].integer(0), 20);
    EXPECT_EQ(doubles::calls()[3].integer(0), 90);
    EXPECT_EQ(doubles::calls()[3].pointer<char>(1), publicKey.data());
    EXPECT_EQ(algorithmField(), "RSA" + std::string(46, '\0') + std::string(15, 'z')) << "exactly 49 bytes";
    EXPECT_EQ(keyLengthField(), "2048 Bits" + std::string(10, '\0') + std::string(45, 'z')) << "exactly 19 bytes";
    EXPECT_STREQ(publicKey.data(), "30 82");
    EXPECT_EQ(der.pData, nullptr) << "not filled on this toolkit";
}

TEST_F(GpkiPublicKey, FirstFailureEndsIt)
{
    const Names steps{"GPKI_CERT_GetPubKeyAlg", "GPKI_CERT_GetPubKeyLen", "GPKI_CERT_GetPubKey"};
    for (std::size_t failing = 0; failing < steps.size(); ++failing) {
        doubles::reset();
        for (std::size_t i = 0; i < steps.size(); ++i)
            doubles::answer(steps[i], doubles::writesText("text", i == failing ? 46 : 0));
        EXPECT_EQ(read(), 46);
        EXPECT_EQ(workingCalls().size(), failing + 2);
        EXPECT_EQ(algorithmField(), untouched);
        EXPECT_EQ(keyLengthField(), untouched);
    }
}

TEST_F(GpkiPublicKey, FullTextsAreCopiedWithoutTheirLastByte)
{
    doubles::answer("GPKI_CERT_GetPubKeyAlg", [](const doubles::Call& call) {
        std::memset(call.pointer<char>(1), 'a', 50);
        return 0;
    });
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(algorithmField(), std::string(49, 'a') + std::string(15, 'z'));
}

TEST_F(GpkiPublicKey, EmptyTextsAreNotCopied)
{
    doubles::reset();
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(algorithmField(), untouched);
    EXPECT_EQ(keyLengthField(), untouched);
}

TEST_F(GpkiPublicKey, NullTextsAreLeftOut)
{
    EXPECT_EQ(CertGetPubKeyInfo(handle, nullptr, nullptr, 90, publicKey.data(), nullptr), 0);
    EXPECT_STREQ(publicKey.data(), "30 82");
}
