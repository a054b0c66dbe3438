// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files, certificates and keys on the disk and on cards: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/keys/storage.h"
#include "toolkit/engine/tokens/card.h"

namespace toolkit::calls {

inline void mediaLoad(Context& state, char* folder) { loadMedium(state, in(folder)); }

inline void mediaUnload(Context& state) { state.mediaFolder.clear(); }

inline void mediaDiskReadFile(Context& state, char* path, BINSTR* out) { put(readFile(inPath(state, path)), out); }

inline void mediaDiskWriteFile(Context& state, char* path, BINSTR* bytes)
{
    writeFile(inPath(state, path), in(bytes));
}

inline void mediaDiskReadCert(Context& state, char* path, BINSTR* out)
{
    put(readCertificate(state.library(), inPath(state, path)), out);
}

inline void mediaDiskWriteCert(Context& state, char* path, BINSTR* certificate)
{
    writeCertificate(state.library(), inPath(state, path), in(certificate));
}

inline void mediaDiskDeleteCert(Context& state, char* path) { deleteFile(inPath(state, path)); }

inline void mediaDiskReadPriKey(Context& state, char* path, char* password, BINSTR* out)
{
    put(readPrivateKey(state.library(), inPath(state, path), in(password)), out);
}

inline void mediaDiskWritePriKey(Context& state, int algorithm, char* path, char* password, BINSTR* key)
{
    writePrivateKey(state.library(), algorithm, inPath(state, path), in(password), in(key));
}

/** The only one that takes the password before the path: so its callers pass them. */
inline void mediaDiskDeletePriKey(Context& state, char* password, char* path)
{
    deletePrivateKey(state.library(), inPath(state, path), in(password));
}

/** @param path name of the object, its CKA_LABEL */
inline void mediaCardReadCert(Context& state, int slot, char* path, BINSTR* out)
{
    put(readCardCertificate(state.library(), state.tokens, {slot, in(path)}), out);
}

inline void mediaCardReadPriKey(Context&) { fail(SIGIL_TK_MEDIUM, "a private key does not leave its card"); }

inline void mediaCardWriteCert(Context& state, int slot, char* path, BINSTR* certificate)
{
    writeCardCertificate(state.library(), state.tokens, {slot, in(path)}, in(certificate));
}

inline void mediaCardWritePriKey(Context& state, int slot, char* path, char* pin, BINSTR* key)
{
    writeCardKey(state.library(), state.tokens, {slot, in(path)}, in(pin), in(key));
}

inline void mediaCardDeleteCert(Context& state, int slot, char* path)
{
    deleteCardCertificate(state.tokens, {slot, in(path)});
}

inline void mediaCardDeletePriKey(Context& state, int slot, char* path, char* pin)
{
    deleteCardKey(state.tokens, {slot, in(path)}, in(pin));
}

} // namespace toolkit::calls
