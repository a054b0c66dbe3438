#include "tests/toolkit/messages.h"

#include <sstream>

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

} // namespace toolkit_test
