#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares the settings reference in docs/settings with the model that it is made from; with
# --update, makes it anew. The couplings below it are observed: scripts/couplings.sh.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
case ${1:-} in
"" | --update) ;;
*)
    echo "usage: scripts/check-reference.sh [--update]" >&2
    exit 2
    ;;
esac

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
python3 -B tools/modelgen --enumerations database/Enumerations --groups src \
    --out "$work" >"$work/log" || { cat "$work/log" >&2; exit 1; }

if [ "${1:-}" = --update ]; then
    find docs/settings -name "*.md" -not -path "*/couplings/*" -delete
    cp -r "$work"/docs/settings/. docs/settings/
elif ! diff -ru --exclude=couplings docs/settings "$work/docs/settings" >"$work/diff" 2>&1; then
    head -40 "$work/diff" >&2
    echo "docs/settings is not what the model says: run scripts/check-reference.sh --update" >&2
    exit 1
fi
