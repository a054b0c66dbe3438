// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/pkcs12.h"

#include "certlist/error_log.h"
#include "certlist/key_operations.h"
#include "certlist/pkcs12_transfer.h"

#include <sigildesk/open_toolkit.h>

namespace host {

namespace {

std::string_view view(const sigil::SecretBytes& bytes) { return {bytes.data(), bytes.size()}; }

sigil::SecretBytes copyOf(const Bytes& bytes)
{
    const std::string_view content = host::view(bytes);
    return {content.begin(), content.end()};
}

/** The maker's functions take any number of pairs and every protection. */
sigil::SecretBytes makeAsMaker(
    const Setting& setting, const std::vector<OpenPair>& pairs, int protection, Secret& password)
{
    const Crypto crypto(setting, SIGIL_TOOLKIT_MAKER);
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
sigil::SecretBytes makeAsGpki(const Setting& setting, const std::vector<OpenPair>& pairs, Secret& password)
{
    const Crypto crypto(setting, SIGIL_TOOLKIT_GPKI);
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

/** Reads a file with the list processor's reader and puts its keys under its own password.
 *  @return a result of the library */
class PfxReader {
public:
    explicit PfxReader(const Crypto& crypto)
        : m_crypto(crypto)
    {
        m_log.bind(crypto.handle(), nullptr);
    }

    int read(std::string path, Secret& password, PairContents& contents)
    {
        sigil::CertNKey found;
        int code = sigil::Pkcs12Transfer(m_crypto.handle(), m_log).read(path.data(), password.chars(), found);
        if (code == SIGIL_SUCCESS && !found.hasSignPair())
            code = SIGIL_NO_CERTIFICATE;
        if (code == SIGIL_SUCCESS)
            code = take(found.signCert, found.signKey, password, contents.certificate, contents.key);
        if (code == SIGIL_SUCCESS && found.hasKmPair())
            code = take(found.kmCert, found.kmKey, password, contents.kmCertificate, contents.kmKey);
        return code;
    }

private:
    int take(const CBinary& certificate, const CBinary& key, Secret& password,
        std::optional<std::string>& certificateOut, std::optional<std::string>& keyOut)
    {
        int algorithm = 0;
        Bytes plain(m_crypto.handle());
        Bytes encrypted(m_crypto.handle());
        set(m_crypto, plain, sigil::bytesOf(key));
        int code = sigil::KeyOperations(m_crypto.handle(), m_log).algorithmFor(certificate, algorithm);
        if (code == SIGIL_SUCCESS)
            code = PriKeyEncrypt(m_crypto.handle(), algorithm, password.chars(), plain.get(), encrypted.get());
        certificateOut = sigil::bytesOf(certificate);
        keyOut = host::view(encrypted);
        return code;
    }

    const Crypto& m_crypto;
    sigil::ErrorLog m_log;
};

} // namespace

sigil::SecretBytes makePkcs12(
    const Setting& setting, const std::vector<OpenPair>& pairs, int protection, Secret& password)
{
    const bool gpki = setting.toolkit == SIGIL_TOOLKIT_GPKI && pairs.size() == 2 && protection == SIGIL_TK_PFX_3DES;
    return gpki ? makeAsGpki(setting, pairs, password) : makeAsMaker(setting, pairs, protection, password);
}

int readPkcs12(const Crypto& crypto, const std::string& path, Secret& password, PairContents& contents)
{
    return PfxReader(crypto).read(path, password, contents);
}

} // namespace host
