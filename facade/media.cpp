// Storage media.

#include "facade/dispatch.h"

#include <sigildesk/crypto/media.h>

using namespace sigil;

namespace {

// The GPKI library has one set of storage functions; the medium code tells it where to look.
constexpr int mediumDisk = 1;
constexpr int mediumCard = 2;

} // namespace

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::MediaLoad(char* name)
{
    return pick({need(name)}, to<&CHVTKWrap::MediaLoad>(name), to<&CGPKIWrap::StorageLoad>(name));
}

int CWrapperAPI::MediaUnLoad() { return pick({}, to<&CHVTKWrap::MediaUnLoad>(), to<&CGPKIWrap::StorageUnLoad>()); }

int CWrapperAPI::MediaDiskReadFile(char* path, BINSTR* data)
{
    return pick(
        {need(path)}, to<&CHVTKWrap::MediaDiskReadFile>(path, data), to<&CGPKIWrap::StorageReadFile>(path, data));
}

int CWrapperAPI::MediaDiskWriteFile(char* path, BINSTR* data)
{
    return pick({need(path), need(data)}, to<&CHVTKWrap::MediaDiskWriteFile>(path, data),
        to<&CGPKIWrap::StorageWriteFile>(path, data));
}

int CWrapperAPI::MediaDiskReadCert(char* path, int kind, BINSTR* certificate)
{
    return pick({need(path)}, to<&CHVTKWrap::MediaDiskReadCert>(path, certificate),
        to<&CGPKIWrap::StorageReadCert>(mediumDisk, path, kind, certificate));
}

int CWrapperAPI::MediaDiskReadPriKey(char* path, char* password, int kind, BINSTR* privateKey)
{
    return pick({need(path), need(password)}, to<&CHVTKWrap::MediaDiskReadPriKey>(path, password, privateKey),
        to<&CGPKIWrap::StorageReadPriKey>(mediumDisk, path, password, kind, privateKey));
}

int CWrapperAPI::MediaDiskWriteCert(char* path, int kind, BINSTR* certificate)
{
    return pick({need(path), need(certificate)}, to<&CHVTKWrap::MediaDiskWriteCert>(path, certificate),
        to<&CGPKIWrap::StorageWriteCert>(mediumDisk, path, kind, certificate));
}

int CWrapperAPI::MediaDiskWritePriKey(int algorithm, char* path, int kind, char* password, BINSTR* privateKey)
{
    return pick({need(path), need(password), need(privateKey)},
        to<&CHVTKWrap::MediaDiskWritePriKey>(algorithm, path, password, privateKey),
        to<&CGPKIWrap::StorageWritePriKey>(mediumDisk, path, password, kind, algorithm, privateKey));
}

int CWrapperAPI::MediaDiskDeleteCert(char* path, int kind)
{
    return pick({need(path)}, to<&CHVTKWrap::MediaDiskDeleteCert>(path),
        to<&CGPKIWrap::StorageDeleteCert>(mediumDisk, path, kind));
}

int CWrapperAPI::MediaDiskDeletePriKey(char* password, int kind, char* path)
{
    return pick({need(path)}, to<&CHVTKWrap::MediaDiskDeletePriKey>(password, path),
        to<&CGPKIWrap::StorageDeletePriKey>(mediumDisk, path, password, kind));
}

int CWrapperAPI::MediaCardReadCert(int slot, char* path, BINSTR* certificate)
{
    return pick({need(path)}, to<&CHVTKWrap::MediaCardReadCert>(slot, path, certificate),
        to<&CGPKIWrap::StorageReadCert>(mediumCard, path, slot, certificate));
}

int CWrapperAPI::MediaCardReadPriKey(int slot, char* path, char* password, BINSTR* privateKey)
{
    return pick({need(path), need(password)}, to<&CHVTKWrap::MediaCardReadPriKey>(slot, path, password, privateKey),
        to<&CGPKIWrap::StorageReadPriKey>(mediumCard, path, password, slot, privateKey));
}

int CWrapperAPI::MediaCardWriteCert(int slot, char* path, BINSTR* certificate)
{
    return pick({need(path), need(certificate)}, to<&CHVTKWrap::MediaCardWriteCert>(slot, path, certificate),
        to<&CGPKIWrap::StorageWriteCert>(mediumCard, path, slot, certificate));
}

int CWrapperAPI::MediaCardWritePriKey(int slot, int algorithm, char* path, char* password, BINSTR* privateKey)
{
    return pick({need(path), need(password), need(privateKey)},
        to<&CHVTKWrap::MediaCardWritePriKey>(slot, algorithm, path, password, privateKey),
        to<&CGPKIWrap::StorageWritePriKey>(mediumCard, path, password, slot, algorithm, privateKey));
}

int CWrapperAPI::MediaCardDeleteCert(int slot, char* path)
{
    return pick({need(path)}, to<&CHVTKWrap::MediaCardDeleteCert>(slot, path),
        to<&CGPKIWrap::StorageDeleteCert>(mediumCard, path, slot));
}

int CWrapperAPI::MediaCareDeletePriKey(int slot, char* path, char* password)
{
    return pick({need(path), need(password)}, to<&CHVTKWrap::MediaCareDeletePriKey>(slot, path, password),
        to<&CGPKIWrap::StorageDeletePriKey>(mediumCard, path, password, slot));
}

int CWrapperAPI::MediaWinsWirteCertKey(int store, char* password, BINSTR* pfx)
{
    return pick({need(password), need(pfx)}, to<&CHVTKWrap::MediaWinsWirteCertKey>(store, password, pfx), absent);
}

int CWrapperAPI::MediaWinsWirteCert(BINSTR* certificate)
{
    return pick({need(certificate)}, to<&CHVTKWrap::MediaWinsWirteCert>(certificate), absent);
}

int CWrapperAPI::MediaWinsCertCnt(char* store, int* count)
{
    return pick({need(store)}, to<&CHVTKWrap::MediaWinsCertCnt>(store, count), absent);
}

int CWrapperAPI::MediaWinsCertDN(int index, int* kind, char* subject, char* issuer)
{
    return pick({}, to<&CHVTKWrap::MediaWinsCertDN>(index, kind, subject, issuer), absent);
}

int CWrapperAPI::MediaWinsReadCert(int index, BINSTR* certificate)
{
    return pick({}, to<&CHVTKWrap::MediaWinsReadCert>(index, certificate), absent);
}

int CWrapperAPI::MediaWinsReadPrikey(int index, BINSTR* privateKey)
{
    return pick({}, to<&CHVTKWrap::MediaWinsReadPrikey>(index, privateKey), absent);
}

int CWrapperAPI::MediaWinsReadCaPubs(int index, BINSTR* certificates)
{
    return pick({}, to<&CHVTKWrap::MediaWinsReadCaPubs>(index, certificates), absent);
}

// Exports

int MediaLoad(void* handle, char* name) { return via(handle, &CWrapperAPI::MediaLoad, name); }

int MediaUnLoad(void* handle) { return via(handle, &CWrapperAPI::MediaUnLoad); }

int MediaDiskReadFile(void* handle, char* path, BINSTR* data)
{
    return via(handle, &CWrapperAPI::MediaDiskReadFile, path, data);
}

int MediaDiskWriteFile(void* handle, char* path, BINSTR* data)
{
    return via(handle, &CWrapperAPI::MediaDiskWriteFile, path, data);
}

int MediaDiskReadCert(void* handle, char* path, int kind, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::MediaDiskReadCert, path, kind, certificate);
}

int MediaDiskReadPriKey(void* handle, char* path, char* password, int kind, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::MediaDiskReadPriKey, path, password, kind, privateKey);
}

int MediaDiskWriteCert(void* handle, char* path, int kind, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::MediaDiskWriteCert, path, kind, certificate);
}

int MediaDiskWritePriKey(void* handle, int algorithm, char* path, int kind, char* password, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::MediaDiskWritePriKey, algorithm, path, kind, password, privateKey);
}

int MediaDiskDeleteCert(void* handle, char* path, int kind)
{
    return via(handle, &CWrapperAPI::MediaDiskDeleteCert, path, kind);
}

int MediaDiskDeletePriKey(void* handle, char* password, int kind, char* path)
{
    return via(handle, &CWrapperAPI::MediaDiskDeletePriKey, password, kind, path);
}

int MediaCardReadCert(void* handle, int slot, char* path, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::MediaCardReadCert, slot, path, certificate);
}

int MediaCardReadPriKey(void* handle, int slot, char* path, char* password, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::MediaCardReadPriKey, slot, path, password, privateKey);
}

int MediaCardWriteCert(void* handle, int slot, char* path, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::MediaCardWriteCert, slot, path, certificate);
}

int MediaCardWritePriKey(void* handle, int slot, int algorithm, char* path, char* password, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::MediaCardWritePriKey, slot, algorithm, path, password, privateKey);
}

int MediaCardDeleteCert(void* handle, int slot, char* path)
{
    return via(handle, &CWrapperAPI::MediaCardDeleteCert, slot, path);
}

int MediaCareDeletePriKey(void* handle, int slot, char* path, char* password)
{
    return via(handle, &CWrapperAPI::MediaCareDeletePriKey, slot, path, password);
}

int MediaWinsWirteCertKey(void* handle, int store, char* password, BINSTR* pfx)
{
    return via(handle, &CWrapperAPI::MediaWinsWirteCertKey, store, password, pfx);
}

int MediaWinsWirteCert(void* handle, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::MediaWinsWirteCert, certificate);
}

int MediaWinsCertCnt(void* handle, char* store, int* count)
{
    return via(handle, &CWrapperAPI::MediaWinsCertCnt, store, count);
}

int MediaWinsCertDN(void* handle, int index, int* kind, char* subject, char* issuer)
{
    return via(handle, &CWrapperAPI::MediaWinsCertDN, index, kind, subject, issuer);
}

int MediaWinsReadCert(void* handle, int index, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::MediaWinsReadCert, index, certificate);
}

int MediaWinsReadPrikey(void* handle, int index, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::MediaWinsReadPrikey, index, privateKey);
}

int MediaWinsReadCaPubs(void* handle, int index, BINSTR* certificates)
{
    return via(handle, &CWrapperAPI::MediaWinsReadCaPubs, index, certificates);
}
