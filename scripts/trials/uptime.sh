#!/usr/bin/env bash
# A computer that has run for 24.8 and 49.7 days: its counter of milliseconds turns from 2^31-1 to -2^31, and from 2^32-1
# to 0, under two connected stations.
set -euo pipefail
# shellcheck source=scripts/trials/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

sound Bravo 30
blocks=("$work"/Alpha-???)
mkdir -p "$work/here" "$work/there"
printf 'Station 01; 12.2; 50.6; ; ; 127.0.0.2; There; 0; 1; 0;\n' >"$work/here/StationList.dat"
printf 'Station 01; 9.0; 48.2; ; ; 127.0.0.1; Here; 0; 1; 0;\n' >"$work/there/StationList.dat"
printf '[Setting]\nStationName=Here\nLatitude=48.2\nLongitude=9\nLog=1\n[ClientSocket]\nTag0=1\n[RAMDrive]\nPath=%s/\n' "$work/here.ram" >"$work/here.ini"
printf '[Setting]\nStationName=There\nLatitude=50.6\nLongitude=12.2\n[ClientSocket]\nTag0=1\n[RAMDrive]\nPath=%s/\n' "$work/there.ram" >"$work/there.ini"
uptime() { cut -d. -f1 /proc/uptime; }

# through WHAT: ten seconds of strikes, and what the stations make of them.
i=0
through() {
    local before fixes end=$((SECONDS + 12))
    before=$(strikes here | wc -l)
    fixes=$(grep -c '^fix' "$work/here.printed" || true)
    while ((SECONDS < end)); do
        feed here "${blocks[$i]}"
        feed there "$work/Bravo-${blocks[$i]##*-}"
        i=$(((i + 1) % ${#blocks[@]}))
        sleep 0.2
    done
    shows "$1: strikes are heard ($(($(strikes here | wc -l) - before)))" test "$(strikes here | wc -l)" -gt $((before + 5))
    shows "and located ($(($(grep -c '^fix' "$work/here.printed") - fixes)))" \
        test "$(grep -c '^fix' "$work/here.printed")" -gt "$fixes"
    shows "each stopwatch reading is below a minute" \
        test -z "$(strikes here | tail -n +$((before + 1)) | awk -F, '$5 > 60000')"
}

for turn in 2147483648 4294967296; do
    offset=$((turn / 1000 - $(uptime) - 20))
    shift_clocks 0 "$offset"
    start here 127.0.0.1
    start there 127.0.0.2
    wait_for "they are connected" noted here 'sckClient(0).Connected'
    sleep 1
    connected=$(connections there 127.0.0.1)
    through "before $turn ms"
    while (($(uptime) + offset <= turn / 1000)); do sleep 0.2; done
    through "behind $turn ms"
    pings=$(value here txtLastPing)
    sleep 11 # two pings, whichever comes in the moment
    same "the connection stands" "$connected" "$(connections there 127.0.0.1)"
    echo "       ping shown before and now: '$pings', '$(value here txtLastPing)'"
    same "no failure was reported" "" "$(complaints here)$(complaints there)"
    stop here
    stop there
    same "each strike is logged" "$(strikes here)" "$(logged here)"
    rm -rf "$work"/here/{Data,log} "$work"/there/{Data,log} "$work"/*.printed
done
