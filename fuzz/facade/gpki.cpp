// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The façade over the government library, as the open toolkit offers it.

#include "fuzz/facade/calls.h"

#include <sigildesk/codes.h>

FUZZ_TARGET(facade_gpki, input) { fuzz::callMembers(SIGIL_TOOLKIT_GPKI, input); }
