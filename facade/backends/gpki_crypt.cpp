// Cryptographic primitives of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::CryptGenRandom(int length, BINSTR* random)
{
    return m_toolkit.call("GPKI_CRYPT_GenRandom", {}, length, random);
}

int CGPKIWrap::CryptGenKeyAndIV(int algorithm) { return m_toolkit.call("GPKI_CRYPT_GenKeyAndIV", {}, algorithm); }

int CGPKIWrap::CryptSetKeyAndIV(int algorithm, BINSTR* key, BINSTR* iv)
{
    return m_toolkit.call("GPKI_CRYPT_SetKeyAndIV", {need(key), need(iv)}, algorithm, key, iv);
}

int CGPKIWrap::CryptGetKeyAndIV(int* algorithm, BINSTR* key, BINSTR* iv)
{
    return m_toolkit.call("GPKI_CRYPT_GetKeyAndIV", {}, algorithm, key, iv);
}

int CGPKIWrap::CryptClearKeyAndIV() { return m_toolkit.call("GPKI_CRYPT_ClearKeyAndIV", {}); }

int CGPKIWrap::CryptEncrypt(BINSTR* data, BINSTR* cipher)
{
    return m_toolkit.call("GPKI_CRYPT_Encrypt", {need(data)}, data, cipher);
}

int CGPKIWrap::CryptDecrypt(BINSTR* cipher, BINSTR* data)
{
    return m_toolkit.call("GPKI_CRYPT_Decrypt", {need(cipher)}, cipher, data);
}

int CGPKIWrap::CryptEncryptFile(char* inputFile, char* outputFile)
{
    return m_toolkit.call("GPKI_CRYPT_Encrypt_File", {need(inputFile)}, inputFile, outputFile);
}

int CGPKIWrap::CryptDecryptFile(char* inputFile, char* outputFile)
{
    return m_toolkit.call("GPKI_CRYPT_Decrypt_File", {need(inputFile)}, inputFile, outputFile);
}

int CGPKIWrap::CryptSign(BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature)
{
    return m_toolkit.call("GPKI_CRYPT_Sign", {need(certificate), need(privateKey), need(data)}, certificate,
        privateKey, hash, data, signature);
}

int CGPKIWrap::CryptVerify(BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return m_toolkit.call(
        "GPKI_CRYPT_Verify", {need(certificate), need(data), need(signature)}, certificate, hash, data, signature);
}

int CGPKIWrap::CryptVerifyFile(BINSTR* certificate, int hash, char* dataFile, char* signatureFile)
{
    return m_toolkit.call("GPKI_CRYPT_Verify_File", {need(certificate), need(dataFile), need(signatureFile)},
        certificate, hash, dataFile, signatureFile);
}

int CGPKIWrap::CryptAsymEncrypt(int option, BINSTR* key, BINSTR* data, BINSTR* cipher)
{
    return m_toolkit.call("GPKI_CRYPT_AsymEncrypt", {need(key), need(data)}, option, key, data, cipher);
}

int CGPKIWrap::CryptAsymDecrypt(int option, BINSTR* key, BINSTR* cipher, BINSTR* data)
{
    return m_toolkit.call("GPKI_CRYPT_AsymDecrypt", {need(key), need(cipher)}, option, key, cipher, data);
}

int CGPKIWrap::CryptHash(int hash, BINSTR* data, BINSTR* digest)
{
    return m_toolkit.call("GPKI_CRYPT_Hash", {need(data)}, hash, data, digest);
}

int CGPKIWrap::CryptGenMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return m_toolkit.call("GPKI_CRYPT_GenMAC", {need(password), need(data)}, algorithm, password, data, mac);
}

int CGPKIWrap::CryptVerifyMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return m_toolkit.call("GPKI_CRYPT_VerifyMAC", {need(password), need(data)}, algorithm, password, data, mac);
}

int CGPKIWrap::CryptSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile)
{
    return m_toolkit.call("GPKI_CRYPT_Sign_File",
        {need(certificate), need(privateKey), need(inputFile), need(outputFile)}, certificate, privateKey, hash,
        inputFile, outputFile);
}
