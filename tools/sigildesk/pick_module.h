// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The part of `pick` that needs Qt: a module that the command opens when it is asked to, and that brings the library with
 *  the dialogs along.
 */
#pragma once

#include <sigildesk/dialogs.h>

namespace host {

/** Opens the selection dialog.
 *  @param noDisplay  called when no display can be opened; must end the process, since Qt does otherwise
 *  @return as ShowUserCert_T */
using PickFunction = int (*)(
    tagINITOPT* init, tagLOADSELECTCERTOPTION* load, tagSELCERTINFO* chosen, void (*noDisplay)(const char* reason));

constexpr char pickModuleName[] = "sigildesk-pick.so";
constexpr char pickFunctionName[] = "sigildesk_pick";

} // namespace host
