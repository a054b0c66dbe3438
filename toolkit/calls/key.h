// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Private keys and the identity of their holders: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/status/ivs.h"

namespace toolkit::calls {

inline void prikeyEncrypt(Context& state, int algorithm, char* password, BINSTR* key, BINSTR* out)
{
    put(encryptKeyFile(state.library(), algorithm, in(key), in(password)), out);
}

inline void prikeyDecrypt(Context& state, char* password, BINSTR* file, BINSTR* out)
{
    put(decryptKeyFile(state.library(), in(file), in(password)), out);
}

inline void prikeyChangePasswd(Context& state, char* oldPassword, char* newPassword, BINSTR* file, BINSTR* out)
{
    put(changePassword(state.library(), in(file), in(oldPassword), in(newPassword)), out);
}

inline void prikeyCheckKeyPair(Context& state, BINSTR* certificate, BINSTR* key)
{
    checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
}

inline void vidGetRandomFromPriKey(Context&, BINSTR* key, BINSTR* out) { put(identityRandom(in(key)), out); }

inline void vidVerify(Context& state, BINSTR* certificate, BINSTR* random, char* idn)
{
    verifyIdentity(state.library(), {state.library(), in(certificate)}, in(random), in(idn));
}

inline void vidVerifyByIVS(
    Context& state, char* confFile, BINSTR* certificate, BINSTR* random, char* idn, BINSTR* server)
{
    verifyIdentityByIvs(state.library(), inPath(state, confFile), {state.library(), in(certificate)}, in(random),
        in(idn), {state.library(), in(server)});
}

} // namespace toolkit::calls
