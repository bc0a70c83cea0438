#!/usr/bin/env bash
# The computer's clock is set back and forth under a running station with a peer.
set -euo pipefail
# shellcheck source=scripts/trials/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

blocks=("$work"/Alpha-???)
printf 'Station 01; 10; 50; ; ; 127.0.0.1; Here; 0; 1; 0;\n' >"$work/list"
mkdir -p "$work/there"
cp "$work/list" "$work/there/StationList.dat"
printf '[Setting]\nStationName=There\nLatitude=51\nLongitude=11\n[ClientSocket]\nTag0=1\n[RAMDrive]\nPath=%s/\n' "$work/there.ram" >"$work/there.ini"
printf '[Setting]\nStationName=Here\nLatitude=50\nLongitude=10\n[RAMDrive]\nPath=%s/\n' "$work/here.ram" >"$work/here.ini"
start here 127.0.0.1
start there 127.0.0.2
wait_for "they are connected" noted there ').Connected'
sleep 1
connected=$(connections here 127.0.0.2)

i=0
for step in 0 3600 -3600 1.4 -1.4 86400 -86400 31622400 -631152000 2051222400 0; do
    shift_clocks "$step"
    sleep 1.2 # a housekeeping tick
    count=$(strikes here | wc -l)
    while [[ $(strikes here | wc -l) == "$count" ]]; do
        feed here "${blocks[$((i++ % ${#blocks[@]}))]}"
    done
    line=$(strikes here | tail -n 1)
    stamp=$(date -d "${line%%,*}" +%s)
    off=$((stamp - $(date +%s) - $(printf %.0f "$step")))
    shows "a step to $step s: the strike has the new time (off by $off s)" test "${off#-}" -le 2
    day=$(tr -d / <<<"${line%% *}")
    shows "and stands in the log of $day" grep -qxF "$line" "$work/here/Data/${day}N.csv"
    same "the plot is that of the day" "$(date -d "${line%% *}" +%F)" "$(sed -n 's/^strPrevDate=//p' "$work/here.ini")"
done
same "each strike is logged once" "$(strikes here | sort)" "$(logged here | sort)"
same "the connection of before stands" "$connected" "$(connections here 127.0.0.2)"
same "no failure was reported" "" "$(complaints here)$(complaints there)"
stop here
stop there
