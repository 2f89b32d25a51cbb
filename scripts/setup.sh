#!/usr/bin/env bash
# Installs the Debian packages that building and testing need; only those that are missing.
#
# usage: scripts/setup.sh [--build | --test | --ci | --SCRIPT]
#   --build   compiler, build system, and what the command line tool uses (the default)
#   --test    also what the tests need
#   --ci      all that any script here needs
#   --SCRIPT  what the script of that name needs: bench, coverage, fuzz, lint, package, valgrind or
#             windows
set -euo pipefail

buildPackages=(g++ cmake ninja-build libcli11-dev nlohmann-json3-dev graphviz)
testPackages=(libgtest-dev libgmock-dev python3 binutils pkgconf)
benchPackages=(libbenchmark-dev libpugixml-dev libexpat1-dev valgrind)
fuzzPackages=(clang libclang-rt-14-dev llvm)
lintPackages=(git clang clang-format clang-tidy)
packagePackages=(binutils dpkg-dev file pkgconf unzip)
windowsPackages=(g++-mingw-w64-x86-64-posix llvm googletest wine64)

packages=("${buildPackages[@]}")
case ${1:---build} in
    --build) ;;
    --test) packages+=("${testPackages[@]}") ;;
    --bench) packages+=("${benchPackages[@]}") ;;
    --coverage) packages+=("${testPackages[@]}" gcovr) ;;
    --fuzz) packages+=("${fuzzPackages[@]}") ;;
    --lint) packages+=("${testPackages[@]}" "${benchPackages[@]}" "${lintPackages[@]}") ;;
    --package) packages+=("${packagePackages[@]}") ;;
    --valgrind) packages+=("${testPackages[@]}" valgrind) ;;
    --windows) packages+=("${testPackages[@]}" "${windowsPackages[@]}") ;;
    --ci)
        packages+=("${testPackages[@]}" "${benchPackages[@]}" "${fuzzPackages[@]}"
            "${lintPackages[@]}" "${packagePackages[@]}" "${windowsPackages[@]}" gcovr abigail-tools)
        ;;
    *)
        echo "usage: scripts/setup.sh [--build | --test | --ci | --SCRIPT]" >&2
        exit 2
        ;;
esac
mapfile -t packages < <(printf '%s\n' "${packages[@]}" | sort -u)

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
