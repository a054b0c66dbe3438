// Universal view, verification and decryption.

#include "facade/dispatch.h"

#include <sigildesk/crypto/uni.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::UNIViewCert(BINSTR* certificate, char* text)
{
    return pick({need(certificate)}, to<&CHVTKWrap::UNIViewCert>(certificate, text), absent);
}

int CWrapperAPI::UNIVerifySignData(BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return pick({need(message)}, to<&CHVTKWrap::UNIVerifySignData>(message, data, certificate), absent);
}

int CWrapperAPI::UNIDecryptEnvData(BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return pick({need(certificate), need(privateKey), need(message)},
        to<&CHVTKWrap::UNIDecryptEnvData>(certificate, privateKey, message, data), absent);
}

// Exports

int UNIViewCert(void* handle, BINSTR* certificate, char* text)
{
    return via(handle, &CWrapperAPI::UNIViewCert, certificate, text);
}

int UNIVerifySignData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return via(handle, &CWrapperAPI::UNIVerifySignData, message, data, certificate);
}

int UNIDecryptEnvData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return via(handle, &CWrapperAPI::UNIDecryptEnvData, certificate, privateKey, message, data);
}
