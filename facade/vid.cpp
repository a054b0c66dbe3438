// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Identity verification (VID).

#include "facade/row.h"

#include <sigildesk/crypto/vid.h>

using namespace sigil;

int VIDGetRandomFromPriKey(void* handle, BINSTR* privateKey, BINSTR* random)
{
    return secretRow(handle, {need(privateKey)}, maker(SYMBOL(HVTK_VID_GetRandomFromPriKey), privateKey, random),
        gpki(SYMBOL(GPKI_VID_GetRandomFromPriKey), privateKey, random));
}

int VIDVerify(void* handle, BINSTR* certificate, BINSTR* random, char* identity)
{
    return secretRow(handle, {need(certificate), need(random), need(identity)},
        maker(SYMBOL(HVTK_VID_Verify), certificate, random, identity),
        gpki(SYMBOL(GPKI_VID_Verify), certificate, random, identity));
}

int VIDVerifyByIVS(
    void* handle, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate)
{
    return secretRow(handle,
        {need(confFile), need(certificate), need(random), need(identity), need(ivsCertificate)},
        maker(SYMBOL(HVTK_VID_VerifyByIVS), confFile, certificate, random, identity, ivsCertificate),
        gpki(SYMBOL(GPKI_VID_VerifyByIVS), confFile, certificate, random, identity, ivsCertificate));
}
