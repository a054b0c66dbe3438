// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What a context trusts, as callers say it.

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/status/crl.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>

namespace toolkit {

std::vector<std::string> policiesOf(std::string_view text)
{
    std::vector<std::string> policies;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("|,"), text.size());
        std::string_view item = text.substr(0, end);
        while (!item.empty() && item.front() == ' ')
            item.remove_prefix(1);
        while (!item.empty() && item.back() == ' ')
            item.remove_suffix(1);
        if (!item.empty())
            policies.push_back(dotted(item));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return policies;
}

std::optional<std::time_t> optionalTime(std::string_view text)
{
    if (text.empty())
        return {};
    const auto time = timeFromText(text);
    require(time.has_value(), SIGIL_TK_ENCODING, "time");
    return time;
}

void setEnvironment(
    TrustStore& store, int pathSource, int revocation, bool toleratesMissingCrl, std::string_view time)
{
    require(pathSource >= SIGIL_TK_PATH_GIVEN && pathSource <= SIGIL_TK_PATH_FETCH, SIGIL_TK_OPTION, "path source");
    require(revocation >= SIGIL_TK_REVOCATION_PATH && revocation <= SIGIL_TK_REVOCATION_NONE, SIGIL_TK_OPTION,
        "revocation");
    store.time = optionalTime(time);
    store.pathSource = pathSource;
    store.revocation = revocation;
    store.toleratesMissingCrl = toleratesMissingCrl;
}

void setTrust(const Library& library, TrustStore& store, std::string_view time, View trusted, View crls)
{
    auto certificates = certificatesOf(library, trusted);
    std::vector<Bytes> lists;
    for (const Secret& crl : listOrSingle(crls)) {
        parseCrl(library, crl);
        lists.push_back(toBytes(crl));
    }
    store.time = optionalTime(time);
    store.trusted = std::move(certificates);
    store.crls = std::move(lists);
}

} // namespace toolkit
