// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Which pairs a certificate has.

#include "jobs/keys.h"

#include "jobs/failure.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Held {
    const char *key, *kmKey, *kmDer;
    std::vector<host::Pair> pairs;
};

} // namespace

TEST(APair, HasAKeyAndForKeyManagementACertificate)
{
    using host::Pair;
    for (const Held& row :
        {Held{"", "", "", {}}, Held{"key", "", "", {Pair::Sign}}, Held{"key", "", "der", {Pair::Sign}},
            Held{"key", "km", "", {Pair::Sign}}, Held{"", "km", "der", {Pair::KeyManagement}},
            Held{"key", "km", "der", {Pair::Sign, Pair::KeyManagement}}}) {
        host::Certificate certificate;
        certificate.files.key = row.key;
        certificate.files.kmKey = row.kmKey;
        certificate.kmDer = row.kmDer;
        EXPECT_EQ(host::pairsOf(certificate), row.pairs) << row.key << ", " << row.kmKey << ", " << row.kmDer;
    }
}
