#!/usr/bin/env bash
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk
# Installs the build into an empty folder, looks at what is there, and builds a small host against it through the
# CMake package and through pkg-config.
#
#   install_test.sh BUILD SOURCE SANITIZERS          where nothing is said about the library folder
#   install_test.sh BUILD SOURCE SANITIZERS LIBDIR   as a packager who says -DCMAKE_INSTALL_LIBDIR=LIBDIR
set -euo pipefail
build=$1 source=$2 sanitize=$3 libdir=${4:-lib}

# Inside the build tree, so that what is built can be shared by hard links.
scratch=$(mktemp -d "$build/install.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
prefix=$scratch/prefix
tree=$build

# The choice concerns installing alone, so what is built already serves a second tree. Only the command is linked once
# more, because the way to its library is part of it.
if [ $# -gt 3 ]; then
    tree=$scratch/tree
    joined=$(sed -n 's/^CMAKE_UNITY_BUILD:[^=]*=//p' "$build/CMakeCache.txt") # decides what the objects are called
    cmake -S "$source" -B "$tree" -G Ninja -DBUILD_TESTING=OFF -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DCMAKE_INSTALL_LIBDIR="$libdir" -DSIGILDESK_SANITIZE="$sanitize" -DCMAKE_UNITY_BUILD="${joined:-OFF}" >/dev/null
    cp -rl "$build/lib" "$build/bin" "$tree"
    for objects in {foundation,facade,certlist,doctor,jobs}/CMakeFiles tools/sigildesk/CMakeFiles; do
        cp -rlf "$build/$objects/." "$tree/$objects"
    done
    cp -l "$build"/secrets/*.a "$tree/secrets"
    cp -lf "$build"/tools/sigildesk/{sigildesk.{1,bash,fish},_sigildesk} "$tree/tools/sigildesk"
    [ -n "$sanitize" ] || cp -rl "$build"/manuals/{man,reference} "$tree/manuals"
    rm "$tree/bin/sigildesk"
    (cd "$tree" && bash -c "$(ninja -t commands sigildesk | tail -n 1)")
fi
cmake --install "$tree" --prefix "$prefix" >/dev/null

# What a distribution makes packages of: no sanitizer is in it.
[ $# -le 3 ] || [ -n "$sanitize" ] || python3 -B "$source/tests/end_to_end/packages_test.py" "$source" "$prefix" "$libdir"

lib=$prefix/$libdir
expect() { [ -e "$1" ] || { echo "not installed: $1" >&2; exit 1; }; }
for file in "$lib"/libSigilDesk{,Flat}.so{,.1} "$lib"/libsigil.so{,.1} "$prefix/include/sigil.h" "$lib/pkgconfig/sigil.pc" \
            "$prefix"/include/sigildesk/{sigildesk,crypto,certlist,dialogs,flat,open_toolkit}.h \
            "$lib/cmake/SigilDesk/SigilDeskConfig.cmake" "$lib/pkgconfig/sigildesk.pc" \
            "$lib"/sigildesk/{libHVCToolkitV30.so,libgpkiapi_v15.so,token-probe,nss-store} \
            "$lib"/sigildesk/{KOR.ini,ENG.ini,TWAPI_LOG.ini,HVCToolkitV30.conf} \
            "$lib"/sigildesk/{Policy,Issuer}_{KOR,ENG}.conf "$lib/sigildesk/sigildesk-pick" "$prefix/bin/sigildesk" \
            "$prefix"/share/{man/man1/sigildesk.1,bash-completion/completions/sigildesk} \
            "$prefix"/share/{zsh/site-functions/_sigildesk,fish/vendor_completions.d/sigildesk.fish}; do
    expect "$file"
done
# A sanitizer's runtime is no part of what is shipped, and nobody reads the manuals beside it.
if [ -z "$sanitize" ]; then
    python3 "$source/tests/end_to_end/licences_test.py" "$source" "$prefix"
    for page in man3/{sigildesk_cert,CertLoad,CLP_LoadCertList}.3 man5/{sigildesk-log,TWAPI_LOG.ini}.5 man7/sigildesk.7; do
        expect "$prefix/share/man/$page"
    done
    expect "$prefix/share/doc/sigildesk/html/index.html"
fi

dynamic=$(objdump -p "$lib/libSigilDesk.so.1")
soname=$(awk '/SONAME/ { print $2 }' <<<"$dynamic")
[ "$soname" = libSigilDesk.so.1 ] || { echo "soname is $soname" >&2; exit 1; }
if grep -q 'NEEDED.*\(HVCToolkit\|gpkiapi\|libcrypto\)' <<<"$dynamic"; then
    echo "the library links a toolkit or its cryptography" >&2
    exit 1
fi

# The command finds the library and its folder by itself, before anybody says where they are.
"$prefix/bin/sigildesk" --version
"$prefix/bin/sigildesk" --help | tr -d '\n ' | grep -qF "$lib/sigildesk" \
    || { echo "the command does not find $lib/sigildesk" >&2; exit 1; }

# A host of a sanitized library is built with the same sanitizers.
flags=()
[ -z "$sanitize" ] || flags=("-fsanitize=$sanitize")
export LD_LIBRARY_PATH=$lib

cmake -S "$source/tests/end_to_end/consumer" -B "$scratch/with-cmake" -G Ninja \
    -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="${flags[*]}" >/dev/null
cmake --build "$scratch/with-cmake" >/dev/null
"$scratch/with-cmake/consumer"

# refused COMPONENTS WORDS: the package says what it does not have.
refused() {
    if cmake -S "$source/tests/end_to_end/consumer" -B "$scratch/refused" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
        -DCOMPONENTS="$1" >"$scratch/refused.log" 2>&1; then
        echo "there is a component $1" >&2
        exit 1
    fi
    tr -s ' \n' ' ' <"$scratch/refused.log" | grep -qF "$2" || { cat "$scratch/refused.log" >&2; exit 1; }
}
refused 'Qt;Widgets' 'SigilDesk has no component Widgets; there are Qt and C'
mv "$lib/cmake/SigilDesk/SigilDeskQtTargets.cmake" "$scratch/kept"
refused '' 'the component Qt of SigilDesk is not installed'
mv "$scratch/kept" "$lib/cmake/SigilDesk/SigilDeskQtTargets.cmake"

export PKG_CONFIG_PATH=$lib/pkgconfig
folder=$(pkg-config --variable=libraryfolder sigildesk)
# shellcheck disable=SC2046
g++ -std=c++11 "${flags[@]}" -DLIBRARY_FOLDER="\"$folder\"" "$source/tests/end_to_end/consumer/main.cpp" \
    -o "$scratch/consumer" $(pkg-config --cflags --libs sigildesk)
"$scratch/consumer"

# A host in C needs no more than the header and the same library.
printf '#include <sigildesk/flat.h>\nint main(void) { return CLP_GetCertCount(NULL) != SIGIL_NO_HANDLE; }\n' >"$scratch/host.c"
# shellcheck disable=SC2046
gcc -std=c99 -pedantic-errors "${flags[@]}" "$scratch/host.c" -o "$scratch/c-host" $(pkg-config --cflags --libs sigildesk)
"$scratch/c-host"

# The examples once: they are the same whatever the library folder is called.
[ $# -gt 3 ] || python3 -B "$source/tests/end_to_end/examples_test.py" "$build" "$source" "$prefix" "$sanitize"
