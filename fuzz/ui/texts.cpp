// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as the dialogs' language file, as a text of the library, and as what the toolkit says of a certificate.

#include "fuzz/memory_file.h"
#include "ui/language_texts.h"
#include "ui/verify_causes.h"

FUZZ_TARGET(ui_texts, input)
{
    const std::string text = fuzz::text(input);
    const fuzz::MemoryFile file(text);
    const sigil::LanguageTexts texts(file.path());
    texts.ui("DLG_CERVIEWNORAL_CERTVALID");
    const std::string format = texts.messageBytes("MSG_SELECTCERT_ENDSIN");
    require(
        sigil::formatOneText(format, "12").size() <= format.size(), "a value takes no more room than its place");
    const QString shown = sigil::fromEucKr(text);
    for (const std::size_t capacity : {0U, 1U, 5U, 1023U}) {
        const std::string utf8 = sigil::toUtf8(shown, capacity);
        require(utf8.size() <= capacity, "a text is cut to its room");
        require(QString::fromStdString(utf8).toStdString() == utf8, "no character is cut");
    }
    sigil::causeIn(texts, shown);
}
