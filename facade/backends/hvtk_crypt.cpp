// Cryptographic primitives of the maker toolkit.

#include "facade/backends/hvtk_wrap.h"

using namespace sigil;

int CHVTKWrap::CRYPTSetRSAVersion(int version) { return m_toolkit.call("HVTK_CRYPT_SetRSAVersion", {}, version); }

int CHVTKWrap::CRYPTSetPaddingType(int padding) { return m_toolkit.call("HVTK_CRYPT_SetPaddingType", {}, padding); }

int CHVTKWrap::CRYPTSetEnvChangeIV() { return m_toolkit.call("HVTK_CRYPT_SetEnvChangeIV", {}); }

int CHVTKWrap::CRYPTGenRandom(int length, BINSTR* random)
{
    return m_toolkit.call("HVTK_CRYPT_GenRandom", {}, length, random);
}

int CHVTKWrap::CRYPTGenKeyPair(int bits, BINSTR* publicKey, BINSTR* privateKey)
{
    return m_toolkit.call("HVTK_CRYPT_GenKeyPair", {}, bits, publicKey, privateKey);
}

int CHVTKWrap::CRYPTGenKeyAndIV(int algorithm) { return m_toolkit.call("HVTK_CRYPT_GenKeyAndIV", {}, algorithm); }

int CHVTKWrap::CRYPTSetKeyAndIV(int algorithm, BINSTR* key, BINSTR* iv)
{
    return m_toolkit.call("HVTK_CRYPT_SetKeyAndIV", {need(key), need(iv)}, algorithm, key, iv);
}

int CHVTKWrap::CRYPTGetKeyAndIV(int* algorithm, BINSTR* key, BINSTR* iv)
{
    return m_toolkit.call("HVTK_CRYPT_GetKeyAndIV", {}, algorithm, key, iv);
}

int CHVTKWrap::CRYPTClearKeyAndIV() { return m_toolkit.call("HVTK_CRYPT_ClearKeyAndIV", {}); }

int CHVTKWrap::CRYPTEncrypt(BINSTR* data, BINSTR* cipher)
{
    return m_toolkit.call("HVTK_CRYPT_Encrypt", {need(data)}, data, cipher);
}

int CHVTKWrap::CRYPTDecrypt(BINSTR* cipher, BINSTR* data)
{
    return m_toolkit.call("HVTK_CRYPT_Decrypt", {need(cipher)}, cipher, data);
}

int CHVTKWrap::CRYPTEncryptFile(char* inputFile, char* outputFile)
{
    return m_toolkit.call("HVTK_CRYPT_EncryptFile", {need(inputFile)}, inputFile, outputFile);
}

int CHVTKWrap::CRYPTDecryptFile(char* inputFile, char* outputFile)
{
    return m_toolkit.call("HVTK_CRYPT_DecryptFile", {need(inputFile)}, inputFile, outputFile);
}

int CHVTKWrap::CRYPTSign(BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature)
{
    return m_toolkit.call("HVTK_CRYPT_Sign", {need(certificate), need(privateKey), need(data)}, certificate,
        privateKey, hash, data, signature);
}

int CHVTKWrap::CRYPTVerify(BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return m_toolkit.call(
        "HVTK_CRYPT_Verify", {need(certificate), need(data), need(signature)}, certificate, hash, data, signature);
}

int CHVTKWrap::CRYPTVerifyFile(BINSTR* certificate, int hash, char* dataFile, char* signatureFile)
{
    return m_toolkit.call("HVTK_CRYPT_VerifyFile", {need(certificate), need(dataFile), need(signatureFile)},
        certificate, hash, dataFile, signatureFile);
}

int CHVTKWrap::CRYPTAsymEncrypt(int option, BINSTR* key, BINSTR* data, BINSTR* cipher)
{
    return m_toolkit.call("HVTK_CRYPT_AsymEncrypt", {need(key), need(data)}, option, key, data, cipher);
}

int CHVTKWrap::CRYPTAsymDecrypt(int option, BINSTR* key, BINSTR* cipher, BINSTR* data)
{
    return m_toolkit.call("HVTK_CRYPT_AsymDecrypt", {need(key), need(cipher)}, option, key, cipher, data);
}

int CHVTKWrap::CRYPTHash(int hash, BINSTR* data, BINSTR* digest)
{
    return m_toolkit.call("HVTK_CRYPT_Hash", {need(data)}, hash, data, digest);
}

int CHVTKWrap::CRYPTHashFile(int hash, char* inputFile, BINSTR* digest)
{
    return m_toolkit.call("HVTK_CRYPT_HashFile", {need(inputFile)}, hash, inputFile, digest);
}

int CHVTKWrap::CRYPTGenMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return m_toolkit.call("HVTK_CRYPT_GenMAC", {need(password), need(data)}, algorithm, password, data, mac);
}

int CHVTKWrap::CRYPTGenMAC2(int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac)
{
    return m_toolkit.call("HVTK_CRYPT_GenMAC2", {need(key), need(data)}, algorithm, key, data, mac);
}

int CHVTKWrap::CRYPTVerifyMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return m_toolkit.call("HVTK_CRYPT_VerifyMAC", {need(password), need(data)}, algorithm, password, data, mac);
}

int CHVTKWrap::CRYPTGenSharedKey(int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key)
{
    return m_toolkit.call(
        "HVTK_CRYPT_GenSharedKey", {need(privateKey), need(publicKey)}, algorithm, privateKey, publicKey, key);
}

int CHVTKWrap::CRYPTSignFile(BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile)
{
    return m_toolkit.call("HVTK_CRYPT_SignFile",
        {need(certificate), need(privateKey), need(inputFile), need(outputFile)}, certificate, privateKey, hash,
        inputFile, outputFile);
}
