// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/keys.h"

#include "jobs/failure.h"
#include "jobs/read_file.h"

#include <algorithm>

namespace host {

namespace {

constexpr Words noKey{"{} has no private key beside it", "{} 옆에 개인키가 없습니다"};
constexpr Words noKmPair{"{} has no key-management pair", "{}에는 암호용 키 쌍이 없습니다"};

const std::string& keyFile(const Certificate& certificate, Pair pair)
{
    return pair == Pair::Sign ? certificate.files.key : certificate.files.kmKey;
}

} // namespace

std::vector<Pair> pairsOf(const Certificate& certificate)
{
    std::vector<Pair> pairs;
    if (!certificate.files.key.empty())
        pairs.push_back(Pair::Sign);
    if (!certificate.files.kmKey.empty() && !certificate.kmDer.empty())
        pairs.push_back(Pair::KeyManagement);
    return pairs;
}

void mustHave(const Certificate& certificate, Pair pair)
{
    const std::vector<Pair> pairs = pairsOf(certificate);
    if (std::find(pairs.begin(), pairs.end(), pair) == pairs.end())
        throw Failure(no, "no_key", pair == Pair::Sign ? noKey : noKmPair, {certificate.name});
}

int unlockWith(const Crypto& crypto, const Certificate& certificate, Pair pair, Secret& password, Bytes& key)
{
    const sigil::SecretBytes content = readSecretFile(keyFile(certificate, pair));
    Bytes encrypted(crypto.handle());
    set(crypto, encrypted, {content.data(), content.size()});
    return PriKeyDecrypt(crypto.handle(), password.chars(), encrypted.get(), key.get());
}

void setCertificate(const Crypto& crypto, const Certificate& certificate, Pair pair, Bytes& bytes)
{
    set(crypto, bytes, pair == Pair::Sign ? certificate.der : certificate.kmDer);
}

} // namespace host
