// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// UNI_: messages of any kind. Wireless formats (WPKI_, WCMS_) are not offered.

#include "toolkit/calls/not_offered.h"
#include "toolkit/calls/sealed_messages.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

/** No capacity is passed with the text. */
TOOLKIT_FUNCTION HVTK_UNI_ViewCert(void* context, BINSTR*, char*)
{
    return call(context, calls::notOffered, "UNI_ViewCert says no size for its text");
}

TOOLKIT_FUNCTION HVTK_UNI_VerifySignData(void* context, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return call(context, calls::uniVerifySignData, message, data, certificate);
}

TOOLKIT_FUNCTION HVTK_UNI_DecryptEnvData(
    void* context, BINSTR* certificate, BINSTR* key, BINSTR* message, BINSTR* out)
{
    return call(context, calls::uniDecryptEnvData, certificate, key, message, out);
}

TOOLKIT_FUNCTION HVTK_WPKI_SignData(void* context, BINSTR*, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}
SAME_FUNCTION(GPKI_WCMS_ProcessWapEnvelopedData, HVTK_WPKI_SignData);
SAME_FUNCTION(GPKI_WCMS_MakeSignedContent, HVTK_WPKI_SignData);

TOOLKIT_FUNCTION HVTK_WPKI_VerifyData(void* context, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}
SAME_FUNCTION(GPKI_WCMS_ProcessSignedContent, HVTK_WPKI_VerifyData);

TOOLKIT_FUNCTION HVTK_WPKI_EncryptData(void* context, BINSTR*, BINSTR*, int, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}

TOOLKIT_FUNCTION HVTK_WPKI_DecryptData(void* context, BINSTR*, BINSTR*, BINSTR*, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}

TOOLKIT_FUNCTION HVTK_WPKI_VerifyCert(void* context, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}

TOOLKIT_FUNCTION GPKI_WCMS_MakeWapEnvelopedData(void* context, BINSTR*, BINSTR*, int, BINSTR*)
{
    return call(context, calls::notOffered, calls::wireless);
}
