// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/session_cipher.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/pbe.h"

#include <array>

namespace toolkit {
namespace {

struct CipherName {
    int code;
    const char* name;
};

constexpr std::array cipherNames{
    CipherName{SIGIL_TK_CIPHER_SEED, "SEED-CBC"},
    CipherName{SIGIL_TK_CIPHER_3DES, "DES-EDE3-CBC"},
    CipherName{SIGIL_TK_CIPHER_AES128, "AES-128-CBC"},
    CipherName{SIGIL_TK_CIPHER_AES192, "AES-192-CBC"},
    CipherName{SIGIL_TK_CIPHER_AES256, "AES-256-CBC"},
    CipherName{SIGIL_TK_CIPHER_ARIA128, "ARIA-128-CBC"},
    CipherName{SIGIL_TK_CIPHER_ARIA192, "ARIA-192-CBC"},
    CipherName{SIGIL_TK_CIPHER_ARIA256, "ARIA-256-CBC"},
};

} // namespace

CipherHandle cipherFor(const Library& library, int algorithm)
{
    for (const CipherName& cipher : cipherNames)
        if (cipher.code == algorithm)
            return library.cipher(cipher.name);
    fail(SIGIL_TK_ALGORITHM, "cipher " + std::to_string(algorithm));
}

void SessionCipher::generate(const Library& library, int algorithm)
{
    const CipherHandle cipher = cipherFor(library, algorithm);
    const Secret key = randomBytes(library, EVP_CIPHER_get_key_length(cipher.get()));
    set(library, algorithm, key, randomBytes(library, EVP_CIPHER_get_iv_length(cipher.get())));
}

void SessionCipher::set(const Library& library, int algorithm, View key, View vector)
{
    const CipherHandle cipher = cipherFor(library, algorithm);
    require(key.size() == static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get())) &&
            vector.size() == static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get())),
        SIGIL_TK_ALGORITHM, "size of key or initial vector");
    m_algorithm = algorithm;
    m_key = toSecret(key);
    m_vector = toSecret(vector);
}

int SessionCipher::algorithm() const
{
    require(!m_key.empty(), SIGIL_TK_NO_SESSION_KEY);
    return m_algorithm;
}

const Secret& SessionCipher::key() const
{
    require(!m_key.empty(), SIGIL_TK_NO_SESSION_KEY);
    return m_key;
}

const Secret& SessionCipher::vector() const
{
    require(!m_key.empty(), SIGIL_TK_NO_SESSION_KEY);
    return m_vector;
}

void SessionCipher::takeFreshVector(const Library& library)
{
    if (m_freshVectors && !m_key.empty())
        m_vector = randomBytes(library, static_cast<int>(m_vector.size()));
}

CipherContextHandle SessionCipher::start(const Library& library, bool encrypting) const
{
    const CipherHandle cipher = cipherFor(library, algorithm());
    CipherContextHandle context(EVP_CIPHER_CTX_new());
    const int started = context ? EVP_CipherInit_ex2(context.get(), cipher.get(), m_key.data(), m_vector.data(),
                                      encrypting ? 1 : 0, nullptr)
                                : 0;
    require(started == 1, SIGIL_TK_ALGORITHM);
    return context;
}

Bytes SessionCipher::encrypt(const Library& library, View data)
{
    takeFreshVector(library);
    Secret out;
    require(runCipher(start(library, true).get(), data, out), SIGIL_TK_INTERNAL, "encryption");
    return toBytes(out);
}

Secret SessionCipher::decrypt(const Library& library, View data) const
{
    Secret out;
    require(runCipher(start(library, false).get(), data, out), SIGIL_TK_DECRYPT);
    return out;
}

void SessionCipher::transformFile(
    EVP_CIPHER_CTX* cipher, const std::string& source, const std::string& target) const
{
    FileWriter writer(target);
    Secret out;
    int length = 0;
    readPieces(source, [&](View piece) {
        out.resize(piece.size() + EVP_MAX_BLOCK_LENGTH);
        require(EVP_CipherUpdate(cipher, out.data(), &length, piece.data(), static_cast<int>(piece.size())) == 1,
            SIGIL_TK_INTERNAL, "cipher");
        writer.write(View(out).first(static_cast<std::size_t>(length)));
    });
    out.resize(EVP_MAX_BLOCK_LENGTH);
    require(EVP_CipherFinal_ex(cipher, out.data(), &length) == 1, SIGIL_TK_DECRYPT);
    writer.write(View(out).first(static_cast<std::size_t>(length)));
    writer.commit();
}

void SessionCipher::encryptFile(const Library& library, const std::string& source, const std::string& target)
{
    takeFreshVector(library);
    transformFile(start(library, true).get(), source, target);
}

void SessionCipher::decryptFile(const Library& library, const std::string& source, const std::string& target) const
{
    transformFile(start(library, false).get(), source, target);
}

} // namespace toolkit
