#!/usr/bin/env bash
# Builds the benchmarks into build/bench, makes a scene in a temporary directory and measures the
# library beside expat, pugixml and the standard library. Each figure is the median of several runs,
# ours and theirs in turn, each run in a process of its own. Times are those of the processor, so
# that other programs and the disk do not count.
#
# usage: scripts/bench.sh [--assets N] [--runs N] [--only FIGURE] [--instructions] [--write]
#                         [--build DIR]
#   --assets N      the size of the scene (100000); 5000 with 3 runs takes about a minute. Growth is
#                   measured between a tenth of it and ten times it
#   --runs N        how many runs make a median (5)
#   --only FIGURE   measures only figures whose titles contain that text or whose benchmark begins so
#   --instructions  also count the instructions of loading and saving (needs valgrind)
#   --build DIR     measure what is built there already, in place of building into build/bench
#   --write         put the results into docs/benchmarks.md
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

assets=100000
runs=5
instructions=false
write=false
only=
buildDir=
usage() {
    echo "usage: scripts/bench.sh [--assets N] [--runs N] [--only FIGURE] [--instructions] [--write]" \
        "[--build DIR]" >&2
    exit 2
}
while (($# > 0)); do
    case $1 in
        --assets | --runs)
            [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || usage
            [[ $1 == --assets ]] && assets=$2 || runs=$2
            shift
            ;;
        --only)
            [[ -n ${2:-} ]] || usage
            only=$2
            shift
            ;;
        --build)
            [[ -n ${2:-} ]] || usage
            buildDir=$2
            shift
            ;;
        --instructions) instructions=true ;;
        --write) write=true ;;
        *) usage ;;
    esac
    shift
done

if $write && [[ -n $only ]]; then
    usage # the page shows all figures or none
fi

say "Setting up"
"$rootDir/scripts/setup.sh" --bench
if $instructions; then
    command -v valgrind >/dev/null || fail "--instructions needs the Debian package valgrind"
fi

if [[ -z $buildDir ]]; then
    say "Building into build/bench"
    build_all bench -DCMAKE_BUILD_TYPE=Release -DOVICORE_BUILD_TESTS=OFF \
        -DOVICORE_BUILD_TOOLS=OFF -DOVICORE_BUILD_EXAMPLES=OFF -DOVICORE_BUILD_BENCHMARKS=ON
    buildDir=$rootDir/build/bench
fi
bench=$buildDir/bench/ovi_bench
[[ -x $bench ]] || fail "the benchmarks were not built"

workDir=$(mktemp -d)
trap 'rm -rf "$workDir"' EXIT
samples=$workDir/samples.tsv

say "Making scenes of $assets assets, a tenth and ten times that, and schemas"
small=$((assets / 10)) large=$((assets * 10))
for size in "$small" "$assets" "$large"; do
    "$buildDir/bench/ovi_make_scene" "$workDir/$size.asset" "$size"
    echo "$size assets: $(stat --format=%s "$workDir/$size.asset") bytes"
done
scene=$workDir/$assets.asset
for size in 100 1000; do
    "$buildDir/bench/ovi_make_schema" "$workDir/schema$size" "$size"
done

# Runs one benchmark once and adds a line to the samples: figure, side, nanoseconds, peak, and
# allocations. The columns are looked up by name, since Google Benchmark gives them no fixed order.
# A name may carry the number of assets or of template files ("load/ovi@10000"); the time is then
# that for one of them.
run_once() {
    local figure=$1 side=$2 name=${3%@*} size=1 ofScene=$assets ofSchema=1000
    if [[ $3 == *@* ]]; then
        size=${3#*@}
        [[ $name == unload/* ]] && ofSchema=$size || ofScene=$size
    fi
    "$bench" --scene="$workDir/$ofScene.asset" --assets="$ofScene" \
        --schema="$workDir/schema$ofSchema" --benchmark_filter="^$name(\$|/)" \
        --benchmark_min_time=0.2 --benchmark_format=csv >"$workDir/run.csv" 2>"$workDir/run.log" ||
        fail "$name: $(cat "$workDir/run.log")"
    awk -F, -v figure="$figure" -v side="$side" -v size="$size" '
        { gsub(/"/, "") }
        $1 == "name" { for (i = 1; i <= NF; ++i) column[$i] = i; next }
        !("cpu_time" in column) || $column["error_occurred"] == "true" { next }
        {
            allocations = "allocations" in column ? $column["allocations"] : "-"
            print figure "\t" side "\t" $column["cpu_time"] / size "\t" $column["peak_kB"] "\t" allocations
            done = 1
        }
        END { exit !done }' "$workDir/run.csv" >>"$samples" ||
        fail "$name: $(cat "$workDir/run.csv" "$workDir/run.log")"
}

# The figures: title, ours, theirs, and the ratio that is wanted at most ("-": none).
figures=(
    "Reading without building anything, beside expat|read/ovi|read/expat|0.33"
    "Reading without building anything, beside pugixml|read/ovi|read/pugixml|-"
    "Loading a scene, beside expat with empty handlers|load/ovi|read/expat|0.8"
    "Loading a scene, beside pugixml|load/ovi|read/pugixml|1.5"
    "Saving a scene, beside pugixml|save/ovi|save/pugixml|1.0"
    "Clearing a scene, beside loading it|clear/ovi|load/ovi|-"
    "Loading an asset, many beside few|load/ovi@$large|load/ovi@$small|1.3"
    "Saving an asset, many beside few|save/ovi@$large|save/ovi@$small|1.3"
    "Clearing an asset, many beside few|clear/ovi@$large|clear/ovi@$small|1.3"
    "Making an asset in no order, many beside few|make_shuffled/ovi@$large|make_shuffled/ovi@$small|1.3"
    "Making 100 assets without names among many, beside in an empty scene|new_asset/nth|new_asset/first|3"
    "Finding an asset by name, beside std::map|asset/ovi|asset/map|1.0"
    "Finding a property instance by name, beside std::map|property/ovi|property/map|1.0"
    "Finding a template by name, beside std::map|template/ovi|template/map|1.0"
    "Setting a FLOAT with a callback, beside malloc, free and snprintf|set_value/ovi|set_value/libc|3"
    "Loading 1,000 template files, beside pugixml|schema/ovi|schema/pugixml|3"
    "Unloading a template file, of 1,000 beside of 100|unload/ovi@1000|unload/ovi@100|1.5"
    "Packing 1,000,000 FLOATs, beside memcpy|pack/ovi|pack/memcpy|2"
)
# The peak memory of loading a scene, beside pugixml's.
peakTarget=0.75

say "Measuring: ${only:-${#figures[@]} figures}, $runs runs each"
for figure in "${figures[@]}"; do
    IFS='|' read -r title ours theirs target <<<"$figure"
    [[ -z $only || $title == *"$only"* || $ours == "$only"* ]] || continue
    printf '%s\t%s\t`%s`\n' "$title" "$target" "--only ${ours%@*}" >>"$workDir/targets.tsv"
    for ((run = 0; run < runs; ++run)); do
        run_once "$title" ours "$ours"
        run_once "$title" theirs "$theirs"
    done
    echo "$title"
done

# What was saved must be what was loaded, or the times mean nothing.
[[ -n $only ]] || cmp "$scene" "$scene.ovi.asset" || fail "the saved scene differs from the one that was loaded"

# Prints a Markdown table of the medians of one column of the samples.
print_table() {
    local kind=$1
    awk -F'\t' -v kind="$kind" -v targets="$workDir/targets.tsv" -v peakTarget="$peakTarget" '
        function median(text, values, count, i, j, swap) {
            count = split(text, values, " ")
            for (i = 2; i <= count; ++i)
                for (j = i; j > 1 && values[j - 1] + 0 > values[j] + 0; --j) {
                    swap = values[j]; values[j] = values[j - 1]; values[j - 1] = swap
                }
            return (values[int((count + 1) / 2)] + values[int((count + 2) / 2)]) / 2
        }
        function show(value) {
            if (kind == "peak") return sprintf("%.1f MB", value / 1024)
            if (kind == "allocations") return sprintf("%.2f", value)
            if (value >= 1e6) return sprintf("%.1f ms", value / 1e6)
            return value >= 1e4 ? sprintf("%.1f us", value / 1e3) : sprintf("%.1f ns", value)
        }
        BEGIN {
            field = kind == "time" ? 3 : kind == "peak" ? 4 : 5
            while (kind == "time" && (getline line < targets) > 0) {
                split(line, parts, "\t")
                target[parts[1]] = parts[2]
                repeat[parts[1]] = parts[3]
            }
            if (kind == "peak") target["Loading a scene, beside pugixml"] = peakTarget
        }
        $field == "-" { next }
        kind == "peak" && $1 !~ /^(Reading|Loading a scene|Saving a scene)/ { next }
        !($1 in seen) { seen[$1] = 1; order[++count] = $1 }
        { all[$1, $2] = all[$1, $2] " " $field }
        END {
            withRepeat = kind == "time"
            print "| Figure | Ours | Theirs | Ratio | Wanted at most | |" (withRepeat ? " Repeat with |" : "")
            print "|---|--:|--:|--:|--:|---|" (withRepeat ? "---|" : "")
            for (i = 1; i <= count; ++i) {
                ours = median(all[order[i], "ours"])
                theirs = median(all[order[i], "theirs"])
                ratio = theirs > 0 ? sprintf("%.2f", ours / theirs) : (ours > 0 ? "more" : "same")
                wanted = (order[i] in target) && target[order[i]] != "-" ? target[order[i]] : ""
                verdict = wanted == "" ? "" : (ratio + 0 <= wanted + 0 ? "met" : "missed")
                printf "| %s | %s | %s | %s | %s | %s |%s\n",
                    order[i], show(ours), show(theirs), ratio, wanted, verdict,
                    withRepeat ? " " repeat[order[i]] " |" : ""
            }
        }' "$samples"
}

print_results() {
    local bytes
    bytes=$(stat --format=%s "$scene")
    echo "$assets assets in a file of $((bytes / 1000000)) MB; the median of $runs runs each;" \
        "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(nproc) processors," \
        "$(sed -n 's/^PRETTY_NAME="\(.*\)"$/\1/p' /etc/os-release), $(c++ -dumpversion | sed 's/^/g++ /')."
    printf '\n### Processor time\n\n'
    print_table time
    printf '\n### Peak memory of the process\n\n'
    print_table peak
    printf '\n### Allocations per call\n\n'
    print_table allocations
}

# Counts the instructions inside a function of the library while a benchmark runs.
count_instructions() {
    local name=$1 function=$2 log=$workDir/callgrind.log
    valgrind --tool=callgrind --callgrind-out-file="$workDir/callgrind.out" \
        --collect-atstart=no --toggle-collect="$function" \
        "$bench" --scene="$workDir/counted.asset" --schema="$workDir/schema100" \
        --benchmark_filter="^$name(\$|/)" \
        >"$log" 2>&1 || fail "$(cat "$log")"
    grep -q 'ERROR' "$log" && fail "$(cat "$log")"
    sed -nE 's/^.*Collected : ([0-9]+).*$/\1/p' "$log"
}

print_instructions() {
    local countedAssets=10000 countedFiles=100 load save schema
    "$buildDir/bench/ovi_make_scene" "$workDir/counted.asset" "$countedAssets"
    load=$(count_instructions load/ovi OviAssetManager_LoadScene)
    save=$(count_instructions save/ovi OviAssetManager_SaveScene)
    schema=$(count_instructions schema/ovi OviTemplateManager_LoadTemplateFile)
    printf '\n### Instructions for %s assets and for %s template files\n\n' \
        "$countedAssets" "$countedFiles"
    echo "| Work | Instructions | per asset or template |"
    echo "|---|--:|--:|"
    echo "| Loading | $load | $((load / countedAssets)) |"
    echo "| Saving | $save | $((save / countedAssets)) |"
    echo "| Loading templates | $schema | $((schema / countedFiles / 10)) |"
}

[[ -s $samples ]] || fail "no figure has '$only' in its title or begins its benchmark with it"
say "Results"
print_results >"$workDir/results.md"
if $instructions; then
    print_instructions >>"$workDir/results.md"
fi
cat "$workDir/results.md"
if $write; then
    write_between_markers "$rootDir/docs/benchmarks.md" results "$workDir/results.md"
    echo "Written into docs/benchmarks.md"
fi
