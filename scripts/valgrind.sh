#!/usr/bin/env bash
# Runs the test programs under valgrind's memcheck, which sees reads of memory that nobody wrote and
# leaks; without the pool, which hides the ends of objects. Takes about half an hour.
#
# usage: scripts/valgrind.sh [--write]
#   --write   put the table into docs/robustness.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

[[ $# -eq 0 || $* == --write ]] || usage

say "Setting up"
"$rootDir/scripts/setup.sh" --valgrind

say "Building into build/valgrind"
programs=(ovi_core_tests ovi_api_tests ovi_fault_tests)
cmake -S "$rootDir" -B "$rootDir/build/valgrind" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g" -DCMAKE_CXX_FLAGS=-DOVI_NO_POOL=1 \
    -DOVICORE_BUILD_BENCHMARKS=OFF -DOVICORE_BUILD_EXAMPLES=OFF -DOVICORE_BUILD_TOOLS=OFF
cmake --build "$rootDir/build/valgrind" --parallel "$jobs" --target "${programs[@]}"

workDir=$(mktemp -d)
trap 'rm -rf "$workDir"' EXIT
table=$workDir/table.md
printf '| Program | Tests | Errors | Memory lost | Memory that stays |\n' >"$table"
printf '|---|--:|--:|--:|--:|\n' >>"$table"

# The program of failing allocations replaces operator new itself: valgrind must leave that alone.
get_synonyms() {
    [[ $1 == ovi_fault_tests ]] && echo somalloc=nouserintercepts || true
}

# Runs one program; its tests must pass and memcheck must find nothing.
check() {
    local program=$1 log=$workDir/$1.log result=0
    say "Checking $program"
    valgrind --leak-check=full --show-leak-kinds=definite,possible \
        --errors-for-leak-kinds=definite,possible --num-callers=40 --error-exitcode=99 \
        --soname-synonyms="$(get_synonyms "$program")" \
        --suppressions="$rootDir/scripts/valgrind.supp" --log-file="$log" \
        "$rootDir/build/valgrind/tests/$program" --gtest_brief=1 | tee "$workDir/$program.out" ||
        result=$?
    cat "$log"
    printf '| %s | %s | %s | %s | %s |\n' "$program" \
        "$(sed -nE 's/^\[==========\] ([0-9]+) tests.*/\1/p' "$workDir/$program.out" | tail -1)" \
        "$(sed -nE 's/.*ERROR SUMMARY: ([0-9]+) errors.*/\1/p' "$log" | tail -1)" \
        "$(sed -nE 's/.*definitely lost: ([0-9,]+) bytes.*/\1 bytes/p' "$log" | tail -1)" \
        "$(sed -nE 's/.*suppressed: ([0-9,]+) bytes.*/\1 bytes/p' "$log" | tail -1)" >>"$table"
    return "$result"
}

result=0
for program in "${programs[@]}"; do
    check "$program" || result=1
done
say "Result"
cat "$table"
if [[ ${1:-} == --write && $result == 0 ]]; then
    write_between_markers "$rootDir/docs/robustness.md" valgrind "$table"
    echo "Written into docs/robustness.md"
fi
exit "$result"
