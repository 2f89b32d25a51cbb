#!/usr/bin/env bash
# Installs the library, moves the installed tree, and builds and runs a host against it: with
# find_package, installed and in the build directory, and with pkg-config's flags.
#
# usage: check_install.sh <build directory> <consumer directory> <C compiler>
set -euo pipefail

buildDir=$1
consumerDir=$2
compiler=$3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

cmake --install "$buildDir" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/moved"

if grep -rIl -e "$work/first" -e "$buildDir" "$work/moved"; then
    fail "the files above contain an absolute path"
fi

mkdir "$work/headers"
find "$work/moved/include/ovi" -name '*.h' -printf '#include "ovi/%f"\n' | sort \
    >"$work/headers/all-headers.h"
[[ -s $work/headers/all-headers.h ]] || fail "no header was installed"

build_and_run() {
    local name=$1 packageDir=$2
    cmake -S "$consumerDir" -B "$work/$name" -G Ninja -DCMAKE_C_COMPILER="$compiler" \
        -DOviCore_DIR="$packageDir" -DCONSUMER_HEADERS="$work/headers" >"$work/$name.log"
    cmake --build "$work/$name" >>"$work/$name.log" || fail "$(cat "$work/$name.log")"
    "$work/$name/consumer" || fail "the host built with $packageDir does not run"
}

configFile=$(find "$work/moved" -name OviCoreConfig.cmake)
build_and_run installed "$(dirname "$configFile")"
build_and_run in-tree "$buildDir"

pcFile=$(find "$work/moved" -name ovicore.pc)
libDir=$(dirname "$(dirname "$pcFile")")
if command -v pkg-config >/dev/null; then
    export PKG_CONFIG_PATH=${libDir}/pkgconfig
    read -ra flags <<<"$(pkg-config --cflags --libs ovicore)"
    "$compiler" -std=c99 -I "$work/headers" "$consumerDir/consumer.c" -o "$work/with-pkg-config" "${flags[@]}"
    LD_LIBRARY_PATH=$libDir "$work/with-pkg-config" || fail "the host built with pkg-config"
else
    echo "pkg-config is not installed: its file was not tried"
fi
echo "installed, moved, found, built and run"
