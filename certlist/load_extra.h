// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  CLoadExtra: verification of certificates, and whether certificates and keys belong together.
 */
#pragma once

#include "certlist/cert_n_key.h"
#include "certlist/loader.h"
#include "foundation/text_field.h"

#include <span>

/** A root certificate of the toolkit settings file. */
struct tagROOTCERTURLINFO {
    char szDN[1024];  ///< its distinguished name
    char szURL[1024]; ///< directory address that it is fetched from
};
static_assert(sizeof(tagROOTCERTURLINFO) == 2048, "layout of tagROOTCERTURLINFO");

class CLoadExtra : public sigil::Loader {
public:
    /** @param folder  library folder with the settings files */
    CLoadExtra(int language, const char* folder);

    /** Number of root certificates in a toolkit settings file: of the authorities "CA_INFO1" ... (their number stands
     *  in section "VALIDATOIN_OPTION") those whose name contains "Root".
     *  @return 0; 1001 no path; 1100 no authorities */
    int GetRootCertCount(const char* confFile, int* count);
    /** Fills @p list, as long as GetRootCertCount() says, with the roots in the order of the file.
     *  @return 0; 1001; 1100 */
    int GetRootCertURL(const char* confFile, std::span<tagROOTCERTURLINFO> list);
    /** Verifies a certificate, trusting the roots of the settings file as far as they can be fetched.
     *  @param errText  receives the toolkit's text when the verification itself fails
     *  @return 0; 1001 null certificate; 1120 */
    int VerifyCert(const char* cert, int len, CBinary* errText);
    /** @return 0; 1001 no signing pair; 1130 a certificate and its key do not belong together */
    int CheckKeyPair(const sigil::CertNKey& pairs);

private:
    int trustRoots();
    int trustAll(std::span<const tagROOTCERTURLINFO> roots);
    int trustRoot(const tagROOTCERTURLINFO& root);
    int verify(const char* cert, int len, CBinary* errText);
    int checkPair(const CBinary& certificate, const CBinary& key, const char* callee);

    char m_szConfFile[sigil::pathCapacity];
};
