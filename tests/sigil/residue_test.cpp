// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the C library leaves of keys, random values and passwords: while keys are unlocked nothing that a core would hold, and
// nothing at all once they are locked and what was handed out is given back.

#include "tests/sigil/sigil_test.h"
#include "tests/tools/secret_store.h"

#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <unistd.h>

using namespace sigil_test;

namespace {

class SigilResidue : public testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite() { shared = std::make_unique<SecretStore>(); }
    static void TearDownTestSuite() { shared.reset(); }
    SigilResidue() { EXPECT_EQ(list(session.get(), store.home()), 1); }

    /** Calls with unlocked keys; looks at what a core would hold, locks them, and looks at all. */
    void expectNothing(const std::string& name, int code, const std::function<int()>& call)
    {
        EXPECT_EQ(sigil_unlock(session.get(), 0, store["password"].chars()), 0);
        const int result = call();
        const std::string unlocked = hunt.foundInCore();
        EXPECT_EQ(result, code) << name << ": " << sigil_error_text(session.get());
        EXPECT_EQ(unlocked, "") << "after " << name;
        EXPECT_EQ(sigil_lock(session.get(), SIGIL_ALL_ENTRIES), 0);
        EXPECT_EQ(hunt.found(), "") << "locked after " << name;
    }

    static std::unique_ptr<SecretStore> shared;
    SecretStore& store = *shared;
    SecretHunt hunt = store.hunt();
    Session session = open(GetParam());
};
std::unique_ptr<SecretStore> SigilResidue::shared;

} // namespace

TEST_P(SigilResidue, OfKeys)
{
    expectNothing("a wrong password", SIGIL_WRONG_PASSWORD,
        [&] { return sigil_unlock(session.get(), 0, store["wrong"].chars()); });
    expectNothing("the key in the clear", 0, [&] {
        Bytes key;
        return sigil_private_key(session.get(), 0, SIGIL_PAIR_SIGNING, nullptr, key.out());
    });
    expectNothing("the key under another password", 0, [&] {
        Bytes key;
        return sigil_private_key(session.get(), 0, SIGIL_PAIR_SIGNING, store["new"].chars(), key.out());
    });
    expectNothing("an identity number", SIGIL_IDENTITY_MISMATCH,
        [&] { return sigil_identity(session.get(), 0, "0000000000000"); });
}

TEST_P(SigilResidue, OfSignaturesAndMessages)
{
    for (const int form : {SIGIL_FORM_ATTACHED, SIGIL_FORM_DETACHED, SIGIL_FORM_RAW})
        expectNothing("a signature of form " + std::to_string(form), 0, [&] {
            auto options = sized<SigilSignOptions>();
            options.form = form;
            Bytes signature;
            return sigil_sign(session.get(), 0, &options, "text", 4, signature.out());
        });
}

TEST_P(SigilResidue, OfKeysThatTheDialogGave)
{
    const std::map<std::string, std::string> environment{{"LD_PRELOAD", "libnss_wrapper.so"},
        {"NSS_WRAPPER_PASSWD", store.path("passwd")}, {"NSS_WRAPPER_GROUP", store.path("group")},
        {"QT_QPA_PLATFORM", "offscreen"}, {"QT_PLUGIN_PATH", DIALOG_USER_FOLDER},
        {"QT_QPA_GENERIC_PLUGINS", "dialog-user:0"}, {"SIGIL_TEST_PASSWORD_FILE", store.path("password")}};
    writeFile(
        store.path("passwd"), "picker:x:" + std::to_string(getuid()) + ":0:picker:" + store.home() + ":/bin/sh\n");
    writeFile(store.path("group"), "picker:x:0:\n");
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1); // of the dialog alone: the host has begun
    int entry = -1;
    const int code = sigil_pick(session.get(), nullptr, &entry);
    const std::string unlocked = hunt.foundInCore();
    const std::string all = hunt.found();
    for (const auto& [name, value] : environment)
        unsetenv(name.c_str());
    EXPECT_EQ(code, SIGIL_SUCCESS) << sigil_error_text(session.get());
    EXPECT_EQ(entry, 0);
    EXPECT_EQ(unlocked, "");
    EXPECT_NE(all, "") << "the session keeps it";
    EXPECT_EQ(sigil_lock(session.get(), entry), SIGIL_SUCCESS);
    EXPECT_EQ(hunt.found(), "");
}

TEST_P(SigilResidue, WhatIsUnlockedIsInMemoryOfNoCoreAndGoesWithTheSession)
{
    EXPECT_EQ(sigil_unlock(session.get(), 0, store["password"].chars()), 0);
    EXPECT_NE(hunt.found(), "") << "the session keeps it";
    EXPECT_EQ(hunt.foundInCore(), "");
    session.reset();
    EXPECT_EQ(hunt.found(), "");
}

INSTANTIATE_TEST_SUITE_P(BothToolkits, SigilResidue, testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI));
