#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the Debian packages into build/packages and checks them: what they hold and depend on,
# that the programs in them run, and that a project of its own builds with what they unpack to.
# The same commit gives the same bytes.
set -euo pipefail

scripts=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$scripts/.."
umask 022 # the archives would show another
packages=$PWD/build/packages
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unpacked=$work/root

fail() {
    echo "package: $*" >&2
    exit 1
}

quietly() {
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2 && fail "$1 failed"; }
}

make_packages() {
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
    export SOURCE_DATE_EPOCH
    "$scripts/build.sh" debian
    rm -rf "$packages"
    quietly cpack --config build/debian/CPackConfig.cmake -B "$packages"
    rm -rf "$packages/_CPack_Packages"
}

package() {
    echo "$packages/$1"_*.deb
}

# Its files without folders, licence and changelogs; headers and pages of the reference as one line
# each.
content() {
    dpkg-deb --fsys-tarfile "$(package "$1")" | tar -t | grep -v '/$' |
        sed -E -e 's|^\./usr/||' -e "s|lib/$multiarch/|lib/|" \
            -e '/^share\/doc\/[^/]*\/(copyright|changelog(\.Debian)?\.gz)$/d' \
            -e 's|(include/KWIFunctionZEL/).*\.h$|\1*.h|' -e 's#(/settings/).*\.(md|svg)$#\1*.\2#' \
            -e 's#(kwifunctionzel/)(_core\..*\.so|[^/]*\.(py|pyi|typed))$#\1*#' \
            -e 's#(/docs/guides/pictures/).*#\1*#' -e 's#(/docs/(guides/)?)[^/]*\.md$#\1*.md#' \
            -e 's@(KWIFunctionZEL/(examples|site)/).*@\1*@' |
        LC_ALL=C sort -u
}

check_content() {
    diff -u --label wanted --label "$1" <(tr ' ' '\n' <<<"$2") <(content "$1") ||
        fail "$1 holds something else"
    tar -tf <(dpkg-deb --fsys-tarfile "$(package "$1")") "./usr/share/doc/$1/copyright" \
        "./usr/share/doc/$1/changelog.gz" "./usr/share/doc/$1/changelog.Debian.gz" >"$work/log"
}

check_depends() {
    local depends
    depends=$(dpkg-deb --field "$(package "$1")" Depends)
    [[ ", $depends," == *", $2,"* ]] || fail "$1 depends on $depends, not on $2"
}

check_client() {
    local expected=$'Time scale        0.002 s/div\nAcquisition time  0.02 s'
    local libraries=$unpacked/usr/lib/$multiarch flags
    quietly cmake -S examples/client -B "$work/client" -G Ninja -DCMAKE_PREFIX_PATH="$unpacked/usr"
    quietly cmake --build "$work/client"
    [ "$("$work/client/client")" = "$expected" ] || fail "the CMake client answers otherwise"
    "$work/client/show" | diff -q examples/client/show.expected - ||
        fail "records are shown otherwise"

    flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs KWIFunctionZEL)
    # shellcheck disable=SC2086
    g++ -std=c++20 examples/client/main.cpp -o "$work/direct" $flags
    [ "$(LD_LIBRARY_PATH=$libraries "$work/direct")" = "$expected" ] ||
        fail "the pkg-config client answers otherwise"
}

# The example is served its tree by the packages, and a client changes it.
check_service() {
    local libraries=$unpacked/usr/lib/$multiarch flags port line
    quietly cmake -S examples/service -B "$work/served" -G Ninja -DCMAKE_PREFIX_PATH="$unpacked/usr"
    quietly cmake --build "$work/served"
    flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs KWIFunctionZELService)
    # shellcheck disable=SC2086
    g++ -std=c++20 examples/service/main.cpp -o "$work/served-direct" $flags
    for program in "$work/served/served" "$work/served-direct"; do
        coproc served { LD_LIBRARY_PATH=$libraries "$program" 0; }
        local input=${served[1]} output=${served[0]} process=$served_PID
        read -r _ port <&"$output"
        exec {client}<>"/dev/tcp/127.0.0.1/$port"
        printf 'HOR:SCAL 2ms;*IDN?\n' >&"$client"
        read -r line <&"$client"
        [[ $line == KWI,*,"$upstream" ]] || fail "$program answers $line"
        exec {client}>&- {input}>&-
        read -r line <&"$output"
        [ "$line" = "Time scale 0.002 s/div" ] || fail "$program ends with $line"
        wait "$process"
    done
}

# Nothing but the class of its header.
check_service_symbols() {
    local others
    others=$(nm -DC --defined-only "$unpacked/usr/lib/$multiarch/$service_library.$major" |
        grep -v ' CKWService::' || true)
    [ -z "$others" ] || fail "$service_library exports $others"
}

# As systemd sees it, with what the package holds.
check_unit() {
    local unit=lib/systemd/system/zelhost.service
    grep -qx 'ExecStart=/usr/bin/zelhost --settings %S/zelhost $ZELHOST_OPTIONS' \
        "$unpacked/usr/$unit" || fail "zelhost.service starts something else"
    LD_LIBRARY_PATH=$unpacked/usr/lib/$multiarch "$unpacked/usr/bin/zelhost" --help >"$work/log"
    command -v systemd-analyze >/dev/null || return 0
    sed "s|/usr/bin/zelhost|$unpacked/usr/bin/zelhost|" "$unpacked/usr/$unit" >"$work/zelhost.service"
    quietly systemd-analyze verify --man=no "$work/zelhost.service"
    quietly systemd-analyze security --offline=yes --threshold=20 "$work/zelhost.service"
}

"$scripts/setup.sh" package python
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
make_packages
version=$(dpkg-deb --field "$(package zelctl)" Version)
upstream=${version%-*}
major=${upstream%%.*}
runtime=libkwifunctionzel$major
documents=share/doc/KWIFunctionZEL
library=libKWIFunctionZEL.so
service=libkwifunctionzel-service$major
service_library=libKWIFunctionZELService.so
adapter=libkwifunctionzel-qt$major
adapter_library=libKWIFunctionZELQt.so

recorded=$(dpkg-parsechangelog -l docs/changelog.Debian -S Version)
[ "$recorded" = "$version" ] ||
    fail "docs/changelog.Debian begins with $recorded: give $version an entry there"
check_content "$runtime" "lib/$library.$major lib/$library.$upstream"
check_content libkwifunctionzel-dev "include/KWIFunctionZEL/*.h \
lib/cmake/KWIFunctionZEL/KWIFunctionZELConfig.cmake \
lib/cmake/KWIFunctionZEL/KWIFunctionZELConfigVersion.cmake \
lib/cmake/KWIFunctionZEL/KWIFunctionZELTargets-release.cmake \
lib/cmake/KWIFunctionZEL/KWIFunctionZELTargets.cmake \
lib/$library lib/pkgconfig/KWIFunctionZEL.pc"
check_content zelctl "bin/zelctl share/bash-completion/completions/zelctl share/man/man1/zelctl.1.gz"
check_content "$service" "lib/$service_library.$major lib/$service_library.$upstream"
check_content libkwifunctionzel-service-dev "include/KWIFunctionZEL/*.h \
lib/cmake/KWIFunctionZEL/KWIFunctionZELServiceTargets-release.cmake \
lib/cmake/KWIFunctionZEL/KWIFunctionZELServiceTargets.cmake \
lib/$service_library lib/pkgconfig/KWIFunctionZELService.pc"
check_content zelhost "bin/zelhost lib/systemd/system/zelhost.service share/man/man1/zelhost.1.gz"
check_content "$adapter" "lib/$adapter_library.$major lib/$adapter_library.$upstream"
check_content libkwifunctionzel-qt-dev "include/KWIFunctionZEL/*.h \
lib/cmake/KWIFunctionZEL/KWIFunctionZELQtTargets-release.cmake \
lib/cmake/KWIFunctionZEL/KWIFunctionZELQtTargets.cmake lib/$adapter_library"
check_content qml6-module-kwifunctionzel "lib/qt6/qml/KWIFunctionZEL/libkwifunctionzelqml.so \
lib/qt6/qml/KWIFunctionZEL/qmldir"
check_content python3-kwifunctionzel "lib/python3/dist-packages/kwifunctionzel/*"
check_content libkwifunctionzel-doc \
    "$documents/CHANGELOG.md $documents/LICENSE $documents/README.md $documents/docs/*.md \
$documents/docs/guides/*.md $documents/docs/guides/pictures/* $documents/docs/openapi.json \
$documents/docs/settings/*.md $documents/docs/settings/*.svg $documents/examples/* $documents/site/*"

check_depends libkwifunctionzel-dev "$runtime (= $version)"
check_depends zelctl "$runtime (= $version)"
check_depends "$service" "$runtime (= $version)"
check_depends libkwifunctionzel-service-dev "$service (= $version)"
check_depends libkwifunctionzel-service-dev "libkwifunctionzel-dev (= $version)"
check_depends "$adapter" "$runtime (= $version)"
check_depends libkwifunctionzel-qt-dev "$adapter (= $version)"
check_depends qml6-module-kwifunctionzel "$adapter (= $version)"
check_depends zelhost "$service (= $version)"
check_depends python3-kwifunctionzel "$runtime (= $version)"
check_depends "$runtime" "libc6 (>= 2.36)"
[ "$(dpkg-deb --info "$(package "$runtime")" shlibs)" = \
    "libKWIFunctionZEL $major $runtime (>= $version)" ] || fail "$runtime: wrong shlibs"
dpkg-deb --info "$(package "$runtime")" triggers | grep -qxF 'activate-noawait ldconfig' ||
    fail "$runtime: no trigger"

for name in "$runtime" libkwifunctionzel-dev "$service" libkwifunctionzel-service-dev zelhost \
    "$adapter" libkwifunctionzel-qt-dev qml6-module-kwifunctionzel python3-kwifunctionzel zelctl \
    libkwifunctionzel-doc; do
    dpkg-deb --extract "$(package "$name")" "$unpacked"
done
LD_LIBRARY_PATH=$unpacked/usr/lib/$multiarch "$unpacked/usr/bin/zelctl" --version
LD_LIBRARY_PATH=$unpacked/usr/lib/$multiarch PYTHONPATH=$unpacked/usr/lib/python3/dist-packages \
    /usr/bin/python3 -B -c 'import kwifunctionzel as kwi
with kwi.root() as root:
    root.Horizontal.Scale = "2 ms/div"' || fail "the package for Python does not run"
python3 -B scripts/check-links.py "$unpacked/usr/$documents" || fail "a document links to nowhere"
check_client
check_service
check_service_symbols
check_unit
cd "$packages"
sha256sum -- *.deb
