// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Universal view, verification and decryption.

#include "facade/row.h"

#include <sigildesk/crypto/uni.h>

using namespace sigil;

int UNIViewCert(void* handle, BINSTR* certificate, char* text)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_UNI_ViewCert), certificate, text), absent);
}

int UNIVerifySignData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return row(handle, {need(message)}, maker(SYMBOL(HVTK_UNI_VerifySignData), message, data, certificate), absent);
}

int UNIDecryptEnvData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(message)},
        maker(SYMBOL(HVTK_UNI_DecryptEnvData), certificate, privateKey, message, data), absent);
}
