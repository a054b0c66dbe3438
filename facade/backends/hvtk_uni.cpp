// Universal view, verification and decryption of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::UNIViewCert(BINSTR* certificate, char* text)
{
    return m_toolkit.call("HVTK_UNI_ViewCert", {need(certificate)}, certificate, text);
}

int CHVTKWrap::UNIVerifySignData(BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_UNI_VerifySignData", {need(message)}, message, data, certificate);
}

int CHVTKWrap::UNIDecryptEnvData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return m_toolkit.call("HVTK_UNI_DecryptEnvData", {need(certificate), need(privateKey), need(message)},
        certificate, privateKey, message, data);
}
