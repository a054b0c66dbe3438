// Base64 and PEM.

#include "facade/dispatch.h"

#include <sigildesk/crypto/base64.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::Base64Encode(BINSTR* data, BINSTR* text)
{
    return pick({need(data)}, to<&CHVTKWrap::Base64Encode>(data, text), to<&CGPKIWrap::Base64Encode>(data, text));
}

int CWrapperAPI::Base64Decode(BINSTR* text, BINSTR* data)
{
    return pick({need(text)}, to<&CHVTKWrap::Base64Decode>(text, data), to<&CGPKIWrap::Base64Decode>(text, data));
}

int CWrapperAPI::PEMEncode(int kind, BINSTR* data, BINSTR* text)
{
    return pick({need(data)}, to<&CHVTKWrap::PEMEncode>(kind, data, text), absent);
}

int CWrapperAPI::PEMDecode(BINSTR* text, BINSTR* data)
{
    return pick({need(data)}, to<&CHVTKWrap::PEMDecode>(text, data), absent);
}

// Exports

int Base64Encode(void* handle, BINSTR* data, BINSTR* text)
{
    return via(handle, &CWrapperAPI::Base64Encode, data, text);
}

int Base64Decode(void* handle, BINSTR* text, BINSTR* data)
{
    return via(handle, &CWrapperAPI::Base64Decode, text, data);
}

int PEMEncode(void* handle, int kind, BINSTR* data, BINSTR* text)
{
    return via(handle, &CWrapperAPI::PEMEncode, kind, data, text);
}

int PEMDecode(void* handle, BINSTR* text, BINSTR* data) { return via(handle, &CWrapperAPI::PEMDecode, text, data); }
