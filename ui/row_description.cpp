// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/row_description.h"

#include "ui/cert_records.h"
#include "ui/language_texts.h"

#include <QStringList>
#include <string>
#include <utility>

namespace sigil {

QString stateOf(const CertificateRow& row, const LanguageTexts& texts)
{
    switch (validityOf(row.validStatus)) {
    case Validity::valid:
        return texts.ui("DLG_CERVIEWNORAL_CERTVALID");
    case Validity::endsSoon:
        if (row.remainDays < 2) // how soon is not known, or cannot be said in days
            return texts.ui("DLG_CERVIEWNORAL_CERTRENEWAL");
        return fromEucKr(
            formatOneText(texts.messageBytes("MSG_SELECTCERT_ENDSIN"), std::to_string(row.remainDays)));
    case Validity::expired:
        return texts.ui("DLG_CERVIEWNORAL_CERTEXPIRED");
    default:
        return {};
    }
}

QString describe(const CertificateRow& row, const LanguageTexts& texts)
{
    const std::pair<const char*, std::string_view> lines[] = {
        {"DLG_CERVIEWDETAIL_FIELDSERIAL", row.serialNumber},
        {"DLG_CERVIEWDETAIL_FIELDISSUER", row.issuerDn},
        {"DLG_CERVIEWDETAIL_FIELDBEFORE", row.validFrom},
        {"DLG_CERVIEWDETAIL_FIELDAFTER", row.validTo},
    };
    QStringList description = {stateOf(row, texts)};
    for (const auto& [key, value] : lines)
        if (!value.empty())
            description << texts.ui(key) + ": " + fromEucKr(value);
    description.removeAll(QString());
    return description.join('\n');
}

} // namespace sigil
