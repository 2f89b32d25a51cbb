#!/usr/bin/env bash
# Loads input of hostile size, at a tenth of the size and in whole: time and memory must grow with
# the size and no faster. In whole it takes about two minutes, 2.5 GB of memory and 3 GB of disk.
#
# usage: scripts/hostile.sh [--scale PERCENT] [--write]
#   --scale PERCENT  of the sizes (100)
#   --write          put the table into docs/robustness.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

read_options --scale 100 "$@"
scale=$number

build_test_programs ovi_hostile

say "Loading at $scale % of the sizes"
table=$(mktemp)
trap 'rm -f "$table"' EXIT
python3 "$rootDir/tests/hostile/hostile.py" "$rootDir/build/test/tests/ovi_hostile" \
    --scale "$scale" --check | tee "$table"

if [[ $write == yes ]]; then
    write_between_markers "$rootDir/docs/robustness.md" hostile "$table"
    echo "Written into docs/robustness.md"
fi
