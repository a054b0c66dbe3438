// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certificate.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

/** A path as a JSON value; null for none. */
Json pathOf(const std::string& path) { return path.empty() ? Json() : Json(path); }

} // namespace

Json jsonOf(const Certificate& certificate)
{
    return {{"index", certificate.index < 0 ? Json() : Json(certificate.index)}, {"name", certificate.name},
        {"subject", certificate.subject}, {"issuer", certificate.issuer}, {"issuer_name", certificate.issuerName},
        {"serial", certificate.serial}, {"use", certificate.use}, {"policy", certificate.policy},
        {"family", certificate.family == 0 ? Json() : Json(familyName(certificate.family))},
        {"medium", pathOf(certificate.medium)}, {"valid_from", isoTime(certificate.from)},
        {"valid_to", isoTime(certificate.to)}, {"days_left", certificate.daysLeft},
        {"expired", certificate.expired}, {"has_key", !certificate.files.key.empty()},
        {"has_km", !certificate.files.kmKey.empty()},
        {"files",
            {{"certificate", pathOf(certificate.files.certificate)}, {"key", pathOf(certificate.files.key)},
                {"km_certificate", pathOf(certificate.files.kmCertificate)},
                {"km_key", pathOf(certificate.files.kmKey)}}}};
}

} // namespace host
