#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the settings reference as pages for a browser, which need no server, and the schemas of files
# and of JSON: build/site, or the folder that is named. Their links are checked.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
site=${1:-build/site}
rm -rf "$site"
python3 -B tools/modelgen --enumerations database/Enumerations --groups src --out "$site" \
    --site docs/settings/couplings
python3 -B scripts/check-links.py "$site" >&2
echo "site: $site/index.html"
