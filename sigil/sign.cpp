// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Signatures: raw ones, and messages with their content or without it.
#include "sigil/call.h"
#include "sigil/keys.h"
#include "sigil/nameless_file.h"

#include "jobs/failure.h"
#include "jobs/read_file.h"
#include "jobs/signed_message.h"

#include <sigildesk/open_toolkit.h>

using host::Bytes;
using host::need;

namespace {

struct Signing {
    const host::Crypto& crypto;
    Bytes certificate{crypto.handle()};
    Bytes key{crypto.handle()};
};

std::string raw(Signing& with, std::string_view data)
{
    Bytes text(with.crypto.handle());
    Bytes signature(with.crypto.handle());
    host::set(with.crypto, text, data);
    with.crypto.check(CRYPTSign(with.crypto.handle(), with.certificate.get(), with.key.get(), SIGIL_TK_HASH_SHA256,
        text.get(), signature.get()));
    return std::string(host::view(signature));
}

std::string attached(Signing& with, std::string_view data)
{
    Bytes content(with.crypto.handle());
    Bytes message(with.crypto.handle());
    char now[] = "";
    host::set(with.crypto, content, data);
    with.crypto.check(CMSMakeSignedData(with.crypto.handle(), SIGIL_TK_MESSAGE_PLAIN, with.certificate.get(),
        with.key.get(), content.get(), now, message.get()));
    return std::string(host::view(message));
}

/** The government library makes such messages of files alone. */
std::string detached(Signing& with, std::string_view data)
{
    const host::NamelessFile file(data);
    const host::WorkFolder folder;
    std::string content = file.path();
    std::string message = folder.path("message");
    char now[] = "";
    with.crypto.check(CMSMakeSignedDataFile(
        with.crypto.handle(), with.certificate.get(), with.key.get(), content.data(), now, message.data()));
    return host::readFile(message);
}

/** What makes each enum SigilForm. */
constexpr std::string (*forms[])(Signing& with, std::string_view data) = {attached, detached, raw};

std::string sign(SigilSession& session, int entry, const SigilSignOptions& options, std::string_view data)
{
    need(options.form >= SIGIL_FORM_ATTACHED && options.form <= SIGIL_FORM_RAW, "the form");
    need(!options.stamp_url || (*options.stamp_url && options.form != SIGIL_FORM_RAW), "the address of the stamp");
    const host::Entry& chosen = host::entryOf(session, entry);
    Signing with{*session.crypto};
    host::setKey(with.crypto, chosen, host::Pair::Sign, with.key);
    host::setCertificate(with.crypto, chosen.certificate, host::Pair::Sign, with.certificate);
    std::string signature = forms[options.form](with, data);
    if (!options.stamp_url)
        return signature;
    const std::string beside(options.form == SIGIL_FORM_DETACHED ? data : std::string_view());
    return host::stamped(session.setting, signature, beside, options.stamp_url);
}

/** The signers of a message that verifies. Throws Failure for another one. */
std::vector<host::JudgedSigner> signersOf(
    const SigilSession& session, const host::MessageInput& input, std::string& content)
{
    const host::SignedMessage message(session.setting, session.setting.toolkit, input);
    message.crypto().check(message.code());
    if (message.holdsOtherContent())
        host::refuse(SIGIL_TK_CMS_CONTENT, {});
    content = message.content();
    const host::SignedMessage stamps(session.setting, SIGIL_TOOLKIT_GPKI, input);
    std::vector<host::JudgedSigner> signers;
    signers.reserve(static_cast<std::size_t>(message.signers()));
    for (int i = 0; i < message.signers(); ++i)
        signers.push_back({message.signature(i), stamps.stamp(i)});
    return signers;
}

SigilSigner recordOf(const host::JudgedSigner& signer)
{
    SigilSigner record{};
    record.signing_time = signer.signature.time;
    record.stamp_time = signer.stamp ? signer.stamp->stamp.time : 0;
    record.stamp_code = signer.stamp ? signer.stamp->code : SIGIL_SUCCESS;
    record.certificate = reinterpret_cast<const unsigned char*>(signer.signature.certificate.data());
    record.certificate_size = signer.signature.certificate.size();
    return record;
}

} // namespace

int sigil_sign(SigilSession* session, int entry, const SigilSignOptions* options, const void* data, size_t size,
    SigilBytes* signature)
{
    return host::run(session, [&](SigilSession& s) {
        need(signature != nullptr, "the signature");
        const SigilSignOptions wanted = host::known(options);
        host::give(sign(s, entry, wanted, host::bytesOf(data, size, "the data")), signature);
    });
}

int sigil_verify(SigilSession* session, const void* message, size_t message_size, const void* data,
    size_t data_size, SigilBytes* content, int* signers)
{
    return host::run(session, [&](SigilSession& s) {
        host::MessageInput input{};
        input.message = host::bytesOf(message, message_size, "the message");
        input.beside = data != nullptr || data_size > 0;
        if (input.beside)
            input.content = host::bytesOf(data, data_size, "the data");
        std::string held;
        std::vector<host::JudgedSigner> found = signersOf(s, input, held);
        if (content)
            host::give(held, content);
        s.signers.swap(found);
        if (signers)
            *signers = static_cast<int>(s.signers.size());
    });
}

int sigil_signer(SigilSession* session, int index, SigilSigner* signer)
{
    return host::run(session, [&](SigilSession& s) {
        need(index >= 0 && static_cast<std::size_t>(index) < s.signers.size(), "the signer");
        host::fill(signer, recordOf(s.signers[static_cast<std::size_t>(index)]));
    });
}

int sigil_verify_raw(SigilSession* session, const void* certificate, size_t certificate_size, const void* data,
    size_t data_size, const void* signature, size_t signature_size)
{
    return host::run(session, [&](SigilSession& s) {
        const host::Crypto& crypto = *s.crypto;
        Bytes signer(crypto.handle());
        Bytes text(crypto.handle());
        Bytes value(crypto.handle());
        host::set(
            crypto, signer, host::derOf(crypto, host::bytesOf(certificate, certificate_size, "the certificate")));
        host::set(crypto, text, host::bytesOf(data, data_size, "the data"));
        host::set(crypto, value, host::bytesOf(signature, signature_size, "the signature"));
        crypto.check(CRYPTVerify(crypto.handle(), signer.get(), SIGIL_TK_HASH_SHA256, text.get(), value.get()));
    });
}
