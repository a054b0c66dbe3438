// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/verify_causes.h"

#include "ui/language_texts.h"

namespace sigil {

namespace {

struct Cause {
    const char* sentence; ///< an error text of the open toolkit begins with it
    const char* textKey;
};

constexpr Cause causes[] = {
    {"The certificate does not verify", "MSG_CERTVERIFY_FAILED"},
    {"No path to a trusted certificate was found", "MSG_CERTVERIFY_NOISSUER"},
    {"The certificate or one of its issuers has expired", "MSG_CERTVERIFY_EXPIRED"},
    {"The certificate or one of its issuers is not valid yet", "MSG_CERTVERIFY_NOTYET"},
    {"The certificate or one of its issuers is revoked", "MSG_CERTVERIFY_REVOKED"},
    {"A signature in the certification path is wrong", "MSG_CERTVERIFY_SIGNATURE"},
    {"The certificate is not meant for this usage", "MSG_CERTVERIFY_USAGE"},
    {"The certification path is not valid under the wanted policies", "MSG_CERTVERIFY_POLICY"},
    {"No usable revocation list was found", "MSG_CERTVERIFY_NOCRL"},
    {"The certificate is damaged", "MSG_CERTVERIFY_DAMAGED"},
    {"The server cannot be reached", "MSG_CERTVERIFY_FETCH"},
};

} // namespace

QString causeIn(const LanguageTexts& texts, const QString& cause)
{
    for (const auto& [sentence, textKey] : causes) {
        if (!cause.startsWith(sentence))
            continue;
        const QString text = texts.message(textKey);
        return text.isEmpty() || text == sentence ? cause : text;
    }
    return cause;
}

} // namespace sigil
