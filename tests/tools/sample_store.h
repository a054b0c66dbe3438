/** @file
 *  Runs sample-store into a folder that goes away with the test, and reads its report.
 */
#pragma once

#include "tests/tools/command.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/** A folder of its own below the system's temporary folder. */
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/** One certificate as the report tells it: column name to value. */
using Certificate = std::map<std::string, std::string>;

/** Runs sample-store with these arguments. */
Outcome runSampleStore(std::vector<std::string> arguments);

/** The certificates of a report in TSV. */
std::vector<Certificate> parseReport(const std::string& tsv);

/** A store made with --format tsv and further arguments. */
class SampleStore {
public:
    explicit SampleStore(std::vector<std::string> arguments);

    const std::filesystem::path& folder() const { return m_folder.path(); }
    const std::vector<Certificate>& certificates() const { return m_certificates; }
    std::string issuerFile(const std::string& name) const { return (folder() / "ca" / name).string(); }

private:
    TemporaryFolder m_folder;
    std::vector<Certificate> m_certificates;
};

std::string readFile(const std::filesystem::path& file);
