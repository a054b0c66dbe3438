// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A toolkit with a simple memory of its own, played by the recording toolkit: certificates and keys are readable texts,
 *  files are real files. Single symbols are then made to fail with doubles::answer().
 *
 *  A certificate is lines "field=text". A key is "KEY(pair)", with a random value "KEY(pair)R=bytes"; encrypted it is
 *  "ENC(password)" and the key.
 */
#pragma once

#include <sigildesk/binstr.h>

#include <map>
#include <string>
#include <vector>

namespace fake {

using Fields = std::map<std::string, std::string>;

/** A certificate: an ordinary accredited one but for @p changes. */
std::string certificate(const Fields& changes = {});

/** A key of @p pair, with the random value that the identity check takes. */
std::string key(const std::string& pair = "P1");
std::string encrypted(const std::string& key, const std::string& password);

/** A list of objects, as the toolkit keeps it. */
std::string list(const std::vector<std::string>& objects);

/** A PKCS#12 file. */
std::string pfx(const std::string& password, const std::vector<std::string>& certificates,
    const std::vector<std::string>& keys);

/** Fills a record anew, as a toolkit does that gives the memory of the old contents back.
 *  @return 0; doubles::foreignByteString when that memory was not the toolkit's */
int replace(BINSTR* record, const std::string& bytes);

/** What the directory gives for "address/name"; anything else cannot be fetched. */
extern std::map<std::string, std::string> directory;

constexpr int fileError = 3001;
constexpr int writeError = 3302;
constexpr int parseError = 3003;
constexpr int pairError = 3004;
constexpr int verifyError = 3005;
constexpr int identityError = 3006;

/** Forgets all calls and lets every symbol of the maker's toolkit that the certificate list uses do its work. */
void install();

} // namespace fake
