#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Whether programs that were built with the last release run with the present library, and go on to
# run when it grows: scripts/check-abi.sh
#  - Accessors stand where the headers of the release, docs/abi, declare them.
#  - abidiff finds additions only between the two binary interfaces.
#  - A client that is built with those headers calls every accessor, writes, saves and recalls. It
#    answers the same with the present library and with one whose model grew everywhere: a property,
#    a group and an action in the middle of every list, a value at the end of every enumeration,
#    members of each kind removed.
# Exit status 0: yes. 1: no; the report says why. 2: the comparison was not possible.
# scripts/check-abi.sh --keep makes the present interface that of the release whose version stands
# in CMakeLists.txt, which is raised first: it appends what is new to the lists beside the model and
# takes headers and binary interface into docs/abi. A version X.0.0 begins the lists anew, as often
# as it is asked to until it is released.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$scripts/.."
root=$PWD
work=$root/build/abi
library=build/debian/libKWIFunctionZEL.so
version=$(sed -n 's/^project(KWIFunctionZEL VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
kept=docs/abi/${version%%.*}
dump=$kept/$(uname -m).xml.xz

give_up() {
    echo "abi: $*" >&2
    exit 2
}

refuse() {
    echo "abi: programs that were built with the last release may not run with this library: take" \
        "the change back, or raise the major version in CMakeLists.txt, and with it the soname" >&2
    exit 1
}

quietly() {
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2 && give_up "$1 failed"; }
}

growth() {
    python3 -B "$scripts/growth.py" "$@"
}

build_present() {
    "$scripts/build.sh" debian KWIFunctionZEL
    rm -rf "$work/present"
    mkdir -p "$work/present"
    cp -r ifc/. build/debian/generated/ifc/. "$work/present"
    # What clients can see, without places in files: types that no header shows are opaque.
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --drop-private-types \
        --exported-interfaces-only --headers-dir ifc --headers-dir build/debian/generated/ifc \
        --out-file "$work/present.xml" "$library"
    python3 -B "$scripts/define-enums.py" "$work/present.xml"
}

keep() {
    python3 -B tools/modelgen --enumerations database/Enumerations --groups src --out "$work" \
        --release "$version"
    build_present
    mkdir -p "$kept"
    xz -9e --stdout "$work/present.xml" >"$dump"
    # The same headers give the same bytes.
    tar --create --sort=name --mtime=@0 --owner=0 --group=0 --numeric-owner --mode=go=rX,u+rw \
        --directory="$work/present" . | xz -9e --stdout >"$kept/headers.tar.xz"
    echo "abi: $kept holds the interface of $version"
}

# Interfaces of groups take accessors at their end, which abidiff calls a change: growth.py and the
# client look at each of them. What these lead to is compared for itself.
compare_dumps() {
    local status=0
    xz --decompress --stdout "$dump" >"$work/kept.xml"
    printf '[suppress_type]\n  name_regexp = ^IKWFunction[A-Z].*\n  name_not_regexp = %s\n' \
        '^IKWFunction(Root)?Base$' >"$work/suppressed"
    # Bits of the status: 1 and 2 tell of an error, 4 of a change, 8 of one that breaks for certain.
    abidiff --leaf-changes-only --suppressions "$work/suppressed" --no-added-syms "$work/kept.xml" \
        "$work/present.xml" >"$work/changes" || status=$?
    [ $((status & 3)) -eq 0 ] || give_up "abidiff failed: $(cat "$work/changes")"
    [ "$status" -eq 0 ] || { cat "$work/changes" && refuse; }
}

# In the least time: the client asks what stands where, not how fast.
build_grown() {
    rm -rf "$work/grown"
    mkdir -p "$work/grown"
    cp -a --parents CMakeLists.txt cmake database ifc src support tools/modelgen "$work/grown"
    growth grow "$work/grown" >"$work/removed"
    quietly cmake -S "$work/grown" -B "$work/grown/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 \
        -DKWI_BUILD_TESTS=OFF -DKWI_BUILD_TOOLS=OFF
    quietly cmake --build "$work/grown/build" --target KWIFunctionZEL
}

build_client() {
    growth client "$work/kept" "$work/Kept.cpp"
    # shellcheck disable=SC2046
    quietly g++ -std=c++20 -fPIC -O0 -Wno-deprecated-declarations tests/abi/Client.cpp \
        "$work/Kept.cpp" -o "$work/client" -Itests/abi -I"$work/kept" \
        $(pkg-config --cflags Qt6Core) "$library" $(pkg-config --libs Qt6Core)
}

run_client() {
    mkdir -p "$work/settings"
    LD_LIBRARY_PATH=$1 "$work/client" "$work/settings" >"$work/$2.answers" 2>"$work/log" || {
        tail -n 3 "$work/$2.answers" "$work/log" >&2
        echo "abi: a client of the last release fails with the $2 library" >&2
        refuse
    }
}

mkdir -p "$work"
"$scripts/setup.sh" abi
case ${1:-} in
    --keep) keep && exit 0 ;;
    "") ;;
    *) give_up "usage: scripts/check-abi.sh [--keep]" ;;
esac

[ -f "$dump" ] || give_up "there is no $dump; scripts/check-abi.sh --keep writes it for a release"
rm -rf "$work/kept"
mkdir -p "$work/kept"
tar --extract --xz --directory="$work/kept" --file="$kept/headers.tar.xz"
build_present
growth order "$work/kept" "$work/present" || refuse
compare_dumps
build_client
run_client build/debian present
! grep 'not reached$' "$work/present.answers" >&2 || give_up "the client does not meet all groups"
build_grown
run_client "$work/grown/build" grown
growth compare "$work/present.answers" "$work/grown.answers" "$work/removed" || refuse
