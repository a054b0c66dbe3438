// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Import, export, copy and delete.

#include "certlist/codes.h"
#include "certlist/processor.h"

using namespace sigil;

int CCertListProcInterface::ImportPFX(char* szPfxPath, char* szPassword, CertNKey& out)
{
    if (!szPfxPath)
        return finish(SIGIL_BAD_ARGUMENT);
    CertNKey read;
    finish(m_pLoadDisk->GetPKCS12(szPfxPath, szPassword, read));
    if (nErr != SIGIL_SUCCESS)
        return nErr;
    if (read.hasSignPair()) {
        out.signCert = read.signCert;
        out.signKey = read.signKey;
    }
    if (read.hasKmPair()) { // deliberately the signing pair once more; callers rely on it
        out.kmCert = read.signCert;
        out.kmKey = read.signKey;
    }
    return nErr;
}

int CCertListProcInterface::ExportPFX(int nIndex, char* szPassword, char* szPfxPath)
{
    CBinary signKey;
    CBinary kmKey;
    CBinary pfx;
    finish(m_pLoadDisk->DecryptPriKey(nIndex, szPassword, &signKey, &kmKey));
    if (nErr == SIGIL_SUCCESS)
        finish(m_pLoadDisk->MakePKCS12(nIndex, szPassword, pfx));
    if (nErr != SIGIL_SUCCESS)
        return nErr;
    return finish(pfx.isEmpty() ? SIGIL_NOTHING_EXPORTED : m_pLoadDisk->writeExport(pfx, szPfxPath));
}

int CCertListProcInterface::CopyforSetData(char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen)
{
    m_staged.signCert.set(pSignCert, nSignCertLen);
    m_staged.signKey.set(pSignKey, nSignKeyLen);
    if (pKmCert && pKmKey && nKmCertLen >= 1 && nKmKeyLen >= 1) { // else those of before stay
        m_staged.kmCert.set(pKmCert, nKmCertLen);
        m_staged.kmKey.set(pKmKey, nKmKeyLen);
    }
    return finish(SIGIL_SUCCESS);
}

int CCertListProcInterface::CopySetSource(int nSrcMedia, int nIndex, char* szPassword, CertNKey& out)
{
    if (nSrcMedia == SIGIL_MEDIUM_OTHER)
        return finish(SIGIL_SUCCESS);
    if (nSrcMedia != SIGIL_MEDIUM_HARD_DISK && nSrcMedia != SIGIL_MEDIUM_REMOVABLE_DISK)
        return finish(SIGIL_BAD_ARGUMENT);
    CBinary signKey;
    CBinary kmKey;
    finish(m_pLoadDisk->DecryptPriKey(nIndex, szPassword, &signKey, &kmKey));
    if (nErr == SIGIL_SUCCESS)
        finish(m_pLoadDisk->ReadCertNKey(false, nIndex, out));
    if (nErr == SIGIL_SUCCESS && !out.hasKmPair()) {
        out.kmCert.empty();
        out.kmKey.empty();
    }
    return nErr;
}

int CCertListProcInterface::CopyCertToDISK(
    bool bStaged, int nSrcMedia, int nIndex, char* szPassword, int nTargetMedia, char* szTargetPath)
{
    if (isEmpty(szPassword) || (nTargetMedia == SIGIL_MEDIUM_REMOVABLE_DISK && isEmpty(szTargetPath)))
        return finish(SIGIL_BAD_ARGUMENT);
    if (bStaged)
        return finish(copyTo(nTargetMedia, szTargetPath, szPassword, m_staged));
    nMediaType = nSrcMedia;
    CertNKey source;
    const int rc = CopySetSource(nSrcMedia, nIndex, szPassword, source);
    return finish(rc == SIGIL_SUCCESS ? copyTo(nTargetMedia, szTargetPath, szPassword, source) : rc);
}

int CCertListProcInterface::copyTo(int nTargetMedia, char* szTargetPath, char* szPassword, const CertNKey& source)
{
    CertPaths paths;
    int algorithm = 0;
    int rc = m_pLoadExtra->CheckKeyPair(source);
    if (rc != SIGIL_SUCCESS)
        return rc;
    m_pLoadDisk->setMedium(nMediaType);
    rc = m_pLoadDisk->MakeCertPath(nTargetMedia, szTargetPath, source.signCert, paths);
    if (rc == SIGIL_SUCCESS)
        rc = m_pLoadDisk->GetPrikeyAlg(source.signCert, &algorithm);
    if (rc != SIGIL_SUCCESS)
        return rc;
    return m_pLoadDisk->writeCopy(szPassword, algorithm, paths, source);
}

// Only disks have something to delete; the PIN belongs to token media, which are refused whatever it says.
int CCertListProcInterface::DeleteCert(int nIndex, char* /*szPin*/, char* szPassword)
{
    if (nMediaType == SIGIL_MEDIUM_OTHER)
        return finish(SIGIL_NOT_ON_THIS_MEDIUM);
    if (!onDisk() || isEmpty(szPassword))
        return finish(SIGIL_BAD_ARGUMENT);
    m_pLoadDisk->setMedium(nMediaType);
    return finish(m_pLoadDisk->DeleteCertNKey(nIndex, szPassword));
}
