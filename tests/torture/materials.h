// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What sessions work on, made by other processes: here OpenSSL is not to be started before memory can run out.
 */
#pragma once

#include "tests/support/sample_store.h"

#include <sigildesk/binstr.h>

#include <string>

namespace torture {

inline char password[] = "sample1234!";
inline char otherPassword[] = "renewed5678?";
inline char wrongPassword[] = "wrong";
inline char signingTime[] = "2026-01-02 03:04:05";

/** A store, and things made of a certificate of it that has an identity and both pairs. */
class Materials {
public:
    Materials();

    const SampleStore& store() const { return m_store; }
    const Certificate& certificate() const { return *m_certificate; }

    std::string signCert, signKey, kmCert, kmKey; ///< DER, the keys encrypted
    std::string plainKey, plainKmKey, random, signature, message, envelope, pfx;
    std::string identity;
    std::string library; ///< folder of the toolkits, with settings that name no server beyond this machine
    std::string content = "content that is signed and encrypted";

private:
    SampleStore m_store;
    const Certificate* m_certificate = nullptr;
};

/** A record that is the host's own; valid as long as the bytes. */
inline BINSTR recordOf(std::string& bytes)
{
    return {reinterpret_cast<unsigned char*>(bytes.data()), static_cast<int>(bytes.size())};
}

} // namespace torture
