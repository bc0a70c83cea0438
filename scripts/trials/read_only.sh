#!/usr/bin/env bash
# A disk that turns read-only under a running station, as after an error, and one that is so from the start.
set -euo pipefail
# shellcheck source=scripts/trials/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

blocks=("$work"/Alpha-???)
mkdir "$work/disk"
mount -t tmpfs -o size=32m tmpfs "$work/disk"
mkdir "$work/disk/state"
printf '[Setting]\nStationName=Disk\n[RAMDrive]\nPath=%s/\n' "$work/disk.ram" >"$work/disk/state/veltrix.ini"
ln -s disk/state/veltrix.ini "$work/disk.ini" # the settings lie on it, too
start disk 127.0.0.1
for block in "${blocks[@]:0:10}"; do feed disk "$block"; done
before=$(strikes disk | wc -l)
mount -o remount,ro "$work/disk"
for block in "${blocks[@]:10:10}"; do feed disk "$block"; done
during=$(($(strikes disk | wc -l) - before))
shows "read-only: strikes are heard ($during)" test "$during" -gt 3
same "nothing is logged" "$before" "$(logged disk | wc -l)"
ctl disk set txtAge 77 >/dev/null
same "a setting is in force" 77 "$(value disk txtAge)"
shows "and the user is told that it is not saved" grep -q 'cannot write the settings' "$work/disk.errors"
mount -o remount,rw "$work/disk"
for block in "${blocks[@]:20:10}"; do feed disk "$block"; done
after=$(($(strikes disk | wc -l) - before - during))
same "writable again: each is logged" "$(strikes disk | tail -n "$after")" "$(logged disk | tail -n +$((before + 1)))"
ctl disk set txtMinStrength 70 >/dev/null
shows "the setting of before goes to the file with the next" grep -q '^Age=77' "$work/disk/state/veltrix.ini"
stop disk

mount -o remount,ro "$work/disk"
start disk 127.0.0.1
for block in "${blocks[@]:30:10}"; do feed disk "$block"; done
shows "read-only at the start: the user is told" grep -q 'nothing can be written' "$work/disk.errors"
shows "strikes are heard" test "$(strikes disk | wc -l)" -gt $((before + during + after))
stop disk
