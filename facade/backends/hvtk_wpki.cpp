// Wireless PKI of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::WPKISignData(BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message)
{
    return m_toolkit.call("HVTK_WPKI_SignData", {need(certificate), need(privateKey), need(data)}, certificate,
        privateKey, data, message);
}

int CHVTKWrap::WPKIVerifyData(BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return m_toolkit.call("HVTK_WPKI_VerifyData", {need(message)}, message, data, certificate);
}

int CHVTKWrap::WPKIEncryptData(
    BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient, BINSTR* data, BINSTR* message)
{
    return m_toolkit.call("HVTK_WPKI_EncryptData",
        {need(certificate), need(privateKey), need(recipient), need(data)}, certificate, privateKey, algorithm,
        recipient, data, message);
}

int CHVTKWrap::WPKIDecryptData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return m_toolkit.call("HVTK_WPKI_DecryptData", {need(certificate), need(privateKey), need(message)},
        certificate, privateKey, message, data);
}

int CHVTKWrap::WPKIVerifyCert(BINSTR* certificate)
{
    return m_toolkit.call("HVTK_WPKI_VerifyCert", {need(certificate)}, certificate);
}
