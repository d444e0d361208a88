#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Measures, and prints the budgets with what was measured: scripts/bench.sh [FILTER]
# Without FILTER (a regular expression) it runs what the budgets are about, beside their baselines;
# with it, whatever matches, and shows those figures too. Wants a quiet machine.
#
# scripts/bench.sh --instructions [--only FILTER] [--update] counts instructions of the same
# operations instead, which no other program disturbs, beside the counts in bench/instructions.txt.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$scripts/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What must be there, and be built, for either way.
prepare() {
    "$scripts/setup.sh" "${@:2}"
    "$scripts/build.sh" release "$1" KWIFunctionZEL
    strip -o "$work/stripped.so" build/release/libKWIFunctionZEL.so
}

if [ "${1:-}" = --instructions ]; then
    prepare kwi_count bench
    python3 -B bench/instructions.py build/release/bench/kwi_count "$work/stripped.so" "${@:2}"
    exit
fi

prepare kwi_bench
filter=${1:-^(Frame|Tree|Baseline|HorizontalChain|SpanChange|Stream|Acquisition)}
shown=/dev/null
[ $# -eq 0 ] || shown=/dev/stdout
# Repetitions of all take turns, so that a disturbance does not hit one and its baseline alone.
build/release/bench/kwi_bench --benchmark_filter="$filter" --benchmark_repetitions=5 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_out="$work/results.json" --benchmark_out_format=json >"$shown"
python3 -B bench/budgets.py "$work/results.json" "$work/stripped.so"
