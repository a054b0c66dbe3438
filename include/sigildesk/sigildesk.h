// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  All of SigilDesk's interface. Each face has a header of its own, for hosts that need only one of them:
 *
 *  - <sigildesk/crypto.h>    the crypto façade: certificates, keys, messages, tokens (C++ linkage)
 *  - <sigildesk/certlist.h>  the certificate-list processor, the CLP_ functions (C++ linkage)
 *  - <sigildesk/dialogs.h>   the dialogs: ShowUserCert, ShowUserCert_T (C linkage; a C host includes this one)
 *
 *  owners of the first two faces' handles, <sigildesk/handles.h>,
 *
 *  and the foundations that hosts may use too: <sigildesk/binary.h>, <sigildesk/profile.h>, <sigildesk/log.h>,
 *  <sigildesk/convert_utf8.h>, <sigildesk/util.h>.
 *
 *  The option values and result codes of the open toolkit, which come in lib/sigildesk, are in
 *  <sigildesk/open_toolkit.h>. It is not included here: a licensed toolkit has values of its own.
 */
#ifndef SIGILDESK_SIGILDESK_H
#define SIGILDESK_SIGILDESK_H

#include <sigildesk/binary.h>
#include <sigildesk/binstr.h>
#include <sigildesk/certlist.h>
#include <sigildesk/codes.h>
#include <sigildesk/convert_utf8.h>
#include <sigildesk/crypto.h>
#include <sigildesk/dialogs.h>
#include <sigildesk/handles.h>
#include <sigildesk/log.h>
#include <sigildesk/profile.h>
#include <sigildesk/records.h>
#include <sigildesk/util.h>

#endif
