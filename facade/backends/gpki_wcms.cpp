// Wireless message formats (no export reaches them) of the GPKI library.

#include "facade/backends/gpki_wrap.h"

using namespace sigil;

int CGPKIWrap::WCMSMakeSignedContent(BINSTR* certificate, BINSTR* privateKey, BINSTR* content, BINSTR* message)
{
    return m_toolkit.call("GPKI_WCMS_MakeSignedContent", {need(certificate), need(privateKey), need(content)},
        certificate, privateKey, content, message);
}

int CGPKIWrap::WCMSProcessSignedContent(BINSTR* message, BINSTR* content, BINSTR* certificate)
{
    return m_toolkit.call("GPKI_WCMS_ProcessSignedContent", {need(message)}, message, content, certificate);
}

int CGPKIWrap::WCMSMakeWapEnvelopedData(BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* message)
{
    return m_toolkit.call(
        "GPKI_WCMS_MakeWapEnvelopedData", {need(recipient), need(content)}, recipient, content, algorithm, message);
}

int CGPKIWrap::WCMSProcessWapEnvelopedData(
    BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content)
{
    return m_toolkit.call("GPKI_WCMS_ProcessWapEnvelopedData", {need(certificate), need(privateKey), need(message)},
        certificate, privateKey, message, content);
}
