// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/pbe.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/derivation.h"
#include "toolkit/engine/keys/password.h"

#include <openssl/objects.h>
#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace toolkit {
namespace {

constexpr int writtenIterations = 2048;
constexpr int writtenSaltLength = 8;
constexpr unsigned long maximumIterations = 10'000'000;
constexpr std::string_view fixedVector = "0123456789012345";

/** Everything that a cipher is started with. */
struct CipherStart {
    CipherHandle cipher;
    Secret key;
    Bytes vector;
    std::size_t tag = 0; ///< bytes that authenticate, behind the data; 0 for a mode without
};

/** What a scheme makes of one form of the password. */
using Derive = CipherStart (*)(const Library&, const PbeAlgorithm&, View password, WorkBudget&);

/** PBEParameter and the parameters of PBKDF2 begin alike. */
SaltAndCount readSaltAndCount(der::Reader& fields)
{
    const auto salt = fields.take(der::OctetString);
    const auto count = fields.take(der::Integer);
    require(salt && !salt->empty() && count, SIGIL_TK_KEY_MALFORMED, "salt or iteration count");
    const auto iterations = der::smallInteger(*count);
    require(iterations && *iterations >= 1 && *iterations <= maximumIterations, SIGIL_TK_KEY_MALFORMED,
        "iteration count");
    return {*salt, *iterations};
}

SaltAndCount saltAndCount(const PbeAlgorithm& algorithm)
{
    der::Reader fields(algorithm.parameters);
    return readSaltAndCount(fields);
}

CipherHandle cipherOf(const Library& library, const std::string& name)
{
    CipherHandle cipher(EVP_CIPHER_fetch(library.context(), name.c_str(), nullptr));
    require(cipher != nullptr, SIGIL_TK_KEY_UNSUPPORTED, name);
    return cipher;
}

std::size_t keyLength(const CipherHandle& cipher)
{
    return static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get()));
}

std::size_t vectorLength(const CipherHandle& cipher)
{
    return static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get()));
}

Secret part(const Secret& bytes, std::size_t at, std::size_t length)
{
    return toSecret(View(bytes).subspan(at, length));
}

CipherStart startSeed(const Library& library, const PbeAlgorithm& algorithm, View password, WorkBudget& budget)
{
    const Secret derived = pbkdf1(OldHash::Sha1, password, saltAndCount(algorithm), budget);
    CipherStart start{cipherOf(library, "SEED-CBC"), part(derived, 0, 16), toBytes(view(fixedVector))};
    if (algorithm.oid == oid::seedCbcWithSha1)
        start.vector = toBytes(View(sha1(View(derived).subspan(16))).first(16));
    return start;
}

/** PBES1 of RFC 8018 and the schemes of RFC 7292: a cipher and where its key comes from. */
struct NamedScheme {
    const char* oid;
    const char* cipher;
    OldHash hash = OldHash::Sha1;
};

constexpr std::array pbes1Schemes{
    NamedScheme{"1.2.840.113549.1.5.3", "DES-CBC", OldHash::Md5},
    NamedScheme{"1.2.840.113549.1.5.6", "RC2-64-CBC", OldHash::Md5},
    NamedScheme{"1.2.840.113549.1.5.10", "DES-CBC"},
    NamedScheme{"1.2.840.113549.1.5.11", "RC2-64-CBC"},
};

constexpr std::array pkcs12Schemes{
    NamedScheme{"1.2.840.113549.1.12.1.1", "RC4"},
    NamedScheme{"1.2.840.113549.1.12.1.2", "RC4-40"},
    NamedScheme{"1.2.840.113549.1.12.1.3", "DES-EDE3-CBC"},
    NamedScheme{"1.2.840.113549.1.12.1.4", "DES-EDE-CBC"},
    NamedScheme{"1.2.840.113549.1.12.1.5", "RC2-CBC"},
    NamedScheme{"1.2.840.113549.1.12.1.6", "RC2-40-CBC"},
};

template <std::size_t count>
const NamedScheme& schemeOf(const std::array<NamedScheme, count>& schemes, const std::string& id)
{
    const auto* const scheme =
        std::find_if(schemes.begin(), schemes.end(), [&](const NamedScheme& s) { return id == s.oid; });
    require(scheme != schemes.end(), SIGIL_TK_KEY_UNSUPPORTED, id);
    return *scheme;
}

CipherStart startPbes1(const Library& library, const PbeAlgorithm& algorithm, View password, WorkBudget& budget)
{
    const NamedScheme& scheme = schemeOf(pbes1Schemes, algorithm.oid);
    const Secret derived = pbkdf1(scheme.hash, password, saltAndCount(algorithm), budget);
    return {cipherOf(library, scheme.cipher), part(derived, 0, 8), toBytes(View(derived).subspan(8, 8))};
}

CipherStart startPkcs12(const Library& library, const PbeAlgorithm& algorithm, View password, WorkBudget& budget)
{
    CipherStart start{cipherOf(library, schemeOf(pkcs12Schemes, algorithm.oid).cipher), {}, {}};
    const SaltAndCount parameters = saltAndCount(algorithm);
    const DigestHandle hash = library.digest("SHA1");
    const auto derive = [&](Pkcs12Purpose purpose, std::size_t length) {
        return pkcs12Derive(hash.get(), purpose, password, parameters, length, budget);
    };
    start.key = derive(Pkcs12Purpose::Key, keyLength(start.cipher));
    start.vector = toBytes(derive(Pkcs12Purpose::Vector, vectorLength(start.cipher)));
    return start;
}

/** The parts of PBES2. */
struct Pbes2 {
    std::string derivation;
    View derivationParameters;
    std::string cipher;
    std::optional<der::Element> cipherParameters;
};

Pbes2 parsePbes2(View parameters)
{
    der::Reader parts(parameters);
    const auto derivation = parts.take(der::Sequence);
    const auto scheme = parts.take(der::Sequence);
    der::Reader derivationParts(derivation.value_or(View()));
    der::Reader schemeParts(scheme.value_or(View()));
    const auto derivationId = derivationParts.take(der::Oid);
    const auto cipherId = schemeParts.take(der::Oid);
    require(derivationId && cipherId, SIGIL_TK_KEY_MALFORMED, "PBES2 parameters");
    return {der::oidText(*derivationId), derivationParts.take(der::Sequence).value_or(View()),
        der::oidText(*cipherId), schemeParts.next()};
}

struct PrfName {
    const char* oid;
    const char* hash;
};

constexpr std::array prfNames{
    PrfName{"1.2.840.113549.2.6", "MD5"},
    PrfName{"1.2.840.113549.2.7", "SHA1"},
    PrfName{"1.2.840.113549.2.8", "SHA224"},
    PrfName{"1.2.840.113549.2.9", "SHA256"},
    PrfName{"1.2.840.113549.2.10", "SHA384"},
    PrfName{"1.2.840.113549.2.11", "SHA512"},
    PrfName{"1.2.840.113549.2.12", "SHA512-224"},
    PrfName{"1.2.840.113549.2.13", "SHA512-256"},
    PrfName{"2.16.840.1.101.3.4.2.13", "SHA3-224"},
    PrfName{"2.16.840.1.101.3.4.2.14", "SHA3-256"},
    PrfName{"2.16.840.1.101.3.4.2.15", "SHA3-384"},
    PrfName{"2.16.840.1.101.3.4.2.16", "SHA3-512"},
};

/** @param algorithm content of the pseudo-random function's identifier; HMAC with SHA-1 is the default */
const char* prfHash(std::optional<View> algorithm)
{
    if (!algorithm)
        return "SHA1";
    const auto id = der::Reader(*algorithm).take(der::Oid);
    const std::string text = id ? der::oidText(*id) : std::string();
    const auto* const found =
        std::find_if(prfNames.begin(), prfNames.end(), [&](const PrfName& prf) { return text == prf.oid; });
    require(found != prfNames.end(), SIGIL_TK_KEY_UNSUPPORTED, text);
    return found->hash;
}

unsigned long numberIn(der::Reader& fields)
{
    const auto content = fields.take(der::Integer);
    const auto value = content ? der::smallInteger(*content) : std::nullopt;
    require(value.has_value(), SIGIL_TK_KEY_MALFORMED, "key derivation");
    return *value;
}

void requireKeyLength(der::Reader& fields, std::size_t length)
{
    const auto stated = fields.take(der::Integer);
    require(!stated || der::smallInteger(*stated) == length, SIGIL_TK_KEY_MALFORMED, "key length");
}

Secret deriveKey(const Library& library, const Pbes2& scheme, View password, std::size_t length, WorkBudget& budget)
{
    der::Reader fields(scheme.derivationParameters);
    if (scheme.derivation == oid::scrypt) {
        const auto salt = fields.take(der::OctetString);
        require(salt && !salt->empty(), SIGIL_TK_KEY_MALFORMED, "salt");
        const unsigned long n = numberIn(fields);
        const unsigned long r = numberIn(fields);
        const ScryptCost cost{n, r, numberIn(fields)};
        requireKeyLength(fields, length);
        require(fields.atEnd(), SIGIL_TK_KEY_MALFORMED, "key derivation");
        budget.look();
        return scrypt(library, password, *salt, cost, length);
    }
    const SaltAndCount parameters = readSaltAndCount(fields);
    requireKeyLength(fields, length);
    const char* const hash = prfHash(fields.take(der::Sequence));
    require(fields.atEnd(), SIGIL_TK_KEY_MALFORMED, "key derivation");
    return pbkdf2(library, hash, password, parameters, length, budget);
}

/** Reads the vector of a cipher with authentication: RFC 5084's parameters, or a bare vector and then a tag of 16 bytes. */
void readGcm(const Pbes2& scheme, CipherStart& start)
{
    constexpr std::size_t longestVector = 64;
    const bool isBare = scheme.cipherParameters->tag == der::OctetString;
    der::Reader fields(isBare ? scheme.cipherParameters->whole : scheme.cipherParameters->content);
    const auto vector = fields.take(der::OctetString);
    const auto tag = fields.take(der::Integer);
    const auto tagLength = tag ? der::smallInteger(*tag) : std::optional(isBare ? 16UL : 12UL);
    const bool right = vector && !vector->empty() && vector->size() <= longestVector && tagLength &&
        *tagLength >= 12 && *tagLength <= 16;
    require(right, SIGIL_TK_KEY_MALFORMED, "parameters of the cipher");
    start.vector = toBytes(*vector);
    start.tag = *tagLength;
}

/** RC2 says in a number of its own how long its key is. */
struct Rc2Version {
    unsigned long number;
    const char* cipher;
};

constexpr std::array rc2Versions{
    Rc2Version{160, "RC2-40-CBC"}, Rc2Version{120, "RC2-64-CBC"}, Rc2Version{58, "RC2-CBC"}};

void readRc2(const Library& library, const Pbes2& scheme, CipherStart& start)
{
    der::Reader fields(scheme.cipherParameters->content);
    const unsigned long number = numberIn(fields);
    const auto* const version = std::find_if(
        rc2Versions.begin(), rc2Versions.end(), [&](const Rc2Version& v) { return v.number == number; });
    require(version != rc2Versions.end(), SIGIL_TK_KEY_UNSUPPORTED, scheme.cipher);
    start.cipher = cipherOf(library, version->cipher);
    start.vector = toBytes(fields.take(der::OctetString).value_or(View()));
}

void readVector(const Library& library, const Pbes2& scheme, CipherStart& start)
{
    require(scheme.cipherParameters.has_value(), SIGIL_TK_KEY_MALFORMED, "no initial vector");
    const int mode = EVP_CIPHER_get_mode(start.cipher.get());
    if (mode == EVP_CIPH_GCM_MODE)
        return readGcm(scheme, start);
    const bool known = mode == EVP_CIPH_CBC_MODE || mode == EVP_CIPH_CFB_MODE || mode == EVP_CIPH_OFB_MODE;
    require(known, SIGIL_TK_KEY_UNSUPPORTED, scheme.cipher);
    if (scheme.cipher == oid::rc2Cbc && scheme.cipherParameters->tag == der::Sequence)
        readRc2(library, scheme, start);
    else if (scheme.cipherParameters->tag == der::OctetString)
        start.vector = toBytes(scheme.cipherParameters->content);
    require(start.vector.size() == vectorLength(start.cipher), SIGIL_TK_KEY_MALFORMED, "initial vector");
}

CipherStart startPbes2(const Library& library, const PbeAlgorithm& algorithm, View password, WorkBudget& budget)
{
    const Pbes2 scheme = parsePbes2(algorithm.parameters);
    CipherStart start{cipherOf(library, scheme.cipher), {}, {}};
    readVector(library, scheme, start);
    start.key = deriveKey(library, scheme, password, keyLength(start.cipher), budget);
    return start;
}

bool isPkcs12Scheme(const std::string& id) { return id.starts_with(oid::pkcs12Pbe); }

Derive deriverOf(const std::string& id)
{
    if (id == oid::seedCbcWithSha1 || id == oid::seedCbc)
        return startSeed;
    if (id == oid::pbes2)
        return startPbes2;
    if (isPkcs12Scheme(id))
        return startPkcs12;
    require(id.starts_with(oid::pbes1), SIGIL_TK_KEY_UNSUPPORTED, id);
    return startPbes1;
}

/** What a scheme may have made of the password: the bytes as typed, or BMPStrings. The first one is written. */
std::vector<Secret> formsOf(const PbeAlgorithm& algorithm, std::string_view password)
{
    return isPkcs12Scheme(algorithm.oid) ? bmpForms(password) : std::vector<Secret>{toSecret(view(password))};
}

CipherContextHandle begin(const CipherStart& start, bool encrypting)
{
    CipherContextHandle context(EVP_CIPHER_CTX_new());
    const int direction = encrypting ? 1 : 0;
    const bool begun = context &&
        EVP_CipherInit_ex2(context.get(), start.cipher.get(), nullptr, nullptr, direction, nullptr) == 1 &&
        (start.tag == 0 ||
            EVP_CIPHER_CTX_ctrl(
                context.get(), EVP_CTRL_AEAD_SET_IVLEN, static_cast<int>(start.vector.size()), nullptr) == 1) &&
        EVP_CipherInit_ex2(context.get(), nullptr, start.key.data(),
            start.vector.empty() ? nullptr : start.vector.data(), direction, nullptr) == 1;
    require(begun, SIGIL_TK_INTERNAL, "cipher");
    return context;
}

/** Nothing when the padding or the tag is wrong. */
std::optional<Secret> decrypt(const CipherStart& start, View encrypted)
{
    const auto block = static_cast<std::size_t>(EVP_CIPHER_get_block_size(start.cipher.get()));
    require(encrypted.size() > start.tag && (encrypted.size() - start.tag) % block == 0, SIGIL_TK_KEY_MALFORMED,
        "length of the encrypted data");
    const CipherContextHandle context = begin(start, false);
    Bytes tag = toBytes(encrypted.last(start.tag));
    const bool tagged = tag.empty() ||
        EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_TAG, static_cast<int>(tag.size()), tag.data()) == 1;
    require(tagged, SIGIL_TK_INTERNAL, "tag");
    Secret plain;
    if (runCipher(context.get(), encrypted.first(encrypted.size() - start.tag), plain))
        return plain;
    requireMemory();
    return {};
}

struct PbeChoice {
    int code;
    const char* seedOid; ///< one of the two schemes with PBKDF1, or null
    int pkcs12Scheme;    ///< PKCS#12 scheme, or NID_undef
    const char* cipher;  ///< cipher of PBES2
    int prf;             ///< PBES2's pseudo-random function
};

constexpr std::array choices{
    PbeChoice{SIGIL_TK_KEY_DEFAULT, oid::seedCbcWithSha1, NID_undef, nullptr, NID_undef},
    PbeChoice{SIGIL_TK_KEY_SEED, oid::seedCbcWithSha1, NID_undef, nullptr, NID_undef},
    PbeChoice{SIGIL_TK_KEY_SEED_FIXED_IV, oid::seedCbc, NID_undef, nullptr, NID_undef},
    PbeChoice{SIGIL_TK_KEY_PKCS12_3DES, nullptr, NID_pbe_WithSHA1And3_Key_TripleDES_CBC, nullptr, NID_undef},
    PbeChoice{SIGIL_TK_KEY_PBES2_SEED, nullptr, NID_undef, "SEED-CBC", NID_hmacWithSHA1},
    PbeChoice{SIGIL_TK_KEY_PBES2_3DES, nullptr, NID_undef, "DES-EDE3-CBC", NID_hmacWithSHA1},
    PbeChoice{SIGIL_TK_KEY_PBES2_AES128, nullptr, NID_undef, "AES-128-CBC", NID_hmacWithSHA256},
    PbeChoice{SIGIL_TK_KEY_PBES2_AES256, nullptr, NID_undef, "AES-256-CBC", NID_hmacWithSHA256},
    PbeChoice{SIGIL_TK_KEY_PBES2_ARIA128, nullptr, NID_undef, "ARIA-128-CBC", NID_hmacWithSHA256},
    PbeChoice{SIGIL_TK_KEY_PBES2_ARIA256, nullptr, NID_undef, "ARIA-256-CBC", NID_hmacWithSHA256},
};

std::string cipherOid(const Library& library, const char* name)
{
    return dottedOid(OBJ_nid2obj(EVP_CIPHER_get_nid(library.cipher(name).get())));
}

Bytes makeSeedAlgorithm(const Library& library, const char* scheme)
{
    Bytes salt(writtenSaltLength);
    require(RAND_bytes_ex(library.context(), salt.data(), salt.size(), 0) == 1, SIGIL_TK_INTERNAL, "random salt");
    constexpr unsigned char count[]{writtenIterations >> 8, writtenIterations & 0xFF};
    const Bytes parameters =
        der::element(der::Sequence, {der::element(der::OctetString, {salt}), der::element(der::Integer, {count})});
    return der::element(der::Sequence, {der::oid(scheme), parameters});
}

} // namespace

PbeAlgorithm parsePbeAlgorithm(View algorithmIdentifier)
{
    const auto content = der::Reader(algorithmIdentifier).take(der::Sequence);
    require(content.has_value(), SIGIL_TK_KEY_MALFORMED, "algorithm identifier");
    der::Reader parts(*content);
    const auto id = parts.take(der::Oid);
    require(id.has_value(), SIGIL_TK_KEY_MALFORMED, "algorithm identifier");
    return {algorithmIdentifier, der::oidText(*id), parts.take(der::Sequence).value_or(View())};
}

unsigned long iterationsOf(const PbeAlgorithm& algorithm)
{
    deriverOf(algorithm.oid);
    if (algorithm.oid != oid::pbes2)
        return saltAndCount(algorithm).iterations;
    const Pbes2 scheme = parsePbes2(algorithm.parameters);
    if (scheme.derivation == oid::scrypt)
        return 1;
    require(scheme.derivation == oid::pbkdf2, SIGIL_TK_KEY_UNSUPPORTED, scheme.derivation);
    der::Reader fields(scheme.derivationParameters);
    return readSaltAndCount(fields).iterations;
}

Secret pbeEncrypt(const Library& library, const PbeAlgorithm& algorithm, View plain, std::string_view password)
{
    iterationsOf(algorithm);
    WorkBudget budget;
    const CipherStart start =
        deriverOf(algorithm.oid)(library, algorithm, formsOf(algorithm, password).front(), budget);
    require(start.tag == 0, SIGIL_TK_KEY_OPTION, algorithm.oid);
    Secret encrypted;
    require(runCipher(begin(start, true).get(), plain, encrypted), SIGIL_TK_INTERNAL, "encryption");
    return encrypted;
}

Secret pbeDecrypt(const Library& library, const PbeAlgorithm& algorithm, View encrypted, std::string_view password,
    WorkBudget& budget, const std::function<bool(View)>& accept)
{
    iterationsOf(algorithm);
    for (const Secret& form : formsOf(algorithm, password)) {
        auto plain = decrypt(deriverOf(algorithm.oid)(library, algorithm, form, budget), encrypted);
        if (plain && accept(*plain))
            return std::move(*plain);
    }
    fail(SIGIL_TK_KEY_WRONG_PASSWORD);
}

Bytes makePbeAlgorithm(const Library& library, int code)
{
    const auto* const choice =
        std::find_if(choices.begin(), choices.end(), [&](const PbeChoice& c) { return c.code == code; });
    require(choice != choices.end(), SIGIL_TK_KEY_OPTION, std::to_string(code));
    if (choice->seedOid)
        return makeSeedAlgorithm(library, choice->seedOid);
    const AlgorithmHandle algorithm(choice->cipher
            ? PKCS5_pbe2_set_iv_ex(library.cipher(choice->cipher).get(), writtenIterations, nullptr,
                  writtenSaltLength, nullptr, choice->prf, library.context())
            : PKCS5_pbe_set_ex(
                  choice->pkcs12Scheme, writtenIterations, nullptr, writtenSaltLength, library.context()));
    require(algorithm != nullptr, SIGIL_TK_INTERNAL, "algorithm identifier");
    return encode<Bytes>(algorithm.get(), i2d_X509_ALGOR);
}

int pbeCode(const Library& library, const PbeAlgorithm& algorithm)
{
    const std::string cipher =
        algorithm.oid == oid::pbes2 ? parsePbes2(algorithm.parameters).cipher : std::string();
    for (const PbeChoice& choice : choices) {
        const bool same = choice.seedOid ? algorithm.oid == choice.seedOid
            : choice.cipher              ? cipher == cipherOid(library, choice.cipher)
                                         : algorithm.oid == dottedOid(OBJ_nid2obj(choice.pkcs12Scheme));
        if (same)
            return choice.code;
    }
    return SIGIL_TK_KEY_DEFAULT;
}

bool runCipher(EVP_CIPHER_CTX* cipher, View data, Secret& out)
{
    out.resize(data.size() + EVP_MAX_BLOCK_LENGTH);
    int length = 0;
    int tail = 0;
    const bool done =
        EVP_CipherUpdate(cipher, out.data(), &length, data.data(), static_cast<int>(data.size())) == 1 &&
        EVP_CipherFinal_ex(cipher, out.data() + length, &tail) == 1;
    out.resize(done ? static_cast<std::size_t>(length + tail) : 0);
    return done;
}

} // namespace toolkit
