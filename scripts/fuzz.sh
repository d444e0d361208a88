#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzzer for some seconds, 20 if nothing is said: scripts/fuzz.sh [SECONDS]. Every folder
# of tests/fuzz/corpus is the fuzzer of that name; the model of the generator has one of its own. A
# file that breaks something is left in build/fuzz/findings; give it a telling name in the corpus.
set -euo pipefail

seconds=${1:-20}
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: scripts/fuzz.sh [SECONDS]" >&2
    exit 2
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."
findings=build/fuzz/findings
scripts/setup.sh fuzz
mapfile -t targets < <(ls tests/fuzz/corpus)
scripts/build.sh fuzz "${targets[@]/#/Fuzz}"
mkdir -p "$findings"

# Shows the figures of a run, or what it found.
run() {
    local name=$1 log=build/fuzz/$1.log
    shift
    echo "fuzz: $name, $seconds s"
    if ! "$@" >"$log" 2>&1; then
        tail -40 "$log" >&2
        echo "fuzz: $name found something; the file is in $findings" >&2
        exit 1
    fi
    grep -E '^Done|^stat::number' "$log"
}

for target in "${targets[@]}"; do
    seeds=build/fuzz/seeds/$target
    mkdir -p "$seeds"
    run "$target" "build/fuzz/tests/Fuzz$target" -max_total_time="$seconds" -max_len=4096 \
        -timeout=10 -artifact_prefix="$findings/" "$seeds" "tests/fuzz/corpus/$target"
done
run model python3 -B tests/fuzz/model.py --seconds "$seconds" --findings "$findings"
