// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The façade over the maker's toolkit, as the open toolkit offers it.

#include "fuzz/facade/calls.h"

#include <sigildesk/codes.h>

FUZZ_TARGET(facade_maker, input) { fuzz::callMembers(SIGIL_TOOLKIT_MAKER, input); }
