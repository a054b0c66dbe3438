/** @file
 *  Owner types of the two handles of the library, and of the toolkit's byte strings.
 */
#pragma once

#include "commands.h"

#include <sigildesk/codes.h>
#include <sigildesk/handles.h>

#include <string>
#include <string_view>

namespace host {

/** A façade handle for as long as the object lives. */
class Crypto {
public:
    Crypto(const Setting& setting, int toolkitType);

    void* handle() const { return m_handle.get(); }
    /** Code of the initialisation; nothing else may be called unless it is 0. */
    int status() const { return m_status; }
    /** Text of the toolkit for its last failure. */
    std::string errorText() const;

private:
    sigildesk::CryptoHandle m_handle;
    int m_status;
};

/** A toolkit byte string, released on the façade that it was made with. */
class Bytes {
public:
    explicit Bytes(const Crypto& crypto, std::string_view content = {});
    ~Bytes();
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;

    BINSTR* get() { return &m_bytes; }
    std::string_view view() const;

private:
    const Crypto& m_crypto;
    BINSTR m_bytes{};
};

/** A processor handle for as long as the object lives. */
class Processor {
public:
    explicit Processor(const Setting& setting);

    void* handle() const { return m_handle.get(); }
    int status() const { return m_status; }

private:
    sigildesk::ProcessorHandle m_handle;
    int m_status;
};

} // namespace host
