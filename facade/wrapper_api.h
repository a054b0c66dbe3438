// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The object behind a façade handle.
 */
#pragma once

#include "facade/argument.h"
#include "foundation/text_field.h"

#include <sigildesk/binstr.h>

#include <memory>

class CHVTKWrap;
class CGPKIWrap;

/** Holds a handle's toolkit: its life cycle, settings, byte strings and error texts, and the few members that do more
 *  than pass their arguments on. All other members are rows in their family's source file, facade/<family>.cpp, which
 *  pick() sends to the backend. What a caller has to know stands in the public headers. One thread at a time. */
class CWrapperAPI {
public:
    CWrapperAPI();
    ~CWrapperAPI();
    CWrapperAPI(const CWrapperAPI&) = delete;
    CWrapperAPI& operator=(const CWrapperAPI&) = delete;

    /** Binds the object to a toolkit: type 0 the maker toolkit, 1 the GPKI library, from @p libraryFolder (at most 259
     *  bytes of it). @return the backend's Init result; 1020 other type; 1021 folder null or empty */
    int Initalize(int toolkitType, char* libraryFolder);
    /** Ends the toolkits thoroughly, their finish functions included, and returns 0. HV_Finish deliberately does less. */
    int Finish();
    /** Whether the backend of the object's type is there; its library need not be loaded. */
    bool CheckInit() const { return isGpki() ? m_pGPKIWrap != nullptr : m_pHVTKWrap != nullptr; }

    int GetErrInfo(int length, char* buffer);
    int GetErrInfo2(int length, char* buffer);
    int GetVersion(int length, char* buffer);
    int SetOption(int option);
    int SetConfFile(char* confFile);
    int SetCaPubs(BINSTR* caPubs);
    int FreeCaPubs();
    int Str2Time(char* timeText, long* time);
    int SetHashAlg(int hashAlgorithm);
    int BINCreate(BINSTR* binStr);
    int BINDelete(BINSTR* binStr);
    int BINSetData(unsigned char* data, int length, BINSTR* binStr);

    // The members that do more than pass their arguments on
    int CertGetValidity(int notBeforeCapacity, char* notBefore, int notAfterCapacity, char* notAfter);
    int CertGetPubKeyInfo(
        char* algorithm, char* keyLength, int publicKeyCapacity, char* publicKey, BINSTR* publicKeyDer);
    int PKCS11OpenSessionWithSlotID(unsigned long slotId, char* pin, int flags);

    /** Sends a call to the backend of the object's type; see facade/row.h. */
    template <class Maker, class Gpki>
    int pick(sigil::Needs needs, const Maker& toMaker, const Gpki& toGpki);

private:
    /** The maker toolkit's otherwise: Initalize lets no third type in. */
    bool isGpki() const { return m_nToolkitType == SIGIL_TOOLKIT_GPKI; }

    int m_nToolkitType = 0;
    char m_szFolder[sigil::pathCapacity] = {};
    std::unique_ptr<CHVTKWrap> m_pHVTKWrap;
    std::unique_ptr<CGPKIWrap> m_pGPKIWrap;
};
