#!/usr/bin/env bash
# Builds the fuzzers into build/fuzz, replays the committed inputs, and fuzzes each target for some
# time, two at once, with the address, leak and undefined-behaviour sanitizers. A finding fails and
# is named with the file that repeats it.
#
# usage: scripts/fuzz.sh [--seconds N] [--target NAME]... [--seed N] [--replay] [--minimize]
#                        [--write]
#   --seconds   how long each target is fuzzed (default: 60)
#   --target    only this one: template, scene, value or calls; may be given several times
#   --seed      begin the random numbers here, so that runs resemble each other (default: anywhere)
#   --replay    only run the committed inputs
#   --minimize  afterwards replace fuzz/corpus by the fewest inputs that reach the same code
#   --write     put the table of what was run into docs/robustness.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
cd "$rootDir"

allTargets=(template scene value calls)
targets=()
seconds=60
seed=0 # libFuzzer then takes one from the clock
replayOnly=false
minimize=false
write=false
while (($# > 0)); do
    case $1 in
        --seconds | --seed)
            [[ ${2:-} =~ ^[0-9]+$ ]] || usage
            declare "${1#--}=$2"
            shift 2
            ;;
        --target)
            [[ " ${allTargets[*]} " == *" ${2:-} "* ]] || usage
            targets+=("$2")
            shift 2
            ;;
        --replay) replayOnly=true && shift ;;
        --minimize) minimize=true && shift ;;
        --write) write=true && shift ;;
        *) usage ;;
    esac
done
((${#targets[@]} > 0)) || targets=("${allTargets[@]}")

buildDir=$rootDir/build/fuzz
findings=$buildDir/findings
maxFiles=300      # of a committed corpus
maxBytes=370000   # of a committed corpus
# Weighing the inputs by how rare their code is takes half of the time here, where each reaches much.
options=(-entropic=0)
# A host's limits: a call that takes longer or needs more memory is a finding, too.
limits=(-timeout=30 -rss_limit_mb=4096 -malloc_limit_mb=4096)

program() {
    printf '%s' "$buildDir/fuzz/ovi_fuzz_$1"
}

# The longest input that is tried: long ones only take time.
max_length() {
    case $1 in
        value) echo 256 ;;
        *) echo 2048 ;;
    esac
}

replay() {
    say "Replaying the inputs of $1"
    "$(program "$1")" "${limits[@]}" -runs=0 "fuzz/corpus/$1" >"$buildDir/replay-$1.log" 2>&1 ||
        { tail -n 40 "$buildDir/replay-$1.log" >&2 && return 1; }
    find "fuzz/corpus/$1" -type f | wc -l | sed 's/$/ inputs replayed/'
}

# The inputs as text, so that a finding of another machine can be repeated from its output alone.
show_findings() {
    local path
    for path in "$findings/$1"/*; do
        [[ -f $path ]] || continue
        echo "base64 --decode >$(basename "$path") <<END"
        base64 "$path"
        echo "END"
    done >&2
}

# What was found before is kept in the build directory and goes on from there.
fuzz() {
    local target=$1 result=0
    mkdir -p "$buildDir/corpus/$target" "$findings/$target"
    "$(program "$target")" "${limits[@]}" "${options[@]}" -seed="$seed" \
        -max_total_time="$seconds" -max_len="$(max_length "$target")" -dict="fuzz/$target.dict" \
        -print_final_stats=1 -artifact_prefix="$findings/$target/" \
        "$buildDir/corpus/$target" "fuzz/corpus/$target" >"$buildDir/fuzz-$target.log" 2>&1 || result=$?
    if ((result != 0)); then
        grep -aE 'FINDING|ERROR|runtime error|Test unit written' "$buildDir/fuzz-$target.log" >&2 || true
        echo "FAILED: fuzzing $target; see $buildDir/fuzz-$target.log, and repeat it with" \
            "$(program "$target") <the file written>" >&2
        show_findings "$target"
    fi
    return "$result"
}

# One row of the table, from the log of the run.
row() {
    local log=$buildDir/fuzz-$1.log executions took speed edges total features
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    took=$(sed -nE 's/^Done [0-9]+ runs in ([0-9]+) second.*/\1/p' "$log")
    speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
    total=$(sed -nE 's/^INFO: Loaded 1 modules +\(([0-9]+) inline.*/\1/p' "$log")
    edges=$(grep -aoE 'cov: [0-9]+' "$log" | tail -n 1 | grep -oE '[0-9]+')
    features=$(grep -aoE 'ft: [0-9]+' "$log" | tail -n 1 | grep -oE '[0-9]+')
    printf '| %s | %s | %s | %s | %s of %s | %s | %s |\n' "$1" "$executions" "$took" "$speed" \
        "$edges" "$total" "$features" "$(find "fuzz/corpus/$1" -type f | wc -l)"
}

table() {
    echo "Without a finding, on $(date +%F), with $(nproc) processors of" \
        "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -n 1):"
    echo
    echo '| Target | Executions | Seconds | Executions a second | Edges covered | Features | Committed inputs |'
    echo '|---|---|---|---|---|---|---|'
    for target in "${targets[@]}"; do row "$target"; done
}

# Keeps the fewest inputs that reach every edge; where these are too many, the longest, which reach
# most.
minimize() {
    local merged=$buildDir/merged/$1 kept=0 bytes=0 size path
    say "Minimising the inputs of $1"
    rm -rf "$merged" && mkdir -p "$merged" "fuzz/corpus/$1" "$buildDir/corpus/$1"
    "$(program "$1")" "${limits[@]}" -merge=1 -use_counters=0 -max_len="$(max_length "$1")" "$merged" \
        "fuzz/corpus/$1" "$buildDir/corpus/$1" >"$buildDir/merge-$1.log" 2>&1
    rm -f "fuzz/corpus/$1"/*
    while read -r size path; do
        ((kept < maxFiles && bytes + size <= maxBytes)) || break
        cp "$path" "fuzz/corpus/$1/"
        kept=$((kept + 1)) bytes=$((bytes + size))
    done < <(find "$merged" -type f -printf '%s %p\n' | sort -k1,1nr -k2)
    echo "$kept inputs, $bytes bytes"
}

say "Setting up"
"$rootDir/scripts/setup.sh" --fuzz

say "Building the fuzzers into build/fuzz"
cmake --preset fuzz
cmake --build --preset fuzz --parallel "$jobs" --target "${targets[@]/#/ovi_fuzz_}"

for target in "${targets[@]}"; do replay "$target" || fail "an input of $target is a finding"; done
if ! $replayOnly; then
    say "Fuzzing ${targets[*]}, two at once, $seconds seconds each"
    result=0
    for ((i = 0; i < ${#targets[@]}; i += 2)); do
        running=()
        for target in "${targets[@]:i:2}"; do fuzz "$target" & running+=($!); done
        for process in "${running[@]}"; do wait "$process" || result=1; done
    done
    ((result == 0)) || fail "there are findings below $findings"
    table | tee "$buildDir/table.md"
    if $write; then
        write_between_markers docs/robustness.md fuzzing "$buildDir/table.md"
    fi
fi
if $minimize; then
    for target in "${targets[@]}"; do minimize "$target"; done
fi
