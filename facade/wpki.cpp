// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Wireless PKI.

#include "facade/row.h"

#include <sigildesk/crypto/wpki.h>

using namespace sigil;

int WPKISignData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(data)},
        maker(SYMBOL(HVTK_WPKI_SignData), certificate, privateKey, data, message), absent);
}

int WPKIVerifyData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate)
{
    return row(handle, {need(message)}, maker(SYMBOL(HVTK_WPKI_VerifyData), message, data, certificate), absent);
}

int WPKIEncryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient,
    BINSTR* data, BINSTR* message)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(recipient), need(data)},
        maker(SYMBOL(HVTK_WPKI_EncryptData), certificate, privateKey, algorithm, recipient, data, message), absent);
}

int WPKIDecryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(message)},
        maker(SYMBOL(HVTK_WPKI_DecryptData), certificate, privateKey, message, data), absent);
}

int WPKIVerifyCert(void* handle, BINSTR* certificate)
{
    return row(handle, {need(certificate)}, maker(SYMBOL(HVTK_WPKI_VerifyCert), certificate), absent);
}
