#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the library, and shows it at work: the session in
# examples/first-session.zel, or the one that the argument names.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$scripts")
session=$(realpath "${1:-$root/examples/first-session.zel}")
"$scripts/setup.sh"
"$scripts/build.sh" release zelctl

# What the session saves lands among the build's files.
cd "$root/build/release"
exec tools/zelctl/zelctl run "$session" </dev/null
