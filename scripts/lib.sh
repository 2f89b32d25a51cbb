# Shared by the scripts: where things are, and how to build and to test. Meant to be sourced.
# shellcheck shell=bash

rootDir=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=${OVI_JOBS:-$(nproc)}
scriptFile=$(realpath "$0") # of the script that reads this

say() {
    printf '\n== %s\n' "$*"
}

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    exit 1
}

# Ends the script with what its first comment says about its options.
usage() {
    sed -n '/^# usage:/,/^[^#]/s/^# //p' "$scriptFile" >&2
    exit 2
}

# For scripts that take one option with a number, which has a default, and "--write": leaves them in
# `number` and `write`.
read_options() {
    local option=$1
    number=$2 write=no
    shift 2
    while (($# > 0)); do
        case $1 in
            "$option")
                [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || usage
                number=$2
                shift 2
                ;;
            --write)
                write=yes
                shift
                ;;
            *) usage ;;
        esac
    done
}

# Configures build/<name> with the given cmake options and builds everything in it.
build_all() {
    local name=$1
    shift
    cmake -S "$rootDir" -B "$rootDir/build/$name" -G Ninja "$@"
    cmake --build "$rootDir/build/$name" --parallel "$jobs"
}

# Configures build/<preset> with the preset of that name and builds everything in it.
build_preset() {
    (cd "$rootDir" && cmake --preset "$1" && cmake --build --preset "$1" --parallel "$jobs")
}

# Installs what tests need and builds the named programs of them into build/test.
build_test_programs() {
    say "Setting up"
    "$rootDir/scripts/setup.sh" --test
    say "Building into build/test"
    cmake -S "$rootDir" -B "$rootDir/build/test" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DOVICORE_BUILD_BENCHMARKS=OFF
    cmake --build "$rootDir/build/test" --parallel "$jobs" --target "$@"
}

# Runs all tests of build/<name>, writes the totals to build/<name>/totals.txt in the form
# "N passed, N failed", and fails when a test failed or none ran.
run_tests() {
    local buildDir=$rootDir/build/$1
    shift
    local log=$buildDir/ctest.log result=0
    rm -f "$buildDir/totals.txt"
    ctest --test-dir "$buildDir" --output-on-failure --no-tests=error --parallel "$jobs" "$@" \
        2>&1 | tee "$log" || result=$?
    write_totals "$log" >"$buildDir/totals.txt" || result=1
    return "$result"
}

# The same for a build whose test programs run in parts; the totals count each of their cases.
run_sharded_tests() {
    local buildDir=$rootDir/build/$1 result=0
    shift
    rm -rf "$buildDir/totals.txt" "$buildDir/tests/results" "$buildDir/ctest.xml"
    ctest --test-dir "$buildDir" --output-on-failure --no-tests=error --parallel "$jobs" \
        --output-junit "$buildDir/ctest.xml" "$@" || result=$?
    python3 "$rootDir/tests/support/totals.py" "$buildDir/ctest.xml" "$buildDir/tests/results" \
        >"$buildDir/totals.txt" || result=1
    return "$result"
}

# Reads ctest's summary. A skipped test is neither passed nor failed; it is counted apart.
write_totals() {
    local log=$1 summary failed total skipped
    summary=$(grep -E '^[0-9]+% tests passed, [0-9]+ tests failed out of [0-9]+$' "$log" || true)
    if [[ -z $summary ]]; then
        echo "0 passed, 1 failed"
        return 1
    fi
    failed=$(sed -E 's/.* ([0-9]+) tests failed.*/\1/' <<<"$summary")
    total=$(sed -E 's/.* out of ([0-9]+)$/\1/' <<<"$summary")
    skipped=$(grep -cE '\*\*\*Skipped' "$log" || true)
    if ((skipped > 0)); then
        echo "$skipped skipped"
    fi
    echo "$((total - failed - skipped)) passed, $failed failed"
}

# Replaces what stands between two marker lines of a document, "<!-- NAME: begin" and
# "<!-- NAME: end", by the text of a file.
write_between_markers() {
    local document=$1 name=$2 text=$3 result
    grep -q "^<!-- $name: begin" "$document" || fail "no markers '$name' in $document"
    result=$(mktemp)
    awk -v name="$name" -v text="$text" '
        index($0, "<!-- " name ": begin") == 1 {
            print
            print ""
            while ((getline line < text) > 0) print line
            print ""
            inside = 1
        }
        index($0, "<!-- " name ": end") == 1 { inside = 0 }
        !inside' "$document" >"$result"
    cat "$result" >"$document"
    rm -f "$result"
}
