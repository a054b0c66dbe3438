// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Runs sample-store into a folder that goes away with the test, and reads its report.
 */
#pragma once

#include "tests/support/command.h"
#include "tests/support/files.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/** One certificate as the report tells it: column name to value. */
using Certificate = std::map<std::string, std::string>;

/** Runs sample-store with these arguments. */
Outcome runSampleStore(std::vector<std::string> arguments);

/** The certificates of a report in TSV. */
std::vector<Certificate> parseReport(const std::string& tsv);

/** A store made with --format tsv and further arguments. Throws when it cannot be made. */
class SampleStore {
public:
    explicit SampleStore(std::vector<std::string> arguments);

    std::filesystem::path folder() const { return m_folder.path(); }
    const std::vector<Certificate>& certificates() const { return m_certificates; }
    std::string issuerFile(const std::string& name) const { return (folder() / "ca" / name).string(); }

private:
    TemporaryFolder m_folder;
    std::vector<Certificate> m_certificates;
};
