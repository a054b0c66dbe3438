// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/report.h"

#include "tools/sample-store/dates.h"
#include "tools/sample-store/hex.h"
#include "tools/sample-store/layout.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace sample {

namespace {

using Row = std::vector<std::string>;

/** A column of the report; the table for people shows only the short ones. */
struct Column {
    const char* name;
    bool inTable;
    std::string (*value)(const Options&, const PlannedCertificate&);
};

std::string policiesOf(const PlannedCertificate& planned)
{
    std::string policies;
    for (const std::string_view policy : planned.kind->policies)
        if (!policy.empty())
            policies.append(policies.empty() ? "" : " ").append(policy);
    return policies;
}

std::string kmFile(
    const Options& options, const PlannedCertificate& planned, std::filesystem::path CertificateFiles::*file)
{
    if (planned.pairs == Pairs::SigningOnly)
        return {};
    return (filesOf(options.target, planned).*file).string();
}

const Column columns[] = {
    {"family", true, [](auto&, auto& p) { return std::string(familyName(p.kind->family)); }},
    {"state", true, [](auto&, auto& p) { return std::string(stateName(p.state)); }},
    {"bits", true, [](auto&, auto& p) { return std::to_string(p.keyBits); }},
    {"pairs", true, [](auto&, auto& p) { return std::string(p.pairs == Pairs::Both ? "both" : "signing"); }},
    {"variant", true, [](auto&, auto& p) { return std::string(1, p.variant); }},
    {"identity", true, [](auto&, auto& p) { return p.identityNumber; }},
    {"not_after", true, [](auto&, auto& p) { return dateText(p.notAfter); }},
    {"not_before", false, [](auto&, auto& p) { return dateText(p.notBefore); }},
    {"serial", false, [](auto&, auto& p) { return hexText(p.serial); }},
    {"policy", false, [](auto&, auto& p) { return policiesOf(p); }},
    {"name", false, [](auto&, auto& p) { return p.realName; }},
    {"issuer", false, [](auto&, auto& p) { return std::string(p.kind->authority->dn); }},
    {"subject", false, [](auto&, auto& p) { return p.subject.text(); }},
    {"signing_certificate", true, [](auto& o, auto& p) { return filesOf(o.target, p).signCert.string(); }},
    {"signing_key", false, [](auto& o, auto& p) { return filesOf(o.target, p).signKey.string(); }},
    {"km_certificate", false, [](auto& o, auto& p) { return kmFile(o, p, &CertificateFiles::kmCert); }},
    {"km_key", false, [](auto& o, auto& p) { return kmFile(o, p, &CertificateFiles::kmKey); }},
    {"pfx", false, [](auto& o, auto& p) { return o.pfx ? pfxFileOf(o.target, p).string() : std::string(); }},
};

std::string jsonText(const std::string& text)
{
    std::string json = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            json += '\\';
        if (static_cast<unsigned char>(c) < ' ')
            json += "\\u00" + hexText(toolkit::view({&c, 1}));
        else
            json += c;
    }
    return json + "\"";
}

void printTable(std::ostream& out, const std::vector<Row>& rows)
{
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    for (const Row& row : rows) {
        // The path stands last and is not padded: its Korean letters are wider than others.
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            out << row[i] << std::string(widths[i] - row[i].size() + 2, ' ');
        out << row.back() << "\n";
    }
}

void printTsv(std::ostream& out, const std::vector<Row>& rows)
{
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            out << row[i] << (i + 1 < row.size() ? "\t" : "\n");
}

void printJson(std::ostream& out, const std::vector<Row>& rows)
{
    out << "[";
    for (std::size_t r = 1; r < rows.size(); ++r) {
        out << (r > 1 ? ",\n " : "\n ") << "{";
        for (std::size_t i = 0; i < rows[r].size(); ++i)
            out << (i > 0 ? ", " : "") << jsonText(rows[0][i]) << ": " << jsonText(rows[r][i]);
        out << "}";
    }
    out << "\n]\n";
}

std::vector<Row> rowsOf(const Options& options, const std::vector<PlannedCertificate>& plan, bool all)
{
    std::vector<Row> rows(1 + plan.size());
    for (const Column& column : columns) {
        if (!all && !column.inTable)
            continue;
        rows[0].push_back(column.name);
        for (std::size_t i = 0; i < plan.size(); ++i)
            rows[i + 1].push_back(column.value(options, plan[i]));
    }
    return rows;
}

} // namespace

void printReport(std::ostream& out, const Options& options, const std::vector<PlannedCertificate>& plan)
{
    const std::vector<Row> rows = rowsOf(options, plan, options.format != Format::Table);
    switch (options.format) {
    case Format::Table:
        printTable(out, rows);
        out << plan.size() << " certificates, password: " << options.password << "\n";
        break;
    case Format::Tsv:
        printTsv(out, rows);
        break;
    case Format::Json:
        printJson(out, rows);
        break;
    }
}

} // namespace sample
