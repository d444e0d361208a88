#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares what the library exports with the reviewed list in docs/exported-symbols.txt:
# scripts/check-symbols.sh [--update] [LIBRARY]
# Interfaces of groups, name tables and property types stand as one line for each family.
set -euo pipefail

update=false
if [ "${1:-}" = --update ]; then
    update=true
    shift
fi
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
library=${1:-$root/build/release/libKWIFunctionZEL.so}
list=$root/docs/exported-symbols.txt
string='std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >'
thing='(vtable|VTT|typeinfo|typeinfo name|guard variable|construction vtable) for '

exported() {
    nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f3- |
        sed -E -e "s/^$thing//" -e 's/^(non-virtual|virtual) thunk to //' \
            -e "s/$string/std::string/g" -e 's/\[abi:cxx11\]//g' \
            -e 's/(\w+)::~\1\(\)$/\1/' \
            -e 's/\bIKWFunction([A-Z]\w*)(<.*>)?$/IKWFunction\1/' \
            -e '/^IKWFunction(Root)?Base$/!s/^IKWFunction[A-Z]\w*$/IKWFunction<group>/' \
            -e 's/^(IKWEnumProperty|IKWNumericProperty|IKWArray|IKWMap)<.*>$/\1<T>/' \
            -e 's/ GetStaticEnumNameInfo<KW_\w+>\(\)$/ GetStaticEnumNameInfo<T>()/' |
        LC_ALL=C sort -u
}

if $update; then
    exported >"$list"
elif ! exported | diff -u --label reviewed --label exported "$list" -; then
    echo "symbols: exports differ from $list; review them, then scripts/check-symbols.sh --update" >&2
    exit 1
fi
