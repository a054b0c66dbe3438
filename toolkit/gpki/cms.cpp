// GPKI_CMS_: signed, enveloped and encrypted messages.

#include "toolkit/calls/messages.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* content, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedData, 0, certificate, key, content, time, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeSignedDataWithAddSigner(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, char* time, BINSTR* out)
{
    return call(context, calls::cmsMakeSignedDataWithAddSigner, 0, certificate, key, message, time, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData(
    void* context, BINSTR* message, BINSTR* content, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsProcessSignedDataOfOne, message, content, certificate, time);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessSignedData2(void* context, BINSTR* message, BINSTR* content, int* signerCount)
{
    return call(context, calls::cmsProcessSignedData, 0, message, content, signerCount);
}

TOOLKIT_FUNCTION GPKI_CMS_GetSigner(void* context, int index, BINSTR* certificate, char* time)
{
    return call(context, calls::cmsGetSignerCert, index, certificate, time);
}

TOOLKIT_FUNCTION GPKI_CMS_GetSignerCaPubs(void* context, BINSTR* out)
{
    return call(context, calls::cmsGetSignerCaPubs, out);
}

TOOLKIT_FUNCTION GPKI_CMS_GetTBTData(void* context, int index, BINSTR* out)
{
    return call(context, calls::cmsGetTBTData, index, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedData, 0, recipient, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEnvelopedDataWithMultiRecipients(
    void* context, BINSTR* recipients, BINSTR* content, int cipher, BINSTR* out)
{
    return call(context, calls::cmsMakeEnvelopedDataWithMultiRecipients, 0, recipients, content, cipher, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEnvelopedData, certificate, key, message, out);
}

TOOLKIT_FUNCTION GPKI_CMS_MakeEncryptedData(void* context, BINSTR* content, BINSTR* out)
{
    return call(context, calls::cmsMakeEncryptedData, content, out);
}

TOOLKIT_FUNCTION GPKI_CMS_ProcessEncryptedData(void* context, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::cmsProcessEncryptedDataOfSession, key, message, out);
}
