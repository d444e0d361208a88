#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzzer for some seconds, 20 if nothing is said: scripts/fuzz.sh [SECONDS [SEED]]. Every
# folder of tests/fuzz/corpus and tests/service/corpus is the fuzzer of that name; the model of the
# generator has one of its own. A file that breaks something is left in build/fuzz/findings; give it
# a telling name in the corpus. Without SEED every run tries others; with one, it goes the same way
# as far as the time lets it, so that who checks a change finds what the change brought.
set -euo pipefail

seconds=${1:-20}
seed=${2:-0} # 0 lets the fuzzers choose
if ! [[ $seconds =~ ^[1-9][0-9]*$ && $seed =~ ^[0-9]{1,9}$ ]]; then
    echo "usage: scripts/fuzz.sh [SECONDS [SEED]]" >&2
    exit 2
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."
findings=build/fuzz/findings
scripts/setup.sh fuzz
corpora=(tests/fuzz/corpus tests/service/corpus)
mapfile -t targets < <(find "${corpora[@]}" -mindepth 1 -maxdepth 1 -printf '%f\n' | LC_ALL=C sort)
scripts/build.sh fuzz "${targets[@]/#/Fuzz}"
mkdir -p "$findings"

# Shows the figures of a run, or what it found.
run() {
    local name=$1 log=build/fuzz/$1.log
    shift
    if ! "$@" >"$log" 2>&1; then
        tail -40 "$log" >&2
        echo "fuzz: $name found something; the file is in $findings" >&2
        return 1
    fi
    echo "fuzz: $name, $seconds s: $(grep -E '^Done|^stat::number' "$log" | tr '\n' ' ')"
}

fuzz() {
    local seeds=build/fuzz/seeds/$1
    if ((seed != 0)); then
        seeds+=-$seed
        rm -rf "$seeds" # what earlier runs found leads other ways
    fi
    mkdir -p "$seeds"
    run "$1" "build/fuzz/tests/Fuzz$1" -max_total_time="$seconds" -max_len=4096 \
        -seed="$seed" -timeout=10 -artifact_prefix="$findings/" "$seeds" tests/*/corpus/"$1"
}

fuzz_model() {
    run model python3 -B tests/fuzz/model.py --seconds "$seconds" --seed "$seed" \
        --findings "$findings"
}

# As many at once as there are processors: each takes one.
export -f run fuzz fuzz_model
export seconds seed findings
printf '%s\n' "${targets[@]/#/fuzz }" fuzz_model |
    xargs -P "$(nproc)" -I{} bash -c '{} || exit 255'
