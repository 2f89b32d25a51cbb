#!/usr/bin/env bash
# Checks the format of every source file, runs clang-tidy over the library and the tool, and has
# clang++ parse everything else that is compiled, with the warnings of the build. Any finding is an
# error.
#
# usage: scripts/lint.sh [--format-only | --deep | FILE...]
#   --deep   let the static analyzer of clang-tidy follow a function as far as it goes by itself,
#            which takes three times as long
#   FILE     only these go through clang-tidy
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
cd "$rootDir"

say "Setting up"
"$rootDir/scripts/setup.sh" --lint

say "Checking the format"
mapfile -t sources < <(git ls-files '*.h' '*.c' '*.cpp')
result=0
if ((${#sources[@]} > 0)); then
    clang-format --dry-run -Werror "${sources[@]}" || result=1
fi
echo "${#sources[@]} files checked"
if [[ ${1:-} == --format-only ]]; then
    exit "$result"
fi

# How many states of a function the analyzer looks at; most functions have fewer.
analyzer=(-Xclang -analyzer-config -Xclang max-nodes=20000)
if [[ ${1:-} == --deep ]]; then
    analyzer=()
    shift
fi

say "Configuring build/clang for its compile database"
mkdir -p build
cmake --preset clang >build/clang-configure.log || fail "$(cat build/clang-configure.log)"

if (($# > 0)); then
    units=("$@")
else
    # The units that are compiled on this system, as the compile database names them.
    mapfile -t units < <(sed -nE 's/^ *"file": "(.*)",?$/\1/p' build/clang/compile_commands.json |
        grep -E "^$rootDir/(src|tools)/" | sort -u)
fi

say "Running clang-tidy over ${#units[@]} files"
# Its count of suppressed warnings in system headers tells nothing.
printf '%s\0' "${units[@]}" | xargs -0 -n 1 -P "$jobs" clang-tidy -p build/clang --quiet \
    "${analyzer[@]/#/--extra-arg=}" \
    2> >(grep -vE '^[0-9]+ warnings? (generated|treated)' >&2) || result=1

# Without precompiled headers, so that a missing include is found too.
if (($# == 0)); then
    say "Parsing the tests, benchmarks and examples with clang++"
    python3 - build/clang/compile_commands.json "$rootDir" <<'EOF' |
import json, sys
entries = json.load(open(sys.argv[1], encoding="utf-8"))
others = {e["file"]: e["command"] for e in entries
          if not e["file"].startswith((sys.argv[2] + "/src/", sys.argv[2] + "/tools/"))}
sys.stdout.write("".join(command + " -fsyntax-only\0" for command in others.values()))
EOF
        xargs -0 -n 1 -P "$jobs" sh -c || result=1
fi

if ((result == 0)); then
    echo "No findings."
else
    echo "There are findings; see above." >&2
fi
exit "$result"
