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

usage() {
    echo "usage: scripts/hostile.sh [--scale PERCENT] [--write]" >&2
    exit 2
}

scale=100
write=no
while (($# > 0)); do
    case $1 in
        --scale)
            [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || usage
            scale=$2
            shift 2
            ;;
        --write)
            write=yes
            shift
            ;;
        *) usage ;;
    esac
done

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
