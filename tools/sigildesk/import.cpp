// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// import: the pairs of a PKCS#12 file into a store. The keys keep the password of the file.
#include "commands.h"
#include "files.h"
#include "jobs/pkcs12.h"
#include "pairs.h"
#include "secrets.h"

#include <nlohmann/json.hpp>

namespace host {

int runImport(Session& session)
{
    const std::string file = session.arguments.text("FILE");
    mustExist(file);
    const Disk disk = diskOf(session, session.arguments.text("--media"));
    const Crypto crypto(session, SIGIL_TOOLKIT_MAKER); // the other library reads no such file of several pairs
    PairContents contents;
    crypto.check(withPassword(
        session, file, [&](Secret& password) { return readPkcs12(crypto, file, password, contents); }));
    Certificate certificate = readCertificate(session, Crypto(session), *contents.certificate);
    certificate.files = filePairs(session, placeFor(certificate, disk), contents);
    session.output.document({{"certificate", jsonOf(certificate)}});
    session.output.line(certificate.files.certificate);
    return done;
}

} // namespace host
