#!/usr/bin/env bash
# Installs the packages of a folder into a fresh Debian and uses them there: test-in-fresh-debian.sh FOLDER
# Needs root and a package mirror; the fresh system is made in FOLDER/root and removed again.
set -euo pipefail
readonly packages=$1
readonly root=$packages/root
tree=$(dirname "$(readlink -f "$0")")/../tests/fixtures/sysfs/intel-laptop
readonly tree

die() {
    printf 'fresh Debian: %s\n' "$*" >&2
    exit 1
}
((EUID == 0)) || die "needs root"

leave() {
    umount "$root/proc" 2>/dev/null || true
    rm -rf --one-file-system "$root"
}
trap leave EXIT
leave

mirror=$(awk '/^(deb|URIs:) / { for (i = 1; i <= NF; i++) if ($i ~ /^https?:/) { print $i; exit } }' \
    /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null)
debootstrap --variant=minbase bookworm "$root" "${mirror:-http://deb.debian.org/debian}" >"$packages/debootstrap.log" 2>&1 ||
    die "debootstrap failed; see $packages/debootstrap.log"
for file in /etc/apt/apt.conf.d /etc/apt/sources.list /etc/apt/sources.list.d /etc/resolv.conf /etc/ssl/certs; do
    if [[ -e $file ]]; then
        mkdir -p "$root$(dirname "$file")"
        cp -rL "$file" "$root$(dirname "$file")/" 2>/dev/null || true
    fi
done
mount -t proc proc "$root/proc"
cp "$packages"/*.deb "$root/tmp/"
cp -r "$tree" "$root/tmp/machine"

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive "$@"; }
# Only the resident part, as on a system without windows, and then all of it.
inside sh -c 'apt-get update -qq && apt-get install -y -qq --no-install-recommends dbus /tmp/thermopix_*.deb' \
    >"$packages/install.log" 2>&1 || die "the resident package cannot be installed; see $packages/install.log"

inside thermopix --version
inside env THERMOPIX_SYSFS_ROOT=/tmp/machine thermopix --acceptance-selftest 2>/dev/null | tail -n 1 | grep -qx PASSED ||
    die "the self-test does not pass"
inside env THERMOPIX_SYSFS_ROOT=/tmp/machine thermopix --sensors 2>/dev/null | grep -q '^--- CPU  [0-9]' ||
    die "the report shows no processor"
line=$(inside env THERMOPIX_SYSFS_ROOT=/tmp/machine timeout 5 thermopix 2>/dev/null || true)
[[ $line == *"degrees Celsius"* ]] || die "the readout does not appear in the terminal"
# The bus starts the program by its name; it ends with the bus.
bus_call() { printf 'dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus %s' "$1"; }
readonly name=io.github.thermopix.Thermopix
inside env THERMOPIX_SYSFS_ROOT=/tmp/machine DISPLAY=:none dbus-run-session -- sh -c \
    "$(bus_call "org.freedesktop.DBus.StartServiceByName string:$name uint32:0") &&
    $(bus_call "org.freedesktop.DBus.NameHasOwner string:$name")" 2>/dev/null | grep -q 'boolean true' ||
    die "the bus does not start the program"

inside sh -c 'apt-get install -y -qq --no-install-recommends /tmp/thermopix-windows_*.deb' >>"$packages/install.log" 2>&1 ||
    die "the windows' package cannot be installed; see $packages/install.log"
inside test -x /usr/libexec/thermopix/thermopix-windows || die "the window process is not where it belongs"
inside sh -c 'apt-get remove -y -qq thermopix thermopix-windows && ! test -e /usr/bin/thermopix' \
    >>"$packages/install.log" 2>&1 || die "the packages cannot be removed"
printf 'fresh Debian: installed, used and removed\n'
