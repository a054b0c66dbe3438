// Private keys.

#include "facade/dispatch.h"

#include <sigildesk/crypto/prikey.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::PriKeyEncrypt(int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey)
{
    return pick({need(password), need(privateKey)},
        to<&CHVTKWrap::PriKeyEncrypt>(algorithm, password, privateKey, encryptedKey),
        to<&CGPKIWrap::PriKeyEncrypt>(algorithm, password, privateKey, encryptedKey));
}

int CWrapperAPI::PriKeyDecrypt(char* password, BINSTR* encryptedKey, BINSTR* privateKey)
{
    return pick({need(password), need(encryptedKey)},
        to<&CHVTKWrap::PriKeyDecrypt>(password, encryptedKey, privateKey),
        to<&CGPKIWrap::PriKeyDecrypt>(password, encryptedKey, privateKey));
}

int CWrapperAPI::PriKeyChangePasswd(char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey)
{
    return pick({need(oldPassword), need(newPassword), need(encryptedKey)},
        to<&CHVTKWrap::PriKeyChangePasswd>(oldPassword, newPassword, encryptedKey, changedKey),
        to<&CGPKIWrap::PriKeyChangePasswd>(oldPassword, newPassword, encryptedKey, changedKey));
}

int CWrapperAPI::PriKeyCheckKeyPair(BINSTR* certificate, BINSTR* privateKey)
{
    return pick({need(certificate), need(privateKey)}, to<&CHVTKWrap::PriKeyCheckKeyPair>(certificate, privateKey),
        to<&CGPKIWrap::PriKeyCheckKeyPair>(certificate, privateKey));
}

// Exports

int PriKeyEncrypt(void* handle, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey)
{
    return via(handle, &CWrapperAPI::PriKeyEncrypt, algorithm, password, privateKey, encryptedKey);
}

int PriKeyDecrypt(void* handle, char* password, BINSTR* encryptedKey, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::PriKeyDecrypt, password, encryptedKey, privateKey);
}

int PriKeyChangePasswd(void* handle, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey)
{
    return via(handle, &CWrapperAPI::PriKeyChangePasswd, oldPassword, newPassword, encryptedKey, changedKey);
}

int PriKeyCheckKeyPair(void* handle, BINSTR* certificate, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::PriKeyCheckKeyPair, certificate, privateKey);
}
