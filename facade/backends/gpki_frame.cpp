// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Settings, byte strings and the version text of the GPKI library.

#include "facade/backends/gpki_wrap.h"
#include "facade/backends/version_text.h"

using namespace sigil;

int CGPKIWrap::GetVersion(int length, char* buffer)
{
    return m_toolkit.call(
        SYMBOL(GPKI_API_GetVersion), {}, length, buffer); // a null buffer is the library's to refuse
}

int CGPKIWrap::SetOption(int option) { return m_toolkit.call(SYMBOL(GPKI_API_SetOption), {}, option); }

int CGPKIWrap::SetConfFile(char* confFile)
{
    return m_toolkit.call(SYMBOL(GPKI_API_SetConfFile), {need(confFile)}, confFile);
}

int CGPKIWrap::SetCaPubs(BINSTR* caPubs)
{
    return m_toolkit.call(SYMBOL(GPKI_API_SetCaPubs), {need(caPubs)}, caPubs);
}

int CGPKIWrap::FreeCaPubs() { return m_toolkit.call(SYMBOL(GPKI_API_FreeCaPubs), {}); }

int CGPKIWrap::Str2Time(char* timeText, long* time)
{
    return m_toolkit.call(SYMBOL(GPKI_API_Str2Time), {need(timeText)}, timeText, time);
}

int CGPKIWrap::SetHashAlgo(int hashAlgorithm)
{
    return m_toolkit.call(SYMBOL(GPKI_API_SetHashAlgo), {}, hashAlgorithm);
}

int CGPKIWrap::BINSTR_Create(BINSTR* binStr)
{
    return m_toolkit.callWithoutContext(SYMBOL(GPKI_BINSTR_Create), {needRecord(binStr)}, binStr);
}

int CGPKIWrap::BINSTR_Delete(BINSTR* binStr)
{
    return m_toolkit.callWithoutContext(SYMBOL(GPKI_BINSTR_Delete), {needRecord(binStr)}, binStr);
}

int CGPKIWrap::BINSTR_SetData(unsigned char* data, int length, BINSTR* binStr)
{
    return m_toolkit.callWithoutContext(
        SYMBOL(GPKI_BINSTR_SetData), {need(data), needLength(length), needRecord(binStr)}, data, length, binStr);
}

int CGPKIWrap::CertGetVersion(int capacity, char* text)
{
    return versionText(m_toolkit, SYMBOL(GPKI_CERT_GetVersion), capacity, text);
}
