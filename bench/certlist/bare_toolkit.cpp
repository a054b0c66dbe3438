#include "bench/certlist/bare_toolkit.h"

#include <sigildesk/binstr.h>

#include <dlfcn.h>

#include <stdexcept>

struct BareToolkit::Functions {
    Function<BINSTR*> create, release;
    Function<void*, char*, BINSTR*> readFile;
    Function<void*, BINSTR*> load;
    Function<void*> unload;
    Function<void*, int*> version;
    Function<void*, int, char*, char*> key;
    Function<void*, char*, char*, BINSTR*> keyDer;
    Function<void*, char*, char*> validity;
    std::vector<Getter> texts;
};

template <class F>
F BareToolkit::find(const std::string& symbol)
{
    auto found = reinterpret_cast<F>(dlsym(m_library, symbol.c_str()));
    if (!found)
        throw std::runtime_error(symbol);
    return found;
}

BareToolkit::BareToolkit(const std::string& library)
    : m_library(dlopen(library.c_str(), RTLD_LAZY))
    , m_functions(std::make_unique<Functions>())
{
    if (!m_library || find<Function<void**>>("HVTK_API_Init")(&m_context) != 0)
        throw std::runtime_error(library);
    Functions& f = *m_functions;
    f.create = find<Function<BINSTR*>>("HVTK_BINSTR_Create");
    f.release = find<Function<BINSTR*>>("HVTK_BINSTR_Delete");
    f.readFile = find<Function<void*, char*, BINSTR*>>("HVTK_MEDIA_DISK_ReadFile");
    f.load = find<Function<void*, BINSTR*>>("HVTK_CERT_Load");
    f.unload = find<Function<void*>>("HVTK_CERT_Unload");
    f.version = find<Function<void*, int*>>("HVTK_CERT_GetVersion");
    f.key = find<Function<void*, int, char*, char*>>("HVTK_CERT_GetPubKey");
    f.keyDer = find<Function<void*, char*, char*, BINSTR*>>("HVTK_CERT_GetPubKey2");
    f.validity = find<Function<void*, char*, char*>>("HVTK_CERT_GetValidity");
    for (const char* text : {"SerialNum", "SignatureAlgorithm", "SubjectName", "UID", "KeyUsage", "CRLDP",
             "IssuerName", "CertPolicy", "CertPolicy_PolicyID", "AuthKeyID", "SubKeyID", "SubjectAltName", "AIA"})
        f.texts.push_back(find<Getter>("HVTK_CERT_Get" + std::string(text)));
}

BareToolkit::~BareToolkit() { dlclose(m_library); }

bool BareToolkit::read(const CertificateFiles& files)
{
    Functions& f = *m_functions;
    BINSTR records[5];
    for (BINSTR& record : records)
        f.create(&record);
    const std::string* paths[] = {&files.signCert, &files.signKey, &files.kmCert, &files.kmKey};
    int failed = 0;
    for (int i = 0; i < 4; ++i)
        if (!paths[i]->empty())
            failed |= f.readFile(m_context, const_cast<char*>(paths[i]->c_str()), &records[i]);
    failed |= f.load(m_context, &records[0]);
    int version = 0;
    failed |= f.version(m_context, &version);
    char text[2048] = {};
    char other[2048] = {};
    for (const Getter get : f.texts)
        failed |= get(m_context, sizeof text, text);
    failed |= f.key(m_context, sizeof text, other, text);
    failed |= f.keyDer(m_context, other, text, &records[4]);
    failed |= f.validity(m_context, text, other);
    f.unload(m_context);
    for (BINSTR& record : records)
        if (record.nLength > 0)
            f.release(&record);
    return failed == 0;
}
