// Private keys of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::PriKeyEncrypt(int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey)
{
    return m_toolkit.call(
        "HVTK_PRIKEY_Encrypt", {need(password), need(privateKey)}, algorithm, password, privateKey, encryptedKey);
}

int CHVTKWrap::PriKeyDecrypt(char* password, BINSTR* encryptedKey, BINSTR* privateKey)
{
    return m_toolkit.call(
        "HVTK_PRIKEY_Decrypt", {need(password), need(encryptedKey)}, password, encryptedKey, privateKey);
}

int CHVTKWrap::PriKeyChangePasswd(char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey)
{
    return m_toolkit.call("HVTK_PRIKEY_ChangePasswd", {need(oldPassword), need(newPassword), need(encryptedKey)},
        oldPassword, newPassword, encryptedKey, changedKey);
}

int CHVTKWrap::PriKeyCheckKeyPair(BINSTR* certificate, BINSTR* privateKey)
{
    return m_toolkit.call(
        "HVTK_PRIKEY_CheckKeyPair", {need(certificate), need(privateKey)}, certificate, privateKey);
}
