// Storage media of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::StorageLoad(char* name) { return m_toolkit.call("GPKI_STORAGE_Load", {need(name)}, name); }

int CGPKIWrap::StorageUnLoad() { return m_toolkit.call("GPKI_STORAGE_Unload", {}); }

int CGPKIWrap::StorageReadFile(char* path, BINSTR* data)
{
    return m_toolkit.call("GPKI_STORAGE_ReadFile", {need(path)}, path, data);
}

int CGPKIWrap::StorageWriteFile(char* path, BINSTR* data)
{
    return m_toolkit.call("GPKI_STORAGE_WriteFile", {need(path), need(data)}, path, data);
}

int CGPKIWrap::StorageReadCert(int medium, char* path, int kind, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_STORAGE_ReadCert", {need(path)}, medium, path, kind, certificate);
}

int CGPKIWrap::StorageReadPriKey(int medium, char* path, char* password, int kind, BINSTR* privateKey)
{
    return m_toolkit.call(
        "GPKI_STORAGE_ReadPriKey", {need(path), need(password)}, medium, path, password, kind, privateKey);
}

int CGPKIWrap::StorageWriteCert(int medium, char* path, int kind, BINSTR* certificate)
{
    return m_toolkit.call(
        "GPKI_STORAGE_WriteCert", {need(path), need(certificate)}, medium, path, kind, certificate);
}

int CGPKIWrap::StorageWritePriKey(
    int medium, char* path, char* password, int kind, int algorithm, BINSTR* privateKey)
{
    return m_toolkit.call("GPKI_STORAGE_WritePriKey", {need(path), need(password), need(privateKey)}, medium, path,
        password, kind, algorithm, privateKey);
}

int CGPKIWrap::StorageDeleteCert(int medium, char* path, int kind)
{
    return m_toolkit.call("GPKI_STORAGE_DeleteCert", {need(path)}, medium, path, kind);
}

int CGPKIWrap::StorageDeletePriKey(int medium, char* path, char* password, int kind)
{
    return m_toolkit.call("GPKI_STORAGE_DeletePriKey", {need(path), need(password)}, medium, path, password, kind);
}
