#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Draws the example page without a screen and keeps its picture: check-page.sh PROGRAM MODULES
# Whatever the page complains about is a mistake.
set -euo pipefail

program=$1
modules=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software QML_IMPORT_PATH=$modules
export XDG_RUNTIME_DIR=$work HOME=$work LC_ALL=C.UTF-8
if ! "$program" --picture "$work/page.png" >"$work/log" 2>&1 || [ -s "$work/log" ]; then
    cat "$work/log" >&2
    exit 1
fi
# A page of one colour would be a quarter of that.
size=$(stat -c %s "$work/page.png")
if [ "$size" -lt 6000 ]; then
    echo "check-page: the picture has $size bytes only" >&2
    exit 1
fi
cp "$work/page.png" "$modules/page.png"
echo "check-page: $modules/page.png"
