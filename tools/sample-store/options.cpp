// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/options.h"

#include "tools/sample-store/dates.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace sample {

namespace {

constexpr int mostCertificates = 100'000;
constexpr int mostKeys = 1'000;

/** An option that takes one of a few words and otherwise leaves a mixture. */
template <class T>
void addChoice(CLI::App& app, const char* name, std::optional<T>& value, std::map<std::string, T> words,
    const char* description)
{
    std::vector<std::string> names = {"mixed"};
    for (const auto& word : words)
        names.push_back(word.first);
    app.add_option_function<std::string>(
           name,
           [&value, words](const std::string& word) {
               const auto found = words.find(word);
               value = found == words.end() ? std::nullopt : std::optional<T>(found->second);
           },
           description)
        ->check(CLI::IsMember(names))
        ->default_str("mixed");
}

void addFamilies(CLI::App& app, Options& options)
{
    app.add_option_function<std::vector<std::string>>(
           "-f,--families",
           [&options](const std::vector<std::string>& names) {
               options.families.clear();
               for (const std::string& name : names)
                   options.families.push_back(*familyOf(name));
           },
           "Families to make, separated by commas: npki, gpki, mpki, ppki")
        ->delimiter(',')
        ->check([](const std::string& name) { return familyOf(name) ? "" : "not a family: " + name; })
        ->type_name("NAME,...")
        ->default_str("npki");
}

void addFormat(CLI::App& app, Options& options)
{
    app.add_option_function<std::string>(
           "--format",
           [&options](const std::string& name) {
               options.format = name == "json" ? Format::Json : name == "tsv" ? Format::Tsv : Format::Table;
           },
           "How to print what was made: table for people, tsv and json with every field for programs")
        ->check(CLI::IsMember({"table", "tsv", "json"}))
        ->default_str("table");
}

void addMixtures(CLI::App& app, Options& options)
{
    addChoice(app, "--state", options.state,
        {{"valid", State::Valid}, {"expiring", State::Expiring}, {"expired", State::Expired}},
        "Validity on the reference day; \"expiring\" ends within 25 days");
    addChoice(
        app, "--key-bits", options.keyBits, {{"2048", 2048}, {"1024", 1024}}, "Length of the users' RSA keys");
    addChoice(app, "--key-variant", options.variant, {{"A", 'A'}, {"B", 'B'}, {"C", 'C'}, {"D", 'D'}, {"E", 'E'}},
        "Encryption of the key files. A: SEED with PBKDF1, B: the same with the old fixed IV, C: PBES2 with SEED, "
        "D: PBES2 with ARIA, AES or 3DES, E: PKCS#12 3DES");
    addChoice(app, "--pairs", options.pairs, {{"both", Pairs::Both}, {"signing", Pairs::SigningOnly}},
        "Key pairs of a certificate folder: signing and key management, or signing alone");
}

} // namespace

std::string_view stateName(State state)
{
    constexpr std::string_view names[] = {"valid", "expiring", "expired"};
    return names[static_cast<std::size_t>(state)];
}

void declareOptions(CLI::App& app, Options& options)
{
    app.add_option("-t,--target", options.target,
           "Folder that gets the store: NPKI/, GPKI/, MPKI/, Halvard/, ca/ and pfx/ are made below it and must not "
           "exist yet")
        ->required();
    app.add_option("-p,--password", options.password, "Password of every key file and PKCS#12 file")
        ->check([](const std::string& word) { return word.empty() ? "the password is empty" : ""; })
        ->capture_default_str();
    app.add_option("-n,--count", options.count, "Number of certificate folders")
        ->check(CLI::Range(1, mostCertificates))
        ->capture_default_str();
    addFamilies(app, options);
    app.add_option("-s,--seed", options.seed, "Seed: the same seed and day give the same names, serials and dates")
        ->capture_default_str();
    app.add_option_function<std::string>(
           "--now", [&options](const std::string& day) { options.now = parseDay(day); },
           "Reference day YYYY-MM-DD of the validity states")
        ->check([](const std::string& day) { return isDay(day) ? "" : "not a day YYYY-MM-DD: " + day; })
        ->default_str("today");
    app.add_option(
           "--keys", options.keys, "Key pairs to make for each key length and for the authorities, who share them")
        ->check(CLI::Range(2, mostKeys))
        ->capture_default_str();
    addMixtures(app, options);
    app.add_flag("--pfx", options.pfx, "Also write each certificate and its keys as a PKCS#12 file into pfx/");
    app.add_flag("--dry-run", options.dryRun, "Only print what would be made");
    addFormat(app, options);
}

} // namespace sample
