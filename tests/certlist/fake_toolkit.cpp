// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/certlist/fake_toolkit.h"

#include "tests/doubles/recorder.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

namespace fake {

std::map<std::string, std::string> directory;

namespace {

using doubles::answer;
using doubles::Call;
using doubles::contents;
using doubles::fill;

/** A function, so that tests may make certificates before main(). */
const Fields& ordinary()
{
    static const Fields fields = {
        {"version", "3"},
        {"serial", "1001"},
        {"algorithm", "sha256WithRSAEncryption"},
        {"subject", "cn=Hong,ou=personal,o=yessign,c=KR"},
        {"uid", "Hong"},
        {"key", "30 82 01 0A"},
        {"keyAlgorithm", "rsaEncryption"},
        {"keyLength", "2048 Bits"},
        {"usage", "digitalSignature, nonRepudiation"},
        {"crldp", "ldap://ds.example:389/ou=dp1"},
        {"issuer", "cn=yessignCA Class 1,ou=AccreditedCA,o=yessign,c=KR"},
        {"policy", "policy qualifiers"},
        {"policyId", "1 2 410 200005 1 1 1"},
        {"authKeyId", "A1 A2"},
        {"subKeyId", "B1 B2"},
        {"altName", "alternative name"},
        {"access", "http://ocsp.example"},
        {"notBefore", "2024-01-01 00:00:00"},
        {"notAfter", "2024-12-31 23:59:59"},
        {"pair", "P1"},
        {"idn", "0000001111111"},
    };
    return fields;
}

Fields loaded; // the toolkit's current certificate

Fields parse(const std::string& bytes)
{
    Fields fields;
    std::istringstream lines(bytes);
    for (std::string line; std::getline(lines, line);)
        if (const std::size_t equals = line.find('='); equals != line.npos)
            fields[line.substr(0, equals)] = line.substr(equals + 1);
    return fields;
}

/** An answer to (capacity, buffer). */
doubles::Answer writesField(const char* name)
{
    return [name](const Call& call) {
        const auto found = loaded.find(name);
        if (found == loaded.end())
            return parseError;
        std::snprintf(
            call.pointer<char>(1), static_cast<std::size_t>(call.integer(0)), "%s", found->second.c_str());
        return 0;
    };
}

std::vector<std::string> objects(const std::string& list)
{
    std::vector<std::string> found;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t colon = list.find(':', at);
        const std::size_t length = std::stoul(list.substr(at, colon - at));
        found.push_back(list.substr(colon + 1, length));
        at = colon + 1 + length;
    }
    return found;
}

int readFile(const Call& call)
{
    std::ifstream file(call.pointer<char>(0), std::ios::binary);
    if (!file)
        return fileError;
    fill(call.pointer<BINSTR>(1), std::string(std::istreambuf_iterator<char>(file), {}));
    return 0;
}

int writeFile(const Call& call)
{
    std::ofstream file(call.pointer<char>(0), std::ios::binary);
    file << contents(call.pointer<BINSTR>(1));
    return file.flush() ? 0 : writeError;
}

bool opens(const std::string& stored, const char* password)
{
    return stored.rfind("ENC(" + std::string(password) + ")", 0) == 0;
}

std::string opened(const std::string& stored) { return stored.substr(stored.find(')') + 1); }

int deleteKey(const Call& call)
{
    std::ifstream file(call.pointer<char>(1), std::ios::binary);
    const std::string stored{std::istreambuf_iterator<char>(file), {}};
    if (stored.rfind("ENC(", 0) == 0 && !opens(stored, call.pointer<char>(0)))
        return 2004;
    return std::remove(call.pointer<char>(1)) == 0 ? 0 : fileError;
}

int decrypt(const Call& call)
{
    const std::string stored = contents(call.pointer<BINSTR>(1));
    if (stored.rfind("ENC(", 0) != 0)
        return 2000;
    if (!opens(stored, call.pointer<char>(0)))
        return 2004;
    fill(call.pointer<BINSTR>(2), opened(stored));
    return 0;
}

int encrypt(const Call& call)
{
    fill(call.pointer<BINSTR>(3), encrypted(contents(call.pointer<BINSTR>(2)), call.pointer<char>(1)));
    return 0;
}

int changePassword(const Call& call)
{
    const std::string stored = contents(call.pointer<BINSTR>(2));
    if (!opens(stored, call.pointer<char>(0)))
        return 2004;
    fill(call.pointer<BINSTR>(3), encrypted(opened(stored), call.pointer<char>(1)));
    return 0;
}

int checkPair(const Call& call)
{
    const std::string pair = parse(contents(call.pointer<BINSTR>(0)))["pair"];
    return contents(call.pointer<BINSTR>(1)).rfind("KEY(" + pair + ")", 0) == 0 ? 0 : pairError;
}

int random(const Call& call)
{
    const std::string key = contents(call.pointer<BINSTR>(0));
    const std::size_t mark = key.find("R=");
    if (mark == key.npos)
        return 3500;
    fill(call.pointer<BINSTR>(1), key.substr(mark + 2));
    return 0;
}

int verifyIdentity(const Call& call)
{
    return parse(contents(call.pointer<BINSTR>(0)))["idn"] == call.pointer<char>(2) ? 0 : identityError;
}

int addObject(const Call& call)
{
    BINSTR* to = call.pointer<BINSTR>(1);
    replace(to, contents(to) + list({contents(call.pointer<BINSTR>(0))}));
    return 0;
}

int getObject(const Call& call)
{
    const auto all = objects(contents(call.pointer<BINSTR>(0)));
    if (call.integer(1) >= static_cast<int>(all.size()))
        return parseError;
    fill(call.pointer<BINSTR>(2), all[static_cast<std::size_t>(call.integer(1))]);
    return 0;
}

int importPfx(const Call& call)
{
    std::istringstream file(contents(call.pointer<BINSTR>(2)));
    std::string magic, password;
    std::getline(file, magic);
    std::getline(file, password);
    if (magic != "PFX")
        return parseError;
    if (password != call.pointer<char>(1))
        return 4505;
    std::size_t length = 0;
    file >> length;
    file.get();
    std::string certificates(length, '\0');
    file.read(certificates.data(), static_cast<std::streamsize>(length));
    replace(call.pointer<BINSTR>(3), certificates);
    replace(call.pointer<BINSTR>(4), std::string(std::istreambuf_iterator<char>(file), {}));
    return 0;
}

void installCertificates()
{
    answer("HVTK_CERT_Load", [](const Call& call) {
        loaded = parse(contents(call.pointer<BINSTR>(0)));
        return loaded.empty() ? parseError : 0;
    });
    answer("HVTK_CERT_Unload", [](const Call&) { return loaded.clear(), 0; });
    answer("HVTK_CERT_GetVersion", [](const Call& call) {
        if (!loaded.count("version"))
            return parseError;
        *call.pointer<int>(0) = std::atoi(loaded["version"].c_str());
        return 0;
    });
    const std::pair<const char*, const char*> getters[] = {{"SerialNum", "serial"},
        {"SignatureAlgorithm", "algorithm"}, {"SubjectName", "subject"}, {"UID", "uid"}, {"KeyUsage", "usage"},
        {"CRLDP", "crldp"}, {"IssuerName", "issuer"}, {"CertPolicy", "policy"}, {"CertPolicy_PolicyID", "policyId"},
        {"AuthKeyID", "authKeyId"}, {"SubKeyID", "subKeyId"}, {"SubjectAltName", "altName"}, {"AIA", "access"}};
    for (const auto& [getter, name] : getters)
        answer("HVTK_CERT_Get" + std::string(getter), writesField(name));
    answer("HVTK_CERT_GetPubKey", [](const Call& call) {
        std::snprintf(call.pointer<char>(1), 50, "%s", loaded["keyAlgorithm"].c_str());
        std::snprintf(
            call.pointer<char>(2), static_cast<std::size_t>(call.integer(0)), "%s", loaded["key"].c_str());
        return loaded.count("key") ? 0 : parseError;
    });
    answer("HVTK_CERT_GetPubKey2", [](const Call& call) {
        std::snprintf(call.pointer<char>(1), 20, "%s", loaded["keyLength"].c_str());
        fill(call.pointer<BINSTR>(2), loaded["key"]);
        return 0;
    });
    answer("HVTK_CERT_GetValidity", [](const Call& call) {
        if (!loaded.count("notAfter"))
            return parseError;
        std::snprintf(call.pointer<char>(0), 40, "%s", loaded["notBefore"].c_str());
        std::snprintf(call.pointer<char>(1), 40, "%s", loaded["notAfter"].c_str());
        return 0;
    });
    answer("HVTK_CERT_Verify", [](const Call& call) {
        return parse(contents(call.pointer<BINSTR>(0))).count("revoked") ? verifyError : 0;
    });
    answer("HVTK_HVAP_GetDataByURL", [](const Call& call) {
        const auto found = directory.find(call.pointer<char>(1));
        if (found == directory.end())
            return fileError;
        fill(call.pointer<BINSTR>(2), found->second);
        return 0;
    });
}

void installKeys()
{
    answer("HVTK_MEDIA_DISK_ReadFile", readFile);
    answer("HVTK_MEDIA_DISK_WriteFile", writeFile);
    answer("HVTK_MEDIA_DISK_DeletePriKey", deleteKey);
    answer("HVTK_MEDIA_DISK_DeleteCert",
        [](const Call& call) { return std::remove(call.pointer<char>(0)) == 0 ? 0 : fileError; });
    answer("HVTK_PRIKEY_Decrypt", decrypt);
    answer("HVTK_PRIKEY_Encrypt", encrypt);
    answer("HVTK_PRIKEY_ChangePasswd", changePassword);
    answer("HVTK_PRIKEY_CheckKeyPair", checkPair);
    answer("HVTK_VID_GetRandomFromPriKey", random);
    answer("HVTK_VID_Verify", verifyIdentity);
}

void installPfx()
{
    answer("HVTK_UTIL_AddObject", addObject);
    answer("HVTK_UTIL_GetObject", getObject);
    answer("HVTK_UTIL_GetObjectCount", [](const Call& call) {
        *call.pointer<int>(1) = static_cast<int>(objects(contents(call.pointer<BINSTR>(0))).size());
        return 0;
    });
    answer("HVTK_PFX_ImportMultiPair2", importPfx);
    answer("HVTK_PFX_Export", [](const Call& call) {
        fill(call.pointer<BINSTR>(4),
            pfx(call.pointer<char>(1), {contents(call.pointer<BINSTR>(2))}, {contents(call.pointer<BINSTR>(3))}));
        return 0;
    });
    answer("HVTK_PFX_ExportMultiPair", [](const Call& call) {
        fill(call.pointer<BINSTR>(4),
            pfx(call.pointer<char>(1), objects(contents(call.pointer<BINSTR>(2))),
                objects(contents(call.pointer<BINSTR>(3)))));
        return 0;
    });
}

} // namespace

std::string certificate(const Fields& changes)
{
    Fields fields = ordinary();
    for (const auto& [name, text] : changes) {
        if (text == "absent")
            fields.erase(name);
        else
            fields[name] = text;
    }
    std::string out;
    for (const auto& [name, text] : fields)
        out += name + "=" + text + "\n";
    return out;
}

std::string key(const std::string& pair) { return "KEY(" + pair + ")R=random of " + pair; }

std::string encrypted(const std::string& key, const std::string& password) { return "ENC(" + password + ")" + key; }

std::string list(const std::vector<std::string>& objects)
{
    std::string out;
    for (const std::string& object : objects)
        out += std::to_string(object.size()) + ":" + object;
    return out;
}

std::string pfx(
    const std::string& password, const std::vector<std::string>& certificates, const std::vector<std::string>& keys)
{
    const std::string certificateList = list(certificates);
    return "PFX\n" + password + "\n" + std::to_string(certificateList.size()) + "\n" + certificateList + list(keys);
}

int replace(BINSTR* record, const std::string& bytes)
{
    const int released = record->nLength > 0 ? doubles::release(record) : 0;
    fill(record, bytes);
    return released;
}

void install()
{
    doubles::reset();
    doubles::setErrorText("words of the toolkit");
    loaded.clear();
    directory.clear();
    installCertificates();
    installKeys();
    installPfx();
}

} // namespace fake
