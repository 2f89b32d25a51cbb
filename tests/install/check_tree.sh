#!/usr/bin/env bash
# Checks an installed tree, wherever it lies: what is in it, that nothing in it names the machine it
# was built on, that the headers are complete, that the tool runs, and that hosts in C and in C++
# are built against it and run: with find_package, with pkg-config, and with plain flags.
#
# usage: check_tree.sh linux|windows <tree> <version> <source directory> <build directory>
#
# CC and CXX name the compilers. For Windows they are the cross compilers; without Wine the hosts
# are built and not run. WITHOUT_TOOL=1: the tree was installed from a build that left out the tool.
set -euo pipefail

system=$1
tree=$2
version=$3
sourceDir=$4
buildDir=$5
consumerDir=$(cd "$(dirname "$0")" && pwd)/consumer
samples=$tree/share/ovicore/examples
documents=$tree/share/doc/ovicore

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

run_logged() {
    "$@" >"$work/log" 2>&1 || fail "$* $(printf '\n'; cat "$work/log")"
}

# ---------------------------------------------------------------------------------------- contents
expect_same_files() {
    local title=$1 installed=$2 expected=$3
    diff -r "$installed" "$expected" >"$work/log" || fail "$title: $(cat "$work/log")"
}

check_contents() {
    local name
    expect_same_files "headers" "$tree/include/ovi" "$sourceDir/include/ovi"
    for name in faulty scenes schema host.c README.md; do
        expect_same_files "samples" "$samples/$name" "$sourceDir/examples/$name"
    done
    for name in install.md ovi.md architecture.md robustness.md; do
        expect_same_files "documents" "$documents/$name" "$sourceDir/docs/$name"
    done
    expect_same_files "documents" "$documents/CHANGELOG.md" "$sourceDir/CHANGELOG.md"
    # Debian has the licence under another name.
    if [[ -e $documents/LICENSE ]]; then
        expect_same_files "licence" "$documents/LICENSE" "$sourceDir/LICENSE"
    else
        expect_same_files "licence" "$documents/copyright" "$sourceDir/LICENSE"
    fi
    [[ -z $(find "$tree" -name '*Static*' -o -name '*.a' ! -name '*.dll.a') ]] ||
        fail "the library's objects are installed"
}

# A link in a document leads to another installed one.
check_links() {
    local document link
    for document in "$documents"/*.md; do
        while read -r link; do
            [[ -e $documents/$link ]] || fail "$(basename "$document"): $link leads nowhere"
        done < <(grep -oE '\]\([^)#:]+\)' "$document" | sed -E 's/^\]\((.*)\)$/\1/')
    done
}

# Programs and libraries included.
check_paths() {
    local found
    found=$(grep -rlaF -e "$buildDir" -e "$sourceDir" "$tree" || true)
    [[ -z $found ]] || fail "these files name a directory of the machine: $found"
}

# What the ELF file says of a library or program, for example "SONAME".
dynamic_entry() {
    readelf --dynamic --wide "$2" | sed -nE "s/.*\($1\).*\[(.*)\]\$/\1/p"
}

check_library() {
    local major=${version%%.*} libDir=$tree/lib name
    if [[ $system == windows ]]; then
        for name in bin/OviCore.dll lib/libOviCore.dll.a lib/OviCore.lib lib/OviCore.def; do
            [[ -s $tree/$name ]] || fail "$name is missing"
        done
        return
    fi
    [[ $(dynamic_entry SONAME "$libDir/libOviCore.so") == "libOviCore.so.$major" ]] ||
        fail "the SONAME is not libOviCore.so.$major"
    [[ $(readlink "$libDir/libOviCore.so") == "libOviCore.so.$major" &&
        $(readlink "$libDir/libOviCore.so.$major") == "libOviCore.so.$version" ]] ||
        fail "the links to the library: $(ls -l "$libDir")"
    [[ -z $(dynamic_entry 'RPATH|RUNPATH' "$libDir/libOviCore.so") ]] ||
        fail "the library looks for others in a place of its own"
}

# ------------------------------------------------------------------------------------------- hosts
# Runs a program of the system that the tree is for.
run() {
    if [[ $system == linux ]]; then
        "$@"
    elif [[ -n $wine ]]; then
        WINEPATH=$tree/bin "$wine" "$@"
    fi
}

# The host works with the library of the tree, whose version it prints.
check_host() {
    local how=$1 host=$2 output
    [[ $system == linux || -n $wine ]] || return 0
    output=$(run "$host") || fail "the host built $how does not run"
    [[ ${output%$'\r'} == "$version" ]] || fail "the host built $how says: $output"
}

# Each header alone: it is complete, in C and in C++.
check_headers() {
    local header name
    mkdir "$work/headers"
    for header in "$tree"/include/ovi/*.h; do
        name=ovi/$(basename "$header")
        echo "#include \"$name\"" >>"$work/headers/all-headers.h"
        printf '#include "%s"\ntypedef int UnitIsNotEmpty;\n' "$name" >"$work/one.c"
        run_logged "$CC" -std=c99 -pedantic-errors -Wall -Wextra -Werror -fsyntax-only \
            -I "$tree/include" "$work/one.c"
        run_logged "$CXX" -std=c++17 -x c++ -pedantic-errors -Wall -Wextra -Werror -fsyntax-only \
            -I "$tree/include" "$work/one.c"
    done
}

build_with_cmake() {
    local options=("-DCMAKE_PREFIX_PATH=$tree" "-DCMAKE_C_COMPILER=$CC" "-DCMAKE_CXX_COMPILER=$CXX")
    if [[ $system == windows ]]; then
        # A toolchain looks for packages below its own root only; so a host names the package.
        options=("-DOviCore_DIR=$tree/lib/cmake/OviCore"
            "-DCMAKE_TOOLCHAIN_FILE=$sourceDir/cmake/mingw-w64-x86_64.cmake")
    fi
    run_logged cmake -S "$consumerDir" -B "$work/cmake" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCONSUMER_HEADERS="$work/headers" -DCONSUMER_SAMPLES="$samples" "${options[@]}"
    run_logged cmake --build "$work/cmake"
    grep -q "^OviCore_DIR:[A-Z]*=$tree/" "$work/cmake/CMakeCache.txt" ||
        fail "find_package found another package"
    check_host "with find_package, in C" "$work/cmake/consumer_c$suffix"
    check_host "with find_package, in C++" "$work/cmake/consumer_cxx$suffix"
    mkdir "$work/host-output"
    run_logged run "$work/cmake/host$suffix" "$samples" "$work/host-output"
}

# Microsoft's linker is given the import library of its own form. (Its compiler is not there to try.)
check_import_library() {
    mkdir "$work/microsoft"
    cat >"$work/microsoft/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(Microsoft LANGUAGES NONE)
set(MSVC TRUE)
find_package(OviCore 1.0 CONFIG REQUIRED)
get_target_property(library OviCore::OviCore IMPORTED_IMPLIB_RELEASE)
file(REAL_PATH ${OviCore_DIR}/../../OviCore.lib expected)
if(NOT library STREQUAL expected OR NOT EXISTS ${library})
    message(FATAL_ERROR "${library} instead of ${expected}")
endif()
END
    run_logged cmake -S "$work/microsoft" -B "$work/microsoft/build" -G Ninja \
        -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_SIZEOF_VOID_P=8 \
        -DOviCore_DIR="$tree/lib/cmake/OviCore"
}

# Compiles both hosts with the flags given, and runs them.
build_with_flags() {
    local how=$1
    shift
    run_logged "$CC" -std=c99 -I "$work/headers" "$consumerDir/consumer.c" \
        -o "$work/host-in-c$suffix" "$@"
    run_logged "$CXX" -std=c++17 -I "$work/headers" "$consumerDir/consumer.cpp" \
        -o "$work/host-in-cxx$suffix" "$@"
    check_host "$how, in C" "$work/host-in-c$suffix"
    check_host "$how, in C++" "$work/host-in-cxx$suffix"
}

build_with_pkg_config() {
    local flags
    command -v pkg-config >/dev/null || fail "pkg-config is missing; Debian package: pkgconf"
    [[ $(PKG_CONFIG_LIBDIR=$tree/lib/pkgconfig pkg-config --modversion ovicore) == "$version" ]] ||
        fail "pkg-config gives another version"
    # Backslashes protect the blanks of a prefix that has some.
    # shellcheck disable=SC2162
    read -a flags <<<"$(PKG_CONFIG_LIBDIR=$tree/lib/pkgconfig pkg-config --cflags --libs ovicore)"
    LD_LIBRARY_PATH=$tree/lib build_with_flags "with pkg-config" "${flags[@]}" "${cxxRuntime[@]}"
}

build_by_hand() {
    local flags=("-I$tree/include" "-L$tree/lib" -lOviCore "${cxxRuntime[@]}")
    if [[ $system == linux ]]; then
        flags+=("-Wl,-rpath,$tree/lib")
    fi
    build_with_flags "with plain flags" "${flags[@]}"
}

# -------------------------------------------------------------------------------------------- tool
check_tool() {
    local tool=$tree/bin/ovi$suffix schema=$samples/schema
    [[ -x $tool || $system == windows && -e $tool ]] || fail "the tool is missing"
    if [[ $system == linux ]]; then
        [[ $(dynamic_entry RUNPATH "$tool") == "\$ORIGIN/../lib" ]] ||
            fail "the tool does not look for the library beside itself"
    fi
    run_logged run "$tool" --version
    [[ $system == windows && -z $wine ]] || grep -q "$version" "$work/log" ||
        fail "the tool's version: $(cat "$work/log")"
    run_logged run "$tool" check --schema "$schema/core" --schema "$schema/show" \
        --schema "$schema/modeling" "$samples/scenes/harbour.asset"
}

suffix=""
wine=""
cxxRuntime=()
if [[ $system == windows ]]; then
    suffix=.exe
    # Debian's package wine64 alone puts the program nowhere on the path.
    wine=$(PATH=$PATH:/usr/lib/wine command -v wine64 || true)
    export WINEPREFIX=${WINEPREFIX:-$work/wine} WINEDEBUG=-all
    # A host, too, has nothing to ship beside it.
    cxxRuntime=(-static)
fi

check_contents
check_links
check_paths
check_library
check_headers
build_with_cmake
build_with_pkg_config
build_by_hand
[[ $system == linux ]] || check_import_library
[[ ${WITHOUT_TOOL:-0} == 1 ]] || check_tool
if [[ $system == windows && -z $wine ]]; then
    echo "Wine is not installed (Debian package: wine64): the hosts were built, not run"
else
    echo "contents, headers, tool and hosts: as they should be"
fi
