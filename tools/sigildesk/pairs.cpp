// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "pairs.h"

#include "jobs/failure.h"
#include "selection.h"

namespace host {

namespace {

constexpr Words alreadyThere{"{}; --force replaces it with its pair", "{}. --force로 쌍을 바꿀 수 있습니다"};
constexpr Words ofKeyManagement{"{} belongs to a key-management pair; name the signing certificate beside it",
    "{}은(는) 암호용 인증서입니다. 옆에 있는 서명용 인증서를 지정하십시오"};

} // namespace

Disk diskOf(const Session& session, const std::string& otherwise)
{
    const std::string name = session.arguments.has("--to") ? session.arguments.text("--to") : otherwise;
    return diskAt(name == "disk" ? "" : name);
}

Certificate chosenWithPairs(const Session& session)
{
    Certificate certificate = chosen(session, session.arguments.text("CERT"));
    if (isKeyManagement(certificate.files.certificate))
        throw Failure(wrongUse, "key_management", ofKeyManagement, {certificate.files.certificate});
    return certificate;
}

PairFiles filePairs(const Session& session, const PairFiles& files, const PairContents& contents)
{
    try {
        return filePairs(files, contents, session.arguments.has("--force"));
    } catch (const Failure& failure) {
        if (failure.name() != "file_exists")
            throw;
        throw Failure(failed, "file_exists", alreadyThere, {failure.message(session.language())});
    }
}

} // namespace host
