#!/usr/bin/env bash
# Proves that the README's commands work on a machine that has nothing: makes a minimal Debian 12
# root with git in a temporary directory, clones this repository's HEAD there, and runs the command.
# Needs root, and apt's sources and proxy settings of this machine reach a Debian mirror.
#
# usage: scripts/fresh-root.sh demo|test
set -euo pipefail
# shellcheck source=scripts/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

case ${1:-} in
    demo | test) command=./scripts/$1.sh ;;
    *)
        echo "usage: scripts/fresh-root.sh demo|test" >&2
        exit 2
        ;;
esac
((EUID == 0)) || fail "only root can make a root directory"
if ! command -v debootstrap >/dev/null; then
    apt-get -qq update
    DEBIAN_FRONTEND=noninteractive apt-get -qq install --yes --no-install-recommends debootstrap \
        >/dev/null
fi

freshRoot=$(mktemp -d /var/tmp/ovicore-root.XXXXXX)
chmod 755 "$freshRoot" # as the root directory of every system is
clean_up() {
    local mountPoint
    for mountPoint in dev/pts proc; do
        if mountpoint -q "$freshRoot/$mountPoint"; then
            umount "$freshRoot/$mountPoint" || umount -l "$freshRoot/$mountPoint"
        fi
    done
    # Never reaches into a mount that would not go away.
    rm -rf --one-file-system "$freshRoot"
}
trap clean_up EXIT
trap 'exit 130' INT TERM

# The Debian mirror of this machine, in the old one-line and in the new many-line form of its file.
debian_mirror() {
    {
        sed -nE 's/^URIs: *([^ ]+).*/\1/p' /etc/apt/sources.list.d/*.sources 2>/dev/null
        sed -nE 's/^deb +(\[[^]]*\] +)?([^ ]+) .*/\2/p' /etc/apt/sources.list 2>/dev/null
    } | grep -E '/debian/?$' | head -n 1
}

say "Making a minimal Debian 12 root in $freshRoot"
mirror=$(debian_mirror || true)
debootstrap --variant=minbase --include=git,ca-certificates bookworm "$freshRoot" \
    "${mirror:-http://deb.debian.org/debian}" >"$freshRoot.log" 2>&1 || {
    tail -n 20 "$freshRoot.log" >&2
    rm -f "$freshRoot.log"
    fail "debootstrap"
}
rm -f "$freshRoot.log"

# How this machine reaches the mirror: sources, proxy and time settings, names, certificates.
copy_if_there() {
    local file
    for file in "$@"; do
        [[ -e $file ]] || continue
        mkdir -p "$freshRoot$(dirname "$file")"
        cp -rL "$file" "$freshRoot$file"
    done
}
rm -f "$freshRoot/etc/apt/sources.list"
for source in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    if grep -qs '/debian' "$source" && [[ $source == *.list || $source == *.sources ]]; then
        copy_if_there "$source"
    fi
done
mapfile -t aptSettings < <(grep -lsE 'Proxy|Acquire::Check|Acquire::https?' /etc/apt/apt.conf \
    /etc/apt/apt.conf.d/* || true)
copy_if_there "${aptSettings[@]}" /etc/apt/trusted.gpg.d /usr/share/keyrings \
    /etc/resolv.conf /etc/hosts
if [[ -d /usr/local/share/ca-certificates ]]; then
    copy_if_there /usr/local/share/ca-certificates
    chroot "$freshRoot" update-ca-certificates >/dev/null 2>&1 || true
fi

mount -t proc proc "$freshRoot/proc"
mount -t devpts devpts "$freshRoot/dev/pts" -o newinstance,ptmxmode=0666

say "Cloning HEAD, $(git -C "$rootDir" log -1 --format='%h %s')"
if [[ -n $(git -C "$rootDir" status --porcelain) ]]; then
    echo "Note: what is not committed is not part of this trial."
fi
git -C "$rootDir" bundle create --quiet "$freshRoot/root/ovicore.bundle" HEAD

environment=(HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 CI=true)
for name in http_proxy https_proxy no_proxy HTTP_PROXY HTTPS_PROXY NO_PROXY OVI_JOBS; do
    if [[ -n ${!name:-} ]]; then
        environment+=("$name=${!name}")
    fi
done
in_root() {
    env -i "${environment[@]}" chroot "$freshRoot" /bin/sh -c "$1" </dev/null
}
in_root 'git clone -q -c advice.detachedHead=false /root/ovicore.bundle /root/ovicore'

say "Running $command"
result=0
started=$SECONDS
in_root "cd /root/ovicore && $command" || result=$?

say "Result"
echo "$command in a fresh Debian 12 root: exit code $result after $((SECONDS - started)) seconds"
exit "$result"
