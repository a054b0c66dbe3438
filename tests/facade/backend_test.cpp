// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The backends themselves: their own life cycle, and the methods that no export reaches.

#include "facade/backends/gpki_wrap.h"
#include "facade/backends/hvtk_wrap.h"
#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"
#include "tests/facade/member.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

namespace {

unsigned char data[] = {1, 2, 3};
BINSTR b1{data, 1}, b2{data, 2}, b3{data, 3}, b4{data, 3};
BINSTR empty{};
char t1[] = "1", t2[] = "2", t3[] = "3";
int number = 0;

template <class Backend>
std::unique_ptr<Backend> loaded()
{
    char folder[] = DOUBLES_FOLDER;
    auto backend = std::make_unique<Backend>();
    EXPECT_EQ(backend->Init(folder), 0);
    return backend;
}

std::string nameOf(const doubles::Argument& argument)
{
    if (argument.kind != doubles::Argument::Kind::Pointer)
        return std::to_string(argument.value);
    const std::pair<const void*, const char*> names[] = {{&b1, "b1"}, {&b2, "b2"}, {&b3, "b3"}, {&b4, "b4"},
        {t1, "t1"}, {t2, "t2"}, {t3, "t3"}, {&number, "number"}};
    for (const auto& [address, name] : names)
        if (argument.pointer<void>() == address)
            return name;
    return "?";
}

std::string lastCall()
{
    if (doubles::calls().empty())
        return "none";
    const doubles::Call& call = doubles::calls().back();
    std::string text = call.symbol;
    for (const doubles::Argument& argument : call.arguments)
        text += " " + nameOf(argument);
    return text;
}

template <class Backend>
struct Method {
    const char* call; ///< what reaches the toolkit
    int (*made)(Backend&);
    std::vector<int (*)(Backend&)> refused;
};

template <class Backend>
void test(const std::vector<Method<Backend>>& methods, int notLoaded)
{
    doubles::reset();
    const auto backend = loaded<Backend>();
    Backend unloaded;
    for (const Method<Backend>& method : methods) {
        SCOPED_TRACE(method.call);
        const std::string symbol = words(method.call).front();
        EXPECT_EQ(method.made(unloaded), notLoaded);
        EXPECT_EQ(method.made(*backend), 0);
        EXPECT_EQ(lastCall(), method.call);
        EXPECT_NE(doubles::calls().back().context, nullptr);
        doubles::answer(symbol, 19);
        EXPECT_EQ(method.made(*backend), 19);
        EXPECT_EQ(backend->ErrorText(), doubles::errorText());
        doubles::forgetCalls();
        for (const auto& refused : method.refused) {
            EXPECT_EQ(refused(*backend), 1001);
            EXPECT_EQ(refused(unloaded), notLoaded) << "the library comes first";
        }
        EXPECT_TRUE(doubles::calls().empty());

        doubles::FolderWithout folder(symbol);
        Backend lacking;
        ASSERT_EQ(lacking.Init(folder.chars()), 0);
        EXPECT_EQ(method.made(lacking), 1003);
    }
}

} // namespace

TEST(MakerBackend, MethodsThatNoExportReaches)
{
    using W = CHVTKWrap;
    test<W>(
        {{"HVTK_CERT_GetSubjectName_DERFormat b1", [](W& w) { return w.CertGetSubjectName_DERFormat(&b1); }, {}},
            {"HVTK_CERT_GetPolicyConstraints 7 t1", [](W& w) { return w.CertGetPolicyConstraints(7, t1); },
                {[](W& w) { return w.CertGetPolicyConstraints(7, nullptr); }}},
            {"HVTK_CMS_GetEnvDataRecipCnt b1 number", [](W& w) { return w.CMSGetEnvDataRecCnt(&b1, &number); },
                {[](W& w) { return w.CMSGetEnvDataRecCnt(&empty, &number); },
                    [](W& w) { return w.CMSGetEnvDataRecCnt(&b1, nullptr); }}},
            {"HVTK_CMS_GetEnvDataRecipInfo 7 8 t1 t2 t3",
                [](W& w) { return w.CMSGetEnvDataRecipInfo(7, 8, t1, t2, t3); },
                {[](W& w) { return w.CMSGetEnvDataRecipInfo(7, 8, nullptr, t2, t3); },
                    [](W& w) { return w.CMSGetEnvDataRecipInfo(7, 8, t1, nullptr, t3); },
                    [](W& w) { return w.CMSGetEnvDataRecipInfo(7, 8, t1, t2, nullptr); }}},
            {"HVTK_CMS_MakeEnvelopedData_WithContent_File b1 t1 7 t2",
                [](W& w) { return w.CMSMakeEnvDataWithContentFile(&b1, t1, 7, t2); },
                {[](W& w) { return w.CMSMakeEnvDataWithContentFile(&empty, t1, 7, t2); },
                    [](W& w) { return w.CMSMakeEnvDataWithContentFile(&b1, nullptr, 7, t2); },
                    [](W& w) { return w.CMSMakeEnvDataWithContentFile(&b1, t1, 7, nullptr); }}},
            {"HVTK_PKCS11_OpenSession t1", [](W& w) { return w.PKCS11OpenSession(t1); },
                {[](W& w) { return w.PKCS11OpenSession(nullptr); }}},
            {"HVTK_OCSP_CheckCertStatus t1 b1 1 b2 b3",
                [](W& w) { return w.OCSPCheckCertStatus(t1, &b1, true, &b2, &b3); },
                {[](W& w) { return w.OCSPCheckCertStatus(nullptr, &b1, true, &b2, &b3); },
                    [](W& w) { return w.OCSPCheckCertStatus(t1, &empty, true, &b2, &b3); }}},
            {"HVTK_CRYPT_SignFile b1 b2 7 t1 t2", [](W& w) { return w.CRYPTSignFile(&b1, &b2, 7, t1, t2); },
                {[](W& w) { return w.CRYPTSignFile(&empty, &b2, 7, t1, t2); },
                    [](W& w) { return w.CRYPTSignFile(&b1, &empty, 7, t1, t2); },
                    [](W& w) { return w.CRYPTSignFile(&b1, &b2, 7, nullptr, t2); },
                    [](W& w) { return w.CRYPTSignFile(&b1, &b2, 7, t1, nullptr); }}}},
        1023);
}

TEST(GpkiBackend, MethodsThatNoExportReaches)
{
    using W = CGPKIWrap;
    test<W>({{"GPKI_API_GetInfo 8 t1", [](W& w) { return w.GetInfo(t1); }, {}},
                {"GPKI_CMS_ProcessSignedData b1 b2 b3 t1",
                    [](W& w) { return w.CMSProcessSignedData(&b1, &b2, &b3, t1); },
                    {[](W& w) { return w.CMSProcessSignedData(&empty, &b2, &b3, t1); }}},
                {"GPKI_CMS_MakeEnvelopedData_NoContent_File b1 t1 7 t2 t3",
                    [](W& w) { return w.CMSMakeEnvelopedDataNoContentFile(&b1, t1, 7, t2, t3); },
                    {[](W& w) { return w.CMSMakeEnvelopedDataNoContentFile(&empty, t1, 7, t2, t3); },
                        [](W& w) { return w.CMSMakeEnvelopedDataNoContentFile(&b1, nullptr, 7, t2, t3); }}},
                {"GPKI_WCMS_MakeSignedContent b1 b2 b3 b4",
                    [](W& w) { return w.WCMSMakeSignedContent(&b1, &b2, &b3, &b4); },
                    {[](W& w) { return w.WCMSMakeSignedContent(&empty, &b2, &b3, &b4); },
                        [](W& w) { return w.WCMSMakeSignedContent(&b1, &empty, &b3, &b4); },
                        [](W& w) { return w.WCMSMakeSignedContent(&b1, &b2, &empty, &b4); }}},
                {"GPKI_WCMS_ProcessSignedContent b1 b2 b3",
                    [](W& w) { return w.WCMSProcessSignedContent(&b1, &b2, &b3); },
                    {[](W& w) { return w.WCMSProcessSignedContent(&empty, &b2, &b3); }}},
                {"GPKI_WCMS_MakeWapEnvelopedData b1 b2 7 b3",
                    [](W& w) { return w.WCMSMakeWapEnvelopedData(&b1, &b2, 7, &b3); },
                    {[](W& w) { return w.WCMSMakeWapEnvelopedData(&empty, &b2, 7, &b3); },
                        [](W& w) { return w.WCMSMakeWapEnvelopedData(&b1, &empty, 7, &b3); }}},
                {"GPKI_WCMS_ProcessWapEnvelopedData b1 b2 b3 b4",
                    [](W& w) { return w.WCMSProcessWapEnvelopedData(&b1, &b2, &b3, &b4); },
                    {[](W& w) { return w.WCMSProcessWapEnvelopedData(&b1, &b2, &empty, &b4); }}},
                {"GPKI_CRYPT_Sign_File b1 b2 7 t1 t2", [](W& w) { return w.CryptSignFile(&b1, &b2, 7, t1, t2); },
                    {[](W& w) { return w.CryptSignFile(&empty, &b2, 7, t1, t2); },
                        [](W& w) { return w.CryptSignFile(&b1, &b2, 7, t1, nullptr); }}}},
        1024);
}

TEST(GpkiBackend, ConstructorIgnoresItsText)
{
    doubles::reset();
    char folder[] = DOUBLES_FOLDER;
    CGPKIWrap backend(folder);
    EXPECT_EQ(backend.SetHashAlgo(1), 1024);
    EXPECT_EQ(backend.ErrorText(), "");
    EXPECT_TRUE(doubles::calls().empty());
    EXPECT_EQ(CGPKIWrap(nullptr).SetHashAlgo(1), 1024);
}

TEST(MakerBackend, InfoNeedsBothBuffersAndClearsTheirStart)
{
    doubles::reset();
    const auto maker = loaded<CHVTKWrap>();
    char version[] = "0123456789", info[] = "0123456789";
    EXPECT_EQ(maker->GetInfo(nullptr, info), 1001);
    EXPECT_EQ(maker->GetInfo(version, nullptr), 1001);
    EXPECT_EQ(std::string(version) + info, "01234567890123456789");
    EXPECT_EQ(maker->GetInfo(version, info), 0);
    EXPECT_EQ(std::string(version, 10), std::string(8, '\0') + "89");
    EXPECT_EQ(std::string(info, 10), std::string(8, '\0') + "89");
    EXPECT_EQ(doubles::calls().back().pointer<char>(0), version);
    EXPECT_EQ(doubles::calls().back().pointer<char>(1), info);
}

template <class Backend>
class BackendLife : public testing::Test {
protected:
    BackendLife() { doubles::reset(); }
    static constexpr Type type = bothTypes[std::is_same_v<Backend, CGPKIWrap>];
};

using Backends = testing::Types<CHVTKWrap, CGPKIWrap>;
TYPED_TEST_SUITE(BackendLife, Backends);

TYPED_TEST(BackendLife, RequirementsAreCheckedAgain)
{
    // The façade refuses this first and with another code; the backend stands on its own.
    const auto backend = loaded<TypeParam>();
    doubles::forgetCalls();
    EXPECT_EQ(backend->CertGetVersion(8, nullptr), 1001);
    EXPECT_TRUE(doubles::calls().empty());
    TypeParam unloaded;
    EXPECT_EQ(unloaded.CertGetVersion(8, nullptr), this->type.notLoaded);
}

TYPED_TEST(BackendLife, FieldsStandInTheirOrder)
{
    struct Layout {
        int reserved;
        char errorText[2048];
        void* library;
        void* context;
    };
    static_assert(sizeof(Layout) == sizeof(TypeParam) && !std::is_polymorphic_v<TypeParam>);
    Layout fields{};
    const auto read = [&](const TypeParam& backend) { std::memcpy(&fields, &backend, sizeof fields); };

    TypeParam fresh;
    read(fresh);
    EXPECT_EQ(fields.reserved, 0);
    EXPECT_EQ(std::string(fields.errorText, 2048), std::string(2048, '\0'));
    EXPECT_EQ(fields.library, nullptr);
    EXPECT_EQ(fields.context, nullptr);

    const auto backend = loaded<TypeParam>();
    doubles::answer(this->type.symbol("API_SetHashAlgo"), 5);
    backend->SetHashAlgo(1);
    read(*backend);
    EXPECT_EQ(fields.reserved, 0);
    EXPECT_EQ(fields.errorText, doubles::errorText());
    EXPECT_NE(fields.library, nullptr);
    EXPECT_EQ(fields.context, doubles::callsOf(this->type.symbol("API_SetHashAlgo")).front().context);
}

TYPED_TEST(BackendLife, FinishEndsTheToolkitAndClearsEverything)
{
    const auto backend = loaded<TypeParam>();
    doubles::answer(this->type.symbol("API_SetHashAlgo"), 5);
    backend->SetHashAlgo(1);
    EXPECT_NE(backend->ErrorText(), "");
    const void* const context = doubles::callsOf(this->type.symbol("API_SetHashAlgo")).front().context;
    void* ended = nullptr;
    doubles::answer(this->type.symbol("API_Finish"), [&](const doubles::Call& call) {
        ended = *call.pointer<void*>(0);
        return 0;
    });
    EXPECT_EQ(backend->Finish(), 0);
    EXPECT_EQ(ended, context);
    EXPECT_EQ(backend->ErrorText(), "");
    EXPECT_EQ(backend->SetHashAlgo(1), this->type.notLoaded);
    EXPECT_EQ(backend->Finish(), 0) << "nothing left to end";
    EXPECT_EQ(doubles::callsOf(this->type.symbol("API_Finish")).size(), 1U);
}

TYPED_TEST(BackendLife, FinishNeedsNoFinishFunction)
{
    doubles::FolderWithout folder(this->type.symbol("API_Finish"));
    TypeParam backend;
    ASSERT_EQ(backend.Init(folder.chars()), 0);
    EXPECT_EQ(backend.Finish(), 0);
    EXPECT_EQ(backend.SetHashAlgo(1), this->type.notLoaded);
}

TYPED_TEST(BackendLife, FinishWithoutAContextCallsNothing)
{
    doubles::answer(this->type.symbol("API_Init"), 0); // hands out no context
    const auto backend = loaded<TypeParam>();
    EXPECT_EQ(backend->Finish(), 0);
    EXPECT_TRUE(doubles::callsOf(this->type.symbol("API_Finish")).empty());
}

TYPED_TEST(BackendLife, DestructionOnlyCloses)
{
    loaded<TypeParam>().reset();
    EXPECT_TRUE(doubles::callsOf(this->type.symbol("API_Finish")).empty());
}

TYPED_TEST(BackendLife, CanBeInitialisedAgainAfterFinish)
{
    const auto backend = loaded<TypeParam>();
    backend->Finish();
    char folder[] = DOUBLES_FOLDER;
    EXPECT_EQ(backend->Init(folder), 0);
    EXPECT_EQ(backend->SetHashAlgo(1), 0);
}
