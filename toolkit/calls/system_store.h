// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The system's certificate store: bodies of the functions that a face exports. Its number is not used: there is one store, and the
 *  folder says where.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/store/system_store.h"
#include "toolkit/engine/tokens/token_certificates.h"

namespace toolkit::calls {

/** Room for a name that callers promise without saying so. */
constexpr int storeNameCapacity = 1024;

/** @param folder of the store that this and the other functions work on from now on; empty: the user's */
inline void mediaWinsGetCertCnt(Context& state, char* folder, int* count)
{
    require(count != nullptr, SIGIL_TK_ARGUMENT);
    state.systemStore.choose(in(folder).empty() ? std::string() : inPath(state, folder));
    const auto& all = state.systemStore.certificates();
    *count = all ? static_cast<int>(all->size()) : 0;
}

/** What is null is not wanted. */
inline void mediaWinsGetCertDN(Context& state, int index, int* kind, char* subject, char* issuer)
{
    const Certificate certificate(state.library(), state.systemStore.certificate(index));
    const std::string names[] = {certificate.subjectName(), certificate.issuerName()};
    for (const std::string& name : names)
        require(name.size() < storeNameCapacity, SIGIL_TK_BUFFER_TOO_SMALL);
    if (kind)
        *kind = kindOf(certificate);
    if (subject)
        putWholeText(names[0], storeNameCapacity, subject);
    if (issuer)
        putWholeText(names[1], storeNameCapacity, issuer);
}

inline void mediaWinsReadCert(Context& state, int index, BINSTR* out)
{
    put(state.systemStore.certificate(index), out);
}

inline void mediaWinsReadPriKey(Context&) { fail(SIGIL_TK_MEDIUM, "a private key does not leave the store"); }

inline void mediaWinsWriteCert(Context& state, BINSTR* certificate) { state.systemStore.add(in(certificate)); }

inline void mediaWinsWriteCertAndPriKey(Context& state, char* password, BINSTR* pfx)
{
    state.systemStore.import(in(pfx), in(password));
}

} // namespace toolkit::calls
