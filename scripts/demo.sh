#!/usr/bin/env bash
# The main job, from a fresh clone: builds the library and its tool, checks the sample schema and
# scenes, and runs the example host, which loads, edits, saves, loads again and compares.
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

say "Setting up"
"$rootDir/scripts/setup.sh" --build

say "Building into build/demo"
build_all demo -DCMAKE_BUILD_TYPE=Release \
    -DOVICORE_BUILD_TESTS=OFF -DOVICORE_BUILD_BENCHMARKS=OFF

tool=$rootDir/build/demo/tools/ovi
host=$rootDir/build/demo/examples/ovi_host
output=$rootDir/build/demo/demo-output
cd "$rootDir"
# Three libraries, each of which uses those in front of it.
schema=(--schema examples/schema/core --schema examples/schema/show
    --schema examples/schema/modeling)
mapfile -t schemaFiles < <(find examples/schema -name '*.template' | LC_ALL=C sort)
mapfile -t sceneFiles < <(find examples/scenes -name '*.asset' ! -name older-version.asset |
    LC_ALL=C sort)
((${#schemaFiles[@]} > 0)) || fail "no sample schema below examples/schema"
((${#sceneFiles[@]} > 0)) || fail "no sample scenes in examples/scenes"

say "Checking the sample schema: ${#schemaFiles[@]} template files"
"$tool" check "${schema[@]}" "${schemaFiles[@]}" || fail "the sample schema has faults"

say "Checking the sample scenes: ${#sceneFiles[@]} scene files"
"$tool" check "${schema[@]}" "${sceneFiles[@]}" || fail "the sample scenes have faults"

say "Checking a scene of superseded versions, which is meant to have findings"
code=0
"$tool" check "${schema[@]}" examples/scenes/older-version.asset || code=$?
((code == 1)) || fail "the exit code for findings is 1, this was $code"

rm -rf "$output"
mkdir -p "$output"

say "Drawing the sample schema"
"$tool" graph "${schema[@]}" --format svg -o "$output/schema.svg" || fail "the graph"

say "Running the example host"
"$host" examples "$output" || fail "the example host"

say "Done"
echo "The library was built: build/demo/libOviCore.so"
echo "${#schemaFiles[@]} template files and ${#sceneFiles[@]} scene files were checked: no faults."
echo "A scene that uses superseded versions was checked: it has findings, as it should."
echo "The example host read the schema, loaded a scene, changed it and was told of every change,"
echo "saved it, loaded it again and found the same. What it wrote, and a drawing of the sample schema"
echo "for a browser, schema.svg, lie in build/demo/demo-output:"
ls -1 "$output"
