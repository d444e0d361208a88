#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds everything, and runs all tests. Arguments go to ctest:
# scripts/test.sh -R Horizontal. KWI_PRESET chooses another preset than release.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
preset=${KWI_PRESET:-release}
"$scripts/setup.sh"
"$scripts/build.sh" "$preset"
cd "$scripts/.."
exec ctest --preset "$preset" --parallel "$(nproc)" "$@" </dev/null
