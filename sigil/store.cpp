// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Stores and PKCS#12 files: pairs are brought in and out, copied, deleted and put under another password.
#include "sigil/call.h"
#include "sigil/keys.h"
#include "sigil/nameless_file.h"

#include "jobs/pairs.h"
#include "jobs/pkcs12.h"

#include <sigildesk/open_toolkit.h>

#include <iterator>

using host::need;

namespace {

/** The toolkit's number of each enum SigilProtection. */
constexpr int protections[] = {SIGIL_TK_PFX_3DES, SIGIL_TK_PFX_SEED, SIGIL_TK_PFX_AES256};

/** An entry that lies in files. Throws Failure (1005). */
const host::Certificate& storedOf(SigilSession& session, int entry)
{
    const host::Certificate& certificate = host::entryOf(session, entry).certificate;
    if (certificate.files.certificate.empty())
        host::refuse(SIGIL_NOT_ON_THIS_MEDIUM, certificate.name);
    return certificate;
}

std::vector<host::OpenPair> openPairs(const host::Entry& entry)
{
    static_cast<void>(host::keyOf(entry, host::Pair::Sign));
    std::vector<host::OpenPair> pairs;
    for (const host::Pair pair : host::pairsOf(entry.certificate)) {
        const bool signing = pair == host::Pair::Sign;
        pairs.push_back({signing ? entry.certificate.der : entry.certificate.kmDer, host::keyOf(entry, pair)});
    }
    return pairs;
}

void import(SigilSession& session, std::string_view pkcs12, host::Secret password, const char* medium, bool replace)
{
    const host::Disk disk = host::diskAt(host::mediumOf(medium));
    const host::NamelessFile file(pkcs12);
    const host::Crypto crypto(session.setting, SIGIL_TOOLKIT_MAKER); // the other library reads no several pairs
    host::PairContents contents;
    crypto.check(host::readPkcs12(crypto, file.path(), password, contents));
    const host::Certificate certificate =
        host::readCertificate(session.setting, *session.crypto, *contents.certificate);
    host::filePairs(host::placeFor(certificate, disk), contents, replace);
}

void changePassword(SigilSession& session, int entry, host::Secret from, host::Secret to)
{
    const host::Certificate& certificate = storedOf(session, entry);
    host::PairContents contents = host::contentsOf(certificate);
    session.crypto->check(host::opensAll(*session.crypto, contents, from));
    host::changePassword(*session.crypto, contents, from, to);
    host::changePairs(certificate.files, contents);
}

} // namespace

int sigil_export(SigilSession* session, int entry, int protection, const char* password, SigilBytes* pkcs12)
{
    return host::run(session, [&](SigilSession& s) {
        need(protection >= 0 && protection < static_cast<int>(std::size(protections)), "the protection");
        need(pkcs12 != nullptr, "the PKCS#12 file");
        host::Secret secret = host::secretOf(password, "the password");
        const sigil::SecretBytes file =
            host::makePkcs12(s.setting, openPairs(host::entryOf(s, entry)), protections[protection], secret);
        host::give({file.data(), file.size()}, pkcs12);
    });
}

int sigil_import(
    SigilSession* session, const void* pkcs12, size_t size, const char* password, const char* medium, int replace)
{
    return host::run(session, [&](SigilSession& s) {
        import(s, host::bytesOf(pkcs12, size, "the PKCS#12 file"), host::secretOf(password, "the password"), medium,
            replace != 0);
    });
}

int sigil_copy(SigilSession* session, int entry, const char* medium, int replace)
{
    return host::run(session, [&](SigilSession& s) {
        const host::Certificate& certificate = storedOf(s, entry);
        const host::Disk disk = host::diskAt(host::mediumOf(medium));
        host::filePairs(host::placeFor(certificate, disk), host::contentsOf(certificate), replace != 0);
    });
}

int sigil_delete(SigilSession* session, int entry)
{
    return host::run(session, [&](SigilSession& s) { host::changePairs(storedOf(s, entry).files, {}); });
}

int sigil_change_password(SigilSession* session, int entry, const char* old_password, const char* new_password)
{
    return host::run(session, [&](SigilSession& s) {
        changePassword(s, entry, host::secretOf(old_password, "the old password"),
            host::secretOf(new_password, "the new password"));
    });
}
