#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Measures, and prints the budgets with what was measured: scripts/bench.sh [FILTER]
# Without FILTER (a regular expression) it runs what the budgets are about, beside their baselines;
# with it, whatever matches, and shows those figures too. Wants a quiet machine.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$scripts/.."
filter=${1:-^(Frame|Tree|Baseline|HorizontalChain|Spectrum)}
"$scripts/setup.sh"
"$scripts/build.sh" release kwi_bench KWIFunctionZEL

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
shown=/dev/null
[ $# -eq 0 ] || shown=/dev/stdout
# Repetitions of all take turns, so that a disturbance does not hit one and its baseline alone.
build/release/bench/kwi_bench --benchmark_filter="$filter" --benchmark_repetitions=5 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_out="$work/results.json" --benchmark_out_format=json >"$shown"
strip -o "$work/stripped.so" build/release/libKWIFunctionZEL.so
python3 -B bench/budgets.py "$work/results.json" "$work/stripped.so"
