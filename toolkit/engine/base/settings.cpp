// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/settings.h"

#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/file.h"

#include <openssl/crypto.h>

#include <algorithm>

namespace toolkit {
namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == text.npos ? std::string_view() : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

} // namespace

std::string_view opensslVersion() { return OpenSSL_version(OPENSSL_VERSION); }

void readConfFile(Context& context, std::string_view path)
{
    if (path.empty())
        return;
    const Secret content = readFile(std::string(path));
    context.ocsp.acceptsAnyNonce = settingOf({chars(content), content.size()}, "OCSP", "Nonce") == "0";
}

std::string settingOf(std::string_view content, std::string_view section, std::string_view key)
{
    const std::string header = "[" + std::string(section) + "]";
    bool isInside = false;
    for (std::size_t end = 0; !content.empty(); content.remove_prefix(std::min(end + 1, content.size()))) {
        end = std::min(content.find('\n'), content.size());
        const std::string_view line = trimmed(content.substr(0, end));
        if (line.starts_with('['))
            isInside = line == header;
        const std::size_t sign = line.find('=');
        if (isInside && sign != line.npos && trimmed(line.substr(0, sign)) == key)
            return std::string(trimmed(line.substr(sign + 1)));
    }
    return {};
}

void setHashAlgorithm(Context& context, int algorithm)
{
    const int chosen = algorithm == SIGIL_TK_HASH_DEFAULT ? static_cast<int>(SIGIL_TK_HASH_SHA256) : algorithm;
    hashAlgorithm(context.library(), chosen);
    context.hashAlgorithm = chosen;
}

int resolveHash(const Context& context, int algorithm)
{
    return algorithm == SIGIL_TK_HASH_DEFAULT ? context.hashAlgorithm : algorithm;
}

SignatureScheme signatureScheme(const Context& context, int algorithm)
{
    return {resolveHash(context, algorithm), context.rsaVersion};
}

EncryptionScheme encryptionScheme(const Context& context) { return {context.padding, context.hashAlgorithm}; }

void setRsaVersion(Context& context, int version)
{
    require(version == SIGIL_TK_RSA_V15 || version == SIGIL_TK_RSA_PSS, SIGIL_TK_OPTION, "RSA version");
    context.rsaVersion = version;
}

void setPadding(Context& context, int padding)
{
    require(padding == SIGIL_TK_PADDING_V15 || padding == SIGIL_TK_PADDING_OAEP, SIGIL_TK_OPTION, "padding");
    context.padding = padding;
}

} // namespace toolkit
