#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Lets eight threads do everything that clients do for some seconds, 60 if nothing is said, and
# checks what must hold meanwhile and afterwards: scripts/soak.sh [SECONDS [SEED]]. KWI_PRESET
# chooses another preset than release, such as tsan.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
preset=${KWI_PRESET:-release}
"$scripts/setup.sh"
"$scripts/build.sh" "$preset" soak
cd "$scripts/.."
wrapper=()
# Some kernels scatter memory more widely than the thread sanitizer can follow.
if [ "$preset" = tsan ] && setarch --addr-no-randomize true 2>/dev/null; then
    wrapper=(setarch --addr-no-randomize)
fi
TSAN_OPTIONS=${TSAN_OPTIONS:-halt_on_error=1:second_deadlock_stack=1} \
    exec "${wrapper[@]}" "build/$preset/tests/soak" "$@" </dev/null
