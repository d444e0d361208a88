#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the panel's bundle from its sources and tries it in a browser, against the zelhost of the
# build (build/release/service/zelhost, or what ZELHOST names). Pictures of its views land in
# build/panel/pictures.
#
#   scripts/panel.sh            writes service/panel/bundle and tests it
#   scripts/panel.sh --check    the committed bundle is what the sources make, byte for byte, and is
#                               small enough; tests what zelhost serves
#   scripts/panel.sh --bundle   writes it without tests
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$scripts")
panel=$root/service/panel
budget=60000 # bytes of the compressed script
task=${1:-}
case $task in
    "" | --check | --bundle) ;;
    *)
        sed -n '3,10s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
esac

"$scripts/setup.sh" panel
cd "$panel"
# What is installed is what the lock file says, and is fetched only where it is not.
if ! cmp -s package-lock.json node_modules/.lock; then
    npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >&2
    cp package-lock.json node_modules/.lock
fi

bundle=$panel/bundle
[ "$task" != --check ] || bundle=$root/build/panel/bundle
rm -rf "$bundle"
node build.mjs "$bundle"
if [ "$task" = --check ] && ! diff -rq "$bundle" "$panel/bundle" >&2; then
    echo "panel: the committed bundle is not what the sources make: scripts/panel.sh --bundle" >&2
    exit 1
fi
size=$(gzip -9nc "$bundle/panel.js" | wc -c)
if [ "$size" -gt "$budget" ]; then
    echo "panel: the script has $size bytes compressed, of $budget" >&2
    exit 1
fi
echo "panel: the script has $size bytes compressed, of $budget"
[ "$task" != --bundle ] || exit 0

export ZELHOST=${ZELHOST:-$root/build/release/service/zelhost}
[ "$task" = --check ] || export PANEL_FOLDER=$bundle
timeout 600 node --test "$root"/tests/panel/*.test.mjs
