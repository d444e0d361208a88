#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares the coupling tables in docs/settings/couplings with what zelctl observes (the program
# may be named as last argument); with --update, makes tables, graphs and pictures anew.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
update=
if [ "${1:-}" = --update ]; then
    update=yes
    shift
fi
zelctl=${1:-build/release/tools/zelctl/zelctl}
if [ $# -gt 1 ] || [ ! -x "$zelctl" ]; then
    echo "usage: scripts/couplings.sh [--update] [ZELCTL]" >&2
    exit 2
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$zelctl" --json couplings >"$work/map.json"
"$zelctl" --json tree --depth 1 >"$work/tree.json"
mkdir "$work/couplings"
python3 -B scripts/write-couplings.py "$work/map.json" "$work/tree.json" "$work/couplings"

if [ -n "$update" ]; then
    for graph in "$work"/couplings/*.dot; do
        dot -Tsvg "$graph" -o "${graph%.dot}.svg"
    done
    rm -rf docs/settings/couplings
    cp -r "$work/couplings" docs/settings/couplings
elif ! diff -ru --exclude='*.svg' docs/settings/couplings "$work/couplings" >"$work/diff"; then
    head -40 "$work/diff" >&2
    echo "docs/settings/couplings is not what the library does: run scripts/couplings.sh --update" >&2
    exit 1
fi
