// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Records of any bytes on their way to the dialogs and to the host: rows, descriptions, and the result.

#include "fuzz/target.h"
#include "ui/cert_records.h"
#include "ui/language_texts.h"
#include "ui/row_description.h"

#include <cstring>
#include <memory>

FUZZ_TARGET(ui_records, input)
{
    sigil::EntryRecord entry;
    fuzz::fill(*entry, input);
    sigil::EntryRecord shown;
    sigil::copyEntry(*entry, *shown);
    const sigil::CertificateRow row = sigil::rowOf(*shown);
    static const sigil::LanguageTexts texts(SIGILDESK_LIBRARY_FOLDER "/KOR.ini");
    sigil::describe(row, texts);
    const auto staged = std::make_unique<tagSELCERTINFO>();
    const auto result = std::make_unique<tagSELCERTINFO>();
    for (const int medium : {1, 2, 3, 6, 7}) {
        sigil::stageResult(*entry, medium, *staged);
        sigil::handOutResult(*staged, *result);
        require(result->nMediaType == static_cast<unsigned>(medium), "the medium is handed out");
        require(std::memchr(result->szSubjectDN, '\0', sizeof result->szSubjectDN), "the subject is terminated");
        require(result->nSignCertLen >= 0 && result->nSignCertLen <= static_cast<int>(sizeof result->bySignCert),
            "a certificate is no longer than its field");
    }
}
