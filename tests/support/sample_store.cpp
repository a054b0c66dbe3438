// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/sample_store.h"

#include <sstream>
#include <stdexcept>

Outcome runSampleStore(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), SAMPLE_STORE_PROGRAM);
    return run(arguments);
}

namespace {

std::vector<std::string> split(const std::string& line)
{
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, '\t');)
        fields.push_back(field);
    return fields;
}

} // namespace

std::vector<Certificate> parseReport(const std::string& tsv)
{
    std::istringstream lines(tsv);
    std::string line;
    std::getline(lines, line);
    const std::vector<std::string> names = split(line);
    std::vector<Certificate> certificates;
    while (std::getline(lines, line)) {
        const std::vector<std::string> values = split(line);
        Certificate& certificate = certificates.emplace_back();
        for (std::size_t i = 0; i < names.size(); ++i)
            certificate[names[i]] = i < values.size() ? values[i] : "";
    }
    return certificates;
}

SampleStore::SampleStore(std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--target", folder().string(), "--format", "tsv"});
    const Outcome outcome = runSampleStore(arguments);
    if (outcome.status != 0)
        throw std::runtime_error("sample-store: " + outcome.err);
    m_certificates = parseReport(outcome.out);
}
