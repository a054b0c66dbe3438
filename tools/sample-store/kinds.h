// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The kinds of certificates that a sample store holds: who issues them, for whom, under which policy, and where they
 *  are kept. Names, policies and folders follow the conventions of the accredited authorities; addresses lie in the
 *  domain "example", which nobody can register, so that nothing ever asks a real directory.
 */
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace sample {

enum class Family { Npki, Gpki, Mpki, Ppki };

/** "npki", "gpki", "mpki", "ppki". */
std::string_view familyName(Family family);

/** The family of such a name. */
std::optional<Family> familyOf(std::string_view name);

/** An issuing authority. */
struct Authority {
    std::string_view dn;      ///< most specific part first: "cn=yessignCA Class 1,ou=AccreditedCA,o=yessign,c=kr"
    std::string_view crlUrl;  ///< LDAP URL of the revocation list
    std::string_view ocspUrl; ///< HTTP URL of the status responder
    std::string_view cpsUrl;  ///< HTTP URL of the practice statement
};

enum class Holder { Person, Company, Server };

struct Kind {
    Family family;
    Holder holder;
    std::string_view folder; ///< below the target, without a closing "/"
    const Authority* authority;
    std::string_view subject; ///< name with {name}, {latin} and {0…}: as many digits as there are zeros
    std::array<std::string_view, 2> policies; ///< of the signing certificate; the second is mostly empty
    std::string_view kmPolicy;                ///< of the key-management certificate; empty: as the signing one
};

/** The kinds of one family, in the order in which a store takes them up. */
std::span<const Kind> kindsOf(Family family);

/** Name of the root above every authority. */
inline constexpr std::string_view rootName =
    "cn=Sample RootCA 1,ou=Sample Certification Authority Central,o=SigilDesk,c=KR";

} // namespace sample
