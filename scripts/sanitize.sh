#!/usr/bin/env bash
# Builds with the address, leak and undefined-behaviour sanitizers into build/asan and runs every
# test. Any finding ends the test that made it, with a stack trace.
#
# usage: scripts/sanitize.sh [ctest option...]
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

say "Setting up"
"$rootDir/scripts/setup.sh" --test

say "Building with sanitizers into build/asan"
build_preset asan

# Kept the same as in the test preset "asan", so that a finding repeats with ctest --preset asan.
export ASAN_OPTIONS=detect_leaks=1:check_initialization_order=1:strict_string_checks=1
export LSAN_OPTIONS=suppressions=$rootDir/scripts/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

say "Testing with sanitizers"
result=0
run_sharded_tests asan "$@" || result=$?
sed 's/^/with sanitizers: /' "$rootDir/build/asan/totals.txt"
exit "$result"
