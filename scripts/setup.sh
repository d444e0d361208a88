#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the Debian 12 packages that are missing: those of build and tests, and those of what the
# arguments name: "fuzz" the fuzzers, "package" Debian packages, "abi" the comparison of binary
# interfaces, "bench" counts of instructions, "docs" the reference, "qt" the adapter for
# user interfaces and its pages, "python" the package for Python, "arm" 32-bit ARM and its
# emulation, "panel" the panel's bundle and its tests in a browser, "ci" all that .ci/run needs.
# Says nothing when there is nothing to do.
set -euo pipefail

packages=(g++ cmake ninja-build ccache pkg-config python3 qt6-base-dev libboost-dev
    libcli11-dev libedit-dev libgtest-dev libgmock-dev libbenchmark-dev librapidcheck-dev
    libxml2-utils can-utils libsndfile1-dev nlohmann-json3-dev)
pages=(qt6-declarative-dev qml6-module-qtquick qml6-module-qtquick-window qml6-module-qtqml
    qml6-module-qtqml-workerscript qml6-module-qtquick-controls qml6-module-qtquick-templates
    qml6-module-qtquick-layouts)
panel=(chromium fonts-dejavu-core nodejs)
command -v npm >/dev/null || panel+=(npm) # some packages of nodejs bring it
python=(pybind11-dev python3-dev python3-setuptools python3-wheel python3-venv python3-numpy
    python3-matplotlib python3-pytest mypy)
for what in "$@"; do
    case $what in
        fuzz) packages+=(clang-14) ;;
        package) packages+=(dpkg-dev file qt6-declarative-dev) ;;
        qt) packages+=("${pages[@]}") ;;
        abi) packages+=(abigail-tools) ;;
        bench) packages+=(valgrind) ;;
        arm) packages+=(g++-arm-linux-gnueabihf qemu-user-static) ;;
        docs) packages+=(doxygen) ;;
        panel) packages+=("${panel[@]}") ;;
        python) packages+=("${python[@]}") ;;
        ci)
            packages+=("${pages[@]}" "${panel[@]}" "${python[@]}" qtbase5-dev clang-format-14 codespell
                graphviz dpkg-dev file abigail-tools doxygen valgrind python3-canmatrix curl lxi-tools
                netcat-openbsd python3-pyvisa python3-pyvisa-py python3-jsonschema node-ws jq)
            ;;
        *)
            echo "setup: knows no $what" >&2
            exit 2
            ;;
    esac
done

if ! command -v dpkg-query >/dev/null; then
    echo "setup: not a Debian system; the build needs the counterparts of: ${packages[*]}" >&2
    exit 0
fi

installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for package in "${packages[@]}"; do
    grep -qxF "$package installed" <<<"$installed" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "setup: neither root nor sudo; ask an administrator to install: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
    [ -t 0 ] || as_root=(sudo -n)
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt_get() {
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 \
        "$@" </dev/null >"$log" 2>&1; then
        cat "$log" >&2
        echo "setup: apt-get $1 failed" >&2
        exit 1
    fi
}
apt_get update
apt_get install -y --no-install-recommends "${missing[@]}"
