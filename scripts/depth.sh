#!/usr/bin/env bash
# Builds ovi_depth and runs it with a stack of 1 MiB: templates 10,000 deep, stacked diamonds, assets
# in assets and whatever else a file may make as deep as it likes, each at two sizes.
#
# usage: scripts/depth.sh [--write]
#   --write   put the table into docs/benchmarks.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

[[ $# -eq 0 || $* == --write ]] || { echo "usage: scripts/depth.sh [--write]" >&2; exit 2; }

build_test_programs ovi_depth

say "Running with a stack of 1 MiB"
workDir=$(mktemp -d)
trap 'rm -rf "$workDir"' EXIT
(ulimit -s 1024 && "$rootDir/build/test/tests/ovi_depth" "$workDir/files") | tee "$workDir/table.md"

if [[ ${1:-} == --write ]]; then
    write_between_markers "$rootDir/docs/benchmarks.md" depth "$workDir/table.md"
    echo "Written into docs/benchmarks.md"
fi
