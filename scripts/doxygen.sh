#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the reference of the interface, build/docs/html, from ifc/ and the generated headers. Stops
# at whatever is undocumented, or documented in a way that Doxygen does not understand.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
"$scripts/setup.sh" docs
cd "$scripts/.."
python3 -B tools/modelgen --enumerations database/Enumerations --groups src \
    --out build/docs/generated
doxygen docs/Doxyfile
