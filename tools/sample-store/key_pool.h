// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  RSA keys. Making one takes longer than anything else here, so certificates share a few.
 */
#pragma once

#include "toolkit/engine/base/handles.h"

#include <map>
#include <vector>

namespace sample {

class KeyPool {
public:
    /** @param size keys of each length, at least 1 */
    explicit KeyPool(std::size_t size)
        : m_size(size)
    {
    }

    /** Key number @p i modulo the size, made when it is first asked for. Throws std::runtime_error. */
    EVP_PKEY* key(int bits, std::size_t i);

private:
    std::size_t m_size;
    std::map<int, std::vector<toolkit::KeyHandle>> m_keys;
};

} // namespace sample
