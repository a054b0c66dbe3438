#include "handles.h"

#include <sigildesk/crypto.h>

#include <array>

namespace host {

Crypto::Crypto(const Setting& setting, int toolkitType)
{
    std::string folder = setting.folder;
    m_status = sigildesk::initialise(m_handle, toolkitType, folder.data());
}

std::string Crypto::errorText() const
{
    std::array<char, 2049> text{};
    HV_GetErrInfo2(handle(), 2048, text.data());
    return text.data();
}

Bytes::Bytes(const Crypto& crypto, std::string_view content)
    : m_crypto(crypto)
{
    HV_BINSTR_Create(m_crypto.handle(), &m_bytes);
    if (content.empty())
        return;
    auto* data = reinterpret_cast<unsigned char*>(const_cast<char*>(content.data()));
    HV_BINSTR_SetData(m_crypto.handle(), data, static_cast<int>(content.size()), &m_bytes);
}

Bytes::~Bytes() { HV_BINSTR_Delete(m_crypto.handle(), &m_bytes); }

std::string_view Bytes::view() const
{
    return {reinterpret_cast<const char*>(m_bytes.pData), static_cast<std::size_t>(m_bytes.nLength)};
}

Processor::Processor(const Setting& setting)
{
    std::string folder = setting.folder;
    m_status = sigildesk::initialise(m_handle, SIGIL_TOOLKIT_MAKER, setting.language, folder.data());
}

} // namespace host
