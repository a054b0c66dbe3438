// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What calls leave in memory of the secrets that they were handed: nothing.

#include "tests/support/secret_hunt.h"
#include "tests/toolkit/server.h"
#include "tests/toolkit/tokens.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

using namespace toolkit_test;
using testing::HasSubstr;

namespace {

/** A file's bytes in shared memory, where no hunt looks: the secrets that the test itself has. Zero bytes follow them. */
class MappedFile {
public:
    explicit MappedFile(const std::string& path)
    {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat state { };
        if (fstat(file, &state) == 0)
            m_length = static_cast<std::size_t>(state.st_size);
        m_bytes = mmap(nullptr, m_length + 1, PROT_READ, MAP_SHARED, file, 0);
        close(file);
        if (m_bytes == MAP_FAILED)
            throw std::runtime_error("cannot map " + path);
        m_record = {static_cast<unsigned char*>(m_bytes), static_cast<int>(m_length)};
    }
    ~MappedFile() { munmap(m_bytes, m_length + 1); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view bytes() const { return {chars(), m_length}; }
    char* chars() const { return static_cast<char*>(m_bytes); }
    BINSTR* get() { return &m_record; }

private:
    void* m_bytes;
    std::size_t m_length = 0;
    BINSTR m_record{};
};

/** A secret in pieces of which any one is a find: released memory keeps what was not written over yet. */
class Pieces {
public:
    Pieces(std::string name, std::string_view secret)
        : m_name(std::move(name))
    {
        for (std::size_t at = 0; at < secret.size(); at += length)
            for (const auto order : {SecretHunt::Order::Forwards, SecretHunt::Order::Backwards})
                m_hunts.emplace_back(secret.substr(std::min(at, secret.size() - length), length), order);
    }
    /** A line for each piece found; empty without any. */
    std::string found() const
    {
        std::string lines;
        for (std::size_t i = 0; i < m_hunts.size(); ++i)
            for (const std::string& place : m_hunts[i].places())
                lines +=
                    m_name + (i % 2 ? " backwards" : "") + ", piece " + std::to_string(i / 2) + ": " + place + "\n";
        return lines;
    }

private:
    static constexpr std::size_t length = 16;

    std::string m_name;
    std::vector<SecretHunt> m_hunts;
};

[[gnu::noipa]] char* copyOf(std::string_view bytes, bool backwards)
{
    char* const copy = static_cast<char*>(std::malloc(bytes.size()));
    if (backwards)
        std::reverse_copy(bytes.begin(), bytes.end(), copy);
    else
        std::copy(bytes.begin(), bytes.end(), copy);
    return copy;
}

[[gnu::noipa]] void release(char* copy) { std::free(copy); }

class Residue : public testing::Test {
protected:
    /** Makes NAME.crt and NAME.key. */
    void rsaCertificate(const std::string& name) const { workshop.certificate(name, "/CN=" + name, ""); }
    void ecCertificate(const std::string& name) const
    {
        workshop.certificate(name, "/CN=" + name, "", "", "-days 365", "ec -pkeyopt ec_paramgen_curve:P-256");
    }
    /** Makes NAME.bare, the key of a P-256 certificate without its public part. */
    void bareKey(const std::string& name) const
    {
        workshop.run(R"((printf '\060\101\002\001\000\060\023\006\007\052\206\110\316\075\002\001')"
                     R"(; printf '\006\010\052\206\110\316\075\003\001\007\004\047\060\045\002\001\001\004\040')"
                     "; tail -c +37 " +
            name + ".key | head -c 32) > " + name + ".bare");
    }
    /** The secret numbers of a key of 2048 bits, from the private exponent on: all behind the public exponent. */
    static Pieces secretNumbers(const MappedFile& rsaKey)
    {
        constexpr std::size_t exponentAt = 303;
        return {"RSA key", rsaKey.bytes().substr(exponentAt)};
    }
    static Pieces secretNumber(const MappedFile& ecKey, std::size_t at)
    {
        return {"EC key", ecKey.bytes().substr(at, 32)};
    }

    static constexpr std::size_t scalarAt = 36;
    static constexpr std::size_t bareScalarAt = 35;

    Workshop workshop;
    ToolkitLibrary toolkit{"HVTK_"};
};

} // namespace

TEST_F(Residue, APlantedCopyIsFoundAndNamed)
{
    ecCertificate("user");
    const MappedFile key(workshop.path("user.key"));
    const Pieces pieces = secretNumber(key, scalarAt);
    EXPECT_EQ(pieces.found(), "");
    for (const bool backwards : {false, true}) {
        char* copy = copyOf(key.bytes(), backwards);
        EXPECT_THAT(pieces.found(), HasSubstr(backwards ? "EC key backwards, piece 0: 0x" : "EC key, piece 0: 0x"));
        release(copy);
        EXPECT_THAT(pieces.found(), HasSubstr("[heap]")) << "released and not wiped";
        copy = copyOf(key.bytes(), backwards);
        std::fill_n(copy, key.bytes().size(), '\0');
        release(copy);
        EXPECT_EQ(pieces.found(), "");
    }
}

TEST_F(Residue, OfAnRsaKeyThatIsCheckedAgainstItsCertificate)
{
    rsaCertificate("user");
    rsaCertificate("other");
    MappedFile certificate(workshop.path("user.crt"));
    MappedFile key(workshop.path("user.key"));
    MappedFile other(workshop.path("other.crt"));
    const Pieces pieces = secretNumbers(key);
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), key.get()), 0);
    EXPECT_EQ(pieces.found(), "");
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", other.get(), key.get()), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(pieces.found(), "");
}

TEST_F(Residue, OfAnEcKeyThatIsCheckedAgainstItsCertificate)
{
    ecCertificate("user");
    ecCertificate("other");
    bareKey("user");
    MappedFile certificate(workshop.path("user.crt"));
    MappedFile other(workshop.path("other.crt"));
    MappedFile whole(workshop.path("user.key"));
    MappedFile bare(workshop.path("user.bare"));
    const Pieces pieces = secretNumber(whole, scalarAt);
    ASSERT_EQ(bare.bytes().substr(bareScalarAt), whole.bytes().substr(scalarAt, 32));
    for (MappedFile* key : {&whole, &bare}) {
        EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), key->get()), 0) << toolkit.errorText();
        EXPECT_EQ(pieces.found(), "") << (key == &bare ? "without" : "with") << " public part";
        EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", other.get(), key->get()), SIGIL_TK_KEY_MISMATCH);
        EXPECT_EQ(pieces.found(), "") << (key == &bare ? "without" : "with") << " public part";
    }
}

TEST_F(Residue, OfASharedKeyThatIsHashed)
{
    ecCertificate("user");
    ecCertificate("peer");
    workshop.run("openssl x509 -in peer.pem -noout -pubkey > peer.pub"
                 " && openssl pkeyutl -derive -inkey user.key.pem -peerkey peer.pub -out shared"
                 " && openssl dgst -sha256 -binary shared > hashed");
    MappedFile key(workshop.path("user.key"));
    MappedFile peer(workshop.path("peer.crt"));
    const MappedFile shared(workshop.path("shared"));
    const MappedFile hashed(workshop.path("hashed"));
    const Pieces secret("shared secret", shared.bytes());
    const Pieces own = secretNumber(key, scalarAt);
    const SecretHunt result(hashed.bytes());
    {
        ByteString out(toolkit);
        ASSERT_EQ(toolkit("CRYPT_GenSharedKey", SIGIL_TK_HASH_SHA256, key.get(), peer.get(), out.get()), 0);
        EXPECT_EQ(secret.found(), "");
        EXPECT_EQ(own.found(), "");
        EXPECT_THAT(result.places(), testing::SizeIs(1)) << "what was handed out";
        std::fill_n(out.get()->pData, out.get()->nLength, static_cast<unsigned char>(0));
    }
    EXPECT_THAT(result.places(), testing::IsEmpty());
}

TEST_F(Residue, OfWhatIsExported)
{
    rsaCertificate("user");
    workshop.run("openssl rand -base64 36 | tr -d '\\n' > password && iconv -f UTF-8 -t UTF-16BE password > bmp");
    MappedFile certificate(workshop.path("user.crt"));
    MappedFile key(workshop.path("user.key"));
    const MappedFile password(workshop.path("password"));
    const MappedFile bmp(workshop.path("bmp"));
    const Pieces secrets[] = {
        secretNumbers(key), {"password", password.bytes()}, {"password in two bytes each", bmp.bytes()}};
    for (const int option : {SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_SEED, SIGIL_TK_PFX_AES256}) {
        ByteString file(toolkit);
        ASSERT_EQ(toolkit("PFX_Export", option, password.chars(), certificate.get(), key.get(), file.get()), 0);
        for (const Pieces& secret : secrets)
            EXPECT_EQ(secret.found(), "") << "option " << option;
    }
}

TEST_F(Residue, OfWhatACertificateIsAskedForWith)
{
    ecCertificate("ca");
    workshop.run(
        "openssl rand -base64 36 | tr -d '\\n' > secret && openssl rand -base64 36 | tr -d '\\n' > password");
    const MappedFile secret(workshop.path("secret"));
    const MappedFile password(workshop.path("password"));
    const Pieces secrets[] = {{"secret", secret.bytes()}, {"password", password.bytes()}};
    const Server server = Server::authority(workshop, "ca");
    std::string known = "the secret";
    for (char* const used : {secret.chars(), known.data()}) {
        ByteString certificate(toolkit);
        ByteString key(toolkit);
        BINSTR* const none = nullptr;
        EXPECT_EQ(toolkit("CMP_CertRequest2", text("127.0.0.1"), server.port(), text("ref"), used, text("cn=Kim"),
                      password.chars(), certificate.get(), key.get(), none, none),
            used == secret.chars() ? SIGIL_TK_CMP_PROTECTION : SIGIL_TK_OK)
            << toolkit.errorText();
        for (const Pieces& pieces : secrets)
            EXPECT_EQ(pieces.found(), "");
    }
}

TEST(TokenResidue, OfPinsAndOfWhatAKeyOnATokenIsCertifiedWith)
{
    const TokenWorkshop workshop;
    workshop.addSoftHsm();
    for (const std::string name : {"pin", "new", "wrong", "security", "secret"})
        workshop.run("openssl rand -base64 36 | tr -d '\\n' > " + name);
    workshop.run("softhsm2-util --init-token --free --label first --pin $(cat pin) --so-pin $(cat security)");
    workshop.certificate("ca", "/CN=CA", "basicConstraints=critical,CA:TRUE");
    const MappedFile pin(workshop.path("pin"));
    const MappedFile fresh(workshop.path("new"));
    const MappedFile wrong(workshop.path("wrong"));
    const MappedFile secret(workshop.path("secret"));
    const Pieces secrets[] = {
        {"PIN", pin.bytes()}, {"new PIN", fresh.bytes()}, {"wrong PIN", wrong.bytes()}, {"secret", secret.bytes()}};
    const auto expectNone = [&](const std::string& after) {
        for (const Pieces& pieces : secrets)
            EXPECT_EQ(pieces.found(), "") << after;
    };
    const Server server = Server::authority(workshop, "ca");
    const ToolkitLibrary toolkit("HVTK_");
    const auto call = [&](int expected, const std::string& function, auto... arguments) {
        EXPECT_EQ(toolkit(function, arguments...), expected) << function << ": " << toolkit.errorText();
        expectNone(function);
    };
    const auto request = [&](int expected, char* known, char* used) {
        ByteString certificate(toolkit);
        BINSTR* const none = nullptr;
        call(expected, "PKCS11_CMP_CertRequest", text("127.0.0.1"), server.port(), text("ref"), known, used,
            text("first"), none, certificate.get());
    };
    call(SIGIL_TK_OK, "PKCS11_OpenSessionWithTokenName", text("first"), 0);
    call(SIGIL_TK_TOKEN_PIN, "PKCS11_Login", wrong.chars());
    call(SIGIL_TK_OK, "PKCS11_Login", pin.chars());
    call(SIGIL_TK_OK, "PKCS11_Logout");
    call(SIGIL_TK_OK, "PKCS11_ChangePIN", pin.chars(), fresh.chars());
    call(SIGIL_TK_OK, "PKCS11_CloseSession");
    request(SIGIL_TK_TOKEN_PIN, secret.chars(), wrong.chars());
    request(SIGIL_TK_CMP_PROTECTION, secret.chars(), fresh.chars());
    request(SIGIL_TK_OK, text("the secret"), fresh.chars());
}
