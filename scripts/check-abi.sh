#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares the binary interface of the library with that of the last release, docs/abi, or with
# another dump or library that has debug information: scripts/check-abi.sh [OLD]
# Exit status 0: a program that was built with the old one runs with the present one; additions are
# listed. 1: it may not; the report says why. 2: the comparison was not possible.
# scripts/check-abi.sh --update makes the present interface that of the last release: for each
# release, and before the first one of a major version, which has nobody to be compatible with.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$scripts/.."
dumps=build/abi
library=build/debian/libKWIFunctionZEL.so
machine=$(uname -m)

give_up() {
    echo "abi: $*" >&2
    exit 2
}

# What clients can see of a library, without places in files: types that no header shows are opaque.
dump() {
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --drop-private-types \
        --exported-interfaces-only --headers-dir ifc --headers-dir build/debian/generated/ifc \
        --out-file "$2" "$1"
}

"$scripts/setup.sh" abi
"$scripts/build.sh" debian KWIFunctionZEL
soname=$(objdump -p "$library" | sed -n 's/^ *SONAME *libKWIFunctionZEL\.so\.//p')
released=docs/abi/libKWIFunctionZEL-$soname-$machine.xml.xz
mkdir -p "$dumps"
dump "$library" "$dumps/present.xml"

if [ "${1:-}" = --update ]; then
    mkdir -p docs/abi
    xz -9e --stdout "$dumps/present.xml" >"$released"
    echo "abi: $released is the present interface"
    exit 0
fi

old=${1:-$released}
[ -f "$old" ] || give_up "there is no $old; scripts/check-abi.sh --update writes it for a release"
case $old in
    *.xz) xz --decompress --stdout "$old" >"$dumps/old.xml" ;;
    *.xml) cp "$old" "$dumps/old.xml" ;;
    *) dump "$old" "$dumps/old.xml" ;;
esac

# Bits of the status: 1 and 2 tell of an error, 4 of a change, 8 of one that breaks for certain.
status=0
abidiff --no-added-syms "$dumps/old.xml" "$dumps/present.xml" >"$dumps/changes" || status=$?
[ $((status & 3)) -eq 0 ] || give_up "abidiff failed: $(cat "$dumps/changes")"
if [ "$status" -ne 0 ]; then
    cat "$dumps/changes"
    echo "abi: programs built with $old may not run with this library: take the change back, or" \
        "raise the major version in CMakeLists.txt, and with it the soname" >&2
    exit 1
fi
if ! abidiff "$dumps/old.xml" "$dumps/present.xml" >"$dumps/additions"; then
    cat "$dumps/additions"
    echo "abi: only additions since $old"
else
    echo "abi: as in $old"
fi
