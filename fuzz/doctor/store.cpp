// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Stores of any files, and any place in them: every finding names a rule and says what to do.

#include "doctor/doctor.h"
#include "doctor/rules.h"
#include "fuzz/machine.h"

#include <filesystem>

namespace {

void requireExplained(const sigil::StoreReport& report)
{
    fuzz::requireStated(report.code, "the doctor's list");
    for (const sigil::Finding& finding : report.findings) {
        require(sigil::ruleNamed(finding.rule).name == finding.rule, "a finding names a rule");
        require(!finding.path.empty() && !finding.detail.empty(), "a finding says where and what");
        require(!finding.listed || !finding.amiss() || !finding.mend.empty(), "what is amiss can be mended");
    }
}

} // namespace

FUZZ_TARGET(doctor_store, input)
{
    const fuzz::Machine machine;
    fuzz::Script script(input);
    std::filesystem::create_directory(machine.disk());
    sigil::DoctorQuestion question;
    question.libraryFolder = fuzz::libraryFolder();
    question.language = script.number(2) == 0 ? SIGIL_LANGUAGE_KOREAN : SIGIL_LANGUAGE_ENGLISH;
    question.wanted.nPKITypes = 15;
    for (auto files = script.number(4); files > 0; --files)
        fuzz::addStoreFile(machine, script);
    requireExplained(sigil::examineDisk(question, machine.disk()));
    requireExplained(sigil::examineHome(question));
    requireExplained(sigil::examinePath(question, machine.disk() + "/" + fuzz::fileName(script)));
    require(!sigil::examineSurroundings(question).empty(), "there are surroundings");
}
