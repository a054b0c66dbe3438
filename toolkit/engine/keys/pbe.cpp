#include "toolkit/engine/keys/pbe.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/password.h"

#include <openssl/err.h>
#include <openssl/objects.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

constexpr int writtenIterations = 2048;
constexpr int writtenSaltLength = 8;
constexpr unsigned long maximumIterations = 10'000'000;
constexpr std::size_t seedKeyLength = 16;
constexpr std::string_view fixedVector = "0123456789012345";

struct SaltAndCount {
    View salt;
    unsigned long iterations;
};

/** PBEParameter and the parameters of PBKDF2 begin alike. */
SaltAndCount parseSaltAndCount(View content)
{
    der::Reader fields(content);
    const auto salt = fields.take(der::OctetString);
    const auto count = fields.take(der::Integer);
    require(salt && !salt->empty() && count, SIGIL_TK_KEY_MALFORMED, "salt or iteration count");
    const auto iterations = der::smallInteger(*count);
    require(iterations && *iterations >= 1 && *iterations <= maximumIterations, SIGIL_TK_KEY_MALFORMED,
        "iteration count");
    return {*salt, *iterations};
}

SaltAndCount parsePbes2(View parameters)
{
    const auto derivation = der::Reader(parameters).take(der::Sequence);
    require(derivation.has_value(), SIGIL_TK_KEY_MALFORMED, "PBES2 parameters");
    der::Reader parts(*derivation);
    const auto id = parts.take(der::Oid);
    require(id.has_value(), SIGIL_TK_KEY_MALFORMED, "key derivation");
    require(der::oidText(*id) == oid::pbkdf2, SIGIL_TK_KEY_UNSUPPORTED, der::oidText(*id));
    const auto pbkdf2 = parts.take(der::Sequence);
    require(pbkdf2.has_value(), SIGIL_TK_KEY_MALFORMED, "PBKDF2 parameters");
    return parseSaltAndCount(*pbkdf2);
}

bool isPkcs12Scheme(const std::string& id) { return id.starts_with(oid::pkcs12Pbe); }

bool isSeed(const std::string& id) { return id == oid::seedCbcWithSha1 || id == oid::seedCbc; }

/** Wherever the scheme keeps them; bounds what will have to be computed. */
SaltAndCount saltAndCountOf(const PbeAlgorithm& algorithm)
{
    const std::string& id = algorithm.oid;
    if (id == oid::pbes2)
        return parsePbes2(algorithm.parameters);
    const bool known = isSeed(id) || isPkcs12Scheme(id) || id.starts_with(oid::pbes1);
    require(known, SIGIL_TK_KEY_UNSUPPORTED, id);
    return parseSaltAndCount(algorithm.parameters);
}

int codeOfFailedStart()
{
    switch (ERR_GET_REASON(ERR_peek_last_error())) {
    case EVP_R_UNKNOWN_PBE_ALGORITHM:
    case EVP_R_UNSUPPORTED_CIPHER:
    case EVP_R_UNSUPPORTED_PRF:
    case EVP_R_UNSUPPORTED_ALGORITHM:
    case EVP_R_UNKNOWN_CIPHER:
    case ERR_R_UNSUPPORTED:
        return SIGIL_TK_KEY_UNSUPPORTED;
    default:
        return SIGIL_TK_KEY_MALFORMED;
    }
}

void startStandard(const Library& library, const PbeAlgorithm& algorithm, std::string_view password,
    Direction direction, EVP_CIPHER_CTX* cipher)
{
    saltAndCountOf(algorithm);
    const unsigned char* at = algorithm.whole.data();
    const AlgorithmHandle parsed(d2i_X509_ALGOR(nullptr, &at, static_cast<long>(algorithm.whole.size())));
    require(parsed != nullptr, SIGIL_TK_KEY_MALFORMED, "algorithm identifier");
    const Secret bytes = isPkcs12Scheme(algorithm.oid) ? utf8Password(password) : toSecret(view(password));
    const int started = EVP_PBE_CipherInit_ex(parsed->algorithm, chars(bytes), static_cast<int>(bytes.size()),
        parsed->parameter, cipher, static_cast<int>(direction), library.context(), nullptr);
    require(started == 1, started == 1 ? SIGIL_TK_OK : codeOfFailedStart(), algorithm.oid);
}

Secret sha1(const EVP_MD* digest, std::initializer_list<View> parts)
{
    Secret hash(SHA_DIGEST_LENGTH);
    const DigestContextHandle context(EVP_MD_CTX_new());
    bool done = context && EVP_DigestInit_ex(context.get(), digest, nullptr) == 1;
    for (const View part : parts)
        done = done && EVP_DigestUpdate(context.get(), part.data(), part.size()) == 1;
    require(done && EVP_DigestFinal_ex(context.get(), hash.data(), nullptr) == 1, SIGIL_TK_INTERNAL, "SHA-1");
    return hash;
}

/** PBKDF1 of RFC 8018 with SHA-1, all 20 bytes. */
Secret pbkdf1(const EVP_MD* digest, std::string_view password, const SaltAndCount& parameters)
{
    Secret key = sha1(digest, {view(password), parameters.salt});
    for (unsigned long i = 1; i < parameters.iterations; ++i)
        key = sha1(digest, {key});
    return key;
}

void startSeed(const Library& library, const PbeAlgorithm& algorithm, std::string_view password,
    Direction direction, EVP_CIPHER_CTX* cipher)
{
    const SaltAndCount parameters = saltAndCountOf(algorithm);
    const DigestHandle digest = library.digest("SHA1");
    const Secret derived = pbkdf1(digest.get(), password, parameters);
    const Secret vector = algorithm.oid == oid::seedCbcWithSha1
        ? sha1(digest.get(), {View(derived).subspan(seedKeyLength)})
        : toSecret(view(fixedVector));
    const CipherHandle seed = library.cipher("SEED-CBC");
    require(EVP_CipherInit_ex2(
                cipher, seed.get(), derived.data(), vector.data(), static_cast<int>(direction), nullptr) == 1,
        SIGIL_TK_INTERNAL, "SEED");
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

/** Dotted identifier of the cipher in the parameters of PBES2. */
std::string pbes2Cipher(View parameters)
{
    der::Reader parts(parameters);
    parts.take(der::Sequence);
    const auto scheme = parts.take(der::Sequence);
    const auto id = scheme ? der::Reader(*scheme).take(der::Oid) : std::nullopt;
    return id ? der::oidText(*id) : std::string();
}

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

unsigned long iterationsOf(const PbeAlgorithm& algorithm) { return saltAndCountOf(algorithm).iterations; }

CipherContextHandle startPbe(
    const Library& library, const PbeAlgorithm& algorithm, std::string_view password, Direction direction)
{
    CipherContextHandle cipher(EVP_CIPHER_CTX_new());
    require(cipher != nullptr, SIGIL_TK_NO_MEMORY);
    (isSeed(algorithm.oid) ? startSeed : startStandard)(library, algorithm, password, direction, cipher.get());
    return cipher;
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
    const std::string cipher = algorithm.oid == oid::pbes2 ? pbes2Cipher(algorithm.parameters) : std::string();
    for (const PbeChoice& choice : choices) {
        const bool same = choice.seedOid ? algorithm.oid == choice.seedOid
            : choice.cipher              ? !cipher.empty() && cipher == cipherOid(library, choice.cipher)
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
