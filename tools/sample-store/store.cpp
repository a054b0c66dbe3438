// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/store.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/private_key.h"
#include "tools/sample-store/check.h"
#include "tools/sample-store/files.h"

#include <openssl/rand.h>
#include <sigildesk/open_toolkit.h>

#include <algorithm>
#include <set>

namespace sample {

namespace {

using toolkit::Bytes;
using toolkit::Secret;

constexpr std::size_t randomValueSize = 20;

Bytes derOf(const X509* certificate) { return toolkit::encode<Bytes>(certificate, i2d_X509); }

/** Variant D stands for several ciphers, taken in turn. */
int encryptionOf(char variant, std::size_t i)
{
    constexpr int modern[] = {SIGIL_TK_KEY_PBES2_ARIA256, SIGIL_TK_KEY_PBES2_AES256, SIGIL_TK_KEY_PBES2_ARIA128,
        SIGIL_TK_KEY_PBES2_3DES, SIGIL_TK_KEY_PBES2_AES128};
    switch (variant) {
    case 'B':
        return SIGIL_TK_KEY_SEED_FIXED_IV;
    case 'C':
        return SIGIL_TK_KEY_PBES2_SEED;
    case 'D':
        return modern[i % std::size(modern)];
    case 'E':
        return SIGIL_TK_KEY_PKCS12_3DES;
    default:
        return SIGIL_TK_KEY_SEED;
    }
}

/** A PKCS#12 file is as old or new as the key files beside it. */
int protectionOf(char variant)
{
    switch (variant) {
    case 'C':
        return SIGIL_TK_PFX_SEED;
    case 'D':
        return SIGIL_TK_PFX_AES256;
    default:
        return SIGIL_TK_PFX_3DES;
    }
}

Secret makeRandomValue()
{
    Secret random(randomValueSize);
    check(RAND_bytes(random.data(), randomValueSize), "make a random value");
    return random;
}

/** Identity data over the holder's number; certificates with short keys come from the days of SHA-1. */
Bytes identityDataOf(const toolkit::Library& library, const PlannedCertificate& planned, toolkit::View random)
{
    const std::string hash = planned.keyBits < 2048 ? "1.3.14.3.2.26" : "2.16.840.1.101.3.4.2.1";
    return toolkit::encodeIdentifyData(
        {planned.realName, toolkit::computeVid(library, hash, planned.identityNumber, random)});
}

/** The issuers of a certificate, root first, as some authorities lay them beside it. */
Bytes caPubs(const X509* root, const X509* authority)
{
    return toolkit::der::element(toolkit::der::Sequence, {derOf(root), derOf(authority)});
}

std::string fileNameOf(const Authority& authority)
{
    std::string name = DistinguishedName(authority.dn).commonName();
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

/** Writes NAME.der and NAME.pem; returns the PEM text. */
std::string writeIssuer(const std::filesystem::path& folder, const std::string& name, const X509* certificate)
{
    const Bytes der = derOf(certificate);
    std::string pem = toolkit::pemEncode(SIGIL_TK_PEM_CERTIFICATE, der);
    writeNewFile(folder / (name + ".der"), der);
    writeNewFile(folder / (name + ".pem"), toolkit::view(pem));
    return pem;
}

} // namespace

Store::Store(const Options& options, const std::vector<PlannedCertificate>& plan)
    : m_options(options)
    , m_plan(plan)
    , m_keys(static_cast<std::size_t>(options.keys))
    , m_issuers(options.now, static_cast<std::size_t>(options.keys))
{
}

void Store::write()
{
    for (std::size_t i = 0; i < m_plan.size(); ++i)
        writeCertificate(m_plan[i], i);
    writeIssuers();
}

toolkit::CertifiedKey Store::makeSigningPair(const PlannedCertificate& planned, EVP_PKEY* key)
{
    Secret keyInfo = toolkit::encodePrivateKey(key);
    if (planned.kind->holder == Holder::Server)
        return {derOf(m_issuers.issueSigning(planned, key, {}).get()), std::move(keyInfo)};
    const Secret random = makeRandomValue();
    const Bytes identity = identityDataOf(m_library, planned, random);
    return {
        derOf(m_issuers.issueSigning(planned, key, identity).get()), toolkit::withIdentityRandom(keyInfo, random)};
}

toolkit::CertifiedKey Store::makeKeyManagementPair(const PlannedCertificate& planned, EVP_PKEY* key)
{
    return {derOf(m_issuers.issueKeyManagement(planned, key).get()), toolkit::encodePrivateKey(key)};
}

void Store::writePair(const toolkit::CertifiedKey& pair, const std::filesystem::path& certFile,
    const std::filesystem::path& keyFile, int encryption)
{
    writeNewFile(certFile, pair.certificate);
    writeNewFile(keyFile, toolkit::encryptKeyFile(m_library, encryption, pair.keyInfo, m_options.password));
}

void Store::writePfx(const PlannedCertificate& planned, const toolkit::Pkcs12Content& content)
{
    writeNewFile(pfxFileOf(m_options.target, planned),
        toolkit::writePkcs12(m_library, content, m_options.password, protectionOf(planned.variant)));
}

void Store::writeCertificate(const PlannedCertificate& planned, std::size_t i)
{
    const CertificateFiles files = filesOf(m_options.target, planned);
    const int encryption = encryptionOf(planned.variant, i);
    toolkit::Pkcs12Content content;
    content.pairs.push_back(makeSigningPair(planned, m_keys.key(planned.keyBits, 2 * i)));
    writePair(content.pairs.back(), files.signCert, files.signKey, encryption);
    if (planned.pairs == Pairs::Both) {
        content.pairs.push_back(makeKeyManagementPair(planned, m_keys.key(planned.keyBits, 2 * i + 1)));
        writePair(content.pairs.back(), files.kmCert, files.kmKey, encryption);
    }
    if (planned.kind->family == Family::Npki)
        writeNewFile(files.signCert.parent_path() / "CaPubs",
            caPubs(m_issuers.root(), m_issuers.certificateOf(*planned.kind->authority)));
    if (m_options.pfx)
        writePfx(planned, content);
}

void Store::writeIssuers()
{
    const std::filesystem::path folder = issuerFolder(m_options.target);
    writeIssuer(folder, "root", m_issuers.root());
    std::set<const Authority*> written;
    std::string all;
    for (const PlannedCertificate& planned : m_plan) {
        const Authority& authority = *planned.kind->authority;
        if (written.insert(&authority).second)
            all += writeIssuer(folder, fileNameOf(authority), m_issuers.certificateOf(authority));
    }
    writeNewFile(folder / "authorities.pem", toolkit::view(all));
}

} // namespace sample
