#!/usr/bin/env bash
# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk
# The bundle of images is the same whenever its files were drawn.
#
#   reproducible_test.sh BUILD
set -euo pipefail
build=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

bundle=ui/images/images.cpp
command=$(cd "$build" && ninja -t commands "$bundle" | tail -n 1)
cp -r "$build/ui/images" "$scratch/images"
for day in 2001-02-03 2022-11-12; do
    find "$scratch/images" -exec touch -d "$day" {} +
    (cd "$build" && bash -c "${command//"$build/ui/images"/"$scratch/images"}")
    mv "$scratch/images/images.cpp" "$scratch/$day.cpp"
done
cmp "$scratch/2001-02-03.cpp" "$scratch/2022-11-12.cpp"
