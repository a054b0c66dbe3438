// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Jobs over the recording toolkits: certificates are what a test says of them.
 */
#pragma once

#include "jobs/certificate.h"
#include "jobs/steps.h"
#include "tests/doubles/recorder.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

/** What the toolkit reads in a certificate. */
struct Read {
    std::string subject, issuer;
    std::string addresses = {}; ///< "OCSP=…, caIssuers=…"
};

class ScriptedToolkit : public testing::Test {
protected:
    explicit ScriptedToolkit(int toolkit = SIGIL_TOOLKIT_MAKER);
    ~ScriptedToolkit() override { EXPECT_EQ(doubles::liveByteStrings(), heldAtTheStart); }

    /** The symbol of the toolkit for what both call the same: "CERT_Load". */
    std::string symbol(const std::string& name) const;

    std::map<std::string, Read> certificates;  ///< by their bytes; nothing else can be loaded
    std::map<std::string, std::string> served; ///< what lies at an address
    std::vector<std::string> fetched;          ///< the addresses that were asked, in order
    std::vector<std::string> trusted;          ///< the certificates that the toolkit was told to trust

    TemporaryFolder folder; ///< with the settings file
    host::Setting setting;
    host::Crypto crypto;

private:
    doubles::Answer writesOf(std::string Read::*text);

    std::string m_loaded;
    int heldAtTheStart;
};

/** "path 0, validity 3202": the steps with their codes. */
std::string codesOf(const host::Steps& steps);
