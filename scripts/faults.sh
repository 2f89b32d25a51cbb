#!/usr/bin/env bash
# Lets every allocation and every byte of a save fail in turn, and kills hosts while they save.
#
# usage: scripts/faults.sh [--kills N] [--write]
#   --kills N  how many hosts to kill (250)
#   --write    put the tables into docs/robustness.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

read_options --kills 250 "$@"
kills=$number

build_test_programs ovi_fault_tests ovi_save_loop

workDir=$(mktemp -d)
trap 'rm -rf "$workDir"' EXIT

say "Letting allocations and writes fail"
"$rootDir/build/test/tests/ovi_fault_tests" --gtest_brief=1 --table 2>"$workDir/rows.txt" ||
    fail "$(cat "$workDir/rows.txt")"

# Writes a table: its title row, and the rows that the program printed behind the table's name.
table() {
    local name=$1 title=$2
    {
        echo "$title"
        echo "|---|--:|---|"
        sed -n "s/^$name //p" "$workDir/rows.txt"
    } | tee "$workDir/$name.md"
}
table allocations "| Scenario | Allocations that failed | Outcome |"
table writes "| Fault | Saves that failed | Outcome |"

say "Killing $kills hosts while they save"
{
    echo "| Kills | The one scene | The other scene | Neither | Temporary files left |"
    echo "|--:|--:|--:|--:|--:|"
    python3 "$rootDir/tests/kill/kill.py" "$rootDir/build/test/tests/ovi_save_loop" \
        --kills "$kills"
} | tee "$workDir/kills.md"

if [[ $write == yes ]]; then
    for table in allocations writes kills; do
        write_between_markers "$rootDir/docs/robustness.md" "$table" "$workDir/$table.md"
    done
    echo "Written into docs/robustness.md"
fi
