#!/usr/bin/env bash
# Sets up, makes the packages of the library into build/packages, from the builds that are there or
# new ones, and checks each: unpacked into an empty directory, moved, and hosts built against it.
# For Linux an archive and Debian packages, for Windows an archive.
#
# usage: scripts/package.sh [linux|windows|all]     (the default is all)
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

packageDir=$rootDir/build/packages
version=$(sed -nE 's/^ +VERSION ([0-9.]+)$/\1/p' "$rootDir/CMakeLists.txt")
runtime=libovicore${version%%.*}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

need() {
    local tool=$1 package=$2
    command -v "$tool" >/dev/null || fail "$tool is missing; Debian package: $package"
}

# make_packages <preset> "<targets>" <pattern>...
#
# Builds the targets, which are those that are installed, with the preset of that name, and packs.
# The patterns name what was packed before, of whatever version.
make_packages() {
    local preset=$1 targets pattern
    read -ra targets <<<"$2"
    shift 2
    (cd "$rootDir" && cmake --preset "$preset" >"$work/configure.log") ||
        fail "$(cat "$work/configure.log")"
    cmake --build --preset "$preset" --parallel "$jobs" --target "${targets[@]}"
    mkdir -p "$packageDir"
    for pattern in "$@"; do
        find "$packageDir" -name "$pattern" -delete
    done
    pack "$preset" "$packageDir"
}

# The packed files get the time of the commit: packing the same build again gives the same bytes.
pack() {
    local preset=$1 target=$2
    umask 022 # the directories are for everybody
    SOURCE_DATE_EPOCH=$(commit_time) cpack --config "$rootDir/build/$preset/CPackConfig.cmake" \
        -B "$target" >"$work/cpack.log" 2>&1 || fail "$(cat "$work/cpack.log")"
    rm -rf "$target/_CPack_Packages"
}

commit_time() {
    echo "${SOURCE_DATE_EPOCH:-$(git -C "$rootDir" log -1 --format=%ct 2>/dev/null || date +%s)}"
}

check_tree() {
    local title=$1 system=$2 tree=$3 preset=$4 started=$SECONDS
    bash "$rootDir/tests/install/check_tree.sh" "$system" "$tree" "$version" "$rootDir" \
        "$rootDir/build/$preset" || fail "$title"
    echo "$title: $((SECONDS - started)) s"
}

# The archives unpack into one directory of their own name; the tree is moved before it is used.
check_tar() {
    mkdir "$work/tar"
    tar -xzf "$packageDir/ovicore-$version-linux-x64.tar.gz" -C "$work/tar"
    mv "$work/tar/ovicore-$version-linux-x64" "$work/from tar"
    check_tree "ovicore-$version-linux-x64.tar.gz" linux "$work/from tar" release
}

# ------------------------------------------------------------------------------------------ Debian
check_debian() {
    local name shlibs
    mkdir "$work/debian"
    for name in "$runtime" libovicore-dev ovicore; do
        dpkg-deb -x "$(debian_file "$name")" "$work/debian"
        check_fields "$name"
    done
    expect_field "$runtime" Depends '(^|, )libc6 \(>= .*libstdc\+\+6 \(>= '
    expect_field libovicore-dev Depends "^$runtime \(= $version\)$"
    expect_field ovicore Depends "(^|, )$runtime \(= $version\)(, |$)"
    grep -qw ldconfig <<<"$(dpkg-deb --info "$(debian_file "$runtime")" postinst)" ||
        fail "$runtime does not make itself known to the loader"
    # Programs linked with the library depend on its package through this file.
    shlibs=$(dpkg-deb --info "$(debian_file "$runtime")" shlibs)
    [[ $shlibs == "libOviCore ${version%%.*} $runtime (>= $version)" ]] || fail "$runtime: shlibs is '$shlibs'"
    check_tree "the Debian packages" linux "$work/debian/usr" release
}

debian_file() {
    echo "$packageDir/$1_${version}_amd64.deb"
}

expect_field() {
    local package=$1 field=$2 pattern=$3 value
    value=$(dpkg-deb --field "$(debian_file "$package")" "$field")
    grep -qE "$pattern" <<<"$value" || fail "$package: $field is '$value'"
}

check_fields() {
    local package=$1 list
    expect_field "$package" Package "^$package$"
    expect_field "$package" Version "^$version$"
    expect_field "$package" Architecture '^amd64$'
    expect_field "$package" Maintainer '^[^<>]+ <[^<>@]+@[^<>@]+>$'
    expect_field "$package" Description '^Typed, versioned data model for 3D content$'
    expect_field "$package" Description '^ This package holds'
    list=$(dpkg-deb --contents "$(debian_file "$package")")
    grep -q " ./usr/share/doc/$package/copyright$" <<<"$list" || fail "$package has no copyright"
    ! grep -vE '^(d|-|l)rwxr-xr-x root/root|^-rw-r--r-- root/root|^lrwxrwxrwx root/root' <<<"$list" ||
        fail "$package: owners or permissions"
    dpkg-deb --control "$(debian_file "$package")" "$work/control-$package"
    (cd "$work/debian" && md5sum --quiet --check "$work/control-$package/md5sums") ||
        fail "$package: checksums"
}

check_reproduced() {
    local preset=$1 file
    pack "$preset" "$work/again-$preset"
    for file in "$work/again-$preset"/*; do
        cmp "$file" "$packageDir/$(basename "$file")" || fail "packed again, the bytes differ"
    done
    echo "packed again: the same bytes"
}

package_linux() {
    need dpkg-shlibdeps dpkg-dev
    say "Packing for Linux into build/packages"
    make_packages release 'OviCore ovi' 'ovicore-*.tar.gz' '*.deb'
    say "Checking the packages for Linux"
    CC=gcc CXX=g++ check_tar
    CC=gcc CXX=g++ check_debian
    check_reproduced release
}

# ----------------------------------------------------------------------------------------- Windows
package_windows() {
    "$rootDir/scripts/setup.sh" --windows
    need x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
    need llvm-dlltool llvm
    say "Packing for Windows into build/packages"
    make_packages windows 'OviCore OviCoreImportLibrary ovi' 'ovicore-*.zip'
    say "Checking the package for Windows"
    unzip -q "$packageDir/ovicore-$version-windows-x64.zip" -d "$work/zip"
    mv "$work/zip/ovicore-$version-windows-x64" "$work/from-zip"
    export CC=x86_64-w64-mingw32-gcc-posix CXX=x86_64-w64-mingw32-g++-posix
    WINEPREFIX=$rootDir/build/windows/wine \
        check_tree "ovicore-$version-windows-x64.zip" windows "$work/from-zip" windows
    check_reproduced windows
}

case ${1:-all} in
    linux | windows) systems=("$1") ;;
    all) systems=(linux windows) ;;
    *)
        echo "usage: scripts/package.sh [linux|windows|all]" >&2
        exit 2
        ;;
esac
say "Setting up"
"$rootDir/scripts/setup.sh" --package
for system in "${systems[@]}"; do
    "package_$system"
done

say "Packages"
find "$packageDir" -maxdepth 1 -type f -printf '%9s  %f\n' | sort -k2
