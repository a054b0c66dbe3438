// Private keys of listed certificates: decryption, identity random value, identity check, change of password.

#include "tests/certlist/scripted.h"

namespace {

class Keys : public Scripted {
protected:
    /** Entry 0 has a signing pair, entry 1 a key-management pair too. */
    Keys()
    {
        addNpki("a", {{"subject", "cn=a"}});
        addKm(addNpki("b", {{"subject", "cn=b"}}, "SignKorea"));
    }
    void SetUp() override
    {
        start();
        ASSERT_EQ(load(), 0);
        ASSERT_EQ(subjects(), (std::vector<std::string>{"cn=a", "cn=b"}));
    }
    int decrypt(int index, const std::string& password, Buffer& sign, Buffer& km)
    {
        return CLP_DecryptPriKey(clp, index, Text(password), sign.to(), sign.length(), km.to(), km.length());
    }
    int random(int index, const std::string& password, Buffer& out)
    {
        return CLP_GetPriKeyRandom(clp, index, Text(password), out.to(), out.length());
    }
};

TEST_F(Keys, DecryptGivesTheSigningKeyAndLeavesTheOtherOutputAlone)
{
    Buffer sign, km;
    EXPECT_EQ(decrypt(0, goodPassword, sign, km), 0);
    EXPECT_EQ(sign.text(), fake::key());
    EXPECT_EQ(sign.at(*sign.length()), '\0');
    EXPECT_FALSE(km.given());
    EXPECT_EQ(*km.length(), -1);
}

TEST_F(Keys, DecryptGivesBothKeysAndKeepsThemInTheEntry)
{
    Buffer sign, km;
    EXPECT_EQ(decrypt(1, goodPassword, sign, km), 0);
    EXPECT_EQ(sign.text(), fake::key());
    EXPECT_EQ(km.text(), "KEY(K1)");
    const auto kept = entry(1);
    EXPECT_EQ(kept->nSignPriKeyLen, *sign.length());
    EXPECT_EQ(kept->nKmPriKeyLen, *km.length());
}

TEST_F(Keys, WrongPasswordStillHandsBackAnEmptyBuffer)
{
    Buffer sign, km;
    EXPECT_EQ(decrypt(0, "wrong", sign, km), 1113);
    ASSERT_TRUE(sign.given());
    EXPECT_EQ(*sign.length(), 0);
    EXPECT_EQ(sign.at(0), '\0');
    EXPECT_EQ(lastLog(),
        "CLoadDISK::DecryptPriKey() - ERR_INVALIDPASSWORD >> PriKeyDecrypt() : 2004 (Msg : words of the toolkit)");
}

} // namespace
