#!/usr/bin/env bash
# Sets up, builds into build/test and runs every test. The last line is "N passed, N failed"; the
# exit code is 0 only when nothing failed.
#
# usage: scripts/test.sh [ctest option...]      for example: scripts/test.sh --label-regex api
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

say "Setting up"
"$rootDir/scripts/setup.sh" --test

say "Building into build/test"
build_all test -DCMAKE_BUILD_TYPE=Release -DOVICORE_BUILD_BENCHMARKS=OFF

say "Testing"
result=0
run_tests test "$@" || result=$?

say "Result"
cat "$rootDir/build/test/totals.txt"
exit "$result"
