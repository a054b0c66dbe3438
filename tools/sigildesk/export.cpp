// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// export: a PKCS#12 file of a certificate's pairs.
#include "commands.h"
#include "files.h"
#include "jobs/pkcs12.h"
#include "keys.h"
#include "selection.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words noTarget{"--out names the file", "--out으로 파일을 지정하십시오"};

int protectionOf(const std::string& name)
{
    if (name == "seed")
        return SIGIL_TK_PFX_SEED;
    return name == "aes256" ? SIGIL_TK_PFX_AES256 : SIGIL_TK_PFX_3DES;
}

/** Opens all pairs of a certificate with one password. @return a result of the library */
int openPairs(const Crypto& crypto, const Certificate& certificate, Secret& password, std::vector<OpenPair>& pairs)
{
    pairs.clear();
    for (const Pair pair : pairsOf(certificate)) {
        Bytes key(crypto.handle());
        const int code = unlockWith(crypto, certificate, pair, password, key);
        if (code != SIGIL_SUCCESS)
            return code;
        const std::string_view bytes = view(key);
        pairs.push_back({pair == Pair::Sign ? certificate.der : certificate.kmDer, {bytes.begin(), bytes.end()}});
    }
    return SIGIL_SUCCESS;
}

} // namespace

int runExport(Session& session)
{
    if (!session.arguments.has("--out"))
        throw Failure(wrongUse, "wrong_use", noTarget);
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    mustHave(certificate, Pair::Sign);
    WrittenFile target(session, session.arguments.text("--out"), Content::PrivateKey);
    const Crypto crypto(session);
    std::vector<OpenPair> pairs;
    crypto.check(withPassword(session, certificate.name,
        [&](Secret& password) { return openPairs(crypto, certificate, password, pairs); }));
    Secret password = askNewPassword(session, target.path());
    const sigil::SecretBytes file =
        makePkcs12(session, pairs, protectionOf(session.arguments.text("--protection")), password);
    target.write({file.data(), file.size()});
    target.commit();
    session.output.document(
        {{"file", target.path()}, {"pairs", pairs.size()}, {"certificate", jsonOf(certificate)}});
    session.output.line(target.path());
    return done;
}

} // namespace host
