// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/util.h>

namespace {

struct NamePart {
    int result;
    std::string text; // "old" when the output was left as it was
    bool operator==(const NamePart&) const = default;
};

std::ostream& operator<<(std::ostream& out, const NamePart& found)
{
    return out << found.result << ' ' << found.text;
}

NamePart get(int (CUtil::*operation)(char*, int, char*), const char* dn, int size = 64)
{
    char out[64] = "old";
    const int result = (CUtil().*operation)(Arg(dn), size, out);
    return {result, out};
}

} // namespace

TEST(Names, PartsOfADistinguishedName)
{
    struct Case {
        const char* dn;
        NamePart cn;
        NamePart o;
        NamePart ou;
    };
    const NamePart none{1, "old"};
    const NamePart empty{0, "old"};
    const Case cases[] = {
        {"cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR", {0, "Root CA"},
            {0, "Ministry of National Defense"}, {0, "MPKI"}},
        {"CN=Hong,OU=x", {0, "Hong"}, none, none},
        {"Cn=Hong,oU=Sales,O=Acme,C=KR", {0, "Hong"}, {0, "Acme"}, {0, "Sales"}},
        {"ou=x,cn=Hong", none, none, {0, "x"}}, // the last attribute is deliberately not found
        {"cn=Hong", none, none, none},
        {"cn=,o=,ou=,c=KR", empty, empty, empty},
        {"cn= Hong ,c=KR", {0, " Hong "}, none, none},
        {"ou=first,ou=second,c=KR", none, none, {0, "first"}},
        {"cn=\xC8\xAB\xB1\xE6\xB5\xBF,c=KR", {0, "\xC8\xAB\xB1\xE6\xB5\xBF"}, none, none},
        {"cn=a=b,c=KR", {0, "a=b"}, none, none},
        {"cn=foo=bar,o=Acme,c=KR", {0, "foo=bar"}, {0, "bar"}, none}, // the first "o=" wherever it stands
        {"", none, none, none},
        {",", none, none, none},
        {"cn", none, none, none},
        {nullptr, none, none, none},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dn ? c.dn : "null");
        EXPECT_EQ(get(&CUtil::GetCNString, c.dn), c.cn);
        EXPECT_EQ(get(&CUtil::GetOString, c.dn), c.o);
        EXPECT_EQ(get(&CUtil::GetOUString, c.dn), c.ou);
    }
}

TEST(Names, TheValueIsCutToTheOutput)
{
    EXPECT_EQ(get(&CUtil::GetCNString, "cn=Hong,c=KR", 5), (NamePart{0, "Hong"}));
    EXPECT_EQ(get(&CUtil::GetCNString, "cn=Hong,c=KR", 4), (NamePart{0, "Hon"}));
    EXPECT_EQ(get(&CUtil::GetCNString, "cn=Hong,c=KR", 1), (NamePart{0, ""}));
    EXPECT_EQ(get(&CUtil::GetCNString, "cn=Hong,c=KR", 0), (NamePart{0, "old"}));
    EXPECT_EQ(get(&CUtil::GetCNString, "cn=Hong,c=KR", -1), (NamePart{0, "old"}));
    EXPECT_EQ(CUtil().GetCNString(Arg("cn=Hong,c=KR"), 8, nullptr), 0);
}
