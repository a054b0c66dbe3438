// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Settings, byte strings and the version text of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"
#include "facade/backends/version_text.h"

#include <cstring>

using namespace sigil;

int CHVTKWrap::GetInfo(char* version, char* info)
{
    if (const int code = m_toolkit.refusal({need(version), need(info)}))
        return code;
    std::memset(version, 0, 8);
    std::memset(info, 0, 8);
    return m_toolkit.call(SYMBOL(HVTK_API_GetInfo), {}, version, info);
}

int CHVTKWrap::SetConfFile(char* confFile)
{
    // Intended: only an empty name reaches this toolkit, which then keeps to the settings in its own folder.
    const Need emptyText = needThat(confFile && !*confFile);
    return m_toolkit.call(SYMBOL(HVTK_API_SetConfFile), {emptyText}, confFile);
}

int CHVTKWrap::SetCaPubs(BINSTR* caPubs)
{
    return m_toolkit.call(SYMBOL(HVTK_CERT_SetCaPubs), {need(caPubs)}, caPubs);
}

int CHVTKWrap::FreeCaPubs() { return m_toolkit.call(SYMBOL(HVTK_CERT_FreeCaPubs), {}); }

int CHVTKWrap::SetHashAlgo(int hashAlgorithm)
{
    return m_toolkit.call(SYMBOL(HVTK_API_SetHashAlgo), {}, hashAlgorithm);
}

int CHVTKWrap::BINSTR_Create(BINSTR* binStr)
{
    return m_toolkit.callWithoutContext(SYMBOL(HVTK_BINSTR_Create), {needRecord(binStr)}, binStr);
}

int CHVTKWrap::BINSTR_Delete(BINSTR* binStr)
{
    return m_toolkit.callWithoutContext(SYMBOL(HVTK_BINSTR_Delete), {need(binStr)}, binStr);
}

int CHVTKWrap::BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr)
{
    return m_toolkit.callWithoutContext(
        SYMBOL(HVTK_BINSTR_SetData), {need(data), needLength(length), needRecord(binStr)}, data, length, binStr);
}

int CHVTKWrap::CertGetVersion(int capacity, char* text)
{
    return versionText(m_toolkit, SYMBOL(HVTK_CERT_GetVersion), capacity, text);
}
