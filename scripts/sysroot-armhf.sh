#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes build/sysroot-armhf, the libraries and headers of a 32-bit hard-float ARM Debian that the
# preset armhf builds against. Says nothing when it is there. The packages are only unpacked: as a
# foreign architecture they would replace packages of this machine.
set -euo pipefail

packages=(libc6 libc6-dev libcrypt1 libcrypt-dev linux-libc-dev libgcc-s1 libstdc++6
    libboost1.74-dev qt6-base-dev qt6-base-dev-tools qmake6 libqt6core6 zlib1g libzstd1 libicu72 libdouble-conversion3 libb2-1
    libgomp1 libpcre2-16-0 libpcre2-8-0 libglib2.0-0
    libcli11-dev nlohmann-json3-dev libedit-dev libedit2 libbsd0 libmd0 libtinfo6
    libgtest-dev libgmock-dev librapidcheck-dev)

fail() {
    printf 'sysroot: %s\n' "$@" >&2
    exit 1
}

cd "$(dirname "${BASH_SOURCE[0]}")/.."
sysroot=$PWD/build/sysroot-armhf
# The list is the last thing that is written: what lacks it, or has another, is made again.
if [ "$(cat "$sysroot/packages" 2>/dev/null)" = "${packages[*]}" ]; then
    exit 0
fi
case $(uname -m) in
arm* | aarch64) fail "this machine is ARM itself: use the preset release (scripts/test.sh)" ;;
esac
for program in apt-get dpkg; do
    command -v $program >/dev/null ||
        fail "$program is missing: unpack the armhf packages of Debian 12 into $sysroot by hand:" \
            "${packages[*]}"
done

# shellcheck disable=SC1091
codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
# shellcheck disable=SC2016 # apt-get fills the place holder in
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Component: main' \
    "Release: $codename" | head -n 1)
[ -n "$mirror" ] || fail "apt has no source for \"$codename main\": add it in /etc/apt, then again"

echo "sysroot: fetching ${#packages[@]} ARM packages from $mirror"
mkdir -p build
work=$(mktemp -d "$PWD/build/sysroot-armhf.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work"/{root,debs/partial,lists/partial,empty}
: >"$work/status"
echo "deb [arch=armhf] $mirror $codename main" >"$work/sources.list"
cat >"$work/apt.conf" <<END
APT::Architecture "armhf";
APT::Architectures { "armhf"; };
APT::Sandbox::User "";
Acquire::Languages "none";
Dir::State::Lists "$work/lists";
Dir::State::Status "$work/status";
Dir::Cache "$work";
Dir::Etc::SourceList "$work/sources.list";
Dir::Etc::SourceParts "$work/empty";
END

# What it prints is of interest only when it fails.
step() {
    "$@" </dev/null >"$work/log" 2>&1 && return
    cat "$work/log" >&2
    fail "\"${*:1:2}\" failed (above); nothing was changed, so run scripts/sysroot-armhf.sh again"
}
export APT_CONFIG=$work/apt.conf
step apt-get -qq -o APT::Update::Error-Mode=any update
cd "$work/debs"
step apt-get -qq download "${packages[@]}"
for package in *.deb; do
    step dpkg -x "$package" "$work/root"
done

# Absolute links would lead out of the sysroot.
find "$work/root" -type l -lname '/*' -printf '%p\t%l\n' | while IFS=$'\t' read -r link target; do
    ln -sfnr "$work/root$target" "$link"
done
echo "${packages[*]}" >"$work/root/packages"
rm -rf "$sysroot"
mv "$work/root" "$sysroot"
