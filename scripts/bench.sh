#!/usr/bin/env bash
# Builds the benchmarks into build/bench, makes scenes and a schema in a temporary directory and
# measures the library beside expat, pugixml, the standard library and itself at another size. Each
# figure is the median of several runs, ours and theirs in turn, each run in a process of its own.
# Times are those of the processor, so that other programs and the disk do not count.
#
# usage: scripts/bench.sh [--assets N] [--runs N] [--instructions] [--write]
#   --assets N      the size of the scene (100000); growth is looked at from 10000 to 1000000 assets
#                   and from 100 to 1000 files of the schema, in smaller runs from 2000 to 20000
#                   assets and from 20 to 200 files; 5000 with 3 runs takes less than 90 seconds
#   --runs N        how many runs make a median (5)
#   --instructions  also count the instructions of loading and saving (needs valgrind)
#   --write         put the results into docs/benchmarks.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

assets=100000
runs=5
instructions=false
write=false
usage() {
    echo "usage: scripts/bench.sh [--assets N] [--runs N] [--instructions] [--write]" >&2
    exit 2
}
while (($# > 0)); do
    case $1 in
        --assets | --runs)
            [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || usage
            [[ $1 == --assets ]] && assets=$2 || runs=$2
            shift
            ;;
        --instructions) instructions=true ;;
        --write) write=true ;;
        *) usage ;;
    esac
    shift
done

say "Setting up"
"$rootDir/scripts/setup.sh" --bench
if $instructions; then
    command -v valgrind >/dev/null || fail "--instructions needs the Debian package valgrind"
fi

say "Building into build/bench"
build_all bench -DCMAKE_BUILD_TYPE=Release -DOVICORE_BUILD_TESTS=OFF -DOVICORE_BUILD_TOOLS=OFF \
    -DOVICORE_BUILD_EXAMPLES=OFF -DOVICORE_BUILD_BENCHMARKS=ON
bench=$rootDir/build/bench/bench/ovi_bench
[[ -x $bench ]] || fail "the benchmarks were not built"

workDir=$(mktemp -d)
trap 'rm -rf "$workDir"' EXIT
samples=$workDir/samples.tsv

# The sizes that a benchmark runs at: the figures name one behind an "@", or mean "normal".
declare -A assetsOf=([normal]=$assets [large]=20000 [small]=2000)
declare -A filesOf=([normal]=200 [many]=200 [few]=20)
if ((assets >= 100000)); then
    assetsOf[large]=1000000 assetsOf[small]=10000
    filesOf[normal]=1000 filesOf[many]=1000 filesOf[few]=100
fi
largeText="${assetsOf[large]} beside ${assetsOf[small]}"
manyText="${filesOf[many]} beside ${filesOf[few]}"

for size in "${!assetsOf[@]}"; do
    say "Making a scene of ${assetsOf[$size]} assets"
    "$rootDir/build/bench/bench/ovi_make_scene" "$workDir/$size.asset" "${assetsOf[$size]}"
    echo "$(stat --format=%s "$workDir/$size.asset") bytes"
done
say "Making a schema of ${filesOf[normal]} files"
schema=$workDir/schema
mkdir "$schema"
"$rootDir/build/bench/bench/ovi_make_schema" "$schema" "${filesOf[normal]}"

# The figures and their targets, in one place: title, measure, target, ours, theirs. The measure is
# the ratio of times or of peaks ("time", "peak"), or that of times with no allocation allowed to us
# ("lookup"). A target of "-" is none. Two of the same pair share their runs.
figures=(
    "Reading without building anything, beside expat|time|0.33|read/ovi|read/expat"
    "Reading without building anything, beside pugixml|time|-|read/ovi|read/pugixml"
    "Loading a scene, beside expat with empty handlers|time|0.8|load/ovi|read/expat"
    "Loading a scene, beside pugixml|time|1.5|load/ovi|read/pugixml"
    "Peak memory of loading, beside pugixml|peak|0.75|load/ovi|read/pugixml"
    "Saving a scene, beside pugixml|time|1.0|save/ovi|save/pugixml"
    "Peak memory of saving, beside pugixml|peak|-|save/ovi|save/pugixml"
    "Clearing a scene, beside loading it|time|-|clear/ovi|load/ovi"
    "Finding an asset by name, beside std::map|lookup|1.0|asset/ovi|asset/map"
    "Finding a property instance by name, beside std::map|lookup|1.0|property/ovi|property/map"
    "Finding a template by name, beside std::map|lookup|1.0|template/ovi|template/map"
    "Setting a FLOAT with a callback, beside malloc, free and snprintf|time|3|set_value/ovi|set_value/libc"
    "Making 100 assets without names among $assets, beside the first 100|time|3|new_asset/nth|new_asset/first"
    "Growth of loading, per asset, $largeText|time|1.3|load/ovi@large|load/ovi@small"
    "Growth of saving, per asset, $largeText|time|1.3|save/ovi@large|save/ovi@small"
    "Growth of clearing, per asset, $largeText|time|1.3|clear/ovi@large|clear/ovi@small"
    "Growth of making assets in shuffled order, per asset, $largeText|time|1.3|new_asset/shuffled@large|new_asset/shuffled@small"
    "Loading a schema of ${filesOf[normal]} files, beside pugixml|time|3|schema_load/ovi|schema_load/pugixml"
    "Growth of unloading a schema, per file, $manyText|time|1.5|schema_unload/ovi@many|schema_unload/ovi@few"
    "Packing 1000000 INT32, beside memcpy|time|2|pack_int32/ovi|pack_int32/memcpy"
    "Packing 1000000 FLOAT, beside memcpy|time|2|pack_float/ovi|pack_float/memcpy"
    "Packing 1000000 DOUBLE, beside memcpy|time|2|pack_double/ovi|pack_double/memcpy"
)

# Runs one benchmark once and adds a line to the samples: pair, side, nanoseconds, peak, and
# allocations. Where a size is named, the nanoseconds are those of one asset or file. The columns are
# looked up by name, since Google Benchmark gives them no fixed order.
run_once() {
    local pair=$1 side=$2 name=${3%@*} size=normal divisor=1
    if [[ $3 == *@* ]]; then
        size=${3#*@}
        divisor=${assetsOf[$size]:-${filesOf[$size]:-}}
    fi
    "$bench" --scene="$workDir/$size.asset" --assets="${assetsOf[$size]:-$assets}" \
        --schema="$schema" --files="${filesOf[$size]:-${filesOf[normal]}}" \
        --benchmark_filter="^$name(\$|/)" --benchmark_min_time=0.2 --benchmark_format=csv \
        >"$workDir/run.csv" 2>"$workDir/run.log" || fail "$name: $(cat "$workDir/run.log")"
    awk -F, -v pair="$pair" -v side="$side" -v divisor="$divisor" '
        { gsub(/"/, "") }
        $1 == "name" { for (i = 1; i <= NF; ++i) column[$i] = i; next }
        !("cpu_time" in column) || $column["error_occurred"] == "true" { next }
        {
            allocations = "allocations" in column ? $column["allocations"] : "-"
            time = $column["cpu_time"] / divisor
            print pair "\t" side "\t" time "\t" $column["peak_kB"] "\t" allocations
            done = 1
        }
        END { exit !done }' "$workDir/run.csv" >>"$samples" ||
        fail "$name: $(cat "$workDir/run.csv" "$workDir/run.log")"
}

say "Measuring: ${#figures[@]} figures, $runs runs each"
declare -A measured=()
for figure in "${figures[@]}"; do
    IFS='|' read -r title _ _ ours theirs <<<"$figure"
    pair="$ours $theirs"
    if [[ -z ${measured[$pair]:-} ]]; then
        for ((run = 0; run < runs; ++run)); do
            run_once "$pair" ours "$ours"
            run_once "$pair" theirs "$theirs"
        done
        measured[$pair]=yes
    fi
    echo "$title"
done

# What was saved must be what was loaded, or the times mean nothing.
for size in "${!assetsOf[@]}"; do
    cmp "$workDir/$size.asset" "$workDir/$size.asset.ovi.asset" ||
        fail "the saved scene differs from the one that was loaded"
done

# Prints the Markdown table of the figures: of each the medians of its samples, set against the
# target.
print_table() {
    printf '%s\n' "${figures[@]}" | awk -F'\t' '
        function median(text, values, count, i, j, swap) {
            count = split(text, values, " ")
            for (i = 2; i <= count; ++i)
                for (j = i; j > 1 && values[j - 1] + 0 > values[j] + 0; --j) {
                    swap = values[j]; values[j] = values[j - 1]; values[j - 1] = swap
                }
            return (values[int((count + 1) / 2)] + values[int((count + 2) / 2)]) / 2
        }
        function show(value, measure) {
            if (measure == "peak") return sprintf("%.1f MB", value / 1024)
            if (value >= 1e6) return sprintf("%.1f ms", value / 1e6)
            return value >= 1e3 ? sprintf("%.1f us", value / 1e3) : sprintf("%.1f ns", value)
        }
        NR == FNR {
            times[$1, $2] = times[$1, $2] " " $3
            peaks[$1, $2] = peaks[$1, $2] " " $4
            allocations[$1, $2] = allocations[$1, $2] " " $5
            next
        }
        FNR == 1 {
            print "| Figure | Target | Measured | Ours | Theirs | Result |"
            print "|---|--:|--:|--:|--:|---|"
        }
        {
            split($0, figure, "|")
            measure = figure[2]; target = figure[3]; pair = figure[4] " " figure[5]
            ours = median(measure == "peak" ? peaks[pair, "ours"] : times[pair, "ours"])
            theirs = median(measure == "peak" ? peaks[pair, "theirs"] : times[pair, "theirs"])
            ratio = ours / theirs
            text = sprintf("%.2f", ratio)
            met = ratio <= target + 0
            wanted = sprintf("at most %.2f", target)
            if (measure == "lookup") {
                calls = median(allocations[pair, "ours"])
                text = text sprintf(", %.2f allocations", calls)
                met = met && calls == 0
                wanted = wanted ", no allocation"
            }
            result = met ? "met" : "not met"
            if (target == "-") wanted = result = "-"
            printf "| %s | %s | %s | %s | %s | %s |\n", figure[1], wanted, text,
                show(ours, measure), show(theirs, measure), result
        }' "$samples" -
}

print_results() {
    local bytes
    bytes=$(stat --format=%s "$workDir/normal.asset")
    echo "$assets assets in a file of $((bytes / 1000000)) MB; the median of $runs runs each;" \
        "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) processors," \
        "$(sed -n 's/^PRETTY_NAME="\(.*\)"$/\1/p' /etc/os-release), $(c++ -dumpversion | sed 's/^/g++ /')."
    echo
    print_table
}

# Counts the instructions inside a function of the library while a benchmark runs.
count_instructions() {
    local name=$1 function=$2 log=$workDir/callgrind.log
    valgrind --tool=callgrind --callgrind-out-file="$workDir/callgrind.out" \
        --collect-atstart=no --toggle-collect="$function" \
        "$bench" --scene="$workDir/counted.asset" --benchmark_filter="^$name(\$|/)" \
        >"$log" 2>&1 || fail "$(cat "$log")"
    grep -q 'ERROR' "$log" && fail "$(cat "$log")"
    sed -nE 's/^.*Collected : ([0-9]+).*$/\1/p' "$log"
}

print_instructions() {
    local countedAssets=10000 load save
    "$rootDir/build/bench/bench/ovi_make_scene" "$workDir/counted.asset" "$countedAssets"
    load=$(count_instructions load/ovi OviAssetManager_LoadScene)
    save=$(count_instructions save/ovi OviAssetManager_SaveScene)
    echo "| Work on $countedAssets assets | Instructions | per asset |"
    echo "|---|--:|--:|"
    echo "| Loading | $load | $((load / countedAssets)) |"
    echo "| Saving | $save | $((save / countedAssets)) |"
}

say "Results"
print_results >"$workDir/results.md"
cat "$workDir/results.md"
if $instructions; then
    print_instructions >"$workDir/instructions.md"
    cat "$workDir/instructions.md"
fi
if $write; then
    write_between_markers "$rootDir/docs/benchmarks.md" results "$workDir/results.md"
    if $instructions; then
        write_between_markers "$rootDir/docs/benchmarks.md" instructions "$workDir/instructions.md"
    fi
    echo "Written into docs/benchmarks.md"
fi
