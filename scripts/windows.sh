#!/usr/bin/env bash
# Sets up, builds for 64-bit Windows into build/windows, runs the tests there with Wine, and compares
# with the build for Linux in build/release: what the tool and the example host print and write is
# the same. The last line is "N passed, N failed"; the exit code is 0 only when nothing failed.
#
# usage: scripts/windows.sh [ctest option...]
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

buildDir=$rootDir/build/windows

run_tests_with_wine() {
    # The first run makes Wine's own files, which tests side by side would both do.
    WINEDEBUG=-all WINEPREFIX=$buildDir/wine WINEPATH=Z:$buildDir \
        "$rootDir/tests/windows/wine.sh" "$buildDir/tools/ovi.exe" --version
    run_sharded_tests windows "$@"
}

rm -f "$buildDir/totals.txt"
say "Setting up"
"$rootDir/scripts/setup.sh" --windows
for tool in x86_64-w64-mingw32-g++-posix llvm-dlltool; do
    command -v "$tool" >/dev/null || fail "$tool is missing"
done

say "Building for Windows into build/windows"
build_preset windows

say "Building what is compared, for Linux, into build/release"
(cd "$rootDir" && cmake --preset release && cmake --build --preset release --parallel "$jobs" \
    --target OviCore ovi ovi_host)

say "Testing with Wine"
result=0
run_tests_with_wine "$@" || result=$?

say "Result for Windows"
cat "$buildDir/totals.txt"
exit "$result"
