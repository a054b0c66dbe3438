#!/usr/bin/env bash
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk
# Builds the module. Where the headers and the library are, pkg-config says, or CPPFLAGS and LDFLAGS do.
#
#   build.sh OUTPUT
set -euo pipefail
read -ra flags <<<"${CPPFLAGS-$(pkg-config --cflags sigil)} ${LDFLAGS-$(pkg-config --libs-only-L sigil)}"
exec "${CC:-cc}" -std=c11 -D_DEFAULT_SOURCE -O2 -Wall -Wextra -Werror -fPIC -shared -fvisibility=hidden \
    -isystem "${NODE_INCLUDE:-/usr/include/node}" "$(dirname "$0")/sigildesk_node.c" -o "$1" "${flags[@]}" -lsigil
