// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  CCertListProcInterface: the object behind a certificate-list handle. It owns one loader for each kind of medium and
 *  one façade handle, and hands each operation to the loader of the current medium.
 */
#pragma once

#include "certlist/codes.h"
#include "certlist/load_disk.h"
#include "certlist/load_extra.h"
#include "certlist/load_memory.h"
#include "foundation/media.h"
#include "foundation/text_field.h"

#include <sigildesk/handles.h>
#include <sigildesk/util.h>

#include <memory>
#include <utility>

class CCertListProcInterface {
public:
    CCertListProcInterface() = default;
    virtual ~CCertListProcInterface();
    CCertListProcInterface(const CCertListProcInterface&) = delete;
    CCertListProcInterface& operator=(const CCertListProcInterface&) = delete;

    /** Language (2 English, else Korean) and library folder of the next Inialize(). */
    void setUp(int nLanguage, char* szHomePath);

    /** True when all loaders exist; the other operations need them. */
    bool ready() const { return m_pLoadDisk && m_pLoadMemory && m_pLoadExtra; }

    /** @name The CLP_ functions, without their checks; see <sigildesk/certlist.h> for arguments and results
     *  @{ */
    int Inialize(void* pReserved, int nToolkitType);
    void UnInitalize();
    int SetLoadCertType(tagLOADCERTOPT* pOption);
    int SetMediaType(int nMedia, char* szPath, int nReserved);
    int GetRemDriveCount(int* pnCount);
    int GetRemDriveList(tagDRIVEINFO* pArray);
    int LoadCertList();
    int GetCertCount() const;
    int GetCertInfo(int nIndex, tagCERTINFO* pInfo);
    int LoadMemoryCert(const char* pSignCert, int nSignCertLen, const char* pSignKey, int nSignKeyLen,
        const char* pKmCert, int nKmCertLen, const char* pKmKey, int nKmKeyLen);
    int VerifyCert(char* pCert, int nCertLen, CBinary* pErrText);
    int DecryptPriKey(int nIndex, char* szPassword, CBinary* pSignKey, CBinary* pKmKey);
    int GetPriKeyRandom(int nIndex, char* szPassword, CBinary* pRandom);
    int VerifyVID(int nIndex, char* szIdn, void* pReserved, char* szPassword);
    int ImportPFX(char* szPfxPath, char* szPassword, sigil::CertNKey& out);
    int ExportPFX(int nIndex, char* szPassword, char* szPfxPath);
    int CopyforSetData(char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen, char* pKmCert,
        int nKmCertLen, char* pKmKey, int nKmKeyLen);
    /** @param bStaged  the source is what CopyforSetData() staged; else entry @p nIndex of medium @p nSrcMedia */
    int CopyCertToDISK(
        bool bStaged, int nSrcMedia, int nIndex, char* szPassword, int nTargetMedia, char* szTargetPath);
    int DeleteCert(int nIndex, char* szPin, char* szPassword);
    /** @} */

    /** Not reachable through a CLP_ function, deliberately. @return 0; 1001; 1005; 1113; 1123; 1124; 1131 */
    int ChangePassword(int nIndex, char* szOldPassword, char* szNewPassword);
    /** Hands out an entry's certificates and decrypted keys; nothing for medium 7.
     *  @return 0; 1001 a medium without entries; what DecryptPriKey() gives */
    int CopySetSource(int nSrcMedia, int nIndex, char* szPassword, sigil::CertNKey& out);
    /** Tells @p observer what becomes of each candidate of later listings; null for nobody. */
    void observe(sigil::ListObserver* observer);
    /** See pauseListings(). */
    void setPause(sigil::ListingPause pause) { m_pLoadDisk->setPause(std::move(pause)); }
    /** @return 0; 1001 nothing to release */
    int MemFree(void** ppBuf);
    /** The toolkit's last error text. @return 0; a code of the façade */
    int GetErrInfo(CBinary* pOut);

private:
    int finish(int rc) { return nErr = rc; }
    bool onDisk() const { return sigil::isDisk(nMediaType); }
    bool createLoaders();
    int initLoaders();
    void readLogPath();
    int copyTo(int nTargetMedia, char* szTargetPath, char* szPassword, const sigil::CertNKey& source);

    int nErr = 0;
    int bInitDone = 0;
    int nMediaType = SIGIL_MEDIUM_NONE;
    int nLanguage = 0;
    CBinary m_HomePath;
    sigil::CertNKey m_staged;
    int bRemovableFlag = 0;
    std::unique_ptr<CLoadDISK> m_pLoadDisk;
    std::unique_ptr<CLoadMemory> m_pLoadMemory;
    std::unique_ptr<CLoadExtra> m_pLoadExtra;
    sigildesk::CryptoHandle m_hToolkit;
    char szLogPath[sigil::pathCapacity] = {};
    CUtil m_Util{0, nullptr};        ///< its language file is not asked for, so that no home folder is looked up
    char szTokenPassword[1024] = {}; // kept for token media, which no loader here serves
};
