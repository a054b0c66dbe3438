#include "pkcs12.h"

#include "files.h"

#include <sigildesk/open_toolkit.h>

namespace host {

namespace {

std::string_view view(const sigil::SecretBytes& bytes) { return {bytes.data(), bytes.size()}; }

sigil::SecretBytes copyOf(const Bytes& bytes)
{
    const std::string_view content = host::view(bytes);
    return {content.begin(), content.end()};
}

void addPair(std::vector<OpenPair>& pairs, const Bytes& certificate, const Bytes& key)
{
    if (!certificate.empty() && !key.empty())
        pairs.push_back({std::string(host::view(certificate)), copyOf(key)});
}

int readAsGpki(const Crypto& crypto, Bytes& file, Secret& password, std::vector<OpenPair>& pairs)
{
    Bytes certificate(crypto.handle()), key(crypto.handle());
    Bytes kmCertificate(crypto.handle()), kmKey(crypto.handle()), others(crypto.handle());
    const int code = PFXImport(crypto.handle(), password.chars(), file.get(), certificate.get(), key.get(),
        kmCertificate.get(), kmKey.get(), others.get());
    if (code != SIGIL_SUCCESS)
        return code;
    addPair(pairs, certificate, key);
    addPair(pairs, kmCertificate, kmKey);
    return code;
}

void takePairs(const Crypto& crypto, Bytes& certificates, Bytes& keys, std::vector<OpenPair>& pairs)
{
    int count = 0;
    crypto.check(UTILGetObjectCount(crypto.handle(), certificates.get(), &count));
    for (int i = 0; i < count; ++i) {
        Bytes certificate(crypto.handle()), key(crypto.handle());
        crypto.check(UTILGetObject(crypto.handle(), certificates.get(), i, certificate.get()));
        crypto.check(UTILGetObject(crypto.handle(), keys.get(), i, key.get()));
        addPair(pairs, certificate, key);
    }
}

int readAsMaker(const Crypto& crypto, Bytes& file, Secret& password, std::vector<OpenPair>& pairs)
{
    Bytes certificates(crypto.handle()), keys(crypto.handle()), others(crypto.handle());
    for (Bytes* output : {&certificates, &keys, &others}) // the function wants something there
        set(crypto, *output, "-");
    const int code = PFXImportMultiPair2(crypto.handle(), SIGIL_TK_PFX_WITHOUT_MAC, file.get(), password.chars(),
        certificates.get(), keys.get(), others.get());
    if (code == SIGIL_SUCCESS)
        takePairs(crypto, certificates, keys, pairs);
    return code;
}

/** The maker's functions take any number of pairs and every protection. */
sigil::SecretBytes makeAsMaker(
    const Session& session, const std::vector<OpenPair>& pairs, int protection, Secret& password)
{
    const Crypto crypto(session, SIGIL_TOOLKIT_MAKER);
    Bytes certificates(crypto.handle()), keys(crypto.handle()), file(crypto.handle());
    for (const OpenPair& pair : pairs) {
        Bytes certificate(crypto.handle()), key(crypto.handle());
        set(crypto, certificate, pair.certificate);
        set(crypto, key, view(pair.key));
        crypto.check(UTILAddObject(crypto.handle(), certificate.get(), certificates.get()));
        crypto.check(UTILAddObject(crypto.handle(), key.get(), keys.get()));
    }
    crypto.check(PFXExportMultiPair(
        crypto.handle(), protection, password.chars(), certificates.get(), keys.get(), file.get()));
    return copyOf(file);
}

/** The government library makes files of both pairs in one protection. */
sigil::SecretBytes makeAsGpki(const Session& session, const std::vector<OpenPair>& pairs, Secret& password)
{
    const Crypto crypto(session, SIGIL_TOOLKIT_GPKI);
    Bytes certificate(crypto.handle()), key(crypto.handle());
    Bytes kmCertificate(crypto.handle()), kmKey(crypto.handle()), file(crypto.handle());
    set(crypto, certificate, pairs[0].certificate);
    set(crypto, key, view(pairs[0].key));
    set(crypto, kmCertificate, pairs[1].certificate);
    set(crypto, kmKey, view(pairs[1].key));
    crypto.check(PFXExport(crypto.handle(), SIGIL_TK_PFX_3DES, password.chars(), certificate.get(), key.get(),
        kmCertificate.get(), kmKey.get(), file.get()));
    return copyOf(file);
}

} // namespace

Pkcs12 readPkcs12(const Session& session, const std::string& path)
{
    const Crypto crypto(session);
    Bytes file(crypto.handle());
    set(crypto, file, readFile(path));
    Pkcs12 result;
    const auto read = session.toolkit == SIGIL_TOOLKIT_GPKI ? readAsGpki : readAsMaker;
    int code = SIGIL_SUCCESS;
    code = withPassword(session, path, [&](Secret& password) {
        const int answer = read(crypto, file, password, result.pairs);
        if (answer == SIGIL_SUCCESS)
            result.password = std::move(password);
        return answer;
    });
    crypto.check(code);
    if (result.pairs.empty())
        throw Failure::ofCode(SIGIL_TK_PFX_NO_PAIR);
    return result;
}

sigil::SecretBytes makePkcs12(
    const Session& session, const std::vector<OpenPair>& pairs, int protection, Secret& password)
{
    const bool gpki = session.toolkit == SIGIL_TOOLKIT_GPKI && pairs.size() == 2 && protection == SIGIL_TK_PFX_3DES;
    return gpki ? makeAsGpki(session, pairs, password) : makeAsMaker(session, pairs, protection, password);
}

} // namespace host
