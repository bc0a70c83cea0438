#!/usr/bin/env bash
# A disk too small from the start, and one that fills to the last byte and is emptied again.
set -euo pipefail
# shellcheck source=scripts/trials/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

blocks=("$work"/Alpha-???)
mkdir "$work/small" "$work/large"
mount -t tmpfs -o size=1m tmpfs "$work/small"
mount -t tmpfs -o size=16m tmpfs "$work/large"
start small 127.0.0.1
start large 127.0.0.2

for block in "${blocks[@]:0:20}"; do
    feed small "$block"
    feed large "$block"
done
shows "a disk of 1 MB: strikes are heard" test "$(strikes small | wc -l)" -gt 5
same "and stand in the log" "$(strikes small)" "$(logged small)"

before=$(strikes large | wc -l)
cp "$work/large/StationList.dat" "$work/list" 2>/dev/null || : >"$work/list"
cat /dev/zero >"$work/large/filler" 2>/dev/null || true
shift_clocks 86400 # into a new log: the old one has some room left in its last block
ctl large set txtAge 77 >/dev/null # goes to the settings, which lie on another disk
for block in "${blocks[@]:20:20}"; do feed large "$block"; done
during=$(($(strikes large | wc -l) - before))
shows "a full disk: strikes are heard ($during)" test "$during" -gt 10
shows "no line of the log is torn" test -z "$(logged large | grep -vE '^[0-9]{4}/[^,]*(,[^,]+){4}$')"
same "what was logged before stands" "$(strikes large | head -n "$before")" "$(logged large | head -n "$before")"
written=$(logged large | wc -l)
rm "$work/large/filler"
sleep 1
for block in "${blocks[@]:40:20}"; do feed large "$block"; done
after=$(($(strikes large | wc -l) - before - during))
shows "room again: strikes are heard ($after)" test "$after" -gt 10
same "and each is logged" "$(strikes large | tail -n "$after")" "$(logged large | tail -n +$((written + 1)))"
echo "       lines lost while the disk was full: $((before + during - written)) of $during"
shows "the user is told" grep -q 'Disk full' "$work/large.errors"
stop small
stop large
shows "the saved state is whole" test "$(grep -c '^Station' "$work/large/StationList.dat")" == 100
shows "nothing half written stays" test -z "$(find "$work/small" "$work/large" -name '.*.tmp')"
