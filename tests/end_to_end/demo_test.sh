#!/usr/bin/env bash
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

for language in ko en; do
    output=$("$source_folder/scripts/demo" --headless --build "$build" --language "$language")
    echo "$output"
    grep -q '^openssl     Verified OK$' <<<"$output"
    screenshot=$(sed -n 's/^screenshot  //p' <<<"$output")
    [ "$(identify -format '%wx%h' "$screenshot")" = 391x460 ]
done
