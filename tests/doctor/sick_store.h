// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A home folder with stores that a test makes defects in, what the doctor says of it, and what the list shows.
 */
#pragma once

#include "doctor/doctor.h"
#include "foundation/environment.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

/** Files of a sample certificate. */
struct SamplePair {
    std::string signCert;
    std::string signKey;
    std::string kmCert;
    std::string kmKey;
};

class SickStore : public ::testing::Test {
protected:
    SickStore();
    ~SickStore() override;

    /** A valid pair, and one that has expired. */
    static const SamplePair& good();
    static const SamplePair& expired();
    static const std::string& pfx();

    /** Writes a signing pair into a folder of its own. @return the folder */
    std::filesystem::path pair(const std::string& folder, const SamplePair& files = good()) const;
    /** The same with the key-management pair. */
    std::filesystem::path bothPairs(const std::string& folder) const;
    /** Writes STEM_sig.cer and STEM_sig.key into a folder that certificates share. */
    std::filesystem::path shared(const std::string& folder, const std::string& stem) const;

    /** Paths of the certificates that the list shows on a medium; @p folder is a disk, or empty for the home folder. */
    std::set<std::string> listed(const std::string& folder = {}) const;
    /** Paths of the certificates that a report says are listed. */
    static std::set<std::string> listedBy(const sigil::StoreReport& report);
    /** "rule", "rule, listed" for each finding about @p path, joined with "; ". */
    std::string said(const sigil::StoreReport& report, const std::filesystem::path& path) const;
    /** The finding of @p rule; an empty one when there is none. */
    static sigil::Finding finding(const sigil::StoreReport& report, const std::string& rule);

    TemporaryFolder m_folder;
    std::filesystem::path home = m_folder.path("user");
    sigil::DoctorQuestion question;

private:
    sigil::Environment m_machine;
};
