// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Names, dates, policies and plain texts of any content, as toolkits and certificates may bring them.

#include "foundation/text_field.h"
#include "fuzz/target.h"

#include <sigildesk/util.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

CUtil util(0, nullptr); // texts need no language file

void names(std::string text)
{
    for (auto operation : {&CUtil::GetCNString, &CUtil::GetOString, &CUtil::GetOUString}) {
        char out[8] = "";
        const int result = (util.*operation)(text.data(), sizeof out, out);
        require(result == 0 || result == 1, "a part is found or not");
        require(std::strlen(out) < sizeof out, "a part is terminated");
    }
    int type = 0;
    util.GetCertCAType(text.data(), &type);
    require(type == 1 || type == 2 || type == 4 || type == 8, "an authority has a kind");
}

void dates(std::string text)
{
    char from[12] = "";
    char to[12] = "";
    int days = 0;
    int state = -1;
    util.str2time(text.data());
    util.GetValidity(
        true, 1, text.data(), text.data(), text.data(), sizeof from - 1, from, sizeof to - 1, to, &days, &state);
    require(state >= 0 && state <= 2, "a validity has a state");
    require(std::strlen(from) < sizeof from && std::strcmp(from, to) == 0, "equal texts give equal dates");

    int fields[3] = {};
    std::memcpy(fields, text.data(), std::min(text.size(), sizeof fields));
    util.CalcDay(fields[0], fields[1], fields[2]);
}

void policies(const std::string& text)
{
    const auto cert = std::make_unique<tagCERTINFO>();
    sigil::copyText(cert->szIssuerCN, "TradeSignCA");
    text.copy(cert->szPolicyID, sizeof cert->szPolicyID);
    util.MakeCommonPolicyID(cert.get());

    tagPOLICYID entry{};
    text.copy(entry.szOID, sizeof entry.szOID);
    text.copy(entry.szName, sizeof entry.szName);
    char name[1024] = "";
    std::string oid(entry.szOID, strnlen(entry.szOID, sizeof entry.szOID));
    require(util.GetPolicyName(oid.data(), &entry, 1, name) == 1, "a policy is found by its identifier");
    require(std::strlen(name) <= sizeof entry.szName, "a policy's name is no longer than its field");
}

void plainTexts(const std::string& text)
{
    std::string in = text;
    const std::unique_ptr<char[]> out(new char[text.size() + 1]);
    out[0] = '\0';
    require(util.TrimData(in.data(), out.get()) <= static_cast<int>(text.size()), "trimming adds nothing");

    int length = 0;
    in = text;
    util.HexStringToBin(in.data(), static_cast<int>(in.size()), out.get(), &length);
    require(length <= static_cast<int>(in.size() / 2), "two digits make a byte");

    char url[16] = "";
    int first = 0;
    int second = 0;
    util.USIMInstallURLParsing(in.data(), sizeof url, url, &first, &second);
    require(std::strlen(url) < sizeof url, "an address is terminated");

    CBinary bytes(in.data(), static_cast<int>(in.size()));
    char separator[] = "|";
    int count = 0;
    int pos = 0;
    util.ParingFindCnt(bytes, separator, &count);
    require(util.BinaryFindCount(bytes, separator, pos) >= count, "fields are no more than separators");
    CBinary replaced;
    util.ReplaceAll(in.data(), ".", "  ", &replaced);
    require(replaced.find(std::string(".").data()) == -1, "everything is replaced");

    const std::unique_ptr<char[]> hex(util.toHexString(in.data(), static_cast<int>(in.size())));
    CBinary back;
    require(back.fromHexString(hex.get()) == 0 && back == bytes, "hexadecimal text comes back as the bytes");
}

} // namespace

FUZZ_TARGET(foundation_texts, input)
{
    const std::string text = fuzz::text(input);
    names(text);
    dates(text);
    policies(text);
    plainTexts(text);
}
