// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/names.h"

#include <string_view>

namespace sample {

namespace {

struct Syllable {
    std::string_view hangul;
    std::string_view latin;
};

constexpr Syllable familyNames[] = {{"김", "KIM"}, {"이", "LEE"}, {"박", "PARK"}, {"최", "CHOI"}, {"정", "JUNG"},
    {"강", "KANG"}, {"조", "CHO"}, {"윤", "YOON"}, {"장", "JANG"}, {"임", "LIM"}, {"한", "HAN"}, {"오", "OH"},
    {"서", "SEO"}, {"신", "SHIN"}, {"권", "KWON"}, {"황", "HWANG"}, {"안", "AHN"}, {"송", "SONG"}, {"류", "RYU"},
    {"전", "JEON"}, {"홍", "HONG"}, {"고", "KO"}, {"문", "MOON"}, {"양", "YANG"}, {"손", "SON"}, {"배", "BAE"},
    {"백", "BAEK"}, {"허", "HEO"}, {"남궁", "NAMGUNG"}, {"제갈", "JEGAL"}};

constexpr Syllable givenNames[] = {{"민", "MIN"}, {"서", "SEO"}, {"지", "JI"}, {"현", "HYUN"}, {"준", "JUN"},
    {"영", "YOUNG"}, {"수", "SU"}, {"은", "EUN"}, {"진", "JIN"}, {"우", "WOO"}, {"하", "HA"}, {"윤", "YUN"},
    {"성", "SUNG"}, {"혜", "HYE"}, {"재", "JAE"}, {"경", "KYUNG"}, {"미", "MI"}, {"선", "SUN"}, {"태", "TAE"},
    {"호", "HO"}, {"길", "GIL"}, {"동", "DONG"}, {"나", "NA"}, {"라", "RA"}, {"석", "SEOK"}, {"희", "HEE"},
    {"원", "WON"}, {"철", "CHUL"}, {"슬", "SEUL"}, {"빈", "BIN"}};

constexpr std::string_view companyForms[] = {"(주){}", "{}(주)", "주식회사 {}", "{}", "(재){}"};

constexpr std::string_view companyNames[] = {"견본하늘", "견본누리", "견본가람", "견본미르", "견본다온", "견본해솔",
    "견본이든", "견본아라", "견본보람", "견본새벽", "견본한울", "견본푸른", "견본나래", "견본도담", "견본마루",
    "견본초록"};

constexpr std::string_view companyTrades[] = {"전자", "상사", "무역", "건설", "소프트", "물산", "식품", "통신",
    "기계", "화학", "의료기", "교육", "출판", "운수", "섬유", "금속", "조선", "항공", "정밀", "디자인"};

} // namespace

Person inventPerson(Random& random)
{
    const Syllable& family = random.pick(familyNames);
    const Syllable& first = random.pick(givenNames);
    const Syllable& second = random.pick(givenNames);
    Person person;
    person.name.append(family.hangul).append(first.hangul).append(second.hangul);
    person.latin.append(family.latin).append(" ").append(first.latin).append(second.latin);
    return person;
}

std::string inventCompany(Random& random)
{
    std::string company(random.pick(companyForms));
    std::string name(random.pick(companyNames));
    name.append(random.pick(companyTrades));
    return company.replace(company.find("{}"), 2, name);
}

std::string inventResidentNumber(Random& random)
{
    const int year = random.between(50, 99);
    const int month = random.between(1, 12);
    const std::string sex = random.below(2) == 0 ? "1" : "2";
    const std::string date = std::to_string(year) + (month < 10 ? "0" : "") + std::to_string(month) + "00";
    return date + sex + inventDigits(random, 6);
}

std::string inventBusinessNumber(Random& random) { return "000" + inventDigits(random, 7); }

std::string inventDigits(Random& random, int count)
{
    std::string digits;
    while (count-- > 0)
        digits += static_cast<char>('0' + random.below(10));
    return digits;
}

} // namespace sample
