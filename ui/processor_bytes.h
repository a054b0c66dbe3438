// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Owner of a buffer that the certificate-list processor hands out.
 */
#pragma once

#include <sigildesk/certlist.h>

#include "foundation/secret.h"

namespace sigil {

/** The address of data and length goes to one CLP_ call; what came back is wiped and released at the end. A buffer may
 *  come back with length 0, also from a call that failed. */
struct ProcessorBytes {
    char* data = nullptr;
    int length = 0;

    explicit ProcessorBytes(void* processor)
        : m_processor(processor)
    {
    }
    ~ProcessorBytes()
    {
        if (!data)
            return;
        if (length > 0)
            wipe(data, static_cast<std::size_t>(length));
        void* buffer = data;
        CLP_MemFree(m_processor, &buffer);
    }
    ProcessorBytes(const ProcessorBytes&) = delete;
    ProcessorBytes& operator=(const ProcessorBytes&) = delete;

    bool isEmpty() const { return !data || length < 1; }

private:
    void* m_processor;
};

} // namespace sigil
