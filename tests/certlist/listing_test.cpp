// Discovery of certificates on disks: which folders, which files, in which order.

#include "tests/certlist/scripted.h"

namespace fs = std::filesystem;

namespace {

using Listing = Scripted;

TEST_F(Listing, FindsEveryFamilyInTheOrderOfFamiliesAndFolders)
{
    addPair(home / "NPKI/TALO/User/p2", {{"subject", "cn=ppki two"}});
    addPair(home / "Halvard/TALOCERT/TALO/p1", {{"subject", "cn=ppki one"}});
    addPair(home / "MPKI/USER/m1", {{"subject", "cn=mpki"}});
    for (const char* ca : {"NCASign", "KICA", "SignGate", "CrossCert", "TradeSign", "SignKorea", "yessign"})
        addNpki("n", {{"subject", std::string("cn=") + ca}}, ca);
    addGpki("g2", {{"subject", "cn=gpki class2"}}, "class2");
    addGpki("g1", {{"subject", "cn=gpki class1"}}, "class1");
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(),
        (std::vector<std::string>{"cn=gpki class1", "cn=gpki class2", "cn=yessign", "cn=SignKorea", "cn=TradeSign",
            "cn=CrossCert", "cn=SignGate", "cn=KICA", "cn=NCASign", "cn=mpki", "cn=ppki one", "cn=ppki two"}));
    EXPECT_EQ(entry(0)->nPKIType, 1);
    EXPECT_EQ(entry(2)->nPKIType, 2);
    EXPECT_EQ(entry(9)->nPKIType, 4);
    EXPECT_EQ(entry(10)->nPKIType, 8);
    EXPECT_EQ(entry(10)->nMediaType, 1);
}

} // namespace
