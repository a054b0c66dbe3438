// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/pkcs12/pkcs12.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/derivation.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/password.h"
#include "toolkit/engine/keys/pbe.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/pkcs12/pkcs12_handles.h"
#include "toolkit/engine/x509/certificate.h"

#include <algorithm>
#include <optional>

namespace toolkit {
namespace {

constexpr int maximumDepth = 8;
constexpr unsigned long maximumIterations = 10'000'000;

struct FoundCertificate {
    Bytes der;
    Bytes localKeyId;
};

struct FoundKey {
    Secret keyInfo;
    Bytes localKeyId;
};

Bytes localKeyId(const PKCS12_SAFEBAG* bag)
{
    const ASN1_TYPE* value = PKCS12_SAFEBAG_get0_attr(bag, NID_localKeyID);
    if (!value || value->type != V_ASN1_OCTET_STRING)
        return {};
    const ASN1_OCTET_STRING* id = value->value.octet_string;
    return {id->data, id->data + id->length};
}

/** In a PKCS#12 file a key that does not open is a failure of the file. */
int pfxCode(int keyCode)
{
    switch (keyCode) {
    case SIGIL_TK_KEY_WRONG_PASSWORD:
        return SIGIL_TK_PFX_WRONG_PASSWORD;
    case SIGIL_TK_KEY_UNSUPPORTED:
    case SIGIL_TK_ALGORITHM:
        return SIGIL_TK_PFX_UNSUPPORTED;
    case SIGIL_TK_KEY_MALFORMED:
        return SIGIL_TK_PFX_MALFORMED;
    default:
        return keyCode;
    }
}

/** Runs a decryption and turns its codes into those of PKCS#12. */
template <class Body>
auto withPfxCodes(Body body)
{
    try {
        return body();
    } catch (const Error& error) {
        failAs(pfxCode(error.code()), error);
    }
}

/** Collects what the bags of a file hold. */
class BagReader {
public:
    BagReader(const Library& library, std::string_view password, WorkBudget& budget)
        : m_library(library)
        , m_passwords(readingsOf(password))
        , m_budget(budget)
    {
    }

    void readSafe(PKCS7* safe)
    {
        if (PKCS7_type_is_data(safe))
            return readBags(BagsHandle(PKCS12_unpack_p7data(safe)).get(), 0);
        require(PKCS7_type_is_encrypted(safe), SIGIL_TK_PFX_UNSUPPORTED, "public-key protection");
        const Secret plain = withPfxCodes([&] { return decryptSafe(safe->d.encrypted); });
        readBags(parseBags(plain).get(), 0);
    }

    std::vector<FoundCertificate> certificates;
    std::vector<FoundKey> keys;

private:
    /** Many slow bags in one file take as long as one that is too slow. */
    void countIterations(const PbeAlgorithm& algorithm)
    {
        m_iterations += iterationsOf(algorithm);
        require(m_iterations <= maximumIterations, SIGIL_TK_KEY_MALFORMED, "sum of iteration counts");
    }

    static BagsHandle parseBags(View safe)
    {
        const unsigned char* at = safe.data();
        return BagsHandle(static_cast<STACK_OF(PKCS12_SAFEBAG)*>(static_cast<void*>(
            ASN1_item_d2i(nullptr, &at, static_cast<long>(safe.size()), ASN1_ITEM_rptr(PKCS12_SAFEBAGS)))));
    }

    /** Runs a decryption under each reading of the password until one opens. */
    template <class Decrypt>
    Secret underEachReading(Decrypt decryptUnder)
    {
        for (const Secret& reading : m_passwords) {
            try {
                return decryptUnder(std::string_view(chars(reading), reading.size()));
            } catch (const Error& error) {
                if (error.code() != SIGIL_TK_KEY_WRONG_PASSWORD)
                    throw;
            }
        }
        fail(SIGIL_TK_KEY_WRONG_PASSWORD);
    }

    /** @param encrypted null when the file names the kind of its content alone */
    Secret decryptSafe(const PKCS7_ENCRYPT* encrypted)
    {
        require(encrypted && encrypted->enc_data->enc_data, SIGIL_TK_KEY_MALFORMED, "encrypted content");
        const PKCS7_ENC_CONTENT* const content = encrypted->enc_data;
        const Bytes identifier = encode<Bytes>(content->algorithm, i2d_X509_ALGOR);
        const PbeAlgorithm algorithm = parsePbeAlgorithm(identifier);
        countIterations(algorithm);
        const View data(content->enc_data->data, static_cast<std::size_t>(content->enc_data->length));
        return underEachReading([&](std::string_view password) {
            return pbeDecrypt(m_library, algorithm, data, password, m_budget,
                [](View plain) { return parseBags(plain) != nullptr; });
        });
    }

    void readBags(const STACK_OF(PKCS12_SAFEBAG) * bags, int depth)
    {
        require(bags && depth <= maximumDepth, SIGIL_TK_PFX_MALFORMED, "bags");
        for (int i = 0; i < sk_PKCS12_SAFEBAG_num(bags); ++i)
            readBag(sk_PKCS12_SAFEBAG_value(bags, i), depth);
    }

    void readBag(const PKCS12_SAFEBAG* bag, int depth)
    {
        switch (PKCS12_SAFEBAG_get_nid(bag)) {
        case NID_keyBag:
            keys.push_back(
                {encode<Secret>(PKCS12_SAFEBAG_get0_p8inf(bag), i2d_PKCS8_PRIV_KEY_INFO), localKeyId(bag)});
            break;
        case NID_pkcs8ShroudedKeyBag:
            keys.push_back({decryptKey(PKCS12_SAFEBAG_get0_pkcs8(bag)), localKeyId(bag)});
            break;
        case NID_certBag:
            readCertificate(bag);
            break;
        case NID_safeContentsBag:
            readBags(PKCS12_SAFEBAG_get0_safes(bag), depth + 1);
            break;
        default:
            break; // revocation lists and secrets are of no use here
        }
    }

    Secret decryptKey(const X509_SIG* encrypted)
    {
        const X509_ALGOR* algorithm = nullptr;
        X509_SIG_get0(encrypted, &algorithm, nullptr);
        const Bytes identifier = encode<Bytes>(algorithm, i2d_X509_ALGOR);
        const Bytes file = encode<Bytes>(encrypted, i2d_X509_SIG);
        return withPfxCodes([&] {
            countIterations(parsePbeAlgorithm(identifier));
            return underEachReading(
                [&](std::string_view password) { return decryptKeyFile(m_library, file, password, m_budget); });
        });
    }

    void readCertificate(const PKCS12_SAFEBAG* bag)
    {
        if (PKCS12_SAFEBAG_get_bag_nid(bag) != NID_x509Certificate)
            return;
        const X509Handle certificate(PKCS12_SAFEBAG_get1_cert(bag));
        require(certificate != nullptr, SIGIL_TK_PFX_MALFORMED, "certificate");
        certificates.push_back({encode<Bytes>(certificate.get(), i2d_X509), localKeyId(bag)});
    }

    const Library& m_library;
    std::vector<Secret> m_passwords;
    WorkBudget& m_budget;
    unsigned long m_iterations = 0;
};

Pkcs12Handle parse(const Library& library, View file)
{
    const BioHandle input(BIO_new_mem_buf(file.data(), static_cast<int>(file.size())));
    Pkcs12Handle fresh(PKCS12_init_ex(NID_pkcs7_data, library.context(), nullptr));
    require(input && fresh, SIGIL_TK_NO_MEMORY);
    Pkcs12Handle parsed =
        decodeInto(std::move(fresh), [&](PKCS12** target) { return d2i_PKCS12_bio(input.get(), target); });
    require(parsed != nullptr, SIGIL_TK_PFX_MALFORMED);
    return parsed;
}

/** What protects a whole file: the code over its content. */
struct Mac {
    std::string hash; ///< dotted
    View value;
    SaltAndCount parameters;
    View content;
};

SaltAndCount macParameters(der::Reader& fields)
{
    const View salt = fields.take(der::OctetString).value_or(View());
    const auto count = fields.take(der::Integer);
    const auto iterations = count ? der::smallInteger(*count) : std::optional(1UL);
    require(!salt.empty() && iterations && *iterations >= 1 && *iterations <= maximumIterations,
        SIGIL_TK_PFX_MALFORMED, "salt or iteration count");
    return {salt, *iterations};
}

/** @param pfx the file as OpenSSL encodes it again: with definite lengths */
Mac macOf(View pfx)
{
    der::Reader fields(der::Reader(pfx).take(der::Sequence).value_or(View()));
    fields.take(der::Integer);
    der::Reader safe(fields.take(der::Sequence).value_or(View()));
    safe.take(der::Oid);
    const auto content = der::Reader(safe.take(der::Explicit0).value_or(View())).take(der::OctetString);
    der::Reader data(fields.take(der::Sequence).value_or(View()));
    der::Reader digest(data.take(der::Sequence).value_or(View()));
    const View hash = der::Reader(digest.take(der::Sequence).value_or(View())).take(der::Oid).value_or(View());
    const View value = digest.take(der::OctetString).value_or(View());
    require(content.has_value(), SIGIL_TK_PFX_MALFORMED, "integrity protection");
    return {der::oidText(hash), value, macParameters(data), *content};
}

bool macMatches(const Library& library, const Mac& mac, std::string_view password, WorkBudget& budget)
{
    const DigestHandle hash = library.digest(mac.hash.c_str());
    const auto length = static_cast<std::size_t>(EVP_MD_get_size(hash.get()));
    const std::vector<Secret> forms = bmpForms(password);
    return std::any_of(forms.begin(), forms.end(), [&](const Secret& form) {
        const Secret key = pkcs12Derive(hash.get(), Pkcs12Purpose::Mac, form, mac.parameters, length, budget);
        const Bytes expected = hmac(library, EVP_MD_get0_name(hash.get()), key, mac.content);
        return mac.value.size() == length && CRYPTO_memcmp(mac.value.data(), expected.data(), length) == 0;
    });
}

void checkMac(const Library& library, const PKCS12* pfx, std::string_view password, int mode, WorkBudget& budget)
{
    if (PKCS12_mac_present(pfx) != 1) {
        require(mode == SIGIL_TK_PFX_WITHOUT_MAC, SIGIL_TK_PFX_NO_MAC);
        return;
    }
    const Bytes der = encode<Bytes>(pfx, i2d_PKCS12);
    const Mac mac = macOf(der);
    const bool matches = withPfxCodes([&] { return macMatches(library, mac, password, budget); });
    require(matches, SIGIL_TK_PFX_WRONG_PASSWORD);
}

/** By their public keys; keys that OpenSSL does not know by the identifier that the file gives to both. */
bool belongTogether(
    const Library& library, const Certificate& certificate, const Bytes& certificateId, const FoundKey& key)
{
    try {
        checkKeyPair(library, certificate, key.keyInfo);
        return true;
    } catch (const Error& error) {
        return error.code() != SIGIL_TK_KEY_MISMATCH && !key.localKeyId.empty() && key.localKeyId == certificateId;
    }
}

Pkcs12Content pairUp(const Library& library, BagReader& found, const WorkBudget& budget)
{
    Pkcs12Content content;
    for (const FoundCertificate& own : found.certificates) {
        const Certificate certificate(library, own.der);
        const auto key = std::find_if(found.keys.begin(), found.keys.end(), [&](const FoundKey& candidate) {
            budget.look();
            return belongTogether(library, certificate, own.localKeyId, candidate);
        });
        if (key == found.keys.end())
            content.others.push_back(own.der);
        else
            content.pairs.push_back({own.der, key->keyInfo});
    }
    require(!content.pairs.empty(), SIGIL_TK_PFX_NO_PAIR);
    return content;
}

bool signs(const Library& library, const CertifiedKey& pair)
{
    return (Certificate(library, pair.certificate).usageBits().value_or(0) & KU_DIGITAL_SIGNATURE) != 0;
}

} // namespace

Pkcs12Content readPkcs12(const Library& library, View file, std::string_view password, int mode)
{
    require(mode == SIGIL_TK_PFX_STRICT || mode == SIGIL_TK_PFX_WITHOUT_MAC, SIGIL_TK_OPTION, "PKCS#12 mode");
    const Pkcs12Handle pfx = parse(library, file);
    WorkBudget budget;
    checkMac(library, pfx.get(), password, mode, budget);
    const SafesHandle safes(PKCS12_unpack_authsafes(pfx.get()));
    require(safes != nullptr, SIGIL_TK_PFX_MALFORMED, "content");
    BagReader reader(library, password, budget);
    for (int i = 0; i < sk_PKCS7_num(safes.get()); ++i)
        reader.readSafe(sk_PKCS7_value(safes.get(), i));
    return withPfxCodes([&] { return pairUp(library, reader, budget); });
}

const CertifiedKey& signingPair(const Library& library, const Pkcs12Content& content)
{
    require(!content.pairs.empty(), SIGIL_TK_PFX_NO_PAIR);
    const auto pair = std::find_if(
        content.pairs.begin(), content.pairs.end(), [&](const CertifiedKey& p) { return signs(library, p); });
    return pair == content.pairs.end() ? content.pairs.front() : *pair;
}

const CertifiedKey* keyManagementPair(const Library& library, const Pkcs12Content& content)
{
    const CertifiedKey* const signing = &signingPair(library, content);
    for (const CertifiedKey& pair : content.pairs)
        if (&pair != signing && !signs(library, pair))
            return &pair;
    return nullptr;
}

} // namespace toolkit
