#!/bin/bash
# Runs a Windows program with Wine, its output through files: the services that Wine starts for the
# first program hold the standard streams, and whoever reads a pipe would wait for their end.
#
# usage: wine.sh PROGRAM [argument...]
set -u
PATH=${PATH:-}:/usr/bin:/bin:/usr/lib/wine # Debian's package wine64 leaves its program off the path
export LC_ALL=C.UTF-8 # Wine reads arguments and file names of this system in the locale's code page
wine=$(command -v wine64 || command -v wine) || {
    echo "Wine is not installed; Debian package: wine64" >&2
    exit 127
}
output=$(mktemp -d)
trap 'rm -rf "$output"' EXIT
"$wine" "$@" >"$output/out" 2>"$output/err"
code=$?
cat "$output/out"
cat "$output/err" >&2
exit "$code"
