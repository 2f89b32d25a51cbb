#!/usr/bin/env bash
# Builds ovi_growth and runs it: lists that are made long, changed in every order and asked about
# what they hold, each at two sizes of which one is ten times the other. Fails where the time grows
# like the square of the size.
#
# usage: scripts/growth.sh [--write]
#   --write   put the table into docs/benchmarks.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

[[ $# -eq 0 || $* == --write ]] || { echo "usage: scripts/growth.sh [--write]" >&2; exit 2; }

build_test_programs ovi_growth

say "Running"
workDir=$(mktemp -d)
trap 'rm -rf "$workDir"' EXIT
"$rootDir/build/test/tests/ovi_growth" "$workDir/files" | tee "$workDir/table.md"

if [[ ${1:-} == --write ]]; then
    write_between_markers "$rootDir/docs/benchmarks.md" growth "$workDir/table.md"
    echo "Written into docs/benchmarks.md"
fi
