#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs clang-tidy on the sources that differ from the last commit, on those named, or on all:
# scripts/tidy.sh [--all | FILE.cpp ...]. Needs the package clang-tidy-14.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
if ! command -v clang-tidy-14 >/dev/null; then
    echo "tidy: install clang-tidy-14 first" >&2
    exit 1
fi
# Clang can not read the compiler's precompiled headers: a configuration of its own is without.
cmake --preset release -B build/tidy -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null

changed() {
    git diff --name-only --diff-filter=d HEAD
    git ls-files --others --exclude-standard
}
ours='^(support|database/CommonDatabase|src|tools/zelctl)/.*\.cpp$'

case ${1:-} in
--all) mapfile -t files < <(find support database src tools -name '*.cpp' | grep -E "$ours" | sort) ;;
'') mapfile -t files < <(changed | grep -E "$ours" | sort -u) ;;
*) files=("$@") ;;
esac
[ ${#files[@]} -gt 0 ] || exit 0

# clang-tidy counts on its error output what it kept quiet about: shown only with a finding.
check_one() {
    local output
    output=$(clang-tidy-14 -p build/tidy --quiet "$1" 2>&1) || { echo "$output"; return 1; }
}
export -f check_one
printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'check_one "$1"' _ {}
