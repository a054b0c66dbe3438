// Base64 and PEM of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::Base64Encode(BINSTR* data, BINSTR* text)
{
    return m_toolkit.call("HVTK_BASE64_Encode", {need(data)}, data, text);
}

int CHVTKWrap::Base64Decode(BINSTR* text, BINSTR* data)
{
    return m_toolkit.call("HVTK_BASE64_Decode", {need(text)}, text, data);
}

int CHVTKWrap::PEMEncode(int kind, BINSTR* data, BINSTR* text)
{
    return m_toolkit.call("HVTK_PEM_Encode", {need(data)}, kind, data, text);
}

int CHVTKWrap::PEMDecode(BINSTR* text, BINSTR* data)
{
    return m_toolkit.call("HVTK_PEM_Decode", {need(data)}, text, data);
}
