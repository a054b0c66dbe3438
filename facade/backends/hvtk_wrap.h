// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The backend of toolkit type 0: the maker's toolkit, libHVCToolkitV30.so.
 */
#pragma once

#include "facade/backends/toolkit.h"

/** The loaded toolkit with its frame, and the methods that do more than hand their arguments on; all other functions are
 *  bound by the façade's rows, through toolkit(). Every call answers 1023 while the library is not loaded, 1001 for a
 *  required argument that is null or empty, and 1003 when the library lacks the function. */
class CHVTKWrap {
public:
    /** Loads "<folder>/libHVCToolkitV30.so". @return 0; 1023 not loaded; 1003 no init function; the toolkit's code */
    int Init(char* folder) { return m_toolkit.Init(folder); }
    /** Has the toolkit release its context, closes the library, and returns 0. The destructor only closes. */
    int Finish() { return m_toolkit.Finish(); }
    int GetErrInfo(int length, char* buffer) { return m_toolkit.GetErrInfo(length, buffer); }
    /** The error text kept at the last failure. */
    std::string_view ErrorText() const { return m_toolkit.errorText(); }
    /** What the façade's rows call. */
    sigil::Toolkit<sigil::makerToolkit>& toolkit() { return m_toolkit; }

    // Settings and byte strings
    int GetInfo(char* version, char* info);
    int SetConfFile(char* confFile);
    int SetCaPubs(BINSTR* caPubs);
    int FreeCaPubs();
    int SetHashAlgo(int hashAlgorithm);
    int BINSTR_Create(BINSTR* binStr);
    int BINSTR_Delete(BINSTR* binStr);
    int BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);

    /** The version number in decimal, written by the façade itself. */
    int CertGetVersion(int capacity, char* text);

    // What no export reaches: facade/backends/unreached.cpp
    int CertGetSubjectName_DERFormat(BINSTR* name);
    int CertGetPolicyConstraints(int capacity, char* text);
    int CMSGetEnvDataRecCnt(BINSTR* message, int* count);
    int CMSGetEnvDataRecipInfo(int index, int capacity, char* issuer, char* serialNumber, char* algorithm);
    int CMSMakeEnvDataWithContentFile(BINSTR* recipient, char* contentFile, int algorithm, char* messageFile);
    int PKCS11OpenSession(char* pin);
    int OCSPCheckCertStatus(
        char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey);
    int CRYPTSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

private:
    sigil::Toolkit<sigil::makerToolkit> m_toolkit;
};
