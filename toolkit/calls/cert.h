// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The loaded certificate and its fields: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <ctime>

namespace toolkit::calls {

// Buffers whose size is fixed by the callers rather than passed.
constexpr int algorithmCapacity = 50;
constexpr int keyLengthCapacity = 20;

inline void certLoad(Context& state, BINSTR* certificate) { state.load({state.library(), in(certificate)}); }

inline void certUnload(Context& state) { state.unload(); }

inline void certGetVersion(Context& state, int* version) { putValue(state.certificate().version(), version); }

inline void certGetValidity(Context& state, char* notBefore, char* notAfter)
{
    require(notBefore && notAfter, SIGIL_TK_ARGUMENT);
    const std::string from = timeText(state.certificate().notBefore());
    const std::string to = timeText(state.certificate().notAfter());
    putText(from, timeCapacity, notBefore);
    putText(to, timeCapacity, notAfter);
}

inline void certGetSubjectNameDERFormat(Context& state, BINSTR* out)
{
    put(state.certificate().subjectNameDer(), out);
}

inline void certGetPubKey(Context& state, int capacity, char* algorithm, char* publicKey)
{
    require(algorithm && publicKey && capacity >= 1, SIGIL_TK_ARGUMENT);
    putText(state.certificate().publicKeyAlgorithm(), algorithmCapacity, algorithm);
    putText(state.certificate().publicKeyText(), capacity, publicKey);
}

inline void certGetPubKey2(Context& state, char* algorithm, char* keyLength, BINSTR* publicKey)
{
    require(algorithm && keyLength, SIGIL_TK_ARGUMENT);
    put(state.certificate().publicKeyDer(), publicKey);
    putText(state.certificate().publicKeyAlgorithm(), algorithmCapacity, algorithm);
    putText(state.certificate().publicKeyLength(), keyLengthCapacity, keyLength);
}

inline void certGetRemainDays(Context& state, BINSTR* certificate, int* days)
{
    putValue(Certificate(state.library(), in(certificate)).remainingDays(std::time(nullptr)), days);
}

/** One text with both dates: "A ~ B". Callers pass the capacity that they have for one date, and a buffer for both: at least
 *  42 bytes. */
inline void certGetValidityRange(Context& state, int capacity, char* out)
{
    const std::string from = timeText(state.certificate().notBefore());
    const std::string to = timeText(state.certificate().notAfter());
    require(capacity > static_cast<int>(from.size()), SIGIL_TK_BUFFER_TOO_SMALL);
    constexpr int bothDates = 42;
    putWholeText(from + " ~ " + to, bothDates, out);
}

inline void certAddCert(Context& state, BINSTR* certificate, BINSTR* list)
{
    ObjectList certificates(inOptional(list));
    certificates.add(Certificate(state.library(), in(certificate)).der());
    replace(certificates.encode(), list);
}

/** Callers come with a record that already holds data of the toolkit, which is released. */
inline void certGetCert(Context&, BINSTR* list, int index, BINSTR* certificate)
{
    replace(ObjectList(in(list)).at(index), certificate);
}

} // namespace toolkit::calls
