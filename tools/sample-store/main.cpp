// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// sample-store: makes a certificate store to try things on. Root, authorities, certificates and keys are invented, but
// have the names, fields, folders and key-file encryptions of real stores.
#include "tools/sample-store/dates.h"
#include "tools/sample-store/layout.h"
#include "tools/sample-store/options.h"
#include "tools/sample-store/plan.h"
#include "tools/sample-store/report.h"
#include "tools/sample-store/store.h"

#include <CLI/CLI.hpp>

#include <ctime>
#include <exception>
#include <iostream>
#include <sys/stat.h>

namespace {

int run(int argc, char** argv)
{
    sample::Options options;
    options.now = sample::startOfDay(std::time(nullptr));
    CLI::App app(
        "Makes a store of invented Korean certificates: a root, authorities with the names of the accredited "
        "ones, and user certificates with encrypted keys. Its keys are worthless; use it for trying and "
        "measuring only.");
    app.footer(
        "Example: sample-store --target /tmp/home --count 20 --families npki,gpki\n"
        "The issuers' certificates are in TARGET/ca: root.pem is the trust anchor, authorities.pem holds the "
        "others.");
    sample::declareOptions(app, options);
    CLI11_PARSE(app, argc, argv);

    umask(S_IRWXG | S_IRWXO);
    const auto plan = sample::planStore(options);
    if (!options.dryRun) {
        sample::makeFolders(options.target, plan, options.pfx);
        sample::Store(options, plan).write();
    }
    sample::printReport(std::cout, options, plan);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "sample-store: " << failure.what() << "\n";
        return 1;
    }
}
