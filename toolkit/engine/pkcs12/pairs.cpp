// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/pkcs12/pairs.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/private_key.h"

#include <algorithm>

namespace toolkit {
namespace {

bool belongs(const Library& library, const Certificate& certificate, View keyInfo)
{
    try {
        checkKeyPair(library, certificate, keyInfo);
        return true;
    } catch (const Error& error) {
        if (error.code() != SIGIL_TK_KEY_MISMATCH)
            throw;
        return false;
    }
}

} // namespace

std::vector<CertifiedKey> pairsOf(const Library& library, View certificates, View keys)
{
    const ObjectList keyObjects(keys);
    const auto holders = certificatesOf(library, certificates);
    require(holders.size() == keyObjects.size(), SIGIL_TK_ARGUMENT, "numbers of certificates and keys");
    std::vector<CertifiedKey> pairs;
    for (const Certificate& certificate : holders) {
        const auto key = std::find_if(keyObjects.begin(), keyObjects.end(),
            [&](const Secret& candidate) { return belongs(library, certificate, candidate); });
        require(key != keyObjects.end(), SIGIL_TK_KEY_MISMATCH);
        pairs.push_back({certificate.der(), *key});
    }
    return pairs;
}

std::vector<Bytes> otherCertificates(const Library& library, View list)
{
    std::vector<Bytes> others;
    if (!list.empty())
        for (const Certificate& certificate : certificatesOf(library, list))
            others.push_back(certificate.der());
    return others;
}

ObjectList certificateList(const std::vector<CertifiedKey>& pairs)
{
    ObjectList list;
    for (const CertifiedKey& pair : pairs)
        list.add(pair.certificate);
    return list;
}

ObjectList keyList(const std::vector<CertifiedKey>& pairs)
{
    ObjectList list;
    for (const CertifiedKey& pair : pairs)
        list.add(pair.keyInfo);
    return list;
}

ObjectList certificateList(const std::vector<Bytes>& certificates)
{
    ObjectList list;
    for (const Bytes& certificate : certificates)
        list.add(certificate);
    return list;
}

} // namespace toolkit
