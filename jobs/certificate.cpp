// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/certificate.h"

#include "certlist/certificate_loader.h"
#include "foundation/ascii.h"
#include "foundation/families.h"
#include "jobs/failure.h"
#include "jobs/text_conversion.h"

#include <sigildesk/util.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace host {

namespace {

constexpr std::time_t secondsOfADay = 24L * 60 * 60;

struct FamilyName {
    int family;
    const char* name;
};
constexpr FamilyName familyNames[] = {{SIGIL_FAMILY_GPKI, "gpki"}, {SIGIL_FAMILY_NPKI, "npki"},
    {SIGIL_FAMILY_MPKI, "mpki"}, {SIGIL_FAMILY_PPKI, "ppki"}};

/** The list's reader for a certificate that stands alone: nothing is left out, and nothing is logged. */
class SingleReader : public sigil::CertificateLoader {
public:
    explicit SingleReader(const Setting& setting)
        : CertificateLoader(static_cast<int>(setting.language()), setting.folder.c_str(), reporter)
    {
    }

    int readInto(tagCERTINFO& entry, Bytes& certificate)
    {
        static constexpr sigil::ReaderStyle style{"", "", nullptr, false, false, false};
        bind(certificateHandle, nullptr);
        const int code = SetInitalize();
        return code == SIGIL_SUCCESS ? read(style, certificate, entry) : code;
    }

    void* certificateHandle = nullptr;

private:
    static constexpr sigil::SettingsReporter reporter{"", "", ""};
};

std::string commonName(const char* subject)
{
    std::array<char, 1024> name{};
    std::string dn = subject;
    CUtil().GetCNString(dn.data(), name.size(), name.data());
    return utf8(name.data());
}

int familyOfSubject(const char* subject)
{
    std::array<char, 1024> organisation{};
    std::string dn = subject;
    CUtil().GetOString(dn.data(), organisation.size(), organisation.data());
    const sigil::Family* family = sigil::familyOfOrganisation(organisation.data());
    return family ? family->code : 0;
}

std::string bytes(const unsigned char* data, int length)
{
    return {reinterpret_cast<const char*>(data), static_cast<std::size_t>(std::max(length, 0))};
}

std::string colonised(int hours, int minutes)
{
    std::array<char, 8> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%+03d:%02d", hours, minutes));
    return text.data();
}

tm localTime(std::time_t time)
{
    tm local{};
    localtime_r(&time, &local);
    return local;
}

std::string formatted(const tm& time, const char* format)
{
    std::array<char, 64> text{};
// NOLINTNEXTLINE: the formats stand below
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
#pragma GCC diagnostic pop
}

} // namespace

Certificate certificateOf(const tagCERTINFO& entry)
{
    Certificate result;
    result.name = commonName(entry.szSubjectDN);
    result.subject = utf8(entry.szSubjectDN);
    result.issuer = utf8(entry.szIssuerDN);
    result.issuerName = utf8(entry.szIssuerName);
    result.serial = entry.szSerialNum;
    result.policy = dotted(entry.szPolicyID);
    result.use =
        entry.szPolicyName == std::string_view(entry.szPolicyID) ? result.policy : utf8(entry.szPolicyName);
    result.family = entry.nPKIType;
    result.from = timeOf(entry.szNotBefore);
    result.to = timeOf(entry.szNotAfter);
    result.expired = entry.nExpired == 1;
    result.expiresSoon = entry.nValidStatus == SIGIL_VALIDITY_EXPIRES_SOON;
    const std::time_t left = result.to - std::time(nullptr);
    result.daysLeft = static_cast<int>(left / secondsOfADay - (left % secondsOfADay < 0 ? 1 : 0));
    result.files = {entry.szSignCertPath, entry.nEncSignPriKeyLen > 0 ? entry.szSignPriKeyPath : "",
        entry.nKmCertLen > 0 ? entry.szKmCertPath : "", entry.nEncKmPriKeyLen > 0 ? entry.szKmPriKeyPath : ""};
    result.der = bytes(entry.bySignCert, entry.nSignCertLen);
    result.kmDer = bytes(entry.byKmCert, entry.nKmCertLen);
    result.version = entry.szVersion;
    result.signatureAlgorithm = entry.szSignAlg;
    result.keyAlgorithm = entry.szPubKeyAlg;
    result.keyLength = entry.szKeyLength;
    result.keyUsage = entry.szKeyUsage;
    result.policies = utf8(entry.szCertPolicy);
    result.alternativeName = utf8(entry.szSubjectAltName);
    result.authorityKeyId = utf8(entry.szAuthKeyID);
    result.subjectKeyId = entry.szSubKeyID;
    result.revocationList = utf8(entry.szCRLDP);
    result.authorityAccess = utf8(entry.szAIA);
    return result;
}

Certificate readCertificate(const Setting& setting, const Crypto& crypto, const std::string& content)
{
    const std::string der = derOf(crypto, content);
    Bytes certificate(crypto.handle());
    set(crypto, certificate, der);
    crypto.check(CertLoad(crypto.handle(), certificate.get())); // says better than the reader why not
    SingleReader reader(setting);
    reader.certificateHandle = crypto.handle();
    sigil::ScratchEntry entry;
    const int code = reader.readInto(*entry, certificate);
    CertUnLoad(crypto.handle());
    if (code != SIGIL_SUCCESS)
        throw Failure::ofCode(code, crypto.errorText());
    entry->nPKIType = familyOfSubject(entry->szSubjectDN);
    Certificate result = certificateOf(*entry);
    result.der = der;
    return result;
}

std::string isoTime(std::time_t time)
{
    const tm local = localTime(time);
    const long minutes = local.tm_gmtoff / 60;
    return formatted(local, "%Y-%m-%dT%H:%M:%S") +
        colonised(static_cast<int>(minutes / 60), static_cast<int>(std::abs(minutes % 60)));
}

std::string day(std::time_t time) { return formatted(localTime(time), "%Y-%m-%d"); }

std::time_t timeOf(const std::string& text)
{
    tm fields{};
    strptime(text.c_str(), "%Y-%m-%d %H:%M:%S", &fields);
    fields.tm_isdst = 0; // standard time, whatever the season
    return std::mktime(&fields);
}

std::string libraryTime(std::time_t time)
{
    tm local = localTime(time);
    if (local.tm_isdst > 0) { // the library's times know no summer
        tm standard = local;
        standard.tm_isdst = 0;
        local = localTime(time - (std::mktime(&standard) - time));
    }
    return formatted(local, "%Y-%m-%d %H:%M:%S");
}

std::string familyName(int family)
{
    const auto* found = std::find_if(std::begin(familyNames), std::end(familyNames),
        [&](const FamilyName& row) { return row.family == family; });
    return found == std::end(familyNames) ? "" : found->name;
}

int familyNamed(const std::string& name)
{
    const auto* found = std::find_if(std::begin(familyNames), std::end(familyNames),
        [&](const FamilyName& row) { return sigil::equalsIgnoringCase(row.name, name); });
    return found == std::end(familyNames) ? 0 : found->family;
}

std::string dotted(std::string oid)
{
    std::replace(oid.begin(), oid.end(), ' ', '.');
    return oid;
}

} // namespace host
