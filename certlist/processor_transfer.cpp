// Import, export, copy and delete.

#include "certlist/codes.h"
#include "certlist/processor.h"

using namespace sigil;

int CCertListProcInterface::ImportPFX(char* szPfxPath, char* szPassword, CertNKey& out)
{
    if (!szPfxPath)
        return finish(badArgument);
    CertNKey read;
    finish(m_pLoadDisk->GetPKCS12(szPfxPath, szPassword, read));
    if (nErr != success)
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
    if (nErr == success)
        finish(m_pLoadDisk->MakePKCS12(nIndex, szPassword, pfx));
    if (nErr != success)
        return nErr;
    return finish(pfx.isEmpty() ? nothingExported : m_pLoadDisk->writeExport(pfx, szPfxPath));
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
    return finish(success);
}

int CCertListProcInterface::CopySetSource(int nSrcMedia, int nIndex, char* szPassword, CertNKey& out)
{
    if (nSrcMedia == otherMedium)
        return finish(success);
    if (nSrcMedia != hardDisk && nSrcMedia != removableDisk)
        return finish(badArgument);
    CBinary signKey;
    CBinary kmKey;
    finish(m_pLoadDisk->DecryptPriKey(nIndex, szPassword, &signKey, &kmKey));
    if (nErr == success)
        finish(m_pLoadDisk->ReadCertNKey(false, nIndex, out));
    if (nErr == success && !out.hasKmPair()) {
        out.kmCert.empty();
        out.kmKey.empty();
    }
    return nErr;
}

int CCertListProcInterface::CopyCertToDISK(
    bool bStaged, int nSrcMedia, int nIndex, char* szPassword, int nTargetMedia, char* szTargetPath)
{
    if (isEmpty(szPassword) || (nTargetMedia == removableDisk && isEmpty(szTargetPath)))
        return finish(badArgument);
    if (bStaged)
        return finish(copyTo(nTargetMedia, szTargetPath, szPassword, m_staged));
    nMediaType = nSrcMedia;
    CertNKey source;
    const int rc = CopySetSource(nSrcMedia, nIndex, szPassword, source);
    return finish(rc == success ? copyTo(nTargetMedia, szTargetPath, szPassword, source) : rc);
}

int CCertListProcInterface::copyTo(int nTargetMedia, char* szTargetPath, char* szPassword, const CertNKey& source)
{
    CertPaths paths;
    int algorithm = 0;
    int rc = m_pLoadExtra->CheckKeyPair(source);
    if (rc != success)
        return rc;
    m_pLoadDisk->setMedium(nMediaType);
    rc = m_pLoadDisk->MakeCertPath(nTargetMedia, szTargetPath, source.signCert, paths);
    if (rc == success)
        rc = m_pLoadDisk->GetPrikeyAlg(source.signCert, &algorithm);
    if (rc != success)
        return rc;
    return m_pLoadDisk->writeCopy(szPassword, algorithm, paths, source);
}

// Only disks have something to delete; the PIN belongs to token media, which are refused whatever it says.
int CCertListProcInterface::DeleteCert(int nIndex, char* /*szPin*/, char* szPassword)
{
    if (nMediaType == otherMedium)
        return finish(notOnThisMedium);
    if (!onDisk() || isEmpty(szPassword))
        return finish(badArgument);
    m_pLoadDisk->setMedium(nMediaType);
    return finish(m_pLoadDisk->DeleteCertNKey(nIndex, szPassword));
}
