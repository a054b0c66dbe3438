// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Who is trusted, and where issuers come from.

#include "jobs/trust.h"

#include "tests/jobs/scripted_toolkit.h"

#include <sigildesk/open_toolkit.h>

#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

struct Authority {
    const char *name, *address;
};

class Issuers : public ScriptedToolkit {
protected:
    void settings(const std::vector<Authority>& authorities) const
    {
        std::string text = "[VALIDATOIN_OPTION]\nCA_INFO_COUNT = " + std::to_string(authorities.size()) + "\n";
        for (std::size_t i = 0; i < authorities.size(); ++i)
            text += "[CA_INFO" + std::to_string(i + 1) + "]\nCA_DN = " + authorities[i].name +
                "\nDIR_URL = " + authorities[i].address + "\n";
        folder.write("HVCToolkitV30.conf", text);
    }
    std::string issuerOf(const std::string& certificate, const Texts& given = {})
    {
        return host::Trust(setting, crypto, certificate, host::Network::Issuers, given).issuer();
    }
};

/** Trust under a path that verifies. */
class Paths : public ScriptedToolkit, public testing::WithParamInterface<int> {
protected:
    Paths()
        : ScriptedToolkit(GetParam())
    {
        certificates["leaf"] = {"cn=leaf", "cn=root"};
    }
    Texts judged()
    {
        host::Trust trust(setting, crypto, "leaf", host::Network::None, {});
        EXPECT_EQ(trust.judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, 0), SIGIL_SUCCESS);
        return trust.path();
    }
    std::string count() const
    {
        return setting.toolkit == SIGIL_TOOLKIT_MAKER ? "HVTK_UTIL_GetObjectCount" : "GPKI_CERT_GetCertCount";
    }
};
INSTANTIATE_TEST_SUITE_P(Toolkits, Paths, testing::Values(SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI));

} // namespace

TEST_F(Issuers, AreFetchedFromTheDirectoriesOfTheSettingsFile)
{
    certificates = {
        {"leaf", {"cn=leaf", "cn=CA"}}, {"ca", {"cn=CA", "cn=Root CA"}}, {"root", {"cn=Root CA", "cn=Root CA"}}};
    served = {{"ldap://damaged/cn=CA", "no certificate"}, {"ldap://good/CN=ca", "ca"},
        {"ldap://good/cn=Root CA", "root"}};
    settings({{"cn=Another", "ldap://another"}, {"cn=CA", ""}, {"cn=CA", "ldap://damaged"},
        {"CN=ca", "ldap://good"}, {"cn=Root CA", "ldap://good"}});
    EXPECT_EQ(issuerOf("leaf"), "ca");
    EXPECT_EQ(fetched, (Texts{"ldap://damaged/cn=CA", "ldap://good/CN=ca", "ldap://good/cn=Root CA"}));
    EXPECT_EQ(trusted, Texts{"root"}) << "of those that were fetched";
}

TEST_F(Issuers, OfTheSettingsFileAreNotTrustedBesideTheCallers)
{
    certificates = {
        {"leaf", {"cn=leaf", "cn=Root CA"}}, {"root", {"cn=Root CA", "cn=Root CA"}}, {"own", {"cn=own", "cn=own"}}};
    served = {{"ldap://good/cn=Root CA", "root"}};
    settings({{"cn=Root CA", "ldap://good"}});
    EXPECT_EQ(issuerOf("leaf", {"own"}), "root");
    EXPECT_EQ(trusted, Texts{"own"});
}

TEST_F(Issuers, OfTheDefenceRootAreNeverFetched)
{
    const char root[] = "cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR";
    certificates = {{"leaf", {"cn=leaf", root}}};
    settings({{root, "ldap://good"}});
    EXPECT_EQ(issuerOf("leaf"), "");
    EXPECT_EQ(fetched, Texts{});
}

TEST_F(Issuers, ThatIssueEachOtherAreNotFetchedForEver)
{
    certificates = {{"leaf", {"cn=leaf", "cn=a", "caIssuers=http://a"}},
        {"a", {"cn=a", "cn=b", "caIssuers=http://b"}},
        {"b", {"cn=b", "cn=a", "OCSP=http://o, caIssuers=http://a"}}};
    served = {{"http://a", "a"}, {"http://b", "b"}};
    EXPECT_EQ(issuerOf("leaf"), "a");
    EXPECT_EQ(fetched,
        (Texts{"http://a", "http://b", "http://a", "http://b", "http://a", "http://b", "http://a", "http://b"}));
}

TEST_F(Issuers, OfWhatIsNoCertificateAreNone)
{
    EXPECT_EQ(issuerOf("no certificate"), "");
    EXPECT_EQ(host::addressesIn(crypto, "no certificate", "OCSP"), Texts{});
}

TEST_P(Paths, AreThoseThatTheToolkitHandsBack)
{
    doubles::answer(symbol("CERT_Verify"), doubles::fills(setting.toolkit == SIGIL_TOOLKIT_MAKER ? 5 : 6, "leaf"));
    doubles::answer(count(), [](const doubles::Call& call) {
        *call.pointer<int>(1) = 2;
        return 0;
    });
    doubles::answer(setting.toolkit == SIGIL_TOOLKIT_MAKER ? "HVTK_UTIL_GetObject" : "GPKI_CERT_GetCert",
        [](const doubles::Call& call) {
            doubles::release(call.pointer<BINSTR>(2)); // of one toolkit there is something
            doubles::fill(call.pointer<BINSTR>(2), "leaf");
            return 0;
        });
    EXPECT_EQ(judged(), (Texts{"cn=leaf", "cn=leaf"}));
}

TEST_P(Paths, AreNoneWhereTheToolkitHandsNoneBack)
{
    EXPECT_EQ(judged(), Texts{}) << "nothing at all";
    doubles::answer(symbol("CERT_Verify"), doubles::fills(setting.toolkit == SIGIL_TOOLKIT_MAKER ? 5 : 6, "x"));
    doubles::answer(count(), 3000);
    EXPECT_EQ(judged(), Texts{}) << "what is no list";
}

TEST_P(Paths, AreNotLookedForWithoutTheirTime)
{
    doubles::answer(
        symbol(setting.toolkit == SIGIL_TOOLKIT_MAKER ? "CERT_SetVerifyEnv1" : "CERT_SetVerifyEnv"), 3200);
    host::Trust trust(setting, crypto, "leaf", host::Network::None, {});
    EXPECT_EQ(trust.judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, 0), 3200);
    EXPECT_TRUE(doubles::callsOf(symbol("CERT_Verify")).empty());
}
