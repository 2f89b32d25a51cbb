#!/usr/bin/env bash
# Builds OviCore.dll and the example host for 64-bit Windows into build/windows, with warnings as
# errors, and compares what the DLL exports with the committed list. With Wine installed, the host
# is run too.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

command -v x86_64-w64-mingw32-g++-posix >/dev/null ||
    fail "the cross compiler is missing; Debian package: g++-mingw-w64-x86-64-posix"

say "Building for Windows into build/windows"
build_preset windows

say "Comparing the exported functions"
python3 "$rootDir/tests/exports/check_exports.py" --nm x86_64-w64-mingw32-objdump \
    --library "$rootDir/build/windows/OviCore.dll" \
    --list "$rootDir/src/api/exported-symbols.txt" --headers "$rootDir/include/ovi"

# Debian's package wine64 alone puts the program nowhere on the path.
wine=$(PATH=$PATH:/usr/lib/wine command -v wine64 || true)
if [[ -z $wine ]]; then
    echo "Wine is not installed (Debian package: wine64): the host was built, not run."
    exit 0
fi
say "Running the example host with Wine"
export WINEPREFIX=$rootDir/build/windows/wine WINEDEBUG=-all
output=$rootDir/build/windows/host-output
rm -rf "$output"
mkdir -p "$output"
cp "$rootDir/build/windows/OviCore.dll" "$rootDir/build/windows/examples/"
cd "$rootDir"
"$wine" build/windows/examples/ovi_host.exe examples build/windows/host-output ||
    fail "the example host, on Windows"
