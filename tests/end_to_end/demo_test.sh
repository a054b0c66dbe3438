#!/usr/bin/env bash
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk
# The demo, driven without a display on this build, in both languages: its last word is openssl's.
set -euo pipefail
build=$1
source_folder=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Under the address sanitizer its runtime must be told that the wrapper is loaded in front of it, and the wrapper that
# it must not bind the C library apart from the runtime.
export ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}
export NSS_WRAPPER_DISABLE_DEEPBIND=1 TMPDIR=$scratch

fail() { echo "$*" >&2; exit 1; }

for language in ko en; do
    output=$("$source_folder/scripts/demo" --headless --keep --build "$build" --language "$language")
    echo "$output"
    for verdict in 'CMS Verification successful' 'CMS Decryption successful' 'Time stamp, Verification: OK' \
        'Token, CMS Verification successful'; do
        grep -q "^openssl     $verdict$" <<<"$output" || fail "openssl does not say: $verdict"
    done
    kept=$(sed -n 's/^kept        //p' <<<"$output")
    [ "$(identify -format '%wx%h' "$kept/screenshot.png")" = 391x460 ]
    [ -d "$kept/home/NPKI" ] || fail "the store was not kept"
    rm -rf "$kept"
done

# The store holds private keys: unless it is asked for, nothing stays, whatever the end is.
nothing_stays() { [ -z "$(ls "$scratch")" ] || fail "left behind: $(ls "$scratch")"; }
"$source_folder/scripts/demo" --headless --build "$build" >/dev/null
nothing_stays

broken=$(mktemp -d "$build/broken.XXXXXX")
trap 'rm -rf "$scratch" "$broken"' EXIT
printf '#!/bin/sh\nexit 1\n' >"$broken/xdotool"
chmod +x "$broken/xdotool"
if PATH=$broken:$PATH "$source_folder/scripts/demo" --headless --build "$build" >/dev/null 2>&1; then
    fail "the demo went on although nobody drove the dialog"
fi
nothing_stays
