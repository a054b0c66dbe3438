// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "bench/certlist/bare_toolkit.h"

#include "toolkit_abi/hvtk.h"

#include <dlfcn.h>

#include <stdexcept>

namespace {

void* find(void* library, const char* symbol)
{
    void* const found = library ? dlsym(library, symbol) : nullptr;
    if (!found)
        throw std::runtime_error(symbol);
    return found;
}

} // namespace

/** The functions that a listing calls, under the names of toolkit_abi/ and with the types declared there. */
struct BareToolkit::Functions {
    void* const library;

#define FUNCTION(name) decltype(&::name) const name = reinterpret_cast<decltype(&::name)>(find(library, #name));
    FUNCTION(HVTK_API_Init)
    FUNCTION(HVTK_BINSTR_Create)
    FUNCTION(HVTK_BINSTR_Delete)
    FUNCTION(HVTK_MEDIA_DISK_ReadFile)
    FUNCTION(HVTK_CERT_Load)
    FUNCTION(HVTK_CERT_Unload)
    FUNCTION(HVTK_CERT_GetVersion)
    FUNCTION(HVTK_CERT_GetPubKey)
    FUNCTION(HVTK_CERT_GetPubKey2)
    FUNCTION(HVTK_CERT_GetValidity)
    FUNCTION(HVTK_CERT_GetSerialNum)
    FUNCTION(HVTK_CERT_GetSignatureAlgorithm)
    FUNCTION(HVTK_CERT_GetSubjectName)
    FUNCTION(HVTK_CERT_GetUID)
    FUNCTION(HVTK_CERT_GetKeyUsage)
    FUNCTION(HVTK_CERT_GetCRLDP)
    FUNCTION(HVTK_CERT_GetIssuerName)
    FUNCTION(HVTK_CERT_GetCertPolicy)
    FUNCTION(HVTK_CERT_GetCertPolicy_PolicyID)
    FUNCTION(HVTK_CERT_GetAuthKeyID)
    FUNCTION(HVTK_CERT_GetSubKeyID)
    FUNCTION(HVTK_CERT_GetSubjectAltName)
    FUNCTION(HVTK_CERT_GetAIA)
#undef FUNCTION
};

BareToolkit::BareToolkit(const std::string& library)
    : m_library(dlopen(library.c_str(), RTLD_LAZY))
    , m_functions(std::make_unique<Functions>(m_library))
{
    std::string noFolder;
    if (m_functions->HVTK_API_Init(&m_context, noFolder.data()) != 0)
        throw std::runtime_error(library);
}

BareToolkit::~BareToolkit() { dlclose(m_library); }

bool BareToolkit::read(const CertificateFiles& files)
{
    const Functions& f = *m_functions;
    BINSTR records[5];
    for (BINSTR& record : records)
        f.HVTK_BINSTR_Create(&record);
    const std::string* paths[] = {&files.signCert, &files.signKey, &files.kmCert, &files.kmKey};
    int failed = 0;
    for (int i = 0; i < 4; ++i)
        if (!paths[i]->empty())
            failed |= f.HVTK_MEDIA_DISK_ReadFile(m_context, const_cast<char*>(paths[i]->c_str()), &records[i]);
    failed |= f.HVTK_CERT_Load(m_context, &records[0]);
    int version = 0;
    failed |= f.HVTK_CERT_GetVersion(m_context, &version);
    char text[2048] = {};
    char other[2048] = {};
    for (const auto get : {f.HVTK_CERT_GetSerialNum, f.HVTK_CERT_GetSignatureAlgorithm, f.HVTK_CERT_GetSubjectName,
             f.HVTK_CERT_GetUID, f.HVTK_CERT_GetKeyUsage, f.HVTK_CERT_GetCRLDP, f.HVTK_CERT_GetIssuerName,
             f.HVTK_CERT_GetCertPolicy, f.HVTK_CERT_GetCertPolicy_PolicyID, f.HVTK_CERT_GetAuthKeyID,
             f.HVTK_CERT_GetSubKeyID, f.HVTK_CERT_GetSubjectAltName, f.HVTK_CERT_GetAIA})
        failed |= get(m_context, sizeof text, text);
    failed |= f.HVTK_CERT_GetPubKey(m_context, sizeof text, other, text);
    failed |= f.HVTK_CERT_GetPubKey2(m_context, other, text, &records[4]);
    failed |= f.HVTK_CERT_GetValidity(m_context, text, other);
    f.HVTK_CERT_Unload(m_context);
    for (BINSTR& record : records)
        if (record.nLength > 0)
            f.HVTK_BINSTR_Delete(&record);
    return failed == 0;
}
