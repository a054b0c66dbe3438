// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/messages.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace toolkit_test {

const Workshop& messageWorkshop()
{
    static const Workshop made;
    static const bool ready = [] {
        const std::string both =
            "keyUsage=digitalSignature,keyEncipherment,keyAgreement\nsubjectKeyIdentifier=hash\n"
            "authorityKeyIdentifier=keyid\nextendedKeyUsage=emailProtection\nsubjectAltName=email:";
        made.certificate("root", "/CN=root",
            "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=hash\nkeyUsage=keyCertSign,cRLSign");
        made.certificate("rsa", "/CN=rsa", both + "rsa@example", "root");
        made.certificate("other", "/CN=other", both + "other@example", "root");
        made.certificate(
            "ec", "/CN=ec", both + "ec@example", "root", "-days 365", "ec -pkeyopt ec_paramgen_curve:P-256");
        made.certificate(
            "pss", "/CN=pss", both + "pss@example", "root", "-days 365", "rsa-pss -pkeyopt rsa_keygen_bits:2048");
        made.certificate("encipher", "/CN=encipher", "keyUsage=keyEncipherment\nsubjectKeyIdentifier=none", "root");
        return true;
    }();
    EXPECT_TRUE(ready);
    return made;
}

std::string MessageTest::nameOf(const std::string& certificate)
{
    run("openssl x509 -noout -subject -in " + certificate);
    const std::string line = read("output.txt");
    const std::size_t begin = line.find("CN");
    return line.substr(begin, line.find('\n') - begin);
}

std::string MessageTest::listOf(const std::string& names)
{
    std::istringstream words(names);
    std::string content;
    for (std::string name; words >> name;)
        content += file(name + ".crt");
    const auto octet = [&](int shift) { return static_cast<char>(content.size() >> shift); };
    return std::string("\x30\x83") + octet(16) + octet(8) + octet(0) + content;
}

std::string MessageTest::octetsIn(const std::string& der, int size)
{
    const std::string head{'\x04', '\x82', static_cast<char>(size >> 8), static_cast<char>(size)};
    const std::size_t at = der.rfind(head);
    return at == std::string::npos ? std::string() : der.substr(at + head.size(), static_cast<std::size_t>(size));
}

void MessageTest::makeNssDatabase()
{
    if (messageWorkshop().tryRun("test -d nss") == 0)
        return;
    run("mkdir nss && certutil -N -d nss --empty-password && certutil -A -d nss -n root -t CT,CT,CT -i root.pem");
    for (const std::string name : {"rsa", "other", "ec"})
        run("openssl pkcs12 -export -in " + name + ".pem -inkey " + name + ".key.pem -name " + name +
            " -passout pass:x -out " + name + ".p12 && pk12util -i " + name + ".p12 -d nss -W x -K ''");
}

std::string element(char tag, const std::string& body)
{
    const auto octet = [&](int shift) { return static_cast<char>(body.size() >> shift); };
    return std::string{tag, '\x83', octet(16), octet(8), octet(0)} + body;
}

std::vector<std::string> children(const std::string& der)
{
    const auto parse = [](const std::string& bytes, std::size_t at) {
        std::size_t length = static_cast<unsigned char>(bytes[at + 1]);
        std::size_t head = 2;
        if (length >= 0x80) {
            head += length & 0x7F;
            length = 0;
            for (std::size_t i = 2; i < head; ++i)
                length = length << 8 | static_cast<unsigned char>(bytes[at + i]);
        }
        return std::pair(head, length);
    };
    std::vector<std::string> out;
    for (std::size_t at = parse(der, 0).first; at < der.size();) {
        const auto [head, length] = parse(der, at);
        out.push_back(der.substr(at, head + length));
        at += head + length;
    }
    return out;
}

std::string replaced(const std::string& der, const std::string& old, const std::string& other)
{
    constexpr unsigned constructed = 0x20;
    if (der == old)
        return other;
    if ((static_cast<unsigned char>(der[0]) & constructed) == 0)
        return der;
    std::string body;
    for (const std::string& child : children(der))
        body += replaced(child, old, other);
    return element(der[0], body);
}

bool isMessageCode(int code)
{
    constexpr std::array codes{SIGIL_TK_OK, SIGIL_TK_ALGORITHM, SIGIL_TK_DECRYPT, SIGIL_TK_SIGNATURE,
        SIGIL_TK_CERT_MALFORMED, SIGIL_TK_CMS_MALFORMED, SIGIL_TK_CMS_CONTENT, SIGIL_TK_CMS_NOBODY,
        SIGIL_TK_CMS_TYPE};
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

std::string namingItsHashOften(const std::string& message)
{
    const std::string hash = fromHex("300b0609608648016503040201");
    std::vector<std::string> fields = children(children(children(message)[1])[0]);
    EXPECT_EQ(children(fields[1]).size(), 1U);
    std::string hashes;
    for (int i = 0; i < 40'000; ++i)
        hashes += hash;
    fields[1] = element('\x31', hashes);
    std::string body;
    for (const std::string& field : fields)
        body += field;
    return element('\x30', children(message)[0] + element('\xA0', element('\x30', body)));
}

const std::string FaceMessages::content = "the content\r\nof a message\n";
const std::string FaceMessages::sessionKeyHex = "000102030405060708090a0b0c0d0e0f";

std::string FaceMessages::sign(const std::string& signer, int option, const std::string& what)
{
    return make([&](BINSTR* out) {
        ByteString certificate(toolkit, file(signer + ".crt"));
        ByteString key(toolkit, file(signer + ".key"));
        ByteString bytes(toolkit, what);
        return hvtk()
            ? toolkit("CMS_MakeSignedData", option, certificate.get(), key.get(), bytes.get(), text(time), out)
            : toolkit("CMS_MakeSignedData", certificate.get(), key.get(), bytes.get(), text(time), out);
    });
}

std::string FaceMessages::addSigner(const std::string& signer, const std::string& message, int option)
{
    return make([&](BINSTR* out) {
        ByteString certificate(toolkit, file(signer + ".crt"));
        ByteString key(toolkit, file(signer + ".key"));
        ByteString bytes(toolkit, message);
        return hvtk() ? toolkit("CMS_MakeSignedDataWithAddSigner", option, certificate.get(), key.get(),
                            bytes.get(), text(time), out)
                      : toolkit("CMS_MakeSignedDataWithAddSigner", certificate.get(), key.get(), bytes.get(),
                            text(time), out);
    });
}

int FaceMessages::process(const std::string& message, ByteString& data, int option, int* count)
{
    int ignored = 0;
    ByteString bytes(toolkit, message);
    int* const out = count ? count : &ignored;
    return hvtk() ? toolkit("CMS_ProcessSignedData", option, bytes.get(), data.get(), out)
                  : toolkit("CMS_ProcessSignedData2", bytes.get(), data.get(), out);
}

std::string FaceMessages::processed(const std::string& message, const std::string& detached)
{
    ByteString data(toolkit, detached);
    const int code = process(message, data);
    return code == 0 ? data.bytes() : "code " + std::to_string(code);
}

std::string FaceMessages::signerSubject(int index)
{
    ByteString certificate(toolkit);
    std::array<char, 25> when{};
    if (const int code =
            toolkit(hvtk() ? "CMS_GetSignerCert" : "CMS_GetSigner", index, certificate.get(), when.data()))
        return "code " + std::to_string(code);
    write("got.crt", certificate.bytes());
    return nameOf("got.crt") + " " + when.data();
}

std::string FaceMessages::envelope(const std::string& recipients, int cipher, int option, const std::string& what)
{
    return make([&](BINSTR* out) {
        ByteString bytes(toolkit, what);
        const bool several = recipients.find(' ') != std::string::npos;
        ByteString certificates(toolkit, several ? listOf(recipients) : file(recipients + ".crt"));
        const std::string name = several ? "CMS_MakeEnvelopedDataWithMultiRecipients" : "CMS_MakeEnvelopedData";
        return hvtk() ? toolkit(name, option, certificates.get(), bytes.get(), cipher, out)
                      : toolkit(name, certificates.get(), bytes.get(), cipher, out);
    });
}

std::string FaceMessages::opened(const std::string& recipient, const std::string& message)
{
    return make([&](BINSTR* out) {
        ByteString certificate(toolkit, file(recipient + ".crt"));
        ByteString key(toolkit, file(recipient + ".key"));
        ByteString bytes(toolkit, message);
        return toolkit("CMS_ProcessEnvelopedData", certificate.get(), key.get(), bytes.get(), out);
    });
}

void FaceMessages::setSessionKey(int cipher)
{
    ByteString key(toolkit, fromHex(sessionKeyHex));
    ByteString vector(toolkit, std::string(16, 'v'));
    ASSERT_EQ(toolkit("CRYPT_SetKeyAndIV", cipher, key.get(), vector.get()), 0) << toolkit.errorText();
}

std::string FaceMessages::encrypted(const std::string& what)
{
    return make([&](BINSTR* out) {
        ByteString bytes(toolkit, what);
        ByteString none(toolkit);
        return hvtk() ? toolkit("CMS_EncryptData", 0, none.get(), bytes.get(), 0, out)
                      : toolkit("CMS_MakeEncryptedData", bytes.get(), out);
    });
}

std::string FaceMessages::decrypted(const std::string& message, const std::string& key)
{
    return make([&](BINSTR* out) {
        ByteString bytes(toolkit, message);
        ByteString raw(toolkit, key);
        return toolkit("CMS_ProcessEncryptedData", raw.get(), bytes.get(), out);
    });
}

std::string faceName(const testing::TestParamInfo<const char*>& face) { return std::string(face.param, 4); }

} // namespace toolkit_test
