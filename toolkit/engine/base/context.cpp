// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/context.h"

namespace toolkit {

const Certificate& Context::certificate() const
{
    require(m_certificate.has_value(), SIGIL_TK_CERT_NOT_LOADED);
    return *m_certificate;
}

} // namespace toolkit
