// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// copy: the pairs of a certificate to another disk, in the layout that `list` reads.
#include "commands.h"
#include "pairs.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words noTarget{"--to names the disk to copy to", "--to로 복사할 디스크를 지정하십시오"};

} // namespace

int runCopy(Session& session)
{
    if (!session.arguments.has("--to"))
        throw Failure(wrongUse, "wrong_use", noTarget);
    const Disk disk = diskOf(session);
    Certificate certificate = chosenWithPairs(session);
    const PairContents contents = contentsOf(certificate);
    certificate.files = filePairs(session, placeFor(certificate, disk), contents);
    session.output.document({{"certificate", jsonOf(certificate)}});
    session.output.line(certificate.files.certificate);
    return done;
}

} // namespace host
