// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/ui/scripted_processor.h"

#include "certlist/listing_pause.h"
#include "foundation/text_field.h"
#include "tests/support/cp949.h"

#include <sigildesk/certlist.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace scripted {

Processor& processor()
{
    static Processor only;
    return only;
}

int Processor::resultOf(const std::string& function) const
{
    const auto found = results.find(function);
    return found == results.end() ? 0 : found->second;
}

int Processor::countOf(const std::string& call) const
{
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

std::string Processor::lastCallOf(const std::string& function) const
{
    const auto found = std::find_if(calls.rbegin(), calls.rend(),
        [&](const std::string& call) { return call == function || call.rfind(function + " ", 0) == 0; });
    return found == calls.rend() ? "" : *found;
}

std::string eucKr(const std::string& utf8) { return cp949FromUtf8(utf8); }

namespace {

template <std::size_t N>
void fill(char (&field)[N], const std::string& text)
{
    sigil::copyText(field, eucKr(text));
}

template <std::size_t N>
void fill(unsigned char (&field)[N], int& length, const std::string& bytes)
{
    std::memcpy(field, bytes.data(), std::min(N, bytes.size()));
    length = static_cast<int>(bytes.size());
}

void fillCertificate(tagCERTINFO& entry, const std::string& name)
{
    fill(entry.bySignCert, entry.nSignCertLen, "sign certificate of " + name);
    fill(entry.byKmCert, entry.nKmCertLen, "km certificate of " + name);
    fill(entry.byEncSignPriKey, entry.nEncSignPriKeyLen, "encrypted sign key of " + name);
    fill(entry.byEncKmPriKey, entry.nEncKmPriKeyLen, "encrypted km key of " + name);
    fill(entry.szVersion, "V3");
    fill(entry.szSerialNum, "01a2b3");
    fill(entry.szSignAlg, "sha256WithRSAEncryption");
    fill(entry.szPubKey, "30 82 01 0a 02 82 01 01");
    fill(entry.szPubKeyAlg, "rsaEncryption");
    fill(entry.szKeyLength, "2048 Bits");
    fill(entry.szKeyUsage, "digitalSignature, nonRepudiation");
    fill(entry.szAuthKeyID, "a1 a2 a3");
    fill(entry.szSubKeyID, "b1 b2 b3");
}

void fillNames(tagCERTINFO& entry, const std::string& name)
{
    fill(entry.szUID, name);
    fill(entry.szSubjectDN, "cn=" + name + ",ou=개인,o=예제,c=KR");
    fill(entry.szIssuerDN, "cn=예제인증기관,o=예제,c=KR");
    fill(entry.szIssuerName, "예제인증기관");
    fill(entry.szIssuerCN, "예제인증기관");
    fill(entry.szCertPolicy, "정책 1 2 410 200004 5 2 1 2");
    fill(entry.szPolicyID, "1 2 410 200004 5 2 1 2");
    fill(entry.szPolicyName, "개인 범용");
    fill(entry.szSubjectAltName, "dNSName=" + name);
    fill(entry.szCRLDP, "ldap://ds.example.kr/crl");
    fill(entry.szAIA, "http://ocsp.example.kr");
    fill(entry.szMediaText1, "token text 1");
    fill(entry.szMediaText2, "token text 2");
}

void fillPaths(tagCERTINFO& entry)
{
    const std::string folder = "/home/hong/NPKI/yessign/USER/cn=hong/";
    fill(entry.szSignCertPath, folder + "signCert.der");
    fill(entry.szSignPriKeyPath, folder + "signPri.key");
    fill(entry.szKmCertPath, folder + "kmCert.der");
    fill(entry.szKmPriKeyPath, folder + "kmPri.key");
}

} // namespace

tagCERTINFO sampleEntry(const std::string& name, int status)
{
    tagCERTINFO entry{};
    entry.nPKIType = 2;
    entry.nMediaType = 1;
    entry.nValidStatus = status;
    entry.nRemainDays = status % 3 == 1 ? 12 : 0;
    entry.nExpired = status % 3 == 2 ? 1 : 0;
    fillCertificate(entry, name);
    fillNames(entry, name);
    fillPaths(entry);
    fill(entry.szNotBefore, "2025-11-01 09:00:00");
    fill(entry.szNotAfter, "2027-10-31 23:59:59");
    fill(entry.szValidFrom, "2025-11-01");
    fill(entry.szValidTo, status % 3 == 2 ? "2025-10-31" : "2027-10-31");
    return entry;
}

tagDRIVEINFO sampleDrive(int index, const std::string& mountDir)
{
    tagDRIVEINFO drive{};
    drive.nIndex = index;
    const std::string name = mountDir.substr(mountDir.rfind('/'));
    fill(drive.szMountDir, mountDir);
    fill(drive.szName, name);
    fill(drive.szDisplay, name + " (" + mountDir + ")");
    return drive;
}

} // namespace scripted

using scripted::processor;

namespace {

int called(const std::string& function, const std::string& arguments = "")
{
    processor().calls.push_back(arguments.empty() ? function : function + " " + arguments);
    return processor().resultOf(function);
}

std::string item(const char* data, int length)
{
    return data && length > 0 ? std::string(data, static_cast<std::size_t>(length)) : "-";
}

void handOut(const std::string& bytes, char** data, int* length)
{
    if (bytes.empty() && !processor().handsOutEmpty)
        return;
    *data = new char[bytes.size() + 1]();
    std::memcpy(*data, bytes.data(), bytes.size());
    *length = static_cast<int>(bytes.size());
    ++processor().openBuffers;
}

} // namespace

int CLP_Initalize(void** handle, void* reserved, int toolkit, int language, char* folder)
{
    const int rv = called("CLP_Initalize",
        (reserved ? "reserved " : "") + std::to_string(toolkit) + " " + std::to_string(language) + " " + folder);
    if (!*handle) {
        *handle = &processor();
        ++processor().handles;
    }
    return rv;
}

int CLP_UnInitalize(void* handle)
{
    if (handle)
        --processor().handles;
    return 0;
}

int CLP_MemFree(void*, void** buffer)
{
    delete[] static_cast<char*>(*buffer);
    *buffer = nullptr;
    --processor().openBuffers;
    return 0;
}

int CLP_SetType(void*, tagLOADCERTOPT* options)
{
    processor().options = *options;
    return called("CLP_SetType");
}

int CLP_GetRemDriveCount(void*, int* count)
{
    *count = processor().driveCount >= 0 ? processor().driveCount : static_cast<int>(processor().drives.size());
    return called("CLP_GetRemDriveCount");
}

int CLP_GetRemDrive(void*, tagDRIVEINFO* drives)
{
    std::copy(processor().drives.begin(), processor().drives.end(), drives);
    return called("CLP_GetRemDrive");
}

int CLP_SetMediaType(void*, int medium, char* path, int)
{
    return called("CLP_SetMediaType", std::to_string(medium) + (path ? std::string(" ") + path : ""));
}

void sigil::pauseListings(void*, ListingPause pause) { processor().pause = std::move(pause); }

int CLP_LoadCertList(void*)
{
    for (int file = 0; file < processor().files; ++file) {
        if (processor().onFile)
            processor().onFile(file);
        if (processor().pause && !processor().pause())
            return SIGIL_CANCELLED;
    }
    return called("CLP_LoadCertList");
}

int CLP_LoadMemoryCert(void*, char* signCert, int signCertLen, char* signKey, int signKeyLen, char* kmCert,
    int kmCertLen, char* kmKey, int kmKeyLen)
{
    return called("CLP_LoadMemoryCert",
        item(signCert, signCertLen) + "|" + item(signKey, signKeyLen) + "|" + item(kmCert, kmCertLen) + "|" +
            item(kmKey, kmKeyLen));
}

int CLP_GetCertCount(void*) { return static_cast<int>(processor().entries.size()); }

int CLP_GetCertInfo(void*, int index, tagCERTINFO* info)
{
    // As the real one: a field that is empty in the entry is left alone.
    const tagCERTINFO& entry = processor().entries.at(static_cast<std::size_t>(index));
    const auto* from = reinterpret_cast<const char*>(&entry);
    auto* to = reinterpret_cast<char*>(info);
    for (std::size_t i = 0; i < sizeof entry; ++i)
        if (from[i] != '\0')
            to[i] = from[i];
    const auto result = processor().entryResults.find(index);
    return result == processor().entryResults.end() ? 0 : result->second;
}

int CLP_DecryptPriKey(
    void*, int index, char* password, char** signKey, int* signKeyLen, char** kmKey, int* kmKeyLen)
{
    handOut(processor().signKey, signKey, signKeyLen);
    handOut(processor().kmKey, kmKey, kmKeyLen);
    return called("CLP_DecryptPriKey", std::to_string(index) + " " + password);
}

int CLP_GetPriKeyRandom(void*, int index, char* password, char** random, int* length)
{
    handOut(processor().random, random, length);
    return called("CLP_GetPriKeyRandom", std::to_string(index) + " " + password);
}

int CLP_ImportPFX(void*, char* path, char* password, char** signCert, int* signCertLen, char** signKey,
    int* signKeyLen, char** kmCert, int* kmCertLen, char** kmKey, int* kmKeyLen)
{
    handOut(processor().importCert, signCert, signCertLen);
    handOut(processor().importKey, signKey, signKeyLen);
    handOut(processor().importKmCert, kmCert, kmCertLen);
    handOut(processor().importKmKey, kmKey, kmKeyLen);
    return called("CLP_ImportPFX", std::string(path) + " " + password);
}

int CLP_VerifyCert(void*, char* cert, int certLen, int errorSize, char* error)
{
    const int rv = called("CLP_VerifyCert", item(cert, certLen) + " " + std::to_string(errorSize));
    if (rv != 0)
        sigil::copyText(error, static_cast<std::size_t>(errorSize), scripted::eucKr(processor().verifyError));
    return rv;
}
