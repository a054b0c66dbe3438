// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The exported functions: each checks its arguments, keeps exceptions inside and hands over to the processor.

#include "certlist/codes.h"
#include "certlist/listing_pause.h"
#include "certlist/processor.h"
#include "certlist/toolkit_calls.h"
#include "foundation/secret.h"
#include "foundation/text_field.h"

#include <sigildesk/certlist.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

using namespace sigil;

namespace {

/** Runs @p operation on the processor, which may work on keys; nothing of them is left behind it. @return 1008 for a null handle; 1000 when memory runs out; its result */
template <class Operation>
int onProcessor(void* handle, Operation operation)
{
    if (!handle)
        return SIGIL_NO_HANDLE;
    const TracesCleared cleared;
    try {
        return operation(*static_cast<CCertListProcInterface*>(handle));
    } catch (const std::bad_alloc&) {
        return SIGIL_NO_MEMORY;
    }
}

/** As above for a processor that has its loaders. @return 1008 when the initialisation came not that far
 *  @param valid  whether the arguments are; tested after the handle. @return 1001 */
template <class Operation>
int call(void* handle, bool valid, Operation operation)
{
    return onProcessor(handle, [&](CCertListProcInterface& processor) {
        if (!valid)
            return static_cast<int>(SIGIL_BAD_ARGUMENT);
        return processor.ready() ? operation(processor) : static_cast<int>(SIGIL_NO_HANDLE);
    });
}

/** A buffer on its way to the caller. The copy is made at once and handed out later, so that a call that runs out of
 *  memory hands out nothing. */
class Output {
public:
    /** @param to, lengthTo  the caller's variables; a null one is left out */
    Output(char** to, int* lengthTo, const CBinary& bytes)
        : m_to(to)
        , m_lengthTo(lengthTo)
        , m_length(bytes.m_nLength)
    {
        const std::string_view data = bytesOf(bytes);
        m_copy = std::make_unique<char[]>(data.size() + 1);
        std::copy(data.begin(), data.end(), m_copy.get());
    }
    ~Output() { wipe(m_copy.get(), m_copy ? static_cast<std::size_t>(m_length) : 0); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void handOut()
    {
        if (m_lengthTo)
            *m_lengthTo = m_length;
        if (m_to)
            *m_to = m_copy.release();
    }

private:
    char** m_to;
    int* m_lengthTo;
    int m_length;
    std::unique_ptr<char[]> m_copy;
};

CCertListProcInterface* newProcessor()
{
    try {
        return std::make_unique<CCertListProcInterface>().release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

int CLP_Initalize(void** phCLP, void* pReserved, int nToolkitType, int nLanguage, char* szHomePath)
{
    if (!phCLP)
        return SIGIL_BAD_ARGUMENT;
    if (!*phCLP)
        *phCLP = newProcessor();
    if (!*phCLP)
        return SIGIL_NO_MEMORY;
    return onProcessor(*phCLP, [&](CCertListProcInterface& processor) {
        processor.setUp(nLanguage, szHomePath);
        return processor.Inialize(pReserved, nToolkitType);
    });
}

int CLP_UnInitalize(void* hCLP)
{
    // From CLP_Initalize to here the handle owns the processor.
    const TracesCleared cleared;
    const std::unique_ptr<CCertListProcInterface> processor(static_cast<CCertListProcInterface*>(hCLP));
    if (processor)
        processor->UnInitalize();
    return SIGIL_SUCCESS;
}

int CLP_MemFree(void* /*hCLP*/, void** ppBuf) { return Loader::MemFree(ppBuf); }

int CLP_SetType(void* hCLP, tagLOADCERTOPT* pOption)
{
    return call(hCLP, pOption, [&](CCertListProcInterface& p) { return p.SetLoadCertType(pOption); });
}

int CLP_SetMediaType(void* hCLP, int nMedia, char* szPath, int nReserved)
{
    return call(hCLP, true, [&](CCertListProcInterface& p) { return p.SetMediaType(nMedia, szPath, nReserved); });
}

int CLP_GetRemDriveCount(void* hCLP, int* pnCount)
{
    return call(hCLP, pnCount, [&](CCertListProcInterface& p) { return p.GetRemDriveCount(pnCount); });
}

int CLP_GetRemDrive(void* hCLP, tagDRIVEINFO* pArray)
{
    return call(hCLP, pArray, [&](CCertListProcInterface& p) { return p.GetRemDriveList(pArray); });
}

int CLP_LoadCertList(void* hCLP)
{
    return call(hCLP, true, [](CCertListProcInterface& p) { return p.LoadCertList(); });
}

void sigil::pauseListings(void* processor, ListingPause pause)
{
    static_cast<CCertListProcInterface*>(processor)->setPause(std::move(pause));
}

int CLP_LoadMemoryCert(void* hCLP, char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen)
{
    const bool valid = pSignCert && nSignCertLen >= 1 && pSignKey && nSignKeyLen >= 1;
    return call(hCLP, valid, [&](CCertListProcInterface& p) {
        return p.LoadMemoryCert(
            pSignCert, nSignCertLen, pSignKey, nSignKeyLen, pKmCert, nKmCertLen, pKmKey, nKmKeyLen);
    });
}

int CLP_GetCertCount(void* hCLP)
{
    return call(hCLP, true, [](CCertListProcInterface& p) { return p.GetCertCount(); });
}

int CLP_GetCertInfo(void* hCLP, int nIndex, tagCERTINFO* pInfo)
{
    return call(hCLP, pInfo, [&](CCertListProcInterface& p) { return p.GetCertInfo(nIndex, pInfo); });
}

int CLP_DecryptPriKey(
    void* hCLP, int nIndex, char* szPassword, char** ppSignKey, int* pnSignKeyLen, char** ppKmKey, int* pnKmKeyLen)
{
    return call(hCLP, !isEmpty(szPassword) && nIndex >= 0, [&](CCertListProcInterface& p) {
        CBinary signKey;
        CBinary kmKey;
        const int rc = p.DecryptPriKey(nIndex, szPassword, &signKey, &kmKey);
        Output sign(ppSignKey, pnSignKeyLen, signKey); // also empty, after a failure
        Output km(ppKmKey, pnKmKeyLen, kmKey);
        sign.handOut();
        if (!kmKey.isEmpty())
            km.handOut();
        return rc;
    });
}

int CLP_GetPriKeyRandom(void* hCLP, int nIndex, char* szPassword, char** ppRandom, int* pnLen)
{
    return call(hCLP, !isEmpty(szPassword) && nIndex >= 0, [&](CCertListProcInterface& p) {
        CBinary random;
        const int rc = p.GetPriKeyRandom(nIndex, szPassword, &random);
        Output output(ppRandom, pnLen, random);
        if (!random.isEmpty())
            output.handOut();
        return rc;
    });
}

int CLP_VerifyVID(void* hCLP, int nIndex, char* szIdn, void* pReserved, char* szPassword)
{
    return call(hCLP, !isEmpty(szIdn) && nIndex >= 0,
        [&](CCertListProcInterface& p) { return p.VerifyVID(nIndex, szIdn, pReserved, szPassword); });
}

int CLP_ImportPFX(void* hCLP, char* szPfxPath, char* szPassword, char** ppSignCert, int* pnSignCertLen,
    char** ppSignKey, int* pnSignKeyLen, char** ppKmCert, int* pnKmCertLen, char** ppKmKey, int* pnKmKeyLen)
{
    const bool valid =
        !isEmpty(szPfxPath) && !isEmpty(szPassword) && ppSignCert && ppSignKey && ppKmCert && ppKmKey;
    return call(hCLP, valid, [&](CCertListProcInterface& p) {
        CertNKey read;
        const int rc = p.ImportPFX(szPfxPath, szPassword, read);
        Output signCert(ppSignCert, pnSignCertLen, read.signCert);
        Output signKey(ppSignKey, pnSignKeyLen, read.signKey);
        Output kmCert(ppKmCert, pnKmCertLen, read.kmCert);
        Output kmKey(ppKmKey, pnKmKeyLen, read.kmKey);
        if (read.hasSignPair()) {
            signCert.handOut();
            signKey.handOut();
        }
        if (read.hasKmPair()) {
            kmCert.handOut();
            kmKey.handOut();
        }
        return rc;
    });
}

int CLP_ExportPFX(void* hCLP, int nIndex, char* szPassword, char* szPfxPath)
{
    const bool valid = !isEmpty(szPassword) && nIndex >= 0 && !isEmpty(szPfxPath) &&
        strnlen(szPfxPath, pathCapacity) < pathCapacity;
    return call(hCLP, valid, [&](CCertListProcInterface& p) { return p.ExportPFX(nIndex, szPassword, szPfxPath); });
}

int CLP_VerifyCert(void* hCLP, char* pCert, int nCertLen, int nErrSize, char* szErr)
{
    const bool valid = pCert && nCertLen >= 1 && szErr && nErrSize >= 1;
    return call(hCLP, valid, [&](CCertListProcInterface& p) {
        CBinary message;
        const int rc = p.VerifyCert(pCert, nCertLen, &message);
        if (rc != SIGIL_SUCCESS) {
            std::fill_n(szErr, nErrSize, '\0');
            copyText(szErr, static_cast<std::size_t>(nErrSize), bytesOf(message));
        }
        return rc;
    });
}

int CLP_CopySelCertToDISK(
    void* hCLP, int nSrcMedia, int nIndex, int nTargetMedia, char* szTargetPath, char* szPassword)
{
    const bool refused = isRefused(nSrcMedia);
    return call(hCLP, refused || nIndex >= 0, [&](CCertListProcInterface& p) {
        return refused ? static_cast<int>(SIGIL_NOT_ON_THIS_MEDIUM)
                       : p.CopyCertToDISK(false, nSrcMedia, nIndex, szPassword, nTargetMedia, szTargetPath);
    });
}

int CLP_CopyforSetData(void* hCLP, char* pSignCert, int nSignCertLen, char* pSignKey, int nSignKeyLen,
    char* pKmCert, int nKmCertLen, char* pKmKey, int nKmKeyLen)
{
    const bool valid = pSignCert && nSignCertLen >= 1 && pSignKey && nSignKeyLen >= 1;
    return call(hCLP, valid, [&](CCertListProcInterface& p) {
        return p.CopyforSetData(
            pSignCert, nSignCertLen, pSignKey, nSignKeyLen, pKmCert, nKmCertLen, pKmKey, nKmKeyLen);
    });
}

int CLP_CopyCertToDISK(void* hCLP, int nTargetMedia, char* szTargetPath, char* szPassword)
{
    return call(hCLP, !isEmpty(szPassword), [&](CCertListProcInterface& p) {
        return p.CopyCertToDISK(true, -1, 0, szPassword, nTargetMedia, szTargetPath);
    });
}

int CLP_DeleteCert(void* hCLP, int nIndex, char* szPin, char* szPassword)
{
    return call(
        hCLP, nIndex >= 0, [&](CCertListProcInterface& p) { return p.DeleteCert(nIndex, szPin, szPassword); });
}
