// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the toolkits answer when memory runs out at any one allocation of a call, or from any one on: 3002, or the very
// result of a call that had enough.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <iostream>

using namespace toolkit_test;

// The allocator of this program and of every library in it; glibc's own goes on under these names.
extern "C" {
void* __libc_malloc(std::size_t); // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
}

namespace {

enum class Shortage { Never, Once, FromThenOn };

struct Allocations {
    long made = 0;
    long refusedAt = 0;
    Shortage shortage = Shortage::Never;
};

Allocations allocations;

bool refuse()
{
    const long number = allocations.made++;
    const bool refused = (allocations.shortage == Shortage::Once && number == allocations.refusedAt) ||
        (allocations.shortage == Shortage::FromThenOn && number >= allocations.refusedAt);
    if (refused)
        errno = ENOMEM;
    return refused;
}

} // namespace

#pragma GCC visibility push(default) // the libraries find them here
extern "C" void* malloc(std::size_t size) { return refuse() ? nullptr : __libc_malloc(size); }
extern "C" void* calloc(std::size_t count, std::size_t size)
{
    return refuse() ? nullptr : __libc_calloc(count, size);
}
extern "C" void* realloc(void* memory, std::size_t size)
{
    return refuse() ? nullptr : __libc_realloc(memory, size);
}
#pragma GCC visibility pop

namespace {

/** What a call hands out. */
struct Outputs {
    std::array<char, 4096> text{};
    std::array<char, 4096> text2{};
    std::array<BINSTR, 4> records{};
    int number = 0;
    long time = 0;
};

struct Operation {
    std::string name;
    std::function<int(void*, Outputs&)> run;
    bool random = false; ///< hands out something else every time
};

class Memory : public testing::TestWithParam<const char*> {
protected:
    Memory()
    {
        const std::string file = GetParam() == std::string("HVTK_") ? "/libHVCToolkitV30.so" : "/libgpkiapi_v15.so";
        m_handle = dlopen((SIGILDESK_LIBRARY_FOLDER + file).c_str(), RTLD_LAZY);
    }
    ~Memory() override { dlclose(m_handle); }

    bool isHvtk() const { return GetParam() == std::string("HVTK_"); }

    template <class... Arguments>
    auto function(const std::string& name) const
    {
        void* const symbol = dlsym(m_handle, (GetParam() + name).c_str());
        EXPECT_NE(symbol, nullptr) << name;
        return reinterpret_cast<int (*)(Arguments...)>(symbol);
    }

    /** Runs once under a shortage; the outputs come back as one text. */
    std::string attempt(const Operation& operation, Shortage shortage, long refusedAt, int& code)
    {
        Outputs outputs;
        allocations = {0, refusedAt, shortage};
        code = operation.run(toolkit.context(), outputs);
        allocations.shortage = Shortage::Never;
        m_made = allocations.made;
        std::string all = std::string(outputs.text.data()) + "|" + outputs.text2.data() + "|" +
            std::to_string(outputs.number) + "|" + std::to_string(outputs.time);
        for (BINSTR& record : outputs.records) {
            all +=
                "|" + std::string(reinterpret_cast<char*>(record.pData), static_cast<std::size_t>(record.nLength));
            toolkit.bare("BINSTR_Delete", &record);
        }
        return operation.random ? "" : all;
    }

    /** @param part of the allocations that are refused, from the first one on */
    void sweep(const Operation& operation, double part = 1)
    {
        int code = 0;
        attempt(operation, Shortage::Never, 0, code); // what is made once for the process is made now
        const std::string expected = attempt(operation, Shortage::Never, 0, code);
        const int expectedCode = code;
        const long total = static_cast<long>(part * static_cast<double>(m_made));
        // Long calls repeat themselves: of those every allocation of the beginning and a part of the rest.
        const auto next = [&](long at) { return at < 100 ? at + 1 : at + 1 + total / 100; };
        for (const Shortage shortage : {Shortage::Once, Shortage::FromThenOn}) {
            for (long at = 0; at < total; at = next(at)) {
                const std::string got = attempt(operation, shortage, at, code);
                ++m_events;
                if (code == SIGIL_TK_NO_MEMORY) {
                    ++m_refusals;
                    continue;
                }
                ASSERT_EQ(code, expectedCode) << operation.name << ", allocation " << at << " of " << total << ", "
                                              << (shortage == Shortage::Once ? "once" : "from then on");
                ASSERT_EQ(got, expected) << operation.name << ", allocation " << at << " of " << total;
            }
        }
        EXPECT_EQ(attempt(operation, Shortage::Never, 0, code), expected) << operation.name << " works again";
        EXPECT_EQ(code, expectedCode) << operation.name;
    }

    void sweep(const std::vector<Operation>& operations)
    {
        for (const Operation& operation : operations) {
            const long before = m_events;
            sweep(operation);
            if (HasFatalFailure())
                FAIL() << operation.name;
            EXPECT_GT(m_events, before) << operation.name << " asks for no memory";
        }
        RecordProperty("shortages", std::to_string(m_events));
        RecordProperty("answered with 3002", std::to_string(m_refusals));
        std::cout << m_events << " shortages, " << m_refusals << " of them answered with 3002\n";
    }

    Workshop workshop;
    ToolkitLibrary toolkit{GetParam()};

private:
    void* m_handle;
    long m_made = 0;
    long m_events = 0;
    long m_refusals = 0;
};

std::string faceOf(const testing::TestParamInfo<const char*>& info) { return std::string(info.param, 4); }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, Memory, testing::Values("HVTK_", "GPKI_"), faceOf);

TEST_P(Memory, OfFieldsOfCertificates)
{
    workshop.certificate("user", "/C=KR/O=yessign/OU=은행/CN=홍길동",
        R"(
keyUsage=critical,digitalSignature
certificatePolicies=1.2.410.200005.1.1.1
subjectKeyIdentifier=hash
authorityKeyIdentifier=keyid:always,issuer:always
crlDistributionPoints=URI:ldap://ds.yessign.or.kr:389/ou=dp
authorityInfoAccess=OCSP;URI:http://ocsp.yessign.org:4612)" +
            identityExtension());
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ByteString garbage(toolkit, "garbage");
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    const auto load = function<void*, BINSTR*>("CERT_Load");
    const auto days = function<void*, BINSTR*, int*>("CERT_GetRemainDays");
    std::vector<Operation> operations{
        {"CERT_Load of a certificate", [&](void* c, Outputs&) { return load(c, certificate.get()); }},
        {"CERT_Load of garbage", [&](void* c, Outputs&) { return load(c, garbage.get()); }},
        {"CERT_GetRemainDays", [&](void* c, Outputs& o) { return days(c, certificate.get(), &o.number); }},
    };
    for (const char* getter :
        {"GetUID", "GetIssuerName", "GetSubjectName", "GetSignatureAlgorithm", "GetSignature", "GetCertPolicy",
            "GetSubjectAltName", "GetAuthKeyID", "GetSubKeyID", "GetCRLDP", "GetAIA", "GetKeyUsage"}) {
        const auto get = function<void*, int, char*>("CERT_" + std::string(getter));
        operations.push_back({getter, [=](void* c, Outputs& o) { return get(c, 4096, o.text.data()); }});
    }
    const auto validity = function<void*, int, char*>("CERT_GetValidity");
    if (!isHvtk())
        operations.push_back(
            {"CERT_GetValidity", [=](void* c, Outputs& o) { return validity(c, 25, o.text.data()); }});
    const auto key = isHvtk() ? function<void*, char*, char*, BINSTR*>("CERT_GetPubKey2") : nullptr;
    if (isHvtk())
        operations.push_back({"CERT_GetPubKey2",
            [=](void* c, Outputs& o) { return key(c, o.text.data(), o.text2.data(), o.records.data()); }});
    sweep(operations);
}

TEST_P(Memory, OfKeys)
{
    workshop.certificate(
        "user", "/CN=user", identityExtension(), "", "-days 9", "ec -pkeyopt ec_paramgen_curve:P-256");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ByteString key(toolkit, workshop.read("user.key"));
    ByteString garbage(toolkit, "garbage");
    const auto encrypt = function<void*, int, char*, BINSTR*, BINSTR*>("PRIKEY_Encrypt");
    const auto decrypt = function<void*, char*, BINSTR*, BINSTR*>("PRIKEY_Decrypt");
    const auto change = function<void*, char*, char*, BINSTR*, BINSTR*>("PRIKEY_ChangePasswd");
    const auto check = function<void*, BINSTR*, BINSTR*>("PRIKEY_CheckKeyPair");
    const auto random = function<void*, BINSTR*, BINSTR*>("VID_GetRandomFromPriKey");
    const std::string password = "Abcd1234!@";
    std::vector<Operation> operations{
        {"PRIKEY_CheckKeyPair", [&](void* c, Outputs&) { return check(c, certificate.get(), key.get()); }},
        {"VID_GetRandomFromPriKey", [&](void* c, Outputs& o) { return random(c, key.get(), o.records.data()); }},
        {"PRIKEY_Decrypt of garbage",
            [&](void* c, Outputs& o) { return decrypt(c, text(password), garbage.get(), o.records.data()); }},
    };
    std::vector<std::unique_ptr<ByteString>> files;
    for (const int scheme :
        {SIGIL_TK_KEY_SEED, SIGIL_TK_KEY_PKCS12_3DES, SIGIL_TK_KEY_PBES2_SEED, SIGIL_TK_KEY_PBES2_ARIA256}) {
        files.push_back(std::make_unique<ByteString>(toolkit));
        BINSTR* const file = files.back()->get();
        ASSERT_EQ(toolkit("PRIKEY_Encrypt", scheme, text(password), key.get(), file), 0);
        const std::string name = " " + std::to_string(scheme);
        operations.push_back({"PRIKEY_Encrypt" + name,
            [&, scheme](
                void* c, Outputs& o) { return encrypt(c, scheme, text(password), key.get(), o.records.data()); },
            true});
        operations.push_back({"PRIKEY_Decrypt" + name,
            [&, file](void* c, Outputs& o) { return decrypt(c, text(password), file, o.records.data()); }});
        operations.push_back({"PRIKEY_ChangePasswd" + name,
            [&, file](
                void* c, Outputs& o) { return change(c, text(password), text(password), file, o.records.data()); },
            true});
    }
    sweep(operations);
}

TEST_P(Memory, OfPkcs12)
{
    workshop.certificate(
        "user", "/CN=user", "keyUsage=digitalSignature", "", "-days 9", "ec -pkeyopt ec_paramgen_curve:P-256");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ByteString key(toolkit, workshop.read("user.key"));
    ByteString none(toolkit);
    ByteString file(toolkit);
    const std::string password = "Abcd1234!@";
    std::vector<Operation> operations;
    if (isHvtk()) {
        const auto write = function<void*, int, char*, BINSTR*, BINSTR*, BINSTR*>("PFX_Export");
        const auto read = function<void*, char*, BINSTR*, BINSTR*, BINSTR*, BINSTR*>("PFX_Import");
        ASSERT_EQ(
            write(toolkit.context(), SIGIL_TK_PFX_3DES, text(password), certificate.get(), key.get(), file.get()),
            0);
        for (const int option : {SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_SEED, SIGIL_TK_PFX_AES256})
            operations.push_back({"PFX_Export " + std::to_string(option),
                [&, write, option](void* c, Outputs& o) {
                    return write(c, option, text(password), certificate.get(), key.get(), o.records.data());
                },
                true});
        operations.push_back(
            {"PFX_Import", [&, read](void* c, Outputs& o) {
                 return read(c, text(password), file.get(), o.records.data(), &o.records[1], &o.records[2]);
             }});
        operations.push_back({"PFX_Import with a wrong password", [&, read](void* c, Outputs& o) {
                                  return read(
                                      c, text("no"), file.get(), o.records.data(), &o.records[1], &o.records[2]);
                              }});
    } else {
        const auto write = function<void*, char*, BINSTR*, BINSTR*, BINSTR*, BINSTR*, BINSTR*>("PFX_Export");
        const auto read = function<void*, char*, BINSTR*, BINSTR*, BINSTR*, BINSTR*, BINSTR*>("PFX_Import");
        ASSERT_EQ(write(toolkit.context(), text(password), certificate.get(), key.get(), none.get(), none.get(),
                      file.get()),
            0);
        operations.push_back({"PFX_Export",
            [&, write](void* c, Outputs& o) {
                return write(
                    c, text(password), certificate.get(), key.get(), none.get(), none.get(), o.records.data());
            },
            true});
        operations.push_back({"PFX_Import", [&, read](void* c, Outputs& o) {
                                  return read(c, text(password), file.get(), o.records.data(), &o.records[1],
                                      &o.records[2], &o.records[3]);
                              }});
    }
    sweep(operations);
}

TEST_P(Memory, OfPrimitivesEncodingsAndLists)
{
    workshop.certificate("user", "/CN=user", "", "", "-days 9", "ec -pkeyopt ec_paramgen_curve:P-256");
    ByteString certificate(toolkit, workshop.read("user.crt"));
    ByteString key(toolkit, workshop.read("user.key"));
    ByteString data(toolkit, "data to be worked on");
    ByteString encoded(toolkit, "ZGF0YQ==");
    const auto hash = function<void*, int, BINSTR*, BINSTR*>("CRYPT_Hash");
    const auto mac = function<void*, int, char*, BINSTR*, BINSTR*>("CRYPT_GenMAC");
    const auto generate = function<void*, int>("CRYPT_GenKeyAndIV");
    const auto encrypt = function<void*, BINSTR*, BINSTR*>("CRYPT_Encrypt");
    const auto sign = function<void*, BINSTR*, BINSTR*, int, BINSTR*, BINSTR*>("CRYPT_Sign");
    const auto verify = function<void*, BINSTR*, int, BINSTR*, BINSTR*>("CRYPT_Verify");
    const auto toText = function<void*, BINSTR*, BINSTR*>("BASE64_Encode");
    const auto fromText = function<void*, BINSTR*, BINSTR*>("BASE64_Decode");
    ASSERT_EQ(generate(toolkit.context(), SIGIL_TK_CIPHER_SEED), 0);
    ByteString signature(toolkit);
    ASSERT_EQ(sign(toolkit.context(), certificate.get(), key.get(), 0, data.get(), signature.get()), 0);
    std::vector<Operation> operations{
        {"CRYPT_Hash",
            [&](void* c, Outputs& o) { return hash(c, SIGIL_TK_HASH_SHA256, data.get(), o.records.data()); }},
        {"CRYPT_GenMAC",
            [&](void* c, Outputs& o) {
                return mac(c, SIGIL_TK_HASH_SHA256, text("key"), data.get(), o.records.data());
            }},
        {"CRYPT_Encrypt", [&](void* c, Outputs& o) { return encrypt(c, data.get(), o.records.data()); }},
        {"CRYPT_Sign",
            [&](void* c, Outputs& o) {
                return sign(c, certificate.get(), key.get(), 0, data.get(), o.records.data());
            },
            true},
        {"CRYPT_Verify",
            [&](void* c, Outputs&) { return verify(c, certificate.get(), 0, data.get(), signature.get()); }},
        {"CRYPT_GenKeyAndIV", [&](void* c, Outputs&) { return generate(c, SIGIL_TK_CIPHER_SEED); }, true},
        {"BASE64_Encode", [&](void* c, Outputs& o) { return toText(c, data.get(), o.records.data()); }},
        {"BASE64_Decode", [&](void* c, Outputs& o) { return fromText(c, encoded.get(), o.records.data()); }},
    };
    const auto trust = function<void*, BINSTR*>("CERT_AddTrustedCert");
    operations.push_back(
        {"CERT_AddTrustedCert", [&, trust](void* c, Outputs&) { return trust(c, certificate.get()); }});
    if (isHvtk()) {
        const auto add = function<void*, BINSTR*, BINSTR*>("UTIL_AddObject");
        operations.push_back(
            {"UTIL_AddObject", [&, add](void* c, Outputs& o) { return add(c, data.get(), o.records.data()); }});
        const auto isTrusted = function<void*, BINSTR*, BINSTR*, bool*>("UTIL_IsTrustCert");
        operations.push_back({"UTIL_IsTrustCert", [&, isTrusted](void* c, Outputs& o) {
                                  bool trusted = false;
                                  const int code = isTrusted(c, certificate.get(), certificate.get(), &trusted);
                                  o.number = trusted ? 1 : 0;
                                  return code;
                              }});
    }
    sweep(operations);
}

TEST_P(Memory, OfAContext)
{
    const auto init = function<void**, char*>("API_Init");
    const auto finish = function<void**>("API_Finish");
    const Operation makeContext{"API_Init", [&](void*, Outputs&) {
                                    void* context = nullptr;
                                    const int code = init(&context, nullptr);
                                    allocations.shortage = Shortage::Never;
                                    finish(&context);
                                    return code;
                                }};
    // OpenSSL 3.0 itself crashes when memory runs out while its module "legacy" starts, which is in the second half.
    sweep(makeContext, 0.4);
}

/** OpenSSL registers algorithms when the first is looked for, and would never again look for those that it lacked memory for. */
TEST_P(Memory, LeavesNoAlgorithmOut)
{
    const auto hash = function<void*, int, BINSTR*, BINSTR*>("CRYPT_Hash");
    const auto random = function<void*, int>("CRYPT_GenKeyAndIV");
    ByteString data(toolkit, "data");
    for (const long at : {10L, 200L, 1000L, 3000L, 6000L}) {
        const ToolkitLibrary fresh(GetParam());
        ByteString digest(fresh);
        allocations = {0, at, Shortage::Once};
        const int first = hash(fresh.context(), SIGIL_TK_HASH_SHA256, data.get(), digest.get());
        allocations.shortage = Shortage::Never;
        EXPECT_EQ(first, SIGIL_TK_NO_MEMORY) << "allocation " << at;
        EXPECT_EQ(random(fresh.context(), SIGIL_TK_CIPHER_SEED), 0) << "allocation " << at;
    }
}

TEST_P(Memory, TheTextOfAFailureNeedsNone)
{
    ByteString garbage(toolkit, "garbage");
    const auto load = function<void*, BINSTR*>("CERT_Load");
    allocations = {0, 0, Shortage::FromThenOn};
    const int code = load(toolkit.context(), garbage.get());
    allocations.shortage = Shortage::Never;
    EXPECT_EQ(code, SIGIL_TK_NO_MEMORY);
    EXPECT_EQ(toolkit.errorText(), "Out of memory");
}
