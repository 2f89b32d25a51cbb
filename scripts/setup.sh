#!/usr/bin/env bash
# Installs the Debian packages that building and testing need; only those that are missing.
#
# usage: scripts/setup.sh [--build|--test|--bench|--package|--windows|--ci]
#   --build    compiler, build system, and what the command line tool uses (the default)
#   --test     also what the tests need
#   --bench    what building and the benchmarks need
#   --package  what building and packing for Linux need
#   --windows  what building for Windows and testing there need
#   --ci       all of these, and what linting, fuzzing and measuring coverage need
set -euo pipefail

buildPackages=(g++ cmake ninja-build libcli11-dev nlohmann-json3-dev graphviz)
testPackages=(libgtest-dev libgmock-dev python3 binutils pkgconf)
benchPackages=(libbenchmark-dev libpugixml-dev libexpat1-dev valgrind)
packagePackages=(binutils dpkg-dev file pkgconf unzip)
windowsPackages=(g++-mingw-w64-x86-64-posix llvm googletest wine64)
ciPackages=("${benchPackages[@]}" "${packagePackages[@]}" "${windowsPackages[@]}" git clang
    clang-format clang-tidy libclang-rt-14-dev gcovr abigail-tools)

packages=("${buildPackages[@]}")
case ${1:---build} in
    --build) ;;
    --test) packages+=("${testPackages[@]}") ;;
    --bench) packages+=("${benchPackages[@]}") ;;
    --package) packages+=("${packagePackages[@]}") ;;
    --windows) packages+=("${testPackages[@]}" "${windowsPackages[@]}") ;;
    --ci) packages+=("${testPackages[@]}" "${ciPackages[@]}") ;;
    *)
        echo "usage: scripts/setup.sh [--build|--test|--bench|--package|--windows|--ci]" >&2
        exit 2
        ;;
esac

if ! command -v apt-get >/dev/null; then
    echo "This is no Debian system. Please install what these Debian packages hold, in the way of" >&2
    echo "your system: ${packages[*]}" >&2
    for tool in g++ cmake ninja; do
        command -v "$tool" >/dev/null || { echo "Missing: $tool" >&2 && exit 1; }
    done
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    echo "All ${#packages[@]} packages are installed."
    exit 0
fi

asRoot=()
if ((EUID != 0)); then
    command -v sudo >/dev/null || {
        echo "Please install as root: ${missing[*]}" >&2
        exit 1
    }
    asRoot=(sudo)
fi

echo "Installing ${#missing[@]} packages: ${missing[*]}"
apt_get() {
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 "$@" </dev/null
}
apt_get update
log=$(mktemp)
if ! apt_get install --yes --no-install-recommends "${missing[@]}" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    exit 1
fi
rm -f "$log"
