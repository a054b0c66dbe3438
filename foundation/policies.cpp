// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: authorities, policies and key usages.

#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/families.h"
#include "foundation/text_field.h"

#include <cstring>
#include <string>

namespace {

struct KeyUsage {
    const char* name; // as the toolkit prints it
    const char* key;  // of its text in the language files; the spelling CERVIEWNORAL is theirs
};

constexpr KeyUsage keyUsages[] = {
    {"digitalSignature", "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN"},
    {"nonRepudiation", "DLG_CERVIEWNORAL_KEYUSAGE_NONREPUDIATION"},
    {"keyEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT"},
    {"dataEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT"},
    {"keyAgreement", "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT"},
    {"keyCertSign", "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN"},
    {"crlSign", "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN"},
    {"encipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY"},
    {"decipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_DECIPHERONLY"},
};

/** Room that GetPolicyName's callers have for a name. */
constexpr std::size_t policyNameRoom = 1024;

/** Room for what is shown of one key usage. */
constexpr std::size_t displayTextRoom = 260;

std::string displayText(CUtil& util, char* langFile, const KeyUsage& usage)
{
    std::string key = usage.key;
    char text[displayTextRoom] = {};
    util.GetLanguageUIText(langFile, key.data(), sizeof text - 1, text);
    return text;
}

} // namespace

int CUtil::GetCertCAType(char* caName, int* type)
{
    if (!type)
        return 0;
    const sigil::Family* family = sigil::familyOfOrganisation(sigil::textOf(caName));
    *type =
        family ? family->code : SIGIL_FAMILY_PPKI; // certificates of other authorities count as the private CA's
    return 0;
}

int CUtil::CheckPolicyID(char* oid, tagSETOID* list, int count)
{
    if (!oid || !list)
        return 0;
    for (int i = 0; i < count; ++i)
        if (sigil::equalsIgnoringCase(oid, sigil::fieldText(list[i].szOID)))
            return 1;
    return 0;
}

int CUtil::GetPolicyName(char* oid, tagPOLICYID* list, int count, char* name)
{
    if (!oid || !list || !name)
        return 0;
    int found = 0;
    // Not stopped at the first match: the last entry of an identifier is the one that counts.
    for (int i = 0; i < count; ++i) {
        if (!sigil::equalsIgnoringCase(oid, sigil::fieldText(list[i].szOID)))
            continue;
        sigil::copyText(name, policyNameRoom, sigil::fieldText(list[i].szName));
        found = 1;
    }
    return found;
}

int CUtil::MakeCommonPolicyID(tagCERTINFO* cert)
{
    if (!cert || !sigil::equalsIgnoringCase(sigil::fieldText(cert->szIssuerCN), "TradeSignCA"))
        return 0;
    const std::string identifiers(sigil::fieldText(cert->szPolicyID));
    const std::size_t comma = identifiers.find(',');
    if (comma == std::string::npos)
        return -1;
    sigil::copyText(
        cert->szPolicyID, std::string_view(identifiers).substr(std::min(comma + 2, identifiers.size())));
    return 0;
}

int CUtil::GetKeyUsageName(char* langFile, char* keyUsage, char* separator, int outSize, char* out)
{
    std::string joined;
    for (const KeyUsage& usage : keyUsages)
        if (sigil::textOf(keyUsage).find(usage.name) != std::string_view::npos)
            joined += std::string(sigil::textOf(separator)) + displayText(*this, langFile, usage);

    CBinary all(joined.data(), static_cast<int>(joined.size()));
    CBinary text;
    BinaryRight(all, &text, all.m_nLength - 1);
    sigil::limitedCopy(out, outSize, sigil::textOf(text.m_pData));
    return 1;
}
