#!/usr/bin/env bash
# Builds with counters into build/coverage, runs every test and prints the line and branch coverage
# of src/ per file. Branches that only an exception takes are not counted.
#
# usage: scripts/coverage.sh [--lines PERCENT] [--branches PERCENT]
#   fails when the coverage of src/ as a whole is below a given threshold
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

usage() {
    echo "usage: scripts/coverage.sh [--lines PERCENT] [--branches PERCENT]" >&2
    exit 2
}

thresholds=()
while (($# > 0)); do
    [[ ${2:-} =~ ^[0-9]+(\.[0-9]+)?$ ]] || usage
    case $1 in
        --lines) thresholds+=(--fail-under-line "$2") ;;
        --branches) thresholds+=(--fail-under-branch "$2") ;;
        *) usage ;;
    esac
    shift 2
done

say "Setting up"
"$rootDir/scripts/setup.sh" --coverage

say "Building with counters into build/coverage"
build_preset coverage
# Counts of an earlier run would be added to those of this one.
find "$rootDir/build/coverage" -name '*.gcda' -delete

say "Testing"
run_sharded_tests coverage || fail "the tests failed, so their coverage says nothing"

say "Coverage of src/"
# The objects of the tests are read too: of an inline function, the linker keeps any one copy.
report=$rootDir/build/coverage/report
mkdir -p "$report"
cd "$rootDir"
timeout 900 gcovr --root . --filter 'src/' --exclude-throw-branches --exclude-unreachable-branches \
    -j "$jobs" --json "$report/coverage.json" build/coverage

gcovr_report() {
    gcovr --root . --add-tracefile "$report/coverage.json" "$@"
}
gcovr_report --sort-uncovered --txt "$report/lines.txt"
gcovr_report --sort-uncovered --branches --txt "$report/branches.txt"
say "Lines"
cat "$report/lines.txt"
say "Branches"
cat "$report/branches.txt"
say "Summary"
gcovr_report --txt "$report/summary.txt" --print-summary "${thresholds[@]}" ||
    fail "the coverage is below a threshold: ${thresholds[*]}"
