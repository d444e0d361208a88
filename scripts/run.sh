#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the library, and shows it at work.
#
#   scripts/run.sh [SESSION]              the session in examples/first-session.zel, or SESSION
#   scripts/run.sh --panel [OPTION ...]   the instrument in a browser, at the address that it prints,
#                                         until Ctrl-C; options are those of zelhost
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$scripts")

show_panel() {
    # Settings outlive the program, as they do in an instrument.
    local settings=$root/build/panel/settings
    mkdir -p "$settings"
    "$scripts/setup.sh"
    KWI_CMAKE_ARGS="-DKWI_BUILD_SERVICE=ON" "$scripts/build.sh" release zelhost
    echo "run: the panel is at the address that begins with http; Ctrl-C ends it"
    exec "$root/build/release/service/zelhost" --settings "$settings" --demo "$@" </dev/null
}

if [ "${1:-}" = --panel ]; then
    show_panel "${@:2}"
fi

session=$(realpath "${1:-$root/examples/first-session.zel}")
"$scripts/setup.sh"
"$scripts/build.sh" release zelctl

# What the session saves lands among the build's files.
cd "$root/build/release"
exec tools/zelctl/zelctl run "$session" </dev/null
