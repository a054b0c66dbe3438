// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A byte string of the crypto façade in a host's C++: made, filled and released with the handle.

#ifndef SIGILDESK_EXAMPLES_BYTES_H
#define SIGILDESK_EXAMPLES_BYTES_H

#include <sigildesk/crypto.h>

#include <string>

class Bytes {
public:
    explicit Bytes(void* crypto, std::string content = {})
        : m_crypto(crypto)
    {
        HV_BINSTR_Create(crypto, &m_record);
        auto* data = reinterpret_cast<unsigned char*>(&content[0]);
        if (!content.empty())
            HV_BINSTR_SetData(crypto, data, static_cast<int>(content.size()), &m_record);
    }
    ~Bytes() { HV_BINSTR_Delete(m_crypto, &m_record); } // the open toolkit overwrites what it releases
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;

    operator BINSTR*() { return &m_record; }
    std::string content() const
    {
        return std::string(
            reinterpret_cast<const char*>(m_record.pData), static_cast<std::size_t>(m_record.nLength));
    }

private:
    void* m_crypto;
    BINSTR m_record = {};
};

#endif
