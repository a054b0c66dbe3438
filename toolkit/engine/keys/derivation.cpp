// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// OpenSSL's plain hash functions, which it calls deprecated: their states are copied without asking for memory, which is
// what makes a thousand rounds cheap.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "toolkit/engine/keys/derivation.h"

#include "toolkit/engine/base/error.h"

#include <openssl/core_names.h>
#include <openssl/md5.h>
#include <openssl/params.h>
#include <openssl/sha.h>

#include <algorithm>
#include <array>
#include <functional>

namespace toolkit {
namespace {

struct Md5 {
    using State = MD5_CTX;
    static constexpr std::size_t length = MD5_DIGEST_LENGTH;
    static void init(State& state) { MD5_Init(&state); }
    static void update(State& state, View data) { MD5_Update(&state, data.data(), data.size()); }
    static void finish(State& state, unsigned char* out) { MD5_Final(out, &state); }
};

struct Sha1 {
    using State = SHA_CTX;
    static constexpr std::size_t length = SHA_DIGEST_LENGTH;
    static void init(State& state) { SHA1_Init(&state); }
    static void update(State& state, View data) { SHA1_Update(&state, data.data(), data.size()); }
    static void finish(State& state, unsigned char* out) { SHA1_Final(out, &state); }
};

struct Sha256 {
    using State = SHA256_CTX;
    static constexpr std::size_t length = SHA256_DIGEST_LENGTH;
    static void init(State& state) { SHA256_Init(&state); }
    static void update(State& state, View data) { SHA256_Update(&state, data.data(), data.size()); }
    static void finish(State& state, unsigned char* out) { SHA256_Final(out, &state); }
};

constexpr std::size_t blockLength = 64; // of all three

/** A value on the stack that is wiped when it goes. */
template <class T>
struct Wiped {
    T value;
    Wiped() = default;
    Wiped(const Wiped&) = delete;
    Wiped& operator=(const Wiped&) = delete;
    ~Wiped() { OPENSSL_cleanse(&value, sizeof value); }
};

template <class Hash>
Secret pbkdf1With(View password, const SaltAndCount& parameters, WorkBudget& budget)
{
    Wiped<typename Hash::State> state;
    Secret key(Hash::length);
    Hash::init(state.value);
    Hash::update(state.value, password);
    Hash::update(state.value, parameters.salt);
    Hash::finish(state.value, key.data());
    for (unsigned long i = 1; i < parameters.iterations; ++i) {
        Hash::init(state.value);
        Hash::update(state.value, key);
        Hash::finish(state.value, key.data());
        budget.round();
    }
    return key;
}

/** HMAC whose two pads are hashed once. */
template <class Hash>
class PaddedHmac {
public:
    explicit PaddedHmac(View key)
    {
        Wiped<std::array<unsigned char, blockLength>> block;
        block.value.fill(0);
        if (key.size() > blockLength) {
            Hash::init(m_inner.value);
            Hash::update(m_inner.value, key);
            Hash::finish(m_inner.value, block.value.data());
        } else {
            std::copy(key.begin(), key.end(), block.value.begin());
        }
        start(m_inner.value, block.value, 0x36);
        start(m_outer.value, block.value, 0x36 ^ 0x5C);
    }
    static std::size_t length() { return Hash::length; }
    void run(View first, View second, unsigned char* out)
    {
        m_running.value = m_inner.value;
        Hash::update(m_running.value, first);
        Hash::update(m_running.value, second);
        Hash::finish(m_running.value, out);
        m_running.value = m_outer.value;
        Hash::update(m_running.value, {out, Hash::length});
        Hash::finish(m_running.value, out);
    }

private:
    static void start(
        typename Hash::State& state, std::array<unsigned char, blockLength>& block, unsigned char change)
    {
        for (unsigned char& byte : block)
            byte ^= change;
        Hash::init(state);
        Hash::update(state, block);
    }

    Wiped<typename Hash::State> m_inner;
    Wiped<typename Hash::State> m_outer;
    Wiped<typename Hash::State> m_running;
};

/** HMAC with any other hash. */
class AnyHmac {
public:
    AnyHmac(const Library& library, std::string hash, View key)
        : m_mac(EVP_MAC_fetch(library.context(), "HMAC", nullptr))
        , m_context(m_mac ? EVP_MAC_CTX_new(m_mac.get()) : nullptr)
    {
        const OSSL_PARAM parameters[]{
            OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, hash.data(), 0), OSSL_PARAM_construct_end()};
        const unsigned char none = 0;
        const bool ready = m_context &&
            EVP_MAC_init(m_context.get(), key.empty() ? &none : key.data(), key.size(), parameters) == 1;
        require(ready, SIGIL_TK_ALGORITHM, hash);
    }
    std::size_t length() const { return EVP_MAC_CTX_get_mac_size(m_context.get()); }
    void run(View first, View second, unsigned char* out)
    {
        std::size_t written = 0;
        const bool done = EVP_MAC_init(m_context.get(), nullptr, 0, nullptr) == 1 &&
            EVP_MAC_update(m_context.get(), first.data(), first.size()) == 1 &&
            EVP_MAC_update(m_context.get(), second.data(), second.size()) == 1 &&
            EVP_MAC_final(m_context.get(), out, &written, length()) == 1;
        require(done, SIGIL_TK_INTERNAL, "HMAC");
    }

private:
    MacHandle m_mac;
    MacContextHandle m_context;
};

template <class Hmac>
Secret pbkdf2With(Hmac&& hmac, const SaltAndCount& parameters, std::size_t length, WorkBudget& budget)
{
    Secret key;
    Secret last(hmac.length());
    for (unsigned char block = 1; key.size() < length; ++block) {
        const std::array<unsigned char, 4> number{0, 0, 0, block};
        hmac.run(parameters.salt, number, last.data());
        Secret sum = last;
        for (unsigned long i = 1; i < parameters.iterations; ++i) {
            hmac.run(last, {}, last.data());
            std::transform(sum.begin(), sum.end(), last.begin(), sum.begin(), std::bit_xor<>());
            budget.round();
        }
        key.insert(key.end(), sum.begin(), sum.end());
    }
    key.resize(length);
    return key;
}

/** A running hash that is used again and again. */
class RepeatedHash {
public:
    explicit RepeatedHash(const EVP_MD* hash)
        : m_context(EVP_MD_CTX_new())
    {
        require(m_context && EVP_DigestInit_ex2(m_context.get(), hash, nullptr) == 1, SIGIL_TK_INTERNAL, "digest");
    }
    void run(View first, View second, Secret& out)
    {
        const bool done = EVP_DigestInit_ex2(m_context.get(), nullptr, nullptr) == 1 &&
            EVP_DigestUpdate(m_context.get(), first.data(), first.size()) == 1 &&
            EVP_DigestUpdate(m_context.get(), second.data(), second.size()) == 1 &&
            EVP_DigestFinal_ex(m_context.get(), out.data(), nullptr) == 1;
        require(done, SIGIL_TK_INTERNAL, "digest");
    }

private:
    DigestContextHandle m_context;
};

/** @p bytes over and over, up to a multiple of @p block. */
void appendRepeated(Secret& out, View bytes, std::size_t block)
{
    const std::size_t length = (bytes.size() + block - 1) / block * block;
    for (std::size_t i = 0; i < length; ++i)
        out.push_back(bytes[i % bytes.size()]);
}

/** number = number + addend + 1, both in big-endian order. */
void addPlusOne(std::span<unsigned char> number, View addend)
{
    unsigned carry = 1;
    for (std::size_t i = number.size(); i-- > 0; carry >>= 8) {
        carry += static_cast<unsigned>(number[i]) + addend[i];
        number[i] = static_cast<unsigned char>(carry);
    }
}

} // namespace

Secret sha1(View data)
{
    Secret hash(SHA_DIGEST_LENGTH);
    Wiped<SHA_CTX> state;
    Sha1::init(state.value);
    Sha1::update(state.value, data);
    Sha1::finish(state.value, hash.data());
    return hash;
}

Secret pbkdf1(OldHash hash, View password, const SaltAndCount& parameters, WorkBudget& budget)
{
    return (hash == OldHash::Md5 ? pbkdf1With<Md5> : pbkdf1With<Sha1>)(password, parameters, budget);
}

Secret pbkdf2(const Library& library, const std::string& hash, View password, const SaltAndCount& parameters,
    std::size_t length, WorkBudget& budget)
{
    if (hash == "SHA1")
        return pbkdf2With(PaddedHmac<Sha1>(password), parameters, length, budget);
    if (hash == "SHA256")
        return pbkdf2With(PaddedHmac<Sha256>(password), parameters, length, budget);
    return pbkdf2With(AnyHmac(library, hash, password), parameters, length, budget);
}

Secret pkcs12Derive(const EVP_MD* hash, Pkcs12Purpose purpose, View bmpPassword, const SaltAndCount& parameters,
    std::size_t length, WorkBudget& budget)
{
    const auto block = static_cast<std::size_t>(EVP_MD_get_block_size(hash));
    const Bytes diversifier(block, static_cast<unsigned char>(purpose));
    Secret input;
    appendRepeated(input, parameters.salt, block);
    appendRepeated(input, bmpPassword, block);
    Secret round(static_cast<std::size_t>(EVP_MD_get_size(hash)));
    Secret out;
    for (RepeatedHash hasher(hash); out.size() < length;) {
        hasher.run(diversifier, input, round);
        for (unsigned long i = 1; i < parameters.iterations; ++i) {
            hasher.run(round, {}, round);
            budget.round();
        }
        out.insert(out.end(), round.begin(), round.end());
        Secret addend;
        appendRepeated(addend, round, block);
        for (std::size_t at = 0; at < input.size(); at += block)
            addPlusOne(std::span(input).subspan(at, block), View(addend).first(block));
    }
    out.resize(length);
    return out;
}

Secret scrypt(const Library& library, View password, View salt, const ScryptCost& cost, std::size_t length)
{
    constexpr unsigned long most = 64UL * 1024 * 1024;
    const auto [n, r, p] = cost;
    require(n >= 2 && (n & (n - 1)) == 0 && r >= 1 && p >= 1, SIGIL_TK_KEY_MALFORMED, "scrypt parameters");
    const bool affordable =
        n <= most && r <= most && p <= most && n * r <= most / 128 && n * r <= 4 * most / 128 / p;
    require(affordable, SIGIL_TK_KEY_UNSUPPORTED, "scrypt needs too much");
    Secret key(length);
    const int done = EVP_PBE_scrypt_ex(chars(password), password.size(), salt.data(), salt.size(), n, r, p,
        2 * most, key.data(), key.size(), library.context(), nullptr);
    require(done == 1, SIGIL_TK_KEY_MALFORMED, "scrypt parameters");
    return key;
}

} // namespace toolkit
