#!/usr/bin/env bash
# Installs into an empty directory, moves it, and checks the moved tree; then builds and runs a host
# with find_package in the build directory, which holds the same package.
#
# usage: check_install.sh <build directory> <source directory> <version>
#
# CC, CXX and WITHOUT_TOOL are those of check_tree.sh.
set -euo pipefail

buildDir=$1
sourceDir=$2
version=$3
here=$(cd "$(dirname "$0")" && pwd)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Stripped, because debugging information names the directories of the build.
cmake --install "$buildDir" --prefix "$work/first" --strip >"$work/install.log"
mv "$work/first" "$work/moved"
if grep -rlaF "$work/first" "$work/moved"; then
    fail "the files above name the directory that they were installed into"
fi
bash "$here/check_tree.sh" linux "$work/moved" "$version" "$sourceDir" "$buildDir"

cmake -S "$here/consumer" -B "$work/in-tree" -G Ninja -DOviCore_DIR="$buildDir" \
    -DCMAKE_C_COMPILER="$CC" -DCMAKE_CXX_COMPILER="$CXX" \
    -DCONSUMER_HEADERS="$sourceDir/include/ovi" -DCONSUMER_SAMPLES="$sourceDir/examples" \
    >"$work/in-tree.log"
cmake --build "$work/in-tree" --target host >>"$work/in-tree.log" || fail "$(cat "$work/in-tree.log")"
mkdir "$work/host-output"
"$work/in-tree/host" "$sourceDir/examples" "$work/host-output" >"$work/in-tree.log" ||
    fail "the host built with the package in the build directory: $(cat "$work/in-tree.log")"
