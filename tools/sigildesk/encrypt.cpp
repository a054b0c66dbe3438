// encrypt, decrypt: CMS EnvelopedData.
#include "commands.h"
#include "files.h"
#include "keys.h"
#include "selection.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace host {

namespace {

constexpr Words noRecipient{"--to names nobody", "--to로 받는 사람을 지정하십시오"};
constexpr Words notForThisKey{"{} is not for a key of {}", "{} 파일은 {}의 키로 풀 수 없습니다"};
constexpr char encryptedEnding[] = ".p7e";

struct Cipher {
    const char* name;
    int code;
};
constexpr Cipher ciphers[] = {{"aes256", SIGIL_TK_CIPHER_AES256}, {"aes192", SIGIL_TK_CIPHER_AES192},
    {"aes128", SIGIL_TK_CIPHER_AES128}, {"aria256", SIGIL_TK_CIPHER_ARIA256}, {"aria192", SIGIL_TK_CIPHER_ARIA192},
    {"aria128", SIGIL_TK_CIPHER_ARIA128}, {"seed", SIGIL_TK_CIPHER_SEED}, {"3des", SIGIL_TK_CIPHER_3DES}};

Cipher cipherOf(const Arguments& arguments)
{
    for (const Cipher& cipher : ciphers)
        if (arguments.text("--cipher") == cipher.name)
            return cipher;
    return ciphers[0];
}

/** For whom a message can be encrypted: the key-management certificate is there for that. */
const std::string& encryptionCertificate(const Certificate& certificate)
{
    return certificate.kmDer.empty() ? certificate.der : certificate.kmDer;
}

std::string withoutEnding(const std::string& file)
{
    constexpr std::string_view ending = encryptedEnding;
    return file.size() > ending.size() && file.ends_with(ending) ? file.substr(0, file.size() - ending.size())
                                                                 : file + ".plain";
}

/** Opens a message with the key of one pair. @return a result of the library */
int open(const Crypto& crypto, const Certificate& certificate, Pair pair, Secret& password, Bytes& message,
    Bytes& content)
{
    Bytes key(crypto.handle());
    Bytes recipient(crypto.handle());
    const int code = unlockWith(crypto, certificate, pair, password, key);
    if (code != SIGIL_SUCCESS)
        return code;
    setCertificate(crypto, certificate, pair, recipient);
    return CMSProcessEnvelopedData(crypto.handle(), recipient.get(), key.get(), message.get(), content.get());
}

} // namespace

int runEncrypt(Session& session)
{
    const std::string file = session.arguments.text("FILE");
    const std::vector<std::string> names = session.arguments.all("--to");
    if (names.empty())
        throw Failure(wrongUse, "wrong_use", noRecipient);
    mustExist(file);
    const Cipher cipher = cipherOf(session.arguments);
    const Crypto crypto(session);
    Bytes recipients(crypto.handle());
    std::vector<std::string> certificates;
    Json recipientList = Json::array();
    for (const std::string& name : names) {
        const Certificate recipient = chosen(session, name);
        certificates.push_back(encryptionCertificate(recipient));
        recipientList.push_back(jsonOf(recipient));
    }
    WrittenFile target(session, outputPath(session, file + encryptedEnding));
    Bytes content(crypto.handle());
    Bytes message(crypto.handle());
    setList(session, crypto, certificates, recipients);
    set(crypto, content, readFile(file));
    crypto.check(CMSMakeEnvDataWithMultiRec(
        crypto.handle(), SIGIL_TK_ENVELOPE_ISSUER, recipients.get(), content.get(), cipher.code, message.get()));
    target.write(view(message));
    target.commit();
    session.output.document({{"file", target.path()}, {"cipher", cipher.name}, {"recipients", recipientList}});
    session.output.line(target.path());
    return done;
}

int runDecrypt(Session& session)
{
    const std::string file = session.arguments.text("FILE");
    mustExist(file);
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    mustHave(certificate, Pair::Sign);
    WrittenFile target(session, outputPath(session, withoutEnding(file)));
    const Crypto crypto(session);
    Bytes message(crypto.handle());
    Bytes content(crypto.handle());
    set(crypto, message, readFile(file));
    std::vector<Pair> pairs = pairsOf(certificate);
    std::reverse(pairs.begin(), pairs.end()); // the key-management pair is there for this
    const int code = withPassword(session, certificate.name, [&](Secret& password) {
        int result = SIGIL_TK_CMS_NOBODY;
        for (const Pair pair : pairs)
            if (result == SIGIL_TK_CMS_NOBODY)
                result = open(crypto, certificate, pair, password, message, content);
        return result;
    });
    if (code == SIGIL_TK_CMS_NOBODY)
        throw Failure(no, "not_a_recipient", notForThisKey, {file, certificate.name});
    crypto.check(code);
    target.write(view(content));
    target.commit();
    session.output.document({{"file", target.path()}, {"certificate", jsonOf(certificate)}});
    session.output.line(target.path());
    return done;
}

} // namespace host
