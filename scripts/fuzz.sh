#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzzer for some seconds, 20 if nothing is said: scripts/fuzz.sh [SECONDS]. A file that
# breaks something is left in build/fuzz/findings; give it a telling name in tests/fuzz/corpus.
set -euo pipefail

seconds=${1:-20}
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: scripts/fuzz.sh [SECONDS]" >&2
    exit 2
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh fuzz
targets=(FuzzSettingsXml FuzzSettingsCsv)
folders=(settings-xml settings-csv)
scripts/build.sh fuzz "${targets[@]}"
mkdir -p build/fuzz/findings
for i in "${!targets[@]}"; do
    echo "fuzz: ${targets[i]}, $seconds s"
    mkdir -p "build/fuzz/seeds/${folders[i]}"
    log=build/fuzz/${targets[i]}.log
    if ! "build/fuzz/tests/${targets[i]}" -max_total_time="$seconds" -max_len=4096 -timeout=10 \
        -artifact_prefix=build/fuzz/findings/ "build/fuzz/seeds/${folders[i]}" \
        "tests/fuzz/corpus/${folders[i]}" >"$log" 2>&1; then
        tail -40 "$log" >&2
        echo "fuzz: ${targets[i]} found something; the file is in build/fuzz/findings" >&2
        exit 1
    fi
    grep -E '^Done|^stat::number' "$log"
done
