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
    cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}" "$@" </dev/null
}

# A terminal shows the progress, a log only what is wrong.
if [ -t 1 ]; then
    build
else
    build -- --quiet | { grep -vxF 'ninja: no work to do.' || true; }
fi
