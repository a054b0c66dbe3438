// Base64 and PEM of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::Base64Encode(BINSTR* data, BINSTR* text)
{
    return m_toolkit.call("GPKI_BASE64_Encode", {need(data)}, data, text);
}

int CGPKIWrap::Base64Decode(BINSTR* text, BINSTR* data)
{
    return m_toolkit.call("GPKI_BASE64_Decode", {need(text)}, text, data);
}
