// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// encrypt, decrypt: CMS EnvelopedData.
#include "commands.h"
#include "files.h"
#include "jobs/envelope.h"
#include "keys.h"
#include "selection.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace host {

namespace {

constexpr Words noRecipient{"--to names nobody", "--to로 받는 사람을 지정하십시오"};
constexpr Words notForThisKey{"{} is not for a key of {}", "{} 파일은 {}의 키로 풀 수 없습니다"};
constexpr Words encrypting{"Encrypting ...", "암호화합니다 ..."};
constexpr Words decrypting{"Decrypting ...", "암호를 풉니다 ..."};
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

std::string withoutEnding(const std::string& file)
{
    constexpr std::string_view ending = encryptedEnding;
    return file.size() > ending.size() && file.ends_with(ending) ? file.substr(0, file.size() - ending.size())
                                                                 : file + ".plain";
}

/** Opens a message with the key of one pair. @return a result of the library */
int open(const Session& session, const Crypto& crypto, const Certificate& certificate, Pair pair, Secret& password,
    std::string message, std::string content)
{
    Bytes key(crypto.handle());
    Bytes recipient(crypto.handle());
    const int code = unlockWith(crypto, certificate, pair, password, key);
    if (code != SIGIL_SUCCESS)
        return code;
    setCertificate(crypto, certificate, pair, recipient);
    const Progress progress(session.output, decrypting);
    return CMSProcessEnvDataFileWithContent(
        crypto.handle(), recipient.get(), key.get(), message.data(), nullptr, content.data());
}

/** For one recipient the government library makes an ordinary message piece by piece. The maker's keeps the encrypted
 *  content apart from its message then. */
void encryptFile(
    const Crypto& crypto, const std::string& certificate, std::string file, int cipher, const WrittenFile& target)
{
    Bytes recipient(crypto.handle());
    std::string message = target.temporaryPath();
    char nowhere[] = "";
    set(crypto, recipient, certificate);
    crypto.check(
        CMSMakeEnvelopedDataFile(crypto.handle(), recipient.get(), file.data(), cipher, message.data(), nowhere));
}

void encryptInto(const Session& session, const Crypto& crypto, const std::vector<std::string>& certificates,
    const std::string& file, int cipher, WrittenFile& target)
{
    const Progress progress(session.output, encrypting);
    if (session.toolkit == SIGIL_TOOLKIT_GPKI && certificates.size() == 1)
        encryptFile(crypto, certificates.front(), file, cipher, target);
    else
        target.write(encrypted(session, crypto, certificates, readContent(file), cipher));
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
    std::vector<std::string> certificates;
    Json recipientList = Json::array();
    for (const std::string& name : names) {
        const Certificate recipient = chosen(session, name);
        certificates.push_back(encryptionCertificate(recipient));
        recipientList.push_back(jsonOf(recipient));
    }
    WrittenFile target(session, outputPath(session, file + encryptedEnding));
    encryptInto(session, crypto, certificates, file, cipher.code, target);
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
    std::vector<Pair> pairs = pairsOf(certificate);
    std::reverse(pairs.begin(), pairs.end()); // the key-management pair is there for this
    const int code = withPassword(session, certificate.name, [&](Secret& password) {
        int result = SIGIL_TK_CMS_NOBODY;
        for (const Pair pair : pairs)
            if (result == SIGIL_TK_CMS_NOBODY)
                result = open(session, crypto, certificate, pair, password, file, target.temporaryPath());
        return result;
    });
    if (code == SIGIL_TK_CMS_NOBODY)
        throw Failure(no, "not_a_recipient", notForThisKey, {file, certificate.name});
    crypto.check(code);
    target.commit();
    session.output.document({{"file", target.path()}, {"certificate", jsonOf(certificate)}});
    session.output.line(target.path());
    return done;
}

} // namespace host
