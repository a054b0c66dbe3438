// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/processor.h"

#include "certlist/codes.h"
#include "certlist/toolkit_calls.h"
#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <sigildesk/crypto.h>
#include <sigildesk/profile.h>
#include <sigildesk/util.h>

#include <new>

using namespace sigil;

namespace {

template <class T>
void createMissing(std::unique_ptr<T>& loader, int language, const char* folder)
{
    try {
        if (!loader)
            loader = std::make_unique<T>(language, folder);
    } catch (const std::bad_alloc&) {
        loader.reset();
    }
}

} // namespace

CCertListProcInterface::~CCertListProcInterface()
{
    UnInitalize();
    wipe(szTokenPassword, sizeof szTokenPassword);
}

void CCertListProcInterface::setUp(int language, char* szHomePath)
{
    nLanguage = language;
    m_HomePath = szHomePath;
}

int CCertListProcInterface::Inialize(void* /*pReserved*/, int nToolkitType)
{
    finish(SIGIL_SUCCESS);
    char folder[pathCapacity] = {};
    copyText(folder, m_HomePath.isEmpty() ? "" : m_HomePath.toString());
    m_HomePath = folder;
    if (!createLoaders())
        return finish(SIGIL_NO_HANDLE);
    const int rc = sigildesk::initialise(m_hToolkit, nToolkitType, folder);
    if (rc == SIGIL_MAKER_LIBRARY_MISSING || rc == SIGIL_GPKI_LIBRARY_MISSING)
        return finish(SIGIL_TOOLKIT_NOT_LOADED);
    if (rc == SIGIL_NO_MEMORY || isShortage(rc))
        return finish(SIGIL_NO_MEMORY);
    if (rc != SIGIL_SUCCESS)
        return finish(SIGIL_TOOLKIT_REFUSED);
    readLogPath();
    return bInitDone ? nErr : finish(initLoaders());
}

bool CCertListProcInterface::createLoaders()
{
    const char* folder = m_HomePath.isEmpty() ? "" : m_HomePath.m_pData;
    createMissing(m_pLoadDisk, nLanguage, folder);
    createMissing(m_pLoadMemory, nLanguage, folder);
    createMissing(m_pLoadExtra, nLanguage, folder);
    return ready();
}

void CCertListProcInterface::readLogPath()
{
    char file[pathCapacity];
    char section[] = "TW_Info";
    char key[] = "PATH";
    char none[] = "";
    formPath(file, m_HomePath.m_pData, "TWAPI_LOG.ini");
    FileGetPrivateProfileString(section, key, none, szLogPath, sizeof szLogPath, file);
}

int CCertListProcInterface::initLoaders()
{
    m_pLoadDisk->bind(m_hToolkit.get(), szLogPath);
    const int rc = m_pLoadDisk->SetInitalize();
    if (rc != SIGIL_SUCCESS)
        return rc;
    // Their settings are the same files, which are not read three times.
    for (Loader* loader : {static_cast<Loader*>(m_pLoadMemory.get()), static_cast<Loader*>(m_pLoadExtra.get())}) {
        loader->bind(m_hToolkit.get(), szLogPath);
        loader->shareNames(*m_pLoadDisk);
    }
    bInitDone = 1;
    return SIGIL_SUCCESS;
}

void CCertListProcInterface::UnInitalize()
{
    m_pLoadDisk.reset();
    m_pLoadMemory.reset();
    m_pLoadExtra.reset();
    m_hToolkit.reset();
}

int CCertListProcInterface::SetLoadCertType(tagLOADCERTOPT* pOption)
{
    if (!pOption)
        return finish(SIGIL_BAD_ARGUMENT);
    bRemovableFlag = pOption->bRemovableFlag;
    m_pLoadDisk->setOptions(*pOption);
    m_pLoadMemory->setOptions(*pOption);
    return finish(SIGIL_SUCCESS);
}

void CCertListProcInterface::observe(ListObserver* observer)
{
    m_pLoadDisk->observe(observer);
    m_pLoadMemory->observe(observer);
}

int CCertListProcInterface::SetMediaType(int nMedia, char* szPath, int /*nReserved*/)
{
    if (isRefused(nMedia))
        return finish(SIGIL_BAD_ARGUMENT);
    nMediaType = nMedia;
    if (onDisk())
        m_pLoadDisk->setMedium(nMedia);
    if (nMedia == SIGIL_MEDIUM_REMOVABLE_DISK && !isEmpty(szPath)) // without a folder the one of before stays
        m_pLoadDisk->setDrive(szPath);
    if (nMedia == SIGIL_MEDIUM_MEMORY)
        m_pLoadMemory->setMedium(nMedia);
    return finish(SIGIL_SUCCESS);
}

int CCertListProcInterface::GetRemDriveCount(int* pnCount)
{
    return finish(pnCount ? m_Util.GetRemDriveCount(bRemovableFlag != 0, pnCount) : SIGIL_BAD_ARGUMENT);
}

int CCertListProcInterface::GetRemDriveList(tagDRIVEINFO* pArray)
{
    return finish(pArray ? m_Util.GetRemDriveInfo(bRemovableFlag != 0, pArray) : SIGIL_BAD_ARGUMENT);
}

int CCertListProcInterface::LoadCertList()
{
    if (nMediaType == SIGIL_MEDIUM_MEMORY || nMediaType == SIGIL_MEDIUM_OTHER)
        return finish(SIGIL_SUCCESS);
    if (!onDisk())
        return finish(SIGIL_BAD_ARGUMENT);
    m_pLoadDisk->setMedium(nMediaType);
    m_pLoadDisk->ClearCertList();
    return finish(m_pLoadDisk->LoadCertList());
}

int CCertListProcInterface::GetCertCount() const
{
    return isMemory(nMediaType) ? m_pLoadMemory->count() : m_pLoadDisk->count();
}

int CCertListProcInterface::GetCertInfo(int nIndex, tagCERTINFO* pInfo)
{
    finish(SIGIL_SUCCESS);
    if (isMemory(nMediaType)) {
        if (m_pLoadMemory->count() == 0)
            return finish(SIGIL_BAD_ARGUMENT);
        m_pLoadMemory->entry().copyTo(*pInfo); // the single entry, whatever the index
    } else if (onDisk()) {
        if (!m_pLoadDisk->hasEntry(nIndex))
            return finish(SIGIL_BAD_ARGUMENT);
        m_pLoadDisk->entry(nIndex).copyTo(*pInfo);
    }
    return nErr;
}

int CCertListProcInterface::LoadMemoryCert(const char* pSignCert, int nSignCertLen, const char* pSignKey,
    int nSignKeyLen, const char* pKmCert, int nKmCertLen, const char* pKmKey, int nKmKeyLen)
{
    if (!isMemory(nMediaType))
        return finish(SIGIL_NOT_MEMORY_MEDIUM);
    return finish(m_pLoadMemory->LoadCertList(
        pSignCert, nSignCertLen, pSignKey, nSignKeyLen, pKmCert, nKmCertLen, pKmKey, nKmKeyLen));
}

int CCertListProcInterface::VerifyCert(char* pCert, int nCertLen, CBinary* pErrText)
{
    return finish(m_pLoadExtra->VerifyCert(pCert, nCertLen, pErrText));
}

int CCertListProcInterface::DecryptPriKey(int nIndex, char* szPassword, CBinary* pSignKey, CBinary* pKmKey)
{
    if (!onDisk())
        return finish(SIGIL_NOT_ON_THIS_MEDIUM);
    CBinary signKey;
    CBinary kmKey;
    finish(m_pLoadDisk->DecryptPriKey(nIndex, szPassword, &signKey, &kmKey));
    if (nErr != SIGIL_SUCCESS)
        return nErr;
    if (signKey.m_nLength < 0)
        return finish(SIGIL_KEY_NOT_DECRYPTED);
    *pSignKey = signKey;
    if (!kmKey.isEmpty())
        *pKmKey = kmKey;
    return nErr;
}

int CCertListProcInterface::GetPriKeyRandom(int nIndex, char* szPassword, CBinary* pRandom)
{
    if (isToken(nMediaType))
        copyText(szTokenPassword, szPassword);
    if (!onDisk())
        return finish(SIGIL_SUCCESS);
    finish(m_pLoadDisk->GetPrikeyRandom(nIndex, szPassword));
    if (nErr == SIGIL_SUCCESS)
        assign(*pRandom, value(*ScratchEntry(m_pLoadDisk->entry(nIndex)), field::random));
    return nErr;
}

int CCertListProcInterface::VerifyVID(int nIndex, char* szIdn, void* /*pReserved*/, char* szPassword)
{
    if (isToken(nMediaType) || isEmpty(szIdn) || isEmpty(szPassword) || nIndex < 0)
        return finish(SIGIL_BAD_ARGUMENT);
    if (!onDisk()) // deliberately without any check
        return finish(SIGIL_SUCCESS);
    CBinary signKey;
    CBinary kmKey;
    finish(m_pLoadDisk->DecryptPriKey(nIndex, szPassword, &signKey, &kmKey));
    return nErr == SIGIL_SUCCESS ? finish(m_pLoadDisk->VerifyVID(nIndex, szIdn, szPassword)) : nErr;
}

int CCertListProcInterface::ChangePassword(int nIndex, char* szOldPassword, char* szNewPassword)
{
    if (isEmpty(szOldPassword) || isEmpty(szNewPassword) || nIndex < 0)
        return finish(SIGIL_BAD_ARGUMENT);
    if (!onDisk())
        return finish(SIGIL_NOT_ON_THIS_MEDIUM);
    return finish(m_pLoadDisk->ChangePassword(nIndex, szOldPassword, szNewPassword));
}

int CCertListProcInterface::MemFree(void** ppBuf) { return finish(Loader::MemFree(ppBuf)); }

int CCertListProcInterface::GetErrInfo(CBinary* pOut) { return finish(toolkitErrorText(m_hToolkit.get(), *pOut)); }
