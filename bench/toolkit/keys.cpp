// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Opening an encrypted key in the open toolkit: with PBKDF1 against the bare loop of its hash, with PBES2 against OpenSSL's
// own PKCS8_decrypt, on the same file in the same run.

// The loop is the least that the rounds can cost, so it calls the hash without anything around it.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "toolkit_abi/hvtk.h"

#include <sigildesk/open_toolkit.h>

#include <benchmark/benchmark.h>

#include <openssl/evp.h>
#include <openssl/pkcs12.h>
#include <openssl/sha.h>
#include <openssl/x509.h>

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace {

constexpr int rounds = 2048; // of every key that the toolkit writes
char password[] = "password of a key";

/** The toolkit without the façade. */
class Toolkit {
public:
    Toolkit()
        : m_library(dlopen(SIGILDESK_LIBRARY_FOLDER "/libHVCToolkitV30.so", RTLD_NOW))
    {
        char noFolder[] = "";
        call<decltype(HVTK_API_Init)>("HVTK_API_Init", &m_context, noFolder);
    }
    ~Toolkit() { call<decltype(HVTK_API_Finish)>("HVTK_API_Finish", &m_context); }
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    /** A new RSA key under the password. */
    BINSTR encryptedKey(int algorithm)
    {
        EVP_PKEY* pair = EVP_RSA_gen(2048);
        PKCS8_PRIV_KEY_INFO* plain = EVP_PKEY2PKCS8(pair);
        unsigned char* der = nullptr;
        const int length = i2d_PKCS8_PRIV_KEY_INFO(plain, &der);
        BINSTR key{der, length};
        BINSTR file{};
        call<decltype(HVTK_PRIKEY_Encrypt)>("HVTK_PRIKEY_Encrypt", m_context, algorithm, password, &key, &file);
        OPENSSL_clear_free(der, static_cast<std::size_t>(length));
        PKCS8_PRIV_KEY_INFO_free(plain);
        EVP_PKEY_free(pair);
        return file;
    }

    void open(BINSTR& file)
    {
        BINSTR key{};
        call<decltype(HVTK_PRIKEY_Decrypt)>("HVTK_PRIKEY_Decrypt", m_context, password, &file, &key);
        release(key);
    }

    void release(BINSTR& bytes) { call<decltype(HVTK_BINSTR_Delete)>("HVTK_BINSTR_Delete", &bytes); }

private:
    template <class Function, class... Arguments>
    void call(const char* name, Arguments... arguments)
    {
        if (reinterpret_cast<Function*>(dlsym(m_library, name))(arguments...) != SIGIL_TK_OK)
            throw std::runtime_error(name);
    }

    void* m_library;
    void* m_context = nullptr;
};

void open(benchmark::State& state, int algorithm)
{
    Toolkit toolkit;
    BINSTR file = toolkit.encryptedKey(algorithm);
    for (auto _ : state)
        toolkit.open(file);
    toolkit.release(file);
}

void bareRounds(benchmark::State& state)
{
    unsigned char hash[SHA_DIGEST_LENGTH] = {};
    SHA_CTX sha{};
    for (auto _ : state)
        for (int i = 0; i < rounds; ++i) {
            SHA1_Init(&sha);
            SHA1_Update(&sha, hash, sizeof hash);
            SHA1_Final(hash, &sha);
        }
    benchmark::DoNotOptimize(hash);
}

void opensslDecrypt(benchmark::State& state, int algorithm)
{
    Toolkit toolkit;
    BINSTR file = toolkit.encryptedKey(algorithm);
    for (auto _ : state) {
        const unsigned char* der = file.pData;
        X509_SIG* encrypted = d2i_X509_SIG(nullptr, &der, file.nLength);
        PKCS8_PRIV_KEY_INFO* key = PKCS8_decrypt(encrypted, password, -1);
        if (!key)
            throw std::runtime_error("PKCS8_decrypt");
        PKCS8_PRIV_KEY_INFO_free(key);
        X509_SIG_free(encrypted);
    }
    toolkit.release(file);
}

} // namespace

BENCHMARK_CAPTURE(open, seed_pbkdf1, SIGIL_TK_KEY_SEED);
BENCHMARK(bareRounds);
BENCHMARK_CAPTURE(open, pbes2_aes256, SIGIL_TK_KEY_PBES2_AES256);
BENCHMARK_CAPTURE(opensslDecrypt, pbes2_aes256, SIGIL_TK_KEY_PBES2_AES256);
BENCHMARK_CAPTURE(open, pbes2_3des, SIGIL_TK_KEY_PBES2_3DES);
BENCHMARK_CAPTURE(opensslDecrypt, pbes2_3des, SIGIL_TK_KEY_PBES2_3DES);
