#!/usr/bin/env bash
# Midnights and changes of the hour in several time zones: strikes on both sides, held against what `date` says.
set -euo pipefail
# shellcheck source=scripts/trials/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

blocks=("$work"/Alpha-???)
# Zone, moment (UTC).
moments="
Europe/Berlin 2027-03-28T01:00:00 the hour from two to three is missing
Europe/Berlin 2027-10-31T01:00:00 the hour from two to three comes twice
Australia/Lord_Howe 2027-04-03T15:00:00 half an hour comes twice
Australia/Lord_Howe 2027-10-02T15:30:00 half an hour is missing
Asia/Kathmandu 2027-06-15T18:15:00 midnight, 5:45 ahead
Asia/Beirut 2027-03-27T22:00:00 the day begins at one
Asia/Beirut 2027-10-30T21:00:00 the last hour of the day comes twice
Pacific/Kiritimati 2027-12-31T10:00:00 a new year, 14 hours ahead
UTC 2028-02-29T00:00:00 into the leap day
UTC 2028-03-01T00:00:00 out of the leap day
UTC 2027-03-01T00:00:00 no leap day
UTC 2100-03-01T00:00:00 no leap day in 2100
UTC 2027-01-01T00:00:00 a new year
UTC 2038-01-19T03:14:08 2^31 seconds
UTC 2106-02-07T06:28:16 2^32 seconds
"
# strike WHAT: feeds until one is heard; its stamp and file are those of the clock in the zone.
i=0
strike() {
    local count line stamp wanted day
    count=$(strikes here | wc -l)
    while [[ $(strikes here | wc -l) == "$count" ]]; do feed here "${blocks[$((i++ % ${#blocks[@]}))]}"; done
    line=$(strikes here | tail -n 1)
    stamp=${line%%,*}
    # Within the last three seconds.
    for back in 0 1 2 3; do
        wanted=$(TZ=$zone date -d "@$(($(date +%s) + offset - back))" '+%Y/%m/%d %H:%M:%S')
        [[ $wanted == "$stamp" ]] && break
    done
    day=$(tr -d / <<<"${stamp% *}")
    shows "$1 $stamp" test "$wanted" == "$stamp" -a "$(grep -cxF "$line" "$work/here/Data/${day}N.csv")" == 1
    now=${stamp% *}
}

while read -r zone moment what; do
    [[ -n $zone ]] || continue
    rm -rf "$work/here" "$work/here.printed" "$work/here.ini"
    shift_clocks $(($(date -ud "$moment" +%s) - $(date +%s) - 600))
    start here 127.0.0.1 TZ="$zone"
    offset=$(($(date -ud "$moment" +%s) - $(date +%s) - 5))
    shift_clocks "$offset"
    strike "$zone, $what: before"
    first=$now
    while (($(date +%s) + offset < $(date -ud "$moment" +%s) + 1)); do sleep 0.2; done
    sleep 1.2 # a housekeeping tick
    strike "$zone, $what: behind"
    rolled=$([[ -e $work/here/picture5yesterday.bmp ]] && echo yes || echo no)
    same "the plot of the day was$([[ $first == "$now" ]] && echo " not") laid aside" \
        "$([[ $first == "$now" ]] && echo no || echo yes)" "$rolled"
    same "no failure was reported" "" "$(complaints here)"
    stop here
done <<<"$moments"
