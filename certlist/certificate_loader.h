// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the two loaders that list certificates share: which certificates are wanted.
 */
#pragma once

#include "certlist/certificate_reader.h"
#include "certlist/list_observer.h"
#include "certlist/load_options.h"
#include "certlist/loader.h"

#include <sigildesk/records.h>

namespace sigil {

class CertificateLoader : public Loader {
public:
    using Loader::Loader;

    /** Takes over the caller's choice; an empty text leaves the one of before in place. */
    void setOptions(const tagLOADCERTOPT& options);
    /** Tells @p observer what becomes of each candidate from now on; null for nobody, as at first. */
    void observe(ListObserver* observer) { m_observer = observer; }
    /** Builds the policy filter from the policies chosen. @return 0 */
    int SetPolicyIDS();

protected:
    ~CertificateLoader() = default;

    /** Fills @p entry from @p certificate, which is the same in toolkit memory. @return see CertificateReader::read() */
    int read(const ReaderStyle& style, ToolkitBytes& certificate, tagCERTINFO& entry);

    int m_nMediaType = 0;
    ListObserver* m_observer = nullptr;
    LoadOptions m_options;
    PolicyFilter m_filter;
    TextBuffer m_texts[3]; // of the certificate that is being read
};

} // namespace sigil
