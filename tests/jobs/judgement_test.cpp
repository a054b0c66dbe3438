// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Judgements and states in steps: a failure of one does not hide the others.

#include "jobs/judgement.h"

#include "jobs/failure.h"
#include "jobs/status.h"
#include "tests/jobs/scripted_toolkit.h"

#include <sigildesk/open_toolkit.h>

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace {

/** A certificate of the times 1000 to 3000, issued by a root that is given. */
class Judgements : public ScriptedToolkit {
protected:
    explicit Judgements(int toolkit = SIGIL_TOOLKIT_MAKER)
        : ScriptedToolkit(toolkit)
    {
        certificates = {{"leaf", {"cn=leaf", "cn=root"}}, {"root", {"cn=root", "cn=root"}}};
        certificate.der = "leaf";
        certificate.from = 1000;
        certificate.to = 3000;
        certificate.policy = "1.2.3";
    }
    /** Judges while the toolkit answers so, one verification after the other. */
    host::Steps judge(const std::vector<int>& answers, std::time_t when, std::optional<int> usage = {})
    {
        std::size_t asked = 0;
        doubles::answer(symbol("CERT_Verify"), [&](const doubles::Call&) { return answers.at(asked++); });
        host::Steps steps = host::judge(setting, crypto, certificate, {{"root"}, usage, false, when});
        EXPECT_EQ(asked, answers.size());
        return steps;
    }

    host::Certificate certificate;
};

TEST_F(Judgements, NameThePoliciesThatFailAndNothingElse)
{
    const host::Steps steps = judge({SIGIL_TK_VERIFY_POLICY}, 2000);
    EXPECT_EQ(codesOf(steps), "path 0, validity 0, policies 3207");
    EXPECT_NE(steps.failed()->detail.find(doubles::errorText()), std::string::npos) << steps.failed()->detail;
}

TEST_F(Judgements, OfAnotherTimeAreThoseOfTheMiddle)
{
    EXPECT_EQ(codesOf(judge({SIGIL_TK_VERIFY_EXPIRED, SIGIL_SUCCESS}, 4000)), "path 0, validity 3202, policies 0");
    EXPECT_EQ(codesOf(judge({SIGIL_TK_VERIFY_NOT_YET, SIGIL_TK_VERIFY_NO_ISSUER}, 500)),
        "path 3201, validity 3203, policies 3201");
    const host::Steps steps = judge({SIGIL_TK_VERIFY_EXPIRED, SIGIL_TK_VERIFY_EXPIRED}, 2000);
    EXPECT_EQ(codesOf(steps), "path 0, validity 3202, policies 0") << "its issuer's time is over";
    EXPECT_EQ(steps.all()[2].detail, "1.2.3");
}

TEST_F(Judgements, WithoutAPathTellTheTimeAllTheSame)
{
    for (const auto& [when, code] :
        {std::pair<std::time_t, const char*>{999, "3203"}, {1000, "0"}, {3000, "0"}, {3001, "3202"}}) {
        const host::Steps steps = judge({SIGIL_TK_VERIFY_NO_ISSUER}, when, SIGIL_TK_USAGE_SIGN);
        EXPECT_EQ(codesOf(steps), std::string("path 3201, validity ") + code + ", policies 3201, purpose 3201")
            << when;
        EXPECT_EQ(steps.all()[3].detail, "not checked: the path is not valid");
    }
}

/** What one of the toolkit's functions answers, and what becomes of it. */
struct Answered {
    const char* function;
    int answer;
    const char* steps;
};

class States : public Judgements, public testing::WithParamInterface<int> {
protected:
    States()
        : Judgements(GetParam())
    {
        doubles::answer(symbol("CERT_CheckStatByCRL"), SIGIL_TK_VERIFY_NO_CRL);
        doubles::answer(symbol("OCSP_MakeOCSPReq"), doubles::fills(4, "request"));
        doubles::answer(symbol("OCSP_SendAndRecv"), doubles::fills(3, "response"));
        tell(SIGIL_TK_STATUS_GOOD);
    }
    void tell(int status)
    {
        doubles::answer("GPKI_OCSP_GetCertStatus", [status](const doubles::Call& call) {
            *call.pointer<int>(1) = status;
            return 0;
        });
    }
    host::Status ask()
    {
        steps = {};
        return host::askStatus(setting, crypto, certificate, {{"root"}, "http://responder"}, steps);
    }
    void expectUnknown(const std::vector<Answered>& rows)
    {
        for (const Answered& row : rows) {
            doubles::answer(symbol(row.function), row.answer);
            EXPECT_EQ(ask().state, host::State::Unknown) << row.function;
            EXPECT_EQ(codesOf(steps), std::string("issuer 0, ") + row.steps + ", crl 3208") << row.function;
        }
    }

    host::Steps steps;
};
INSTANTIATE_TEST_SUITE_P(Toolkits, States, testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI));

TEST_P(States, OfAResponderAreTold)
{
    EXPECT_EQ(ask().state, host::State::Good);
    EXPECT_EQ(codesOf(steps), "issuer 0, ocsp 0");
}

TEST_P(States, AreUnknownWhereTheResponderCannotBeAskedOrBelieved)
{
    expectUnknown({{"OCSP_VerifyResMsg", 3703, "ocsp 3703"}, {"OCSP_SendAndRecv", 3601, "ocsp 3601"},
        {"OCSP_MakeOCSPReq", 3700, "ocsp 3700"}});
}

TEST_P(States, AreUnknownWhereTheAnswerCannotBeReadOrDoesNotKnow)
{
    if (GetParam() == SIGIL_TOOLKIT_MAKER) { // its verification says the state itself
        expectUnknown({{"OCSP_VerifyResMsg", SIGIL_TK_OCSP_UNKNOWN, "ocsp 3706"}});
        return;
    }
    tell(SIGIL_TK_STATUS_UNKNOWN);
    EXPECT_EQ(ask().state, host::State::Unknown);
    EXPECT_EQ(codesOf(steps), "issuer 0, ocsp 3706, crl 3208");
    expectUnknown({{"OCSP_GetCertStatus", 3702, "ocsp 3702"}});
}

TEST_F(ScriptedToolkit, HasNoCertificateWithoutTheSettingsOfTheReader)
{
    certificates = {{"leaf", {"cn=leaf", "cn=root"}}};
    try {
        host::readCertificate(setting, crypto, "leaf");
        FAIL() << "it was read";
    } catch (const host::Failure& failure) {
        EXPECT_EQ(failure.code(), SIGIL_SETTINGS_INCOMPLETE);
    }
    EXPECT_EQ(doubles::callsOf("HVTK_CERT_Unload").size(), 1u);
}

} // namespace
