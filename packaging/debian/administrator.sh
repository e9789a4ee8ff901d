#!/usr/bin/env bash
# administrator.sh <package file> <package>...
# Runs as root in the clean root: installs the package, has an ordinary user work with it
# (foreman.sh), upgrades it over itself, removes it, purges it, and has him look for his lines.
set -euo pipefail
cd "$(dirname "$0")"
readonly deb=$1
shift
export DEBIAN_FRONTEND=noninteractive PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8

say() { printf '   %s\n' "$*"; }

apt_get() {
    apt-get -qq -y -o APT::Install-Recommends=false "$@" >apt.log 2>&1 ||
        { tail -n 20 apt.log >&2; return 1; }
}

foreman() {
    setpriv --reuid foreman --regid foreman --init-groups env -i HOME=/home/foreman \
        PATH="$PATH" LC_ALL="$LC_ALL" \
        xvfb-run -a -s '-screen 0 1280x1024x24' ./foreman.sh /try/scratch /try/disk "$1"
}

# What the upgrade says of itself to whoever runs it.
upgrade_says() { grep -q 'all lines stay where they are' apt.log; }

mount -t proc proc /proc
mount -t tmpfs tmpfs /dev/shm 2>/dev/null || true
apt_get update
apt_get install "$@"
useradd --create-home foreman
mkdir -p scratch
chown -R foreman: disk scratch
chmod 755 .

apt_get install "./$deb"
say "installed: $(dpkg-query -W -f '${Package} ${Version}, ${Installed-Size} KB' ostrel-payroll)"
foreman first
apt_get install --reinstall "./$deb"
upgrade_says || { say "the upgrade says nothing of the lines" >&2; exit 1; }
say "upgraded over itself"
foreman upgraded
apt_get purge ostrel-payroll
left=$(find /usr /etc /var/lib -iname '*ostrel*' ! -path '/var/lib/dpkg/*' ! -path '/var/lib/apt/*')
[[ -z $left ]] || { say "left behind: $left" >&2; exit 1; }
say "removed: nothing of the package is left"
foreman removed
say "the lines are where they were"
