// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Private keys of a certificate's pair, opened with a password.
 */
#pragma once

#include "jobs/certificate.h"
#include "jobs/secret_text.h"

#include <vector>

namespace host {

enum class Pair { Sign, KeyManagement };

/** Opens the key of a pair. @return a result of the library */
int unlockWith(const Crypto& crypto, const Certificate& certificate, Pair pair, Secret& password, Bytes& key);

/** The certificate of a pair in toolkit memory. */
void setCertificate(const Crypto& crypto, const Certificate& certificate, Pair pair, Bytes& bytes);

/** The pairs that a certificate has with their keys, the signing pair first. */
std::vector<Pair> pairsOf(const Certificate& certificate);

/** Throws Failure (no) when the certificate has no such pair. */
void mustHave(const Certificate& certificate, Pair pair);

} // namespace host
