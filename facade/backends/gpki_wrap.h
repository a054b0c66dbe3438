// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The backend of toolkit type 1: the government PKI API library, libgpkiapi_v15.so.
 */
#pragma once

#include "facade/backends/toolkit.h"

/** The loaded library with its frame, and the methods that do more than hand their arguments on; all other functions are
 *  bound by the façade's rows, through toolkit(). Every call answers 1024 while the library is not loaded, 1001 for a
 *  required argument that is null or empty, and 1003 when the library lacks the function. */
class CGPKIWrap {
public:
    CGPKIWrap() = default;
    /** The text is ignored; the object is as the default constructor makes it. */
    explicit CGPKIWrap(char* /*ignored*/) { }

    /** Loads "<folder>/libgpkiapi_v15.so". @return 0; 1024 not loaded; 1003 no init function; the library's code */
    int Init(char* folder) { return m_toolkit.Init(folder); }
    /** Has the library release its context, closes it, and returns 0. The destructor only closes. */
    int Finish() { return m_toolkit.Finish(); }
    int GetErrInfo(int length, char* buffer) { return m_toolkit.GetErrInfo(length, buffer); }
    /** The error text kept at the last failure. */
    std::string_view ErrorText() const { return m_toolkit.errorText(); }
    /** What the façade's rows call. */
    sigil::Toolkit<sigil::gpkiToolkit>& toolkit() { return m_toolkit; }

    // Settings and byte strings
    int GetVersion(int length, char* buffer);
    int SetOption(int option);
    int SetConfFile(char* confFile);
    int SetCaPubs(BINSTR* caPubs);
    int FreeCaPubs();
    int Str2Time(char* timeText, long* time);
    int SetHashAlgo(int hashAlgorithm);
    int BINSTR_Create(BINSTR* binStr);
    int BINSTR_Delete(BINSTR* binStr);
    int BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr);

    /** The version number in decimal, written by the façade itself. */
    int CertGetVersion(int capacity, char* text);

    // What no export reaches: facade/backends/unreached.cpp
    int GetInfo(char* buffer);
    int CMSProcessSignedData(BINSTR* message, BINSTR* content, BINSTR* certificate, char* signingTime);
    int CMSMakeEnvelopedDataNoContentFile(
        BINSTR* recipient, char* contentFile, int algorithm, char* messageFile, char* cipherFile);
    int WCMSMakeSignedContent(BINSTR* certificate, BINSTR* privateKey, BINSTR* content, BINSTR* message);
    int WCMSProcessSignedContent(BINSTR* message, BINSTR* content, BINSTR* certificate);
    int WCMSMakeWapEnvelopedData(BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* message);
    int WCMSProcessWapEnvelopedData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);
    int CryptSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

private:
    sigil::Toolkit<sigil::gpkiToolkit> m_toolkit;
};
