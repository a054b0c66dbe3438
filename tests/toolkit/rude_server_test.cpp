// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Servers that misbehave: every call ends in time, with a code, and without eating the host's memory.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <thread>
#include <vector>

#include <malloc.h>

using namespace toolkit_test;

namespace {

using Clock = std::chrono::steady_clock;

// What is promised, and what a loaded machine may take on top of it.
constexpr std::chrono::seconds mostTime{20 + 4};
constexpr long mostGrowth = 64L * 1024; // KiB

struct Outcome {
    int code;
    Clock::duration time;
};

/** Fetches something from the server with the "GPKI_" face. */
Outcome fetchFrom(const Server& server, const std::string& manner)
{
    const ToolkitLibrary toolkit("GPKI_");
    ByteString out(toolkit);
    const std::string scheme = manner.starts_with("ldap") ? "ldap" : "http";
    const std::string url = scheme + "://127.0.0.1:" + std::to_string(server.port()) + "/cn=x,c=KR";
    const auto begin = Clock::now();
    const int code = toolkit("LDAP_GetDataByURL", int(SIGIL_TK_FETCH_CA_CERT), text(url), out.get());
    EXPECT_TRUE(out.empty()) << manner;
    return {code, Clock::now() - begin};
}

/** Verifies a certificate that names three addresses of revocation lists, all of them on the server. */
Outcome verifyAgainst(const Server& server, const Workshop& workshop)
{
    const ToolkitLibrary toolkit("HVTK_");
    const std::string url = "URI:http://127.0.0.1:" + std::to_string(server.port());
    workshop.certificate("root", "/CN=root", "basicConstraints=critical,CA:TRUE");
    workshop.certificate(
        "user", "/CN=user", "crlDistributionPoints=" + url + "/1," + url + "/2," + url + "/3", "root");
    ByteString root(toolkit, workshop.read("root.crt"));
    ByteString user(toolkit, workshop.read("user.crt"));
    EXPECT_EQ(toolkit("CERT_AddTrustedCert", root.get()), 0);
    BINSTR* const nothing = nullptr;
    const auto begin = Clock::now();
    const int code = toolkit("CERT_Verify", user.get(), 0, text(""), true, nothing, nothing);
    return {code, Clock::now() - begin};
}

/** A line of /proc/self/status, in KiB. */
long memory(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name + ":"))
            return std::stol(line.substr(name.size() + 1));
    return -1;
}

/** Memory in use from which growth is counted. */
long freshStart()
{
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins anew
    return memory("VmRSS");
}

} // namespace

TEST(RudeServers, NobodyKeepsTheHostWaiting)
{
    const std::vector<std::string> manners{"silent", "half", "slow", "slow_head", "interim", "slow_redirection",
        "ldap_silent", "ldap_half", "ldap_slow", "ldap_silent_search", "ldap_slow_entries", "ldap_others",
        "ldap_garbled"};
    std::vector<std::thread> callers;
    for (const std::string& manner : manners)
        callers.emplace_back([&manner] {
            const Workshop workshop;
            const Server server = Server::rude(workshop, manner);
            const Outcome outcome = fetchFrom(server, manner);
            EXPECT_EQ(outcome.code, SIGIL_TK_FETCH) << manner;
            EXPECT_LE(outcome.time, mostTime) << manner;
        });
    callers.emplace_back([] {
        const Workshop workshop;
        const Outcome outcome = verifyAgainst(Server::rude(workshop, "silent"), workshop);
        EXPECT_EQ(outcome.code, SIGIL_TK_VERIFY_NO_CRL);
        EXPECT_LE(outcome.time, mostTime) << "all addresses of a call share its time";
    });
    for (std::thread& caller : callers)
        caller.join();
}

TEST(RudeServers, NobodyFillsTheMemoryOfTheHost)
{
    for (const std::string manner :
        {"short", "huge", "negative", "endless", "endless_chunks", "endless_head", "endless_line", "compressed",
            "redirection", "elsewhere", "ldap_closing", "ldap_huge", "ldap_huge_value", "ldap_endless_bind",
            "ldap_endless_entries", "ldap_endless_references", "ldap_many_values"}) {
        const Workshop workshop;
        const Server server = Server::rude(workshop, manner);
        const long before = freshStart();
        const Outcome outcome = fetchFrom(server, manner);
        const bool isEmpty = manner == std::string("ldap_many_values"); // an honest answer without anything in it
        EXPECT_EQ(outcome.code, isEmpty ? SIGIL_TK_NOT_FOUND : SIGIL_TK_FETCH) << manner;
        EXPECT_LE(outcome.time, mostTime) << manner;
        const long growth = memory("VmHWM") - before;
        RecordProperty(manner, std::to_string(growth));
#ifndef __SANITIZE_ADDRESS__ // which holds on to what was released
        EXPECT_LE(growth, mostGrowth) << manner;
#endif
    }
}

TEST(RudeServers, RedirectionsAreCountedAsAddresses)
{
    const Workshop workshop;
    const Server server = Server::rude(workshop, "redirection");
    fetchFrom(server, "redirection");
    EXPECT_EQ(workshop.read("asked").size(), 4U);
}
