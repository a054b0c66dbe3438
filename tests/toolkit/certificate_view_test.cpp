// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the toolkit reads of certificates without OpenSSL against what OpenSSL reads: the certificates of Debian's packages, a
// sample store, and both with mistakes in them. There is no difference that would be allowed.
//
//     CERTIFICATE_MUTATIONS=200000 CERTIFICATE_SEED=7 toolkit_certificate_view_test

#include "fuzz/toolkit/two_readings.h"
#include "tests/support/files.h"
#include "tests/support/sample_store.h"
#include "tests/toolkit/mutations.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>

using fuzz::TwoReadings;
using toolkit::Bytes;
using toolkit::CertificateView;
using toolkit_test::Mutator;

namespace {

const toolkit::Library& library()
{
    static const toolkit::Library shared;
    return shared;
}

Bytes certificateIn(const std::filesystem::path& path)
{
    const std::string content = readFile(path);
    return toolkit::derOf(toolkit::view(content), SIGIL_TK_ENCODING);
}

/** The authorities that Debian trusts. */
std::vector<Bytes> publicAuthorities()
{
    std::vector<Bytes> found;
    for (const auto& file : std::filesystem::directory_iterator("/usr/share/ca-certificates/mozilla"))
        found.push_back(certificateIn(file.path()));
    std::ranges::sort(found);
    return found;
}

std::vector<Bytes> newCertificates()
{
    const SampleStore store({"--count", "24", "--families", "npki,gpki,mpki,ppki"});
    std::vector<Bytes> found;
    for (const auto& file : std::filesystem::recursive_directory_iterator(store.folder()))
        if (file.path().extension() == ".der" || file.path().extension() == ".cer")
            found.push_back(certificateIn(file.path()));
    std::ranges::sort(found); // the file system's order would make other mutations of one seed
    return found;
}

/** Those of a sample store, made once: its keys take time. */
const std::vector<Bytes>& storedCertificates()
{
    static const std::vector<Bytes> made = newCertificates();
    return made;
}

std::uint32_t setting(const char* name, std::uint32_t otherwise)
{
    const char* const text = std::getenv(name);
    return text ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

std::string hex(const Bytes& der) { return toolkit::hexText(der); }

/** Whether a listing of this certificate needs OpenSSL for nothing. */
bool isWhollyKnown(const Bytes& der)
{
    const auto view = CertificateView::of(der);
    return view && view->publicKeyLength() && view->usageBits() && view->policies() && view->policyIds() &&
        view->subjectAltName() && view->authorityKeyId() && view->subjectKeyId() && view->crlDistributionPoints() &&
        view->authorityInfoAccess();
}

} // namespace

TEST(CertificateView, SaysWhatOpenSslSaysOfPublicAuthorities)
{
    std::size_t known = 0;
    const std::vector<Bytes> authorities = publicAuthorities();
    for (const Bytes& der : authorities) {
        EXPECT_EQ(TwoReadings(library(), der).difference().value_or(""), "") << hex(der);
        known += CertificateView::of(der) ? 1U : 0U;
    }
    std::cout << known << " of " << authorities.size() << " are usual\n";
    EXPECT_GT(known, authorities.size() / 2) << "else the two readings were one";
}

TEST(CertificateView, KnowsAllThatAStoreHolds)
{
    const std::vector<Bytes>& stored = storedCertificates();
    EXPECT_GE(stored.size(), 24U);
    for (const Bytes& der : stored) {
        EXPECT_EQ(TwoReadings(library(), der).difference().value_or(""), "") << hex(der);
        EXPECT_TRUE(isWhollyKnown(der)) << hex(der);
    }
}

TEST(CertificateView, SaysWhatOpenSslSaysOfMistakes)
{
    const std::uint32_t seed = setting("CERTIFICATE_SEED", 1);
    const std::uint32_t mutations = setting("CERTIFICATE_MUTATIONS", 2000);
    std::vector<Bytes> originals = storedCertificates();
    const std::vector<Bytes> authorities = publicAuthorities();
    originals.insert(originals.end(), authorities.begin(), authorities.end());
    Mutator mutator(seed);
    std::size_t taken = 0;
    std::size_t known = 0;
    for (std::uint32_t i = 0; i < mutations; ++i) {
        const Bytes der = mutator.changed(originals[i % originals.size()]);
        const TwoReadings readings(library(), der);
        ASSERT_EQ(readings.difference().value_or(""), "") << "mutation " << i << " of seed " << seed << "\n"
                                                          << hex(der);
        taken += readings.isTaken() ? 1U : 0U;
        known += CertificateView::of(der) ? 1U : 0U;
    }
    std::cout << "seed " << seed << ": " << mutations << " mutations, of which OpenSSL takes " << taken
              << " and the view " << known << "\n";
    EXPECT_GT(known, 0U) << "else the two readings were one";
    EXPECT_LT(taken, mutations) << "else nothing was wrong";
}
