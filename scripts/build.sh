#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Configures and builds a preset: scripts/build.sh PRESET [TARGET ...]
# KWI_CMAKE_ARGS adds options to the configuration, such as -DKWI_WERROR=ON.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
targets=()
[ $# -eq 0 ] || targets=(--target "$@")

log=$(mktemp)
trap 'rm -f "$log"' EXIT
read -ra options <<<"${KWI_CMAKE_ARGS:-}"
if ! cmake --preset "$preset" "${options[@]}" </dev/null >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi

build() {
    cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}" </dev/null
}

# Passes on what is wrong, and each tenth of a work that takes its time.
thin_out() {
    awk '$1 == "@step" {
             if ($3 >= 20 && int(10 * $2 / $3) > tenths) {
                 tenths = int(10 * $2 / $3)
                 printf "build: %d of %d steps\n", $2, $3
                 fflush()
             }
             next
         }
         $0 != "ninja: no work to do." { print; fflush() }'
}

# A terminal shows each step, a log how far it is.
if [ -t 1 ]; then
    build
else
    NINJA_STATUS='@step %f %t ' build | thin_out
fi
