#!/usr/bin/env bash
# Compares the binary interface, as the public headers declare it, with the recorded one: functions
# with their signatures, the classes of handles, the numbers, the type of callbacks, and the number
# of the interface itself (the SONAME). Fails when anything differs, and says whether hosts built
# against the recorded one would still run.
#
# usage: scripts/abi.sh [--write | --headers <directory>]
#   --write     records the interface as it is now, in abi/
#   --headers   compares other headers than those in include/
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

headers=$rootDir/include
write=false
case ${1:-} in
    "") ;;
    --write) write=true ;;
    --headers) headers=${2:?a directory} ;;
    *)
        echo "usage: scripts/abi.sh [--write | --headers <directory>]" >&2
        exit 2
        ;;
esac
command -v abidw >/dev/null || fail "abidw is missing; Debian package: abigail-tools"

major=$(sed -nE 's/^ +VERSION ([0-9]+)\..*/\1/p' "$rootDir/CMakeLists.txt")
record=$rootDir/abi/OviCore-$major.abi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Describes the interface in the file named. Types that no function mentions are part of it: the
# enumerations, whose numbers hosts compare with.
describe() {
    local description=$1
    python3 "$rootDir/tests/exports/make_surface.py" "$headers" >"$work/surface.cpp"
    (cd "$work" && "${CXX:-g++}" -std=c++17 -g -gdwarf-4 -fno-eliminate-unused-debug-types \
        -fPIC -shared -fvisibility=hidden -I"$headers" -Wl,-soname,"libOviCore.so.$major" \
        surface.cpp -o surface.so)
    # Names of parameters, files and lines are none of a host's business.
    abidw --load-all-types --no-parameter-names --no-show-locs --no-corpus-path \
        --no-comp-dir-path --no-elf-needed --no-write-default-sizes --type-id-style hash \
        --out-file "$description" "$work/surface.so"
}

# Bit 2 of abidiff's exit code says that there are differences, bits 0 and 1 that it could not tell.
compare() {
    local code=0
    # The compiler's own type, which differs between compilers.
    printf '[suppress_type]\n  name = max_align_t\n' >"$work/suppressions"
    abidiff --non-reachable-types --suppressions "$work/suppressions" "$@" \
        "$record" "$work/now.abi" || code=$?
    ((code < 128 && (code & 3) == 0)) || fail "abidiff, exit code $code"
    return "$code"
}

# Additions put aside, something changed or is gone.
is_broken() {
    ! compare --no-added-syms >"$work/log" && grep -qE '^ *\[[CD]\]|SONAME' "$work/log"
}

if $write; then
    mkdir -p "$(dirname "$record")"
    describe "$record"
    echo "recorded in ${record#"$rootDir/"}"
    exit 0
fi

[[ -e $record ]] || fail "nothing is recorded for number $major: scripts/abi.sh --write"
describe "$work/now.abi"
if compare --harmless; then
    echo "the binary interface is the recorded one"
elif is_broken; then
    fail "hosts built against the recorded interface may not run: undo the change, or raise the" \
        "first number of the version and record the interface of that number with --write"
else
    fail "there are additions, with which older hosts still run: record them with --write"
fi
