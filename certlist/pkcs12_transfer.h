// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#12 files: import into certificate/key pairs, export of a listed certificate.
 */
#pragma once

#include "certlist/cert_n_key.h"
#include "certlist/error_log.h"

#include <sigildesk/records.h>

namespace sigil {

class ToolkitBytes;

/** Part of the disk loader, under whose operations' names it reports trouble. */
class Pkcs12Transfer {
public:
    /** @param toolkit  façade handle */
    Pkcs12Transfer(void* toolkit, ErrorLog& log)
        : m_toolkit(toolkit)
        , m_log(log)
    {
    }

    /** Reads a PKCS#12 file. @return 0; 1113; 1115; 1129; a toolkit code */
    int read(char* szPath, char* szPassword, CertNKey& out);
    /** Makes a PKCS#12 file of an entry whose keys were decrypted. @return 0; 1127; 1128 */
    int write(const tagCERTINFO& entry, char* szPassword, CBinary& pfx);

private:
    struct PfxLists;
    int openPfx(char* szPath, char* szPassword, PfxLists& lists);
    int importPfx(int mode, ToolkitBytes& file, char* szPassword, PfxLists& lists);
    int countPairs(PfxLists& lists);
    int takePair(PfxLists& lists, int index, CertNKey& out);
    int tooMany();
    int takeKeyOf(ToolkitBytes& certificate, PfxLists& lists, CBinary& certOut, CBinary& keyOut);
    int exportOnePair(const tagCERTINFO& entry, char* szPassword, ToolkitBytes& out);
    int exportTwoPairs(const tagCERTINFO& entry, char* szPassword, ToolkitBytes& out);

    void* m_toolkit;
    ErrorLog& m_log;
};

} // namespace sigil
