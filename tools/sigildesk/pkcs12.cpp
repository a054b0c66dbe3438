// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "pkcs12.h"

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

sigil::SecretBytes makePkcs12(
    const Session& session, const std::vector<OpenPair>& pairs, int protection, Secret& password)
{
    const bool gpki = session.toolkit == SIGIL_TOOLKIT_GPKI && pairs.size() == 2 && protection == SIGIL_TK_PFX_3DES;
    return gpki ? makeAsGpki(session, pairs, password) : makeAsMaker(session, pairs, protection, password);
}

} // namespace host
