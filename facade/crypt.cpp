// Cryptographic primitives.

#include "facade/dispatch.h"

#include <sigildesk/crypto/crypt.h>

using namespace sigil;

// Operations: what is required, what the maker toolkit receives, what the GPKI library receives

int CWrapperAPI::CRYPTSetRSAVersion(int version)
{
    return pick({}, to<&CHVTKWrap::CRYPTSetRSAVersion>(version), absent);
}

int CWrapperAPI::CRYPTSetPaddingType(int padding)
{
    return pick({}, to<&CHVTKWrap::CRYPTSetPaddingType>(padding), absent);
}

int CWrapperAPI::CRYPTSetEnvChangeIV() { return pick({}, to<&CHVTKWrap::CRYPTSetEnvChangeIV>(), absent); }

int CWrapperAPI::CRYPTGenRandom(int length, BINSTR* random)
{
    return pick({}, to<&CHVTKWrap::CRYPTGenRandom>(length, random), to<&CGPKIWrap::CryptGenRandom>(length, random));
}

int CWrapperAPI::CRYPTGenKeyPair(int bits, BINSTR* publicKey, BINSTR* privateKey)
{
    return pick({}, to<&CHVTKWrap::CRYPTGenKeyPair>(bits, publicKey, privateKey), absent);
}

int CWrapperAPI::CRYPTGenKeyAndIV(int algorithm)
{
    return pick({}, to<&CHVTKWrap::CRYPTGenKeyAndIV>(algorithm), to<&CGPKIWrap::CryptGenKeyAndIV>(algorithm));
}

int CWrapperAPI::CRYPTSetKeyAndIV(int algorithm, BINSTR* key, BINSTR* iv)
{
    return pick({need(key), need(iv)}, to<&CHVTKWrap::CRYPTSetKeyAndIV>(algorithm, key, iv),
        to<&CGPKIWrap::CryptSetKeyAndIV>(algorithm, key, iv));
}

int CWrapperAPI::CRYPTGetKeyAndIV(int* algorithm, BINSTR* key, BINSTR* iv)
{
    return pick({}, to<&CHVTKWrap::CRYPTGetKeyAndIV>(algorithm, key, iv),
        to<&CGPKIWrap::CryptGetKeyAndIV>(algorithm, key, iv));
}

int CWrapperAPI::CRYPTClearKeyAndIV()
{
    return pick({}, to<&CHVTKWrap::CRYPTClearKeyAndIV>(), to<&CGPKIWrap::CryptClearKeyAndIV>());
}

int CWrapperAPI::CRYPTEncrypt(BINSTR* data, BINSTR* cipher)
{
    return pick(
        {need(data)}, to<&CHVTKWrap::CRYPTEncrypt>(data, cipher), to<&CGPKIWrap::CryptEncrypt>(data, cipher));
}

int CWrapperAPI::CRYPTDecrypt(BINSTR* cipher, BINSTR* data)
{
    return pick(
        {need(cipher)}, to<&CHVTKWrap::CRYPTDecrypt>(cipher, data), to<&CGPKIWrap::CryptDecrypt>(cipher, data));
}

int CWrapperAPI::CRYPTEncryptFile(char* inputFile, char* outputFile)
{
    return pick({need(inputFile)}, to<&CHVTKWrap::CRYPTEncryptFile>(inputFile, outputFile),
        to<&CGPKIWrap::CryptEncryptFile>(inputFile, outputFile));
}

int CWrapperAPI::CRYPTDecryptFile(char* inputFile, char* outputFile)
{
    return pick({need(inputFile)}, to<&CHVTKWrap::CRYPTDecryptFile>(inputFile, outputFile),
        to<&CGPKIWrap::CryptDecryptFile>(inputFile, outputFile));
}

int CWrapperAPI::CRYPTSign(BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature)
{
    return pick({need(certificate), need(privateKey), need(data)},
        to<&CHVTKWrap::CRYPTSign>(certificate, privateKey, hash, data, signature),
        to<&CGPKIWrap::CryptSign>(certificate, privateKey, hash, data, signature));
}

int CWrapperAPI::CRYPTVerify(BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return pick({need(certificate), need(data), need(signature)},
        to<&CHVTKWrap::CRYPTVerify>(certificate, hash, data, signature),
        to<&CGPKIWrap::CryptVerify>(certificate, hash, data, signature));
}

int CWrapperAPI::CRYPTVerifyFile(BINSTR* certificate, int hash, char* dataFile, char* signatureFile)
{
    return pick({need(certificate), need(dataFile), need(signatureFile)},
        to<&CHVTKWrap::CRYPTVerifyFile>(certificate, hash, dataFile, signatureFile),
        to<&CGPKIWrap::CryptVerifyFile>(certificate, hash, dataFile, signatureFile));
}

int CWrapperAPI::CRYPTAsymEncrypt(int option, BINSTR* key, BINSTR* data, BINSTR* cipher)
{
    return pick({need(key), need(data)}, to<&CHVTKWrap::CRYPTAsymEncrypt>(option, key, data, cipher),
        to<&CGPKIWrap::CryptAsymEncrypt>(option, key, data, cipher));
}

int CWrapperAPI::CRYPTAsymDecrypt(int option, BINSTR* key, BINSTR* cipher, BINSTR* data)
{
    return pick({need(key), need(cipher)}, to<&CHVTKWrap::CRYPTAsymDecrypt>(option, key, cipher, data),
        to<&CGPKIWrap::CryptAsymDecrypt>(option, key, cipher, data));
}

int CWrapperAPI::CRYPTHash(int hash, BINSTR* data, BINSTR* digest)
{
    return pick(
        {need(data)}, to<&CHVTKWrap::CRYPTHash>(hash, data, digest), to<&CGPKIWrap::CryptHash>(hash, data, digest));
}

int CWrapperAPI::CRYPTHashFile(int hash, char* inputFile, BINSTR* digest)
{
    return pick({need(inputFile)}, to<&CHVTKWrap::CRYPTHashFile>(hash, inputFile, digest), absent);
}

int CWrapperAPI::CRYPTGenMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return pick({need(password), need(data)}, to<&CHVTKWrap::CRYPTGenMAC>(algorithm, password, data, mac),
        to<&CGPKIWrap::CryptGenMAC>(algorithm, password, data, mac));
}

int CWrapperAPI::CRYPTGenMAC2(int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac)
{
    return pick({need(key), need(data)}, to<&CHVTKWrap::CRYPTGenMAC2>(algorithm, key, data, mac), absent);
}

int CWrapperAPI::CRYPTVerifyMAC(int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return pick({need(password), need(data)}, to<&CHVTKWrap::CRYPTVerifyMAC>(algorithm, password, data, mac),
        to<&CGPKIWrap::CryptVerifyMAC>(algorithm, password, data, mac));
}

int CWrapperAPI::CRYPTGenSharedKey(int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key)
{
    return pick({need(privateKey), need(publicKey)},
        to<&CHVTKWrap::CRYPTGenSharedKey>(algorithm, privateKey, publicKey, key), absent);
}

// Exports

int CRYPTSetRSAVersion(void* handle, int version) { return via(handle, &CWrapperAPI::CRYPTSetRSAVersion, version); }

int CRYPTSetPaddingType(void* handle, int padding)
{
    return via(handle, &CWrapperAPI::CRYPTSetPaddingType, padding);
}

int CRYPTSetEnvChangeIV(void* handle) { return via(handle, &CWrapperAPI::CRYPTSetEnvChangeIV); }

int CRYPTGenRandom(void* handle, int length, BINSTR* random)
{
    return via(handle, &CWrapperAPI::CRYPTGenRandom, length, random);
}

int CRYPTGenKeyPair(void* handle, int bits, BINSTR* publicKey, BINSTR* privateKey)
{
    return via(handle, &CWrapperAPI::CRYPTGenKeyPair, bits, publicKey, privateKey);
}

int CRYPTGenKeyAndIV(void* handle, int algorithm) { return via(handle, &CWrapperAPI::CRYPTGenKeyAndIV, algorithm); }

int CRYPTSetKeyAndIV(void* handle, int algorithm, BINSTR* key, BINSTR* iv)
{
    return via(handle, &CWrapperAPI::CRYPTSetKeyAndIV, algorithm, key, iv);
}

int CRYPTGetKeyAndIV(void* handle, int* algorithm, BINSTR* key, BINSTR* iv)
{
    return via(handle, &CWrapperAPI::CRYPTGetKeyAndIV, algorithm, key, iv);
}

int CRYPTClearKeyAndIV(void* handle) { return via(handle, &CWrapperAPI::CRYPTClearKeyAndIV); }

int CRYPTEncrypt(void* handle, BINSTR* data, BINSTR* cipher)
{
    return via(handle, &CWrapperAPI::CRYPTEncrypt, data, cipher);
}

int CRYPTDecrypt(void* handle, BINSTR* cipher, BINSTR* data)
{
    return via(handle, &CWrapperAPI::CRYPTDecrypt, cipher, data);
}

int CRYPTEncryptFile(void* handle, char* inputFile, char* outputFile)
{
    return via(handle, &CWrapperAPI::CRYPTEncryptFile, inputFile, outputFile);
}

int CRYPTDecryptFile(void* handle, char* inputFile, char* outputFile)
{
    return via(handle, &CWrapperAPI::CRYPTDecryptFile, inputFile, outputFile);
}

int CRYPTSign(void* handle, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature)
{
    return via(handle, &CWrapperAPI::CRYPTSign, certificate, privateKey, hash, data, signature);
}

int CRYPTVerify(void* handle, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return via(handle, &CWrapperAPI::CRYPTVerify, certificate, hash, data, signature);
}

int CRYPTVerifyFile(void* handle, BINSTR* certificate, int hash, char* dataFile, char* signatureFile)
{
    return via(handle, &CWrapperAPI::CRYPTVerifyFile, certificate, hash, dataFile, signatureFile);
}

int CRYPTAsymEncrypt(void* handle, int option, BINSTR* key, BINSTR* data, BINSTR* cipher)
{
    return via(handle, &CWrapperAPI::CRYPTAsymEncrypt, option, key, data, cipher);
}

int CRYPTAsymDecrypt(void* handle, int option, BINSTR* key, BINSTR* cipher, BINSTR* data)
{
    return via(handle, &CWrapperAPI::CRYPTAsymDecrypt, option, key, cipher, data);
}

int CRYPTHash(void* handle, int hash, BINSTR* data, BINSTR* digest)
{
    return via(handle, &CWrapperAPI::CRYPTHash, hash, data, digest);
}

int CRYPTHashFile(void* handle, int hash, char* inputFile, BINSTR* digest)
{
    return via(handle, &CWrapperAPI::CRYPTHashFile, hash, inputFile, digest);
}

int CRYPTGenMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return via(handle, &CWrapperAPI::CRYPTGenMAC, algorithm, password, data, mac);
}

int CRYPTGenMAC2(void* handle, int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac)
{
    return via(handle, &CWrapperAPI::CRYPTGenMAC2, algorithm, key, data, mac);
}

int CRYPTVerifyMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return via(handle, &CWrapperAPI::CRYPTVerifyMAC, algorithm, password, data, mac);
}

int CRYPTGenSharedKey(void* handle, int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key)
{
    return via(handle, &CWrapperAPI::CRYPTGenSharedKey, algorithm, privateKey, publicKey, key);
}
