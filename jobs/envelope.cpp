// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/envelope.h"

#include <sigildesk/open_toolkit.h>

namespace host {

const std::string& encryptionCertificate(const Certificate& certificate)
{
    return certificate.kmDer.empty() ? certificate.der : certificate.kmDer;
}

std::string encrypted(const Setting& setting, const Crypto& crypto, const std::vector<std::string>& certificates,
    std::string_view content, int cipher)
{
    Bytes recipients(crypto.handle());
    Bytes plain(crypto.handle());
    Bytes message(crypto.handle());
    setList(setting, crypto, certificates, recipients);
    set(crypto, plain, content);
    crypto.check(CMSMakeEnvDataWithMultiRec(
        crypto.handle(), SIGIL_TK_ENVELOPE_ISSUER, recipients.get(), plain.get(), cipher, message.get()));
    return std::string(view(message));
}

} // namespace host
