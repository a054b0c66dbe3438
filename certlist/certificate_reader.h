// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Reads one certificate into an entry and judges whether it belongs in the list.
 */
#pragma once

#include "certlist/entry.h"
#include "certlist/error_log.h"
#include "certlist/issuer_table.h"
#include "certlist/load_options.h"
#include "certlist/policy_table.h"
#include "certlist/text_buffer.h"
#include "facade/toolkit_bytes.h"

#include <sigildesk/util.h>

#include <span>

namespace sigil {

/** What differs between the loaders when they read a certificate. */
struct ReaderStyle {
    const char* function;       ///< name of the reading function in log records
    const char* filterFunction; ///< the same in the records of the family and serial-number filters
    const char* errorName;      ///< of failed steps; null for none
    bool familyFromSubject;     ///< the subject's "o=" tells the family, which must be one of those wanted
    bool statesByKeySize;       ///< keys that are not of 2048 bits get the validity states 0, 1, 2
    bool mayExcludeExpired;     ///< the caller's wish to leave out expired certificates is heeded
};

/** What a loader lends for reading its certificates; all of it outlives the reading. */
struct ReaderMeans {
    void* toolkit; ///< façade handle
    ErrorLog& log;
    const LoadOptions& options;
    PolicyFilter& filter;
    const PolicyTable& policies;
    const IssuerTable& issuers;
    CUtil& util;
    TextBuffer (&texts)[3]; ///< room for the texts of one certificate
};

class CertificateReader {
public:
    /** @param certificate  the same as in the entry, in toolkit memory
     *  @param entry        holds the certificate and its family; receives the rest */
    CertificateReader(
        const ReaderMeans& means, const ReaderStyle& style, ToolkitBytes& certificate, tagCERTINFO& entry)
        : m_means(means)
        , m_style(style)
        , m_certificate(certificate)
        , m_entry(entry)
        , m_text(means.texts[0])
    {
    }

    /** Fills the entry, step by step, until one fails or rejects the certificate. Dates are those of the zone that the
     *  process last noticed.
     *  @return 0 keep it; 1000; 1122 unreadable (logged); 1502 not wanted (logged) */
    int read();

private:
    using Step = int (CertificateReader::*)();
    using Getter = int (*)(void* handle, int capacity, char* text);
    /** One text of the certificate. */
    struct TextStep {
        Getter get;
        const char* call;
        EntryField field;
    };

    int load();
    int version();
    int identity();
    int family();
    int subjectFilter();
    int serialFilter();
    int uid();
    int publicKey();
    int usageAndIssuer();
    int issuerName();
    int policies();
    int policyFilter();
    int policyName();
    int keyIds();
    int optionalTexts();
    int validityTexts();
    int validityState();
    int expiry();

    int readTexts(std::span<const TextStep> steps);
    int readText(const TextStep& step);
    int failed(Drop drop, const char* call, int toolkitCode);
    int rejected(Drop drop, const char* function, const char* errorName, const char* what, const char* message);

    const ReaderMeans& m_means;
    const ReaderStyle& m_style;
    ToolkitBytes& m_certificate;
    tagCERTINFO& m_entry;
    TextBuffer& m_text;
};

} // namespace sigil
