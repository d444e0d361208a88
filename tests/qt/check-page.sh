#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Draws the example page without a screen and keeps its picture: check-page.sh PROGRAM MODULES
# Then the pieces of the guide. Whatever a page complains about is a mistake.
set -euo pipefail

guide=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)/docs/guides/use-from-qml.md
program=$1
modules=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software QML_IMPORT_PATH=$modules
export XDG_RUNTIME_DIR=$work HOME=$work LC_ALL=C.UTF-8
draw() {
    if ! "$program" --picture "$work/page.png" "$@" >"$work/log" 2>&1 || [ -s "$work/log" ]; then
        echo "check-page: $*" >&2
        cat "$work/log" "$@" >&2
        exit 1
    fi
}

draw
# A page of one colour would be a quarter of that.
size=$(stat -c %s "$work/page.png")
if [ "$size" -lt 6000 ]; then
    echo "check-page: the picture has $size bytes only" >&2
    exit 1
fi
cp "$work/page.png" "$modules/page.png"
echo "check-page: $modules/page.png"

# Each block of the guide, within a page that has the imports.
awk -v "work=$work" '
    /^```/ { writing = ($0 == "```qml"); if (writing) ++count; next }
    writing && !/^import/ { print > (work "/piece" count) }' "$guide"
for piece in "$work"/piece*; do
    { echo "import QtQuick; import QtQuick.Controls; import KWIFunctionZEL 2.0; Item {" &&
        cat "$piece" && echo "}"; } >"$piece.qml"
    draw "$piece.qml"
done
