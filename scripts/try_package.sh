#!/usr/bin/env bash
# Tries the Debian package in a clean Debian 12 of its own: installs it, lets the station hear a storm, upgrades, removes
# and purges it, first without systemd, then in a container that systemd has booted. Each step is told; the first that
# fails ends it with exit code 1. Neither this computer's packages nor its network are touched.
#   scripts/try_package.sh [FILE.deb]     default: what scripts/package.sh builds
# Takes root, and debootstrap and systemd-container, which it does not install; some minutes and 1.5 GB in /tmp.
# VELTRIX_DEBIAN=FOLDER: a clean system made before by "debootstrap --variant=minbase bookworm FOLDER", to be copied.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fail() {
    echo "try_package: FAILED: $1" >&2
    exit 1
}
step() { echo "try_package: $(date +%T) $1"; }

[[ $(id -u) -eq 0 ]] || fail "this takes root"
for tool in debootstrap systemd-nspawn nsenter unshare; do
    command -v "$tool" >/dev/null || fail "there is no $tool; on Debian: apt-get install debootstrap systemd-container"
done

package=${1:-$(scripts/package.sh)}
package=$(realpath "$package")
[[ -r $package ]] || fail "no package $package"

scratch=$(mktemp -d /tmp/veltrix-package-XXXXXX)
root=$scratch/root
log=$scratch/log
container="" # of systemd-nspawn
cleanup() {
    local code=$?
    if [[ $code -ne 0 && -s $log ]]; then tail -n 40 "$log" >&2; fi
    if [[ -n $container ]]; then
        kill -TERM "$container" 2>/dev/null || true
        wait "$container" 2>/dev/null || true
    fi
    rm -rf --one-file-system "$scratch"
}
trap cleanup EXIT
# An interrupt ends this script by way of cleanup.
trap 'exit 130' INT TERM

# wait_for SECONDS COMMAND...: until the command succeeds.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [[ $SECONDS -lt $end ]] || return 1
        sleep 0.5
    done
}

# ---- a clean system, and a second package of a higher version

step "a clean Debian 12 (bookworm, minbase)"
mirror=$(sed -n 's/^URIs: *\(http[^ ]*debian\)$/\1/p; s/^deb  *\(http[^ ]*debian\) .*/\1/p' /etc/apt/sources.list \
    /etc/apt/sources.list.d/debian.sources 2>/dev/null | head -n 1 || true)
if [[ -n ${VELTRIX_DEBIAN:-} ]]; then
    cp -a "$VELTRIX_DEBIAN" "$root"
else
    debootstrap --variant=minbase bookworm "$root" "${mirror:-http://deb.debian.org/debian}" >"$log" 2>&1
fi
cp /etc/resolv.conf "$root/etc/resolv.conf"
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d" # nothing of it starts on this computer
chmod 755 "$root/usr/sbin/policy-rc.d"

mkdir "$scratch/higher" "$root/packages"
cp "$package" "$root/packages/veltrix.deb"
dpkg-deb -R "$package" "$scratch/higher"
version=$(dpkg-deb -f "$package" Version)
sed -i "s/^Version: .*/Version: $version+try1/" "$scratch/higher/DEBIAN/control"
dpkg-deb --root-owner-group -b "$scratch/higher" "$root/packages/higher.deb" >/dev/null

inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
apt_inside() { inside apt-get -qq -y -o Dpkg::Use-Pty=0 "$@" >>"$log" 2>&1; }

# files_left: what of ours is still there.
files_left() {
    find "$root"/{etc,usr,var,run} \( -iname '*veltrix*' -o -name SndInput -o -name Bmp2Png \) \
        ! -path '*/var/cache/apt/*' ! -path '*/var/log/*' ! -path '*/run/systemd/*' -print 2>/dev/null || true
}

# heard: the lines of the strike logs.
heard() { cat "$root"/var/lib/veltrix/Data/*N.csv 2>/dev/null | wc -l; }
hears_more_than() { [[ $(heard) -gt $1 ]]; }

# ---- without systemd, as in a chroot

step "installing $(basename "$package") by apt"
apt_inside update
apt_inside install --no-install-recommends /packages/veltrix.deb || fail "it cannot be installed"
inside id veltrix >/dev/null || fail "there is no user veltrix"
[[ -z $(inside dpkg --verify veltrix) ]] || fail "files differ from the package's"
[[ $(stat -c '%U %a' "$root/usr/bin/veltrix") == "root 755" ]] || fail "wrong rights of /usr/bin/veltrix"
owner=$(inside stat -c '%U' /etc/veltrix /etc/veltrix/veltrix.ini /var/lib/veltrix | sort -u)
[[ $owner == veltrix ]] || fail "the service's folders belong to $owner"
for program in veltrix veltrix-ctl veltrix-map veltrix-replay veltrix-storm SndInput Bmp2Png; do
    inside "$program" --version >/dev/null || fail "$program does not run"
done

# start_plainly: the service's own command line as its user, in a network with nothing but the loopback.
start_plainly() {
    local line
    line=$(sed -n '/^ExecStart=/,/[^\\]$/p' "$root/usr/lib/systemd/system/veltrix.service" | sed 's/^ExecStart=//; s/\\$//' | tr -d '\n')
    install -d -o "$(inside id -u veltrix)" -g "$(inside id -g veltrix)" "$root/run/veltrix"
    # The numbers of processes are the station's own, and all of them end with the first.
    unshare --net --pid --fork --kill-child --mount-proc="$root/proc" chroot "$root" /usr/bin/env -i \
        PATH=/usr/bin:/bin SNDINPUT_SOURCE=storm:demo /bin/sh -c \
        "exec setpriv --reuid veltrix --regid veltrix --clear-groups ${line%\$VELTRIX_OPTIONS}" >>"$scratch/printed" 2>&1 &
    station=$!
}
ctl() { inside setpriv --reuid veltrix --regid veltrix --clear-groups veltrix-ctl --control /run/veltrix/control "$@"; }
stop_plainly() {
    ctl quit >/dev/null || fail "the station does not answer"
    wait "$station" || fail "the station ended with exit code $?"
    rm -r "$root/run/veltrix"
}

step "starting the station by the service's command line"
start_plainly
wait_for 30 test -S "$root/run/veltrix/control" || fail "it does not start: $(cat "$scratch/printed")"
ctl set txtStationName Attic >/dev/null || fail "veltrix-ctl does not reach it"
step "a storm is heard"
wait_for 60 hears_more_than 5 || fail "no strike is heard: $(cat "$scratch/printed" "$root/var/lib/veltrix/SndInput.log")"
stop_plainly

step "upgrading to $version+try1"
before=$(heard)
apt_inside install --no-install-recommends /packages/higher.deb || fail "it cannot be upgraded"
start_plainly
wait_for 30 ctl get txtStationName >/dev/null 2>&1 || fail "the upgraded station does not start"
[[ $(ctl get txtStationName | head -n 1) == "= Attic" ]] || fail "the upgrade has lost the settings"
wait_for 60 hears_more_than "$before" || fail "the upgraded station hears nothing"
stop_plainly

step "removing it: settings and data stay"
apt_inside remove veltrix
grep -q Attic "$root/etc/veltrix/veltrix.ini" || fail "the removal took the settings"
hears_more_than "$before" || fail "the removal took data"
[[ ! -e $root/usr/bin/veltrix ]] || fail "the removal left the program"

step "purging it: nothing stays"
apt_inside purge veltrix
[[ -z $(files_left) ]] || fail "left after the purge: $(files_left)"

# ---- in a container that systemd has booted

step "booting a container with systemd"
apt_inside install --no-install-recommends systemd systemd-sysv dbus
rm "$root/usr/sbin/policy-rc.d"
systemd-nspawn --quiet --directory="$root" --boot \
    --register=no --keep-unit --private-network --kill-signal=SIGRTMIN+3 --console=pipe </dev/null >>"$log" 2>&1 &
container=$!
# booted COMMAND...: in the container.
booted() {
    local leader
    leader=$(pgrep -P "$container" | head -n 1)
    nsenter --target "${leader:?}" --mount --uts --ipc --net --pid --root --wdns=/ /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}
is_up() { booted systemctl is-system-running 2>/dev/null | grep -Eq 'running|degraded'; }
wait_for 60 is_up || fail "systemd does not come up"
apt_booted() { booted apt-get -qq -y -o Dpkg::Use-Pty=0 --no-install-recommends "$@" >>"$log" 2>&1; }
property() { booted systemctl show --property "$1" --value veltrix; }
is_active() { [[ $(property ActiveState) == active ]]; }
# ours: names of our programs that run.
ours() { booted sh -c 'grep -hE "^(veltrix|SndInput)$" /proc/[0-9]*/comm 2>/dev/null' || true; }
journal() { booted journalctl --no-pager -u veltrix | tail -n 20; }
booted_ctl() { booted setpriv --reuid veltrix --regid veltrix --clear-groups veltrix-ctl --control /run/veltrix/control "$@"; }

step "installing starts the service"
apt_booted install /packages/veltrix.deb || fail "it cannot be installed"
is_active || fail "the service does not run: $(journal)"
[[ $(property UnitFileState) == enabled ]] || fail "the service is not enabled"
wait_for 20 booted_ctl set txtStationName Attic >/dev/null 2>&1 || fail "veltrix-ctl does not reach it: $(journal)"
wait_for 20 booted grep -q Attic /etc/veltrix/veltrix.ini || fail "it cannot save its settings"

step "a storm is heard within the service's limits"
booted sed -i 's/^#*SNDINPUT_SOURCE=.*/SNDINPUT_SOURCE=storm:demo/' /etc/default/veltrix
booted systemctl restart veltrix
wait_for 60 hears_more_than 5 || fail "no strike is heard: $(journal)"
[[ $(ours | sort | tr '\n' ' ') == "SndInput veltrix " ]] || fail "there run: $(ours)"
booted_ctl save Picture1 try.bmp >/dev/null || fail "it cannot draw"
[[ $(stat -c %s "$root/var/lib/veltrix/try.bmp") -gt 100000 ]] || fail "it has drawn nothing"

step "after a crash it is started again, with a recorder of its own"
pid=$(property MainPID)
booted sh -c "kill -KILL $pid"
is_another() { [[ $(property MainPID) != "$pid" && $(property ActiveState) == active ]]; }
wait_for 60 is_another || fail "it is not started again"
before=$(heard)
wait_for 60 hears_more_than "$before" || fail "it hears nothing after a crash: $(journal)"

step "a stop ends station and recorder"
booted systemctl stop veltrix
[[ $(property Result) == success ]] || fail "the stop ended as $(property Result): $(journal)"
[[ -z $(ours) ]] || fail "still runs: $(ours)"

step "a wrong option is not tried again"
booted sed -i 's/^VELTRIX_OPTIONS=.*/VELTRIX_OPTIONS=--nonsense/' /etc/default/veltrix
booted systemctl start veltrix || true
sleep 12
[[ $(property ActiveState) == failed && $(property NRestarts) == 0 ]] || fail "it was tried again"
booted journalctl --no-pager -u veltrix -p warning | grep -q -- --nonsense || fail "the journal does not tell why"
booted sed -i 's/^VELTRIX_OPTIONS=.*/VELTRIX_OPTIONS=/' /etc/default/veltrix
booted systemctl start veltrix
is_active || fail "it does not start again"

step "a second station beside it"
booted sh -c 'echo "VELTRIX_OPTIONS=--address 127.0.0.2 --recorder none" >/etc/default/veltrix-second'
booted sed -i 's/^VELTRIX_OPTIONS=.*/VELTRIX_OPTIONS="--address 127.0.0.1"/' /etc/default/veltrix
booted systemctl restart veltrix veltrix@second
wait_for 20 test -d "$root/var/lib/veltrix/second" || fail "it has no folder"
wait_for 20 booted test -S /run/veltrix-second/control || fail "it does not start"

step "the upgrade restarts both and keeps settings and data"
pid=$(property MainPID)
second=$(booted systemctl show --property MainPID --value veltrix@second)
before=$(heard)
apt_booted install /packages/higher.deb || fail "it cannot be upgraded"
is_another || fail "the upgrade has not restarted it"
[[ $(booted systemctl show --property MainPID --value veltrix@second) != "$second" ]] || fail "the second was not restarted"
wait_for 20 booted_ctl get txtStationName >/dev/null 2>&1 || fail "the upgraded station does not answer"
[[ $(booted_ctl get txtStationName | head -n 1) == "= Attic" ]] || fail "the upgrade has lost the settings"
wait_for 60 hears_more_than "$before" || fail "the upgraded station hears nothing"

step "who has disabled it finds it disabled after an upgrade"
booted systemctl disable --now --quiet veltrix
apt_booted install --allow-downgrades /packages/veltrix.deb || fail "it cannot be exchanged"
[[ "$(property ActiveState) $(property UnitFileState)" == "inactive disabled" ]] || fail "it was started all the same"

step "the service's limits, by systemd's own judgement"
booted systemd-analyze verify --man=no veltrix.service veltrix@second.service || fail "a unit is not well-formed"
booted systemd-analyze security --offline=true --no-pager /usr/lib/systemd/system/veltrix.service | tail -n 1
booted systemctl enable --now --quiet veltrix

step "removing it stops both; purging it leaves nothing"
apt_booted remove veltrix
[[ -z $(ours) ]] || fail "still runs: $(ours)"
[[ -d $root/var/lib/veltrix/Data ]] || fail "the removal took data"
apt_booted purge veltrix
[[ -z $(files_left) ]] || fail "left after the purge: $(files_left)"

step "all went well"
