// Wireless PKI.

#include "facade/dispatch.h"

#include <sigildesk/crypto/wpki.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::WPKISignData(BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message)
{
    return pick({need(certificate), need(privateKey), need(data)},
        to<&CHVTKWrap::WPKISignData>(certificate, privateKey, data, message), absent);
}

int CWrapperAPI::WPKIVerifyData(BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return pick({need(message)}, to<&CHVTKWrap::WPKIVerifyData>(message, data, certificate), absent);
}

int CWrapperAPI::WPKIEncryptData(
    BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient, BINSTR* data, BINSTR* message)
{
    return pick({need(certificate), need(privateKey), need(recipient), need(data)},
        to<&CHVTKWrap::WPKIEncryptData>(certificate, privateKey, algorithm, recipient, data, message), absent);
}

int CWrapperAPI::WPKIDecryptData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return pick({need(certificate), need(privateKey), need(message)},
        to<&CHVTKWrap::WPKIDecryptData>(certificate, privateKey, message, data), absent);
}

int CWrapperAPI::WPKIVerifyCert(BINSTR* certificate)
{
    return pick({need(certificate)}, to<&CHVTKWrap::WPKIVerifyCert>(certificate), absent);
}

// Exports

int WPKISignData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message)
{
    return via(handle, &CWrapperAPI::WPKISignData, certificate, privateKey, data, message);
}

int WPKIVerifyData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::WPKIVerifyData, message, data, certificate);
}

int WPKIEncryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient,
    BINSTR* data, BINSTR* message)
{
    return via(handle, &CWrapperAPI::WPKIEncryptData, certificate, privateKey, algorithm, recipient, data, message);
}

int WPKIDecryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return via(handle, &CWrapperAPI::WPKIDecryptData, certificate, privateKey, message, data);
}

int WPKIVerifyCert(void* handle, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::WPKIVerifyCert, certificate);
}
