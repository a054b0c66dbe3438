// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/key_pool.h"

#include "tools/sample-store/check.h"

namespace sample {

EVP_PKEY* KeyPool::key(int bits, std::size_t i)
{
    std::vector<toolkit::KeyHandle>& keys = m_keys[bits];
    keys.resize(m_size);
    toolkit::KeyHandle& key = keys[i % m_size];
    if (!key)
        key.reset(check(EVP_RSA_gen(static_cast<unsigned>(bits)), "make an RSA key"));
    return key.get();
}

} // namespace sample
