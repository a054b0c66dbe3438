// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "diagnosis.h"

#include "jobs/store_list.h"
#include "selection.h"

namespace host {

sigil::DoctorQuestion question(const Session& session)
{
    sigil::DoctorQuestion asked;
    asked.libraryFolder = session.folder;
    asked.toolkit = session.toolkit;
    asked.language = static_cast<int>(session.language());
    asked.wanted = everything();
    asked.leftOut = [&session](const tagCERTINFO& entry) { return ruleAgainst(session, certificateOf(entry)); };
    return asked;
}

sigil::StoreReport examineMedium(const Session& session)
{
    const std::string folder = mediumFolder(session);
    return folder.empty() ? sigil::examineHome(question(session)) : sigil::examineDisk(question(session), folder);
}

} // namespace host
