// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Why certificates are listed or not.
#include "sigil/call.h"

#include "jobs/store_list.h"

using host::need;

namespace {

SigilFinding recordOf(const sigil::Finding& finding)
{
    SigilFinding record{};
    record.listed = finding.listed;
    record.path = finding.path.c_str();
    record.rule = finding.rule.c_str();
    record.detail = finding.detail.c_str();
    record.mend = finding.mend.c_str();
    return record;
}

} // namespace

int sigil_examine(SigilSession* session, const char* medium, int* count)
{
    return host::run(session, [&](SigilSession& s) {
        const std::string folder = host::mediumOf(medium);
        sigil::DoctorQuestion question;
        question.libraryFolder = s.setting.folder;
        question.toolkit = s.setting.toolkit;
        question.language = static_cast<int>(s.setting.language());
        question.wanted = host::everything();
        question.leftOut = [](const tagCERTINFO&) { return nullptr; };
        s.findings =
            (folder.empty() ? sigil::examineHome(question) : sigil::examineDisk(question, folder)).findings;
        if (count)
            *count = static_cast<int>(s.findings.size());
    });
}

int sigil_finding(SigilSession* session, int index, SigilFinding* finding)
{
    return host::run(session, [&](SigilSession& s) {
        need(index >= 0 && static_cast<std::size_t>(index) < s.findings.size(), "the finding");
        host::fill(finding, recordOf(s.findings[static_cast<std::size_t>(index)]));
    });
}
