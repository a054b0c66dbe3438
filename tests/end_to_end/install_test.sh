#!/usr/bin/env bash
# Installs the build into an empty folder, looks at what is there, and builds a small host against it through the
# CMake package and through pkg-config.
set -euo pipefail
build=$1 source=$2 sanitize=$3

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null

expect() { [ -e "$prefix/$1" ] || { echo "not installed: $1" >&2; exit 1; }; }
for file in lib/libSigilDesk.so.1 lib/libSigilDesk.so include/sigildesk/{sigildesk,crypto,certlist,dialogs,open_toolkit}.h \
            lib/cmake/SigilDesk/SigilDeskConfig.cmake lib/pkgconfig/sigildesk.pc \
            lib/sigildesk/{libHVCToolkitV30.so,libgpkiapi_v15.so} \
            lib/sigildesk/{KOR.ini,ENG.ini,TWAPI_LOG.ini,HVCToolkitV30.conf} \
            lib/sigildesk/{Policy,Issuer}_{KOR,ENG}.conf bin/sigildesk; do
    expect "$file"
done
dynamic=$(objdump -p "$prefix/lib/libSigilDesk.so.1")
soname=$(awk '/SONAME/ { print $2 }' <<<"$dynamic")
[ "$soname" = libSigilDesk.so.1 ] || { echo "soname is $soname" >&2; exit 1; }
if grep -q 'NEEDED.*\(HVCToolkit\|gpkiapi\|libcrypto\)' <<<"$dynamic"; then
    echo "the library links a toolkit or its cryptography" >&2
    exit 1
fi

# A host of a sanitized library is built with the same sanitizers.
flags=()
[ -z "$sanitize" ] || flags=("-fsanitize=$sanitize")
export LD_LIBRARY_PATH=$prefix/lib

cmake -S "$source/tests/end_to_end/consumer" -B "$scratch/with-cmake" -G Ninja \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="${flags[*]}" >/dev/null
cmake --build "$scratch/with-cmake" >/dev/null
"$scratch/with-cmake/consumer"

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
folder=$(pkg-config --variable=libraryfolder sigildesk)
# shellcheck disable=SC2046
g++ -std=c++11 "${flags[@]}" -DLIBRARY_FOLDER="\"$folder\"" "$source/tests/end_to_end/consumer/main.cpp" \
    -o "$scratch/consumer" $(pkg-config --cflags --libs sigildesk)
"$scratch/consumer"

"$prefix/bin/sigildesk" --version
