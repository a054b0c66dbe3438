#!/usr/bin/env bash
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk
# Takes SigilDesk into a host's own project, as FetchContent does: only what would be installed becomes part of it, and nothing
# of how the host itself is built changes.
#
#   subproject_test.sh BUILD SOURCE SANITIZERS
set -euo pipefail
build=$1 source=$2 sanitize=$3
scratch=$(mktemp -d "$build/subproject.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
fail() { echo "$*" >&2; exit 1; }

flags=''
[ -z "$sanitize" ] || flags=-fsanitize=$sanitize
cd "$scratch"
cmake -S "$source/tests/end_to_end/consumer" -B . -G Ninja -DFETCHCONTENT_SOURCE_DIR_SIGILDESK="$source" \
    -DSIGILDESK_SANITIZE="$sanitize" -DCMAKE_CXX_FLAGS="$flags" >/dev/null

if ninja -t targets all | grep -E '/(tests|bench|fuzz|sample-store|token-walk)/' | grep -v /consumer/; then
    fail "the host gets what is for SigilDesk's own developers"
fi
if grep -E '^(BUILD_TESTING|CMAKE_(CXX_STANDARD|[A-Z]+_OUTPUT_DIRECTORY|BUILD_RPATH[A-Z_]*|[A-Z_]+_VISIBILITY_PRESET))\b' CMakeCache.txt
then
    fail "the host's own choices are made for it"
fi
[[ $(ctest -N) == *"Total Tests: 0"* ]] || fail "the host's tests are not its own"

# The host finds what a whole build would put there; only its own files are compiled.
cp -rl "$build/lib" _deps/sigildesk-build/
ninja -t commands consumer | grep -E ' -o (CMakeFiles/consumer\.dir/\S+|consumer) ' >commands
[ "$(wc -l <commands)" = 2 ] || fail "not one command to compile the host and one to link it: $(cat commands)"
without=${flags:+$(sed "s/ $flags//g" commands)}
if grep -E -o -- ' -(W|f|std=(gnu|c)\+\+2)\S*' <<<"${without:-$(cat commands)}" | grep -v -- '-Wl,-rpath'; then
    fail "the host is built with SigilDesk's flags"
fi
bash -e commands
./consumer
