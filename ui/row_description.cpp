#include "ui/row_description.h"

#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/language_texts.h"

#include <QStringList>
#include <string>
#include <utility>

namespace sigil {

QString stateOf(const tagCERTINFO& entry, const LanguageTexts& texts)
{
    switch (validityOf(entry)) {
    case Validity::valid:
        return texts.ui("DLG_CERVIEWNORAL_CERTVALID");
    case Validity::endsSoon:
        if (entry.nRemainDays < 2) // how soon is not known, or cannot be said in days
            return texts.ui("DLG_CERVIEWNORAL_CERTRENEWAL");
        return fromEucKr(
            formatOneText(texts.messageBytes("MSG_SELECTCERT_ENDSIN"), std::to_string(entry.nRemainDays)));
    case Validity::expired:
        return texts.ui("DLG_CERVIEWNORAL_CERTEXPIRED");
    case Validity::unknown:
        break;
    }
    return {};
}

QString describe(const tagCERTINFO& entry, const LanguageTexts& texts)
{
    const std::pair<const char*, std::string_view> lines[] = {
        {"DLG_CERVIEWDETAIL_FIELDSERIAL", fieldText(entry.szSerialNum)},
        {"DLG_CERVIEWDETAIL_FIELDISSUER", fieldText(entry.szIssuerDN)},
        {"DLG_CERVIEWDETAIL_FIELDBEFORE", fieldText(entry.szValidFrom)},
        {"DLG_CERVIEWDETAIL_FIELDAFTER", fieldText(entry.szValidTo)},
    };
    QStringList description = {stateOf(entry, texts)};
    for (const auto& [key, value] : lines)
        if (!value.empty())
            description << texts.ui(key) + ": " + fromEucKr(value);
    description.removeAll(QString());
    return description.join('\n');
}

} // namespace sigil
