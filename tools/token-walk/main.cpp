// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// token-walk LIBRARY-FOLDER ADDRESS TOKEN FILE OUT: has a key made on the token with this label and certified by the authority at
// this address, signs the file with it, and writes the signed message. The first line of its input is the secret that the
// authority gave, the second one the token's PIN.

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

/** A byte string of a handle. */
class Bytes {
public:
    explicit Bytes(void* crypto)
        : m_crypto(crypto)
    {
        HV_BINSTR_Create(m_crypto, &m_record);
    }
    ~Bytes() { HV_BINSTR_Delete(m_crypto, &m_record); }
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;

    BINSTR* get() { return &m_record; }
    std::string content() const
    {
        return {reinterpret_cast<const char*>(m_record.pData), static_cast<std::size_t>(m_record.nLength)};
    }

private:
    void* m_crypto;
    BINSTR m_record{};
};

/** Whether a step went well; says what did not. */
bool good(void* crypto, const char* step, int code)
{
    char words[512] = {};
    if (code != 0)
        HV_GetErrInfo2(crypto, sizeof words, words);
    if (code != 0)
        std::cerr << step << ": " << code << " " << words << "\n";
    return code == 0;
}

/** Finds the certificate on the token of the open session; its identifier is that of its key. */
bool findKey(void* crypto, const std::string& certificate, Bytes& id)
{
    int count = 0;
    int kind = 0;
    bool well = good(crypto, "PKCS11GetCertCnt", PKCS11GetCertCnt(crypto, &count));
    for (int i = 0; well && i < count; ++i) {
        Bytes found(crypto);
        HV_BINSTR_Delete(crypto, id.get());
        well = good(crypto, "PKCS11GetCertInfo", PKCS11GetCertInfo(crypto, i, &kind, id.get(), found.get()));
        if (well && found.content() == certificate)
            return true;
    }
    return false;
}

bool sign(void* crypto, Bytes& id, std::string text, Bytes& message)
{
    Bytes data(crypto);
    return HV_BINSTR_SetData(crypto, reinterpret_cast<unsigned char*>(text.data()), static_cast<int>(text.size()),
               data.get()) == 0 &&
        good(crypto, "PKCS11SignData", PKCS11SignData(crypto, id.get(), data.get(), message.get()));
}

bool walk(void* crypto, std::string address, std::string token, const std::string& text, Bytes& message)
{
    std::string secret;
    std::string pin;
    std::getline(std::cin, secret);
    std::getline(std::cin, pin);
    std::string reference = "demo";
    Bytes authority(crypto);
    Bytes certificate(crypto);
    Bytes id(crypto);
    return good(crypto, "PKCS11CMPCertRequest",
               PKCS11CMPCertRequest(crypto, address.data(), 0, reference.data(), secret.data(), pin.data(),
                   token.data(), authority.get(), certificate.get())) &&
        good(crypto, "PKCS11OpenSessionWithTokenName", PKCS11OpenSessionWithTokenName(crypto, token.data(), 0)) &&
        good(crypto, "PKCS11Login", PKCS11Login(crypto, pin.data())) &&
        findKey(crypto, certificate.content(), id) && sign(crypto, id, text, message);
}

std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 6) {
        std::cerr << "usage: token-walk LIBRARY-FOLDER ADDRESS TOKEN FILE OUT\n";
        return 2;
    }
    sigildesk::CryptoHandle crypto;
    const int code = sigildesk::initialise(crypto, 0, argv[1]);
    if (!good(crypto.get(), "HV_Initalize", code))
        return 1;
    Bytes message(crypto.get());
    if (!walk(crypto.get(), argv[2], argv[3], contentOf(argv[4]), message))
        return 1;
    std::ofstream out(argv[5], std::ios::binary);
    out << message.content() << std::flush;
    return out ? 0 : 1;
}
