#!/usr/bin/env bash
# Installs the packages of a folder into a fresh Debian and uses them there: test-in-fresh-debian.sh FOLDER
# Needs root and a package mirror; the fresh system is made in FOLDER/root and removed again. What runs in it ends with
# the test.
set -euo pipefail
if [[ ${THERMOPIX_FRESH_DEBIAN-} != unshared ]]; then
    ((EUID == 0)) || { echo "fresh Debian: needs root" >&2 && exit 1; }
    THERMOPIX_FRESH_DEBIAN=unshared exec unshare --mount --pid --fork --kill-child "$0" "$@"
fi

packages=$(readlink -f "$1")
project=$(dirname "$(readlink -f "$0")")/..
readonly packages project root=$packages/root log=$packages/fresh-debian.log
readonly release=bookworm

die() {
    printf 'fresh Debian: %s\n' "$*" >&2
    exit 1
}

leave() {
    umount "$root/proc" 2>/dev/null || true
    rm -rf --one-file-system "$root"
}
trap leave EXIT
leave

# The mirror of the machine that this runs on, and how it is reached.
mirror=$(apt-get indextargets --format "\$(REPO_URI)" 'Created-By: Packages' 'Label: Debian' "Codename: $release" |
    head -n 1)
debootstrap --variant=minbase "$release" "$root" "${mirror:-http://deb.debian.org/debian}" >"$log" 2>&1 </dev/null ||
    die "debootstrap failed; see $log"
apt-config dump | grep -iE '^Acquire::(https?::)?(proxy|cainfo|retries)' >"$root/etc/apt/apt.conf.d/as-outside" || true
for file in /etc/resolv.conf /etc/ssl/certs/ca-certificates.crt; do
    if [[ -e $file ]]; then
        install -D -m 644 "$(readlink -f "$file")" "$root$file"
    fi
done
mount -t proc proc "$root/proc"
install -D -t "$root/srv/build/package" "$packages"/*.deb
cp -r "$project/tests/fixtures/sysfs/intel-laptop" "$root/srv/machine"
cp "$project/tests/packages/installed_desktop.py" "$root/srv/"
chmod -R a+rX "$root/srv"

# as_root COMMAND...: its output goes to the log.
as_root() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        "$@" >>"$log" 2>&1 </dev/null
}
# as_user COMMAND...: someone of the fresh system, without a network, on the modelled machine.
as_user() {
    unshare --net chroot --userspec=someone "$root" env -i PATH=/usr/bin:/bin HOME=/home/someone LANG=C.UTF-8 \
        THERMOPIX_SYSFS_ROOT=/srv/machine timeout 300 "$@" 2>>"$log" </dev/null
}
used_on_a_desktop() {
    as_user dbus-run-session -- python3 /srv/installed_desktop.py "$@"
}
say() { printf 'fresh Debian: %s\n' "$*"; }

as_root useradd --create-home someone
as_root mkdir -m 1777 /tmp/.X11-unix  # as the start of a system makes it
as_root apt-get update -q

# Only the resident part, as on a system without windows.
as_root sh -c 'apt-get install -y --no-install-recommends /srv/build/package/thermopix_*.deb dbus' ||
    die "the resident package cannot be installed; see $log"
say "$(as_user thermopix --version)"
as_user thermopix --acceptance-selftest | tail -n 1 | grep -qx PASSED || die "the self-test does not pass"
as_user thermopix --sensors | grep -q '^--- CPU  57\.0 °C' || die "the report shows no processor"
[[ $(as_user timeout 5 thermopix || true) == *"57 degrees Celsius"* ]] ||
    die "the readout does not appear in the terminal"
say "the self-test passes, the report and the readout show the modelled machine"
as_root apt-get install -y --no-install-recommends python3-gi || die "the test's own tools cannot be installed; see $log"
used_on_a_desktop "New versions come with your system's updates." ||
    die "it does not work on a desktop without windows; see $log"

# The real package service on a system bus of this Debian's own, first without and then with a newer package.
as_root apt-get install -y --no-install-recommends packagekit || die "PackageKit cannot be installed; see $log"
as_root install -d /run/dbus
chroot "$root" dbus-daemon --system --nofork --nopidfile >>"$log" 2>&1 </dev/null &
used_on_a_desktop "You're up to date" || die "the package service is not understood; see $log"
as_root sh -ec "dpkg-deb --raw-extract /srv/build/package/thermopix_*.deb /srv/unpacked
    sed -i 's/^Version: .*/Version: 99.1-1/' /srv/unpacked/DEBIAN/control
    mkdir /srv/newer && dpkg-deb --build /srv/unpacked /srv/newer/thermopix.deb" || die "no newer package; see $log"
{
    dpkg-deb --field "$root/srv/newer/thermopix.deb"
    printf 'Filename: ./thermopix.deb\nSize: %s\n' "$(stat --format %s "$root/srv/newer/thermopix.deb")"
    printf 'SHA256: %s\n' "$(sha256sum "$root/srv/newer/thermopix.deb" | cut -d ' ' -f 1)"
} >"$root/srv/newer/Packages"
echo "deb [trusted=yes] file:/srv/newer ./" >"$root/etc/apt/sources.list.d/newer.list"
as_root apt-get update -q
used_on_a_desktop "Thermopix 99.1-1 is available" || die "the newer package is not told of; see $log"
rm "$root/etc/apt/sources.list.d/newer.list"
as_root apt-get update -q

# All of it, in the words of the README.
command=$(grep -oE 'apt install \./build/package/\*\.deb' "$project/README.md" | head -n 1)
[[ -n $command ]] || die "README.md does not say how the packages are installed"
as_root sh -c "cd /srv && ${command/install/install -y}" || die "'$command' fails; see $log"
as_root apt-get install -y --no-install-recommends xvfb x11-utils ||
    die "the test's own tools cannot be installed; see $log"
used_on_a_desktop --windows "You're up to date" || die "its windows do not work; see $log"

installed=$(chroot "$root" dpkg -L thermopix thermopix-windows)
as_root apt-get purge -y thermopix thermopix-windows || die "the packages cannot be removed; see $log"
while read -r path; do
    if [[ -f $root$path || -L $root$path ]]; then
        die "$path stays behind"
    fi
done <<<"$installed"
say "installed, used and removed"
