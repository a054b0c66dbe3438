// Storage media of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::MediaLoad(char* name) { return m_toolkit.call("HVTK_MEDIA_Load", {need(name)}, name); }

int CHVTKWrap::MediaUnLoad() { return m_toolkit.call("HVTK_MEDIA_Unload", {}); }

int CHVTKWrap::MediaDiskReadFile(char* path, BINSTR* data)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_ReadFile", {need(path)}, path, data);
}

int CHVTKWrap::MediaDiskWriteFile(char* path, BINSTR* data)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_WriteFile", {need(path), need(data)}, path, data);
}

int CHVTKWrap::MediaDiskReadCert(char* path, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_ReadCert", {need(path)}, path, certificate);
}

int CHVTKWrap::MediaDiskReadPriKey(char* path, char* password, BINSTR* privateKey)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_ReadPriKey", {need(path), need(password)}, path, password, privateKey);
}

int CHVTKWrap::MediaDiskWriteCert(char* path, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_WriteCert", {need(path), need(certificate)}, path, certificate);
}

int CHVTKWrap::MediaDiskWritePriKey(int algorithm, char* path, char* password, BINSTR* privateKey)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_WritePriKey", {need(path), need(password), need(privateKey)}, algorithm,
        path, password, privateKey);
}

int CHVTKWrap::MediaDiskDeleteCert(char* path)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_DeleteCert", {need(path)}, path);
}

int CHVTKWrap::MediaDiskDeletePriKey(char* password, char* path)
{
    return m_toolkit.call("HVTK_MEDIA_DISK_DeletePriKey", {need(password), need(path)}, password, path);
}

int CHVTKWrap::MediaCardReadCert(int slot, char* path, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_MEDIA_CARD_ReadCert", {need(path)}, slot, path, certificate);
}

int CHVTKWrap::MediaCardReadPriKey(int slot, char* path, char* password, BINSTR* privateKey)
{
    return m_toolkit.call(
        "HVTK_MEDIA_CARD_ReadPriKey", {need(path), need(password)}, slot, path, password, privateKey);
}

int CHVTKWrap::MediaCardWriteCert(int slot, char* path, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_MEDIA_CARD_WriteCert", {need(path), need(certificate)}, slot, path, certificate);
}

int CHVTKWrap::MediaCardWritePriKey(int slot, int algorithm, char* path, char* password, BINSTR* privateKey)
{
    return m_toolkit.call("HVTK_MEDIA_CARD_WritePriKey", {need(path), need(password), need(privateKey)}, slot,
        algorithm, path, password, privateKey);
}

int CHVTKWrap::MediaCardDeleteCert(int slot, char* path)
{
    return m_toolkit.call("HVTK_MEDIA_CARD_DeleteCert", {need(path)}, slot, path);
}

int CHVTKWrap::MediaCareDeletePriKey(int slot, char* path, char* password)
{
    return m_toolkit.call("HVTK_MEDIA_CARD_DeletePriKey", {need(path), need(password)}, slot, path, password);
}

int CHVTKWrap::MediaWinsWirteCertKey(int store, char* password, BINSTR* pfx)
{
    return m_toolkit.call("HVTK_MEDIA_WINS_WriteCertAndPriKey", {need(password), need(pfx)}, store, password, pfx);
}

int CHVTKWrap::MediaWinsWirteCert(BINSTR* certificate)
{
    return m_toolkit.call("HVTK_MEDIA_WINS_WriteCert", {need(certificate)}, certificate);
}

int CHVTKWrap::MediaWinsCertCnt(char* store, int* count)
{
    return m_toolkit.call("HVTK_MEDIA_WINS_GetCertCnt", {need(store), need(count)}, store, count);
}

int CHVTKWrap::MediaWinsCertDN(int index, int* kind, char* subject, char* issuer)
{
    return m_toolkit.call("HVTK_MEDIA_WINS_GetCertDN", {}, index, kind, subject, issuer);
}

int CHVTKWrap::MediaWinsReadCert(int index, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_MEDIA_WINS_ReadCert", {}, index, certificate);
}

int CHVTKWrap::MediaWinsReadPrikey(int index, BINSTR* privateKey)
{
    return m_toolkit.call("HVTK_MEDIA_WINS_ReadPriKey", {}, index, privateKey);
}

int CHVTKWrap::MediaWinsReadCaPubs(int index, BINSTR* certificates)
{
    // Intended: the toolkit serves both with one function.
    return m_toolkit.call("HVTK_MEDIA_WINS_ReadPriKey", {}, index, certificates);
}
