// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/store/nss_database.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/tokens/token_certificates.h"
#include "toolkit/engine/x509/text.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace toolkit {
namespace {

constexpr const char* softoknFile = "libsoftokn3.so";
/** The module's slot for certificates and keys; another one is for mere computing. */
constexpr CK_SLOT_ID databaseSlot = 2;

/** CK_C_INITIALIZE_ARGS with what NSS added to it, in front of what is reserved. */
struct SoftoknArguments {
    CK_C_INITIALIZE_ARGS standard; ///< its pReserved is the parameters
    void* reserved;
};

Cryptoki* softokn()
{
    void* const library = dlopen(softoknFile, RTLD_NOW | RTLD_LOCAL);
    const auto list =
        library ? reinterpret_cast<CK_C_GetFunctionList>(dlsym(library, "NSC_GetFunctionList")) : nullptr;
    Cryptoki* module = nullptr;
    require(
        list && list(&module) == CKR_OK && module, SIGIL_TK_MEDIUM, std::string(softoknFile) + " is not installed");
    return module;
}

/** A text in the parameters of the module. */
std::string quotedText(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted.append(c == '\'' || c == '\\' ? "\\" : "").push_back(c);
    return quoted + "'";
}

/** The module's slot with the database in @p folder. */
Slot openDatabase(const std::string& folder, NssDatabase::Access access)
{
    // Else the module measures for a while how fast the disk is.
    setenv("NSS_SDB_USE_CACHE", "no", 1);
    std::string parameters = "configdir=" + quotedText("sql:" + folder) +
        " certPrefix='' keyPrefix='' flags=" + (access == NssDatabase::Access::Reading ? "readOnly" : "");
    SoftoknArguments arguments{};
    arguments.standard.flags = CKF_OS_LOCKING_OK;
    arguments.standard.pReserved = parameters.data();
    Cryptoki* const module = softokn();
    require(module->C_Initialize(&arguments) == CKR_OK, SIGIL_TK_MEDIUM,
        "the database is damaged, locked or not for this user");
    return {module, databaseSlot};
}

/** A session with a database that has no password; a new one gets an empty one, as NSS's own programs do it. */
TokenSession sessionWith(const Slot& slot, NssDatabase::Access access)
{
    const CK_FLAGS state = tokenInfo(slot).flags;
    require((state & CKF_LOGIN_REQUIRED) == 0 || (state & CKF_USER_PIN_INITIALIZED) == 0, SIGIL_TK_TOKEN_LOGIN,
        "the database has a password");
    const bool writing = access == NssDatabase::Access::Writing;
    if (writing && (state & CKF_USER_PIN_INITIALIZED) == 0)
        TokenSession(nullptr, slot, CKF_RW_SESSION).setFirstPin("", "");
    return {nullptr, slot, static_cast<int>(writing ? CKF_RW_SESSION : CKF_SERIAL_SESSION)};
}

const std::string& existing(const std::string& folder, NssDatabase::Access access)
{
    std::error_code failure;
    if (access == NssDatabase::Access::Writing)
        std::filesystem::create_directories(folder, failure);
    require(!failure, SIGIL_TK_MEDIUM, failure.message());
    return folder;
}

/** CKA_ID as NSS chooses it, so that its programs find key and certificate together: SHA-1 of an RSA key's modulus, of another
 *  key's bits. */
Bytes nssIdOf(const Library& library, const Certificate& certificate)
{
    const Bytes info = certificate.publicKeyDer();
    der::Reader fields(der::Reader(info).take(der::Sequence).value_or(View()));
    fields.take(der::Sequence);
    View bits = der::bitOctets(fields.take(der::BitString).value_or(View())).value_or(View());
    if (const auto numbers = der::Reader(bits).take(der::Sequence))
        bits = der::Reader(*numbers).take(der::Integer).value_or(View());
    return hash(library, SIGIL_TK_HASH_SHA1, der::withoutZeros(bits));
}

} // namespace

NssDatabase::NssDatabase(const Library& library, const std::string& folder, Access access)
    : m_library(library)
    , m_session(sessionWith(openDatabase(existing(folder, access), access), access))
{
}

std::vector<Bytes> NssDatabase::certificates() const
{
    std::vector<Bytes> all;
    for (const TokenCertificate& found : tokenCertificates(m_library, m_session))
        all.push_back(found.certificate.der());
    return all;
}

/** A nickname stands for one subject: a second one with that common name gets a number. */
ObjectName NssDatabase::nameFor(const Certificate& certificate) const
{
    const std::string common = utf8FromCp949(certificate.uid()).value_or(std::string());
    const std::string base = common.empty() ? "certificate" : common;
    const auto isTaken = [&](const std::string& label) {
        const auto other = labelledCertificate(m_library, m_session, label);
        return other && other->certificate.subjectNameDer() != certificate.subjectNameDer();
    };
    std::string label = base;
    for (int number = 2; isTaken(label); ++number)
        label = base + " #" + std::to_string(number);
    return {nssIdOf(m_library, certificate), label};
}

void NssDatabase::addCertificate(ObjectWriting& writing, View der) const
{
    const Certificate certificate(m_library, der);
    Template same;
    same.add(CKA_CLASS, CKO_CERTIFICATE).add(CKA_VALUE, certificate.der());
    if (m_session.find(same).empty())
        writing.add(certificateTemplate(certificate, nameFor(certificate)));
}

void NssDatabase::addKey(ObjectWriting& writing, const CertifiedKey& pair) const
{
    const Certificate certificate(m_library, pair.certificate);
    checkKeyPair(m_library, certificate, pair.keyInfo);
    const ObjectName name = nameFor(certificate);
    if (objectsOf(m_session, CKO_PRIVATE_KEY, name.id).empty())
        writing.add(keyTemplate(pair.keyInfo, name, certificate.subjectNameDer()));
}

void NssDatabase::add(const Pkcs12Content& content) const
{
    ObjectWriting writing(m_session);
    for (const Bytes& other : content.others)
        addCertificate(writing, other);
    for (const CertifiedKey& pair : content.pairs) {
        addCertificate(writing, pair.certificate);
        addKey(writing, pair);
    }
    writing.finish();
}

} // namespace toolkit
