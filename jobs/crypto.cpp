// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/crypto.h"

#include "jobs/failure.h"
#include "jobs/text_conversion.h"

#include <sigildesk/open_toolkit.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace host {

namespace {

constexpr std::string_view pemBegin = "-----BEGIN CERTIFICATE-----";
constexpr std::string_view pemEnd = "-----END CERTIFICATE-----";

std::string decoded(const Crypto& crypto, std::string_view base64)
{
    Bytes text(crypto.handle());
    Bytes data(crypto.handle());
    set(crypto, text, base64);
    crypto.check(Base64Decode(crypto.handle(), text.get(), data.get()));
    return std::string(view(data));
}

} // namespace

Crypto::Crypto(const Setting& setting)
    : Crypto(setting, setting.toolkit)
{
}

Crypto::Crypto(const Setting& setting, int toolkit)
{
    std::string folder = setting.folder;
    const int code = HV_Initalize(&m_handle, toolkit, folder.data());
    if (code == SIGIL_SUCCESS)
        return;
    HV_Finish(m_handle);
    throw Failure::ofCode(code, folder);
}

Crypto::~Crypto() { HV_Finish(m_handle); }

void Crypto::check(int code) const
{
    if (code != SIGIL_SUCCESS)
        throw Failure::ofCode(code, errorText());
}

std::string Crypto::errorText() const
{
    std::array<char, 2049> text{};
    HV_GetErrInfo2(m_handle, 2048, text.data());
    return utf8(text.data());
}

void set(const Crypto& crypto, Bytes& bytes, std::string_view content)
{
    if (!content.empty())
        crypto.check(bytes.set(content.data(), static_cast<int>(content.size())));
}

void setList(
    const Setting& setting, const Crypto& crypto, const std::vector<std::string>& certificates, Bytes& list)
{
    const auto append = setting.toolkit == SIGIL_TOOLKIT_GPKI ? CertAddCert : UTILAddObject;
    for (const std::string& der : certificates) {
        Bytes certificate(crypto.handle());
        set(crypto, certificate, der);
        crypto.check(append(crypto.handle(), certificate.get(), list.get()));
    }
}

std::vector<std::string> itemsOf(const Setting& setting, const Crypto& crypto, Bytes& list)
{
    std::vector<std::string> items;
    const bool gpki = setting.toolkit == SIGIL_TOOLKIT_GPKI;
    int count = 0;
    if (list.empty() || (gpki ? CertGetCertCount : UTILGetObjectCount)(crypto.handle(), list.get(), &count) != 0)
        return items;
    for (int i = 0; i < count; ++i) {
        Bytes item(crypto.handle());
        if (gpki) // its function wants something there, which it releases
            set(crypto, item, "-");
        crypto.check((gpki ? CertGetCert : UTILGetObject)(crypto.handle(), list.get(), i, item.get()));
        items.emplace_back(view(item));
    }
    return items;
}

std::string derOf(const Crypto& crypto, std::string_view content)
{
    std::vector<std::string> all = allDer(crypto, content);
    return std::move(all.front());
}

std::vector<std::string> allDer(const Crypto& crypto, std::string_view content)
{
    std::vector<std::string> all;
    std::size_t begin = content.find(pemBegin);
    while (begin != content.npos) {
        const std::size_t start = begin + pemBegin.size();
        const std::size_t end = std::min(content.find(pemEnd, start), content.size());
        all.push_back(decoded(crypto, content.substr(start, end - start)));
        begin = content.find(pemBegin, end);
    }
    if (all.empty())
        all.emplace_back(content);
    return all;
}

sigil::SecretBytes pem(const Crypto& crypto, const char* label, Bytes& content)
{
    constexpr std::size_t lineLength = 64;
    Bytes base64(crypto.handle());
    crypto.check(Base64Encode(crypto.handle(), content.get(), base64.get()));
    const auto append = [](sigil::SecretBytes& to, std::string_view part) {
        to.insert(to.end(), part.begin(), part.end());
    };
    sigil::SecretBytes text;
    append(text, std::string("-----BEGIN ") + label + "-----\n");
    for (std::string_view rest = view(base64); !rest.empty();
         rest.remove_prefix(std::min(rest.size(), lineLength))) {
        append(text, rest.substr(0, lineLength));
        text.push_back('\n');
    }
    append(text, std::string("-----END ") + label + "-----\n");
    return text;
}

std::string fingerprint(const Crypto& crypto, int hash, std::string_view content)
{
    Bytes data(crypto.handle());
    Bytes digest(crypto.handle());
    set(crypto, data, content);
    crypto.check(CRYPTHash(crypto.handle(), hash, data.get(), digest.get()));
    std::string text;
    for (const char byte : view(digest)) {
        std::array<char, 4> hex{};
        static_cast<void>(std::snprintf(hex.data(), hex.size(), "%02X", static_cast<unsigned char>(byte)));
        text.append(text.empty() ? "" : ":").append(hex.data());
    }
    return text;
}

} // namespace host
