// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// import: the pairs of a PKCS#12 file into a store. The keys keep the password of the file.
#include "certlist/error_log.h"
#include "certlist/key_operations.h"
#include "certlist/pkcs12_transfer.h"
#include "commands.h"
#include "files.h"
#include "pairs.h"
#include "secrets.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

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
        keyOut = view(encrypted);
        return code;
    }

    const Crypto& m_crypto;
    sigil::ErrorLog m_log;
};

} // namespace

int runImport(Session& session)
{
    const std::string file = session.arguments.text("FILE");
    mustExist(file);
    const Disk disk = diskOf(session, session.arguments.text("--media"));
    const Crypto crypto(session, SIGIL_TOOLKIT_MAKER); // the other library reads no such file of several pairs
    PairContents contents;
    crypto.check(withPassword(
        session, file, [&](Secret& password) { return PfxReader(crypto).read(file, password, contents); }));
    Certificate certificate = readCertificate(session, Crypto(session), *contents.certificate);
    certificate.files = filePairs(session, placeFor(certificate, disk), contents);
    session.output.document({{"certificate", jsonOf(certificate)}});
    session.output.line(certificate.files.certificate);
    return done;
}

} // namespace host
