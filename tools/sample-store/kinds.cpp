// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/kinds.h"

#include <algorithm>
#include <iterator>

namespace sample {

namespace {

constexpr Authority yessign1{"cn=yessignCA Class 1,ou=AccreditedCA,o=yessign,c=kr",
    "ldap://ds.yessign.example:389/ou=dp4p54541,ou=AccreditedCA,o=yessign,c=kr?certificateRevocationList",
    "http://ocsp.yessign.example:4612", "http://www.yessign.example/cps.htm"};
constexpr Authority yessign2{"cn=yessignCA Class 2,ou=AccreditedCA,o=yessign,c=kr",
    "ldap://ds.yessign.example:389/ou=dp5p10277,ou=AccreditedCA,o=yessign,c=kr?certificateRevocationList",
    "http://ocsp.yessign.example:4612", "http://www.yessign.example/cps.htm"};
constexpr Authority signKorea{"cn=SignKorea CA4,ou=AccreditedCA,o=SignKorea,c=KR",
    "ldap://dir.signkorea.example:389/ou=dp6p7098,ou=AccreditedCA,o=SignKorea,c=KR",
    "http://ocsp.signkorea.example", "http://www.signkorea.example/cps.html"};
constexpr Authority tradeSign{"cn=TradeSignCA4,ou=AccreditedCA,o=TradeSign,c=KR",
    "ldap://ldap.tradesign.example:389/cn=crl1dp989,ou=crldp4,ou=AccreditedCA,o=TradeSign,c=KR",
    "http://ocsp.tradesign.example:18000/OCSPServer", "http://www.tradesign.example/cps.html"};
constexpr Authority oldTradeSign{"cn=TradeSignCA,ou=AccreditedCA,o=TradeSign,c=KR",
    "ldap://ldap.tradesign.example:389/cn=crl1dp17,ou=crldp,ou=AccreditedCA,o=TradeSign,c=KR",
    "http://ocsp.tradesign.example:18000/OCSPServer", "http://www.tradesign.example/cps.html"};
constexpr Authority crossCert{"cn=CrossCertCA4,ou=AccreditedCA,o=CrossCert,c=KR",
    "ldap://dir.crosscert.example:389/cn=s1dp8p21,ou=crldp,ou=AccreditedCA,o=CrossCert,c=KR"
    "?certificateRevocationList",
    "http://ocsp.crosscert.example:14203/OCSPServer", "http://gca.crosscert.example/cps.html"};
constexpr Authority signGate{"cn=signGATE CA6,ou=AccreditedCA,o=KICA,c=KR",
    "ldap://ldap.signgate.example:389/ou=dp12p4096,ou=crldp,ou=AccreditedCA,o=KICA,c=KR?certificateRevocationList",
    "http://ocsp.signgate.example:9020/OCSPServer", "http://www.signgate.example/cps.html"};
constexpr Authority ncaSign{"cn=NCASign CA,ou=AccreditedCA,o=NCASign,c=KR",
    "ldap://ds.ncasign.example:389/cn=dp2p33,ou=crldp,ou=AccreditedCA,o=NCASign,c=KR?certificateRevocationList",
    "http://ocsp.ncasign.example", "http://www.ncasign.example/cps.html"};
constexpr Authority administration{"cn=CA131100001,ou=GPKI,o=Government of Korea,c=KR",
    "ldap://cen.dir.gpki.example:389/cn=crl1p1dp8335,cn=CA131100001,ou=GPKI,o=Government of Korea,c=KR"
    "?certificateRevocationList;binary",
    "http://gva.gpki.example:8000", "http://www.gpki.example/cps.html"};
constexpr Authority education{"cn=CA134100031,ou=GPKI,o=Government of Korea,c=KR",
    "ldap://ldap.epki.example:389/cn=crl1p1dp2121,cn=CA134100031,ou=GPKI,o=Government of Korea,c=KR"
    "?certificateRevocationList;binary",
    "http://ocsp.epki.example:8000", "http://www.epki.example/cps.html"};
constexpr Authority defence{"cn=CA1,ou=MPKI,o=Ministry of National Defense,c=KR",
    "ldap://dir.mpki.example:389/cn=crl1dp1,ou=MPKI,o=Ministry of National Defense,c=KR?certificateRevocationList",
    "http://ocsp.mpki.example", "http://www.mpki.example/cps.html"};
constexpr Authority talo{"cn=TALO CA 1,ou=TALO,o=TALO,c=KR",
    "ldap://dir.talo.example:389/cn=crl1dp1,ou=TALO,o=TALO,c=KR?certificateRevocationList",
    "http://ocsp.talo.example", "http://www.talo.example/cps.html"};

constexpr Kind npki[] = {
    {Family::Npki, Holder::Person, "NPKI/yessign/USER", &yessign1,
        "cn={name}({latin}){00000000000000000000},ou=NRB,ou=personal4IB,o=yessign,c=kr", {"1.2.410.200005.1.1.4"},
        {}},
    {Family::Npki, Holder::Person, "NPKI/yessign/USER", &yessign1,
        "cn={name}(){00000000000000000000},ou=HSB,ou=personal4IB,o=yessign,c=kr", {"1.2.410.200005.1.1.1"}, {}},
    {Family::Npki, Holder::Person, "NPKI/SignKorea/USER", &signKorea,
        "cn={name}_{0000000000},ou=HTS,ou=새벽증권,ou=증권,o=SignKorea,c=KR", {"1.2.410.200004.5.1.1.9"}, {}},
    {Family::Npki, Holder::Company, "NPKI/KICA/USER", &signGate,
        "cn={name},ou=RA센터,ou=견본상공회의소,ou=등록기관,ou=licensedCA,o=KICA,c=KR", {"1.2.410.200004.5.2.1.1"},
        {}},
    {Family::Npki, Holder::Person, "NPKI/TradeSign/USER", &oldTradeSign,
        "cn={name}(견본무역협회),ou=견본무역협회,ou=LicensedCA,o=TradeSign,c=KR",
        {"1.2.410.200004.2.1", "1.2.410.200012.1.1.1"}, "1.2.410.200012.1.1.2"},
    {Family::Npki, Holder::Company, "NPKI/CrossCert/USER", &crossCert,
        "cn={name},ou=법인,ou=견본등록대행,ou=AccreditedCA,o=CrossCert,c=KR", {"1.2.410.200004.5.4.1.2"}, {}},
    {Family::Npki, Holder::Company, "NPKI/TradeSign/USER", &tradeSign,
        "cn={name}(견본무역협회),ou=견본무역협회,ou=LicensedCA,o=TradeSign,c=KR", {"1.2.410.200012.1.1.3"},
        "1.2.410.200012.1.1.4"},
    {Family::Npki, Holder::Person, "NPKI/SignGate/USER", &signGate,
        "cn={name},ou=RA센터,ou=견본우체국,ou=등록기관,ou=licensedCA,o=KICA,c=KR", {"1.2.410.200004.5.2.1.2"}, {}},
    {Family::Npki, Holder::Person, "NPKI/yessign/USER", &yessign2,
        "cn={name}({latin}){00000000000000000000},ou=SKB,ou=personal4IB,o=yessign,c=kr", {"1.2.410.200005.1.1.6.2"},
        {}},
    {Family::Npki, Holder::Person, "NPKI/NCASign/USER", &ncaSign,
        "cn={name},ou=견본진흥원,ou=AccreditedCA,o=NCASign,c=KR", {"1.2.410.200004.5.3.1.9"}, {}},
    {Family::Npki, Holder::Company, "NPKI/SignKorea/USER", &signKorea,
        "cn={name}_{0000000000},ou=KOSCOM,ou=LicensedCA,o=SignKorea,c=KR", {"1.2.410.200004.5.1.1.7"}, {}},
    {Family::Npki, Holder::Person, "NPKI/CrossCert/USER", &crossCert,
        "cn={name},ou=개인,ou=견본등록대행,ou=AccreditedCA,o=CrossCert,c=KR", {"1.2.410.200004.5.4.1.101"}, {}},
    {Family::Npki, Holder::Company, "NPKI/KICA/USER", &signGate,
        "cn={name},ou=RA센터,ou=견본세무서,ou=등록기관,ou=licensedCA,o=KICA,c=KR", {"1.2.410.200004.5.2.1.5001"},
        {}},
    {Family::Npki, Holder::Company, "NPKI/yessign/USER", &yessign1,
        "cn={name}(){00000000000000000000},ou=NRB,ou=xUse4Esero,o=yessign,c=kr", {"1.2.410.200005.1.1.6.8"}, {}},
};

constexpr Kind gpki[] = {
    {Family::Gpki, Holder::Person, "GPKI/Certificate/class2", &administration,
        "cn={000}{name}{000},ou=people,ou=견본행정부,o=Government of Korea,c=KR", {"1.2.410.100001.2.2.1"}, {}},
    {Family::Gpki, Holder::Server, "GPKI/Certificate/class1", &administration,
        "cn=SVR{0000000000},ou=Group of Server,o=Government of Korea,c=KR", {"1.2.410.100001.2.1.2"}, {}},
    {Family::Gpki, Holder::Person, "GPKI/Certificate/class2", &education,
        "cn={000}{name}{000},ou=people,ou=견본교육청,o=Government of Korea,c=KR", {"1.2.410.100001.5.3.1.3"}, {}},
};

constexpr Kind mpki[] = {
    {Family::Mpki, Holder::Person, "MPKI/USER", &defence,
        "cn={name}{00000000},ou=people,ou=MPKI,o=Ministry of National Defense,c=KR", {"1.2.410.100001.2.2.1"}, {}},
};

constexpr Kind ppki[] = {
    {Family::Ppki, Holder::Person, "Halvard/TALOCERT/TALO", &talo, "cn={name}{00000000},ou=TALO,o=TALO,c=KR",
        {"1.2.410.200004.5.5.1.3.1"}, {}},
    {Family::Ppki, Holder::Person, "NPKI/TALO/User", &talo, "cn={name}{00000000},ou=TALO,o=TALO,c=KR",
        {"1.2.410.200004.5.5.1.4.1"}, {}},
};

constexpr std::string_view familyNames[] = {"npki", "gpki", "mpki", "ppki"};

} // namespace

std::string_view familyName(Family family) { return familyNames[static_cast<std::size_t>(family)]; }

std::optional<Family> familyOf(std::string_view name)
{
    const auto found = std::ranges::find(familyNames, name);
    if (found == std::end(familyNames))
        return std::nullopt;
    return static_cast<Family>(found - std::begin(familyNames));
}

std::span<const Kind> kindsOf(Family family)
{
    const std::span<const Kind> kinds[] = {npki, gpki, mpki, ppki};
    return kinds[static_cast<std::size_t>(family)];
}

} // namespace sample
