// Private keys of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::PriKeyEncrypt(int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey)
{
    return m_toolkit.call(
        "GPKI_PRIKEY_Encrypt", {need(password), need(privateKey)}, algorithm, password, privateKey, encryptedKey);
}

int CGPKIWrap::PriKeyDecrypt(char* password, BINSTR* encryptedKey, BINSTR* privateKey)
{
    return m_toolkit.call(
        "GPKI_PRIKEY_Decrypt", {need(password), need(encryptedKey)}, password, encryptedKey, privateKey);
}

int CGPKIWrap::PriKeyChangePasswd(char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey)
{
    return m_toolkit.call("GPKI_PRIKEY_ChangePasswd", {need(oldPassword), need(newPassword), need(encryptedKey)},
        oldPassword, newPassword, encryptedKey, changedKey);
}

int CGPKIWrap::PriKeyCheckKeyPair(BINSTR* certificate, BINSTR* privateKey)
{
    return m_toolkit.call(
        "GPKI_PRIKEY_CheckKeyPair", {need(certificate), need(privateKey)}, certificate, privateKey);
}
