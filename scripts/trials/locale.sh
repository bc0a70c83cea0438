#!/usr/bin/env bash
# Two stations in a locale with decimal commas, and in C: settings, lists and displays are alike to the byte; so are wire
# lines and logs, as far as they do not depend on the moment.
# Needs the locales de_DE.UTF-8 and fr_FR.UTF-8.
set -euo pipefail
# shellcheck source=scripts/trials/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

sound Bravo 30
# run LOCALE: everything that a run writes and sends goes to $work/LOCALE, without what the clock makes different.
run() {
    local name place
    rm -rf "$work"/here* "$work"/there*
    mkdir -p "$work/here" "$work/there" "$work/$1"
    printf 'Station 01; 012,2; 50,6; ; ; 127.0.0.2; There; 1,5; 1; 0;\n' >"$work/here/StationList.dat"
    printf 'Station 01; 9.0; 48.2; ; ; 127.0.0.1; Here; 0; 1; 0;\n' >"$work/there/StationList.dat"
    for name in here there; do
        place=("48,2" "9,0")
        [[ $name == here ]] || place=(50.6 12.2)
        printf '[Setting]\nStationName=%s\nLatitude=%s\nLongitude=%s\nLog=1\n[ClientSocket]\nTag0=1\n[RAMDrive]\nPath=%s/\n' \
            "${name^}" "${place[@]}" "$work/$name.ram" >"$work/$name.ini"
    done
    start here 127.0.0.1 LC_ALL="$1"
    start there 127.0.0.2 LC_ALL="$1"
    wait_for "it listens" noted here 'Listen 4711'
    exec 5<>/dev/tcp/127.0.0.1/4711
    timeout 300 cat <&5 >"$work/wire" &
    wait_for "they are connected" noted here 'sckClient(0).Connected'
    ctl here set txtAlarmLatitude 48,25 >/dev/null
    ctl here set txtAngularSeparation 12.5 >/dev/null
    ctl here set txtLocalCorrectionAngle -1.25 >/dev/null
    sleep 3
    for block in "$work"/Alpha-???; do
        feed here "$block"
        sleep 0.3
        feed there "$work/Bravo-${block##*-}"
        sleep 0.3
    done
    for name in txtLatitude txtLatDeg txtLatMin txtLatSec txtLongSec txtAngleClientServer Text5 txtQ \
        txtCorrectionAngle; do
        echo "$name $(value here "$name")"
    done >"$work/$1/shown"
    sleep 1
    exec 5>&-
    stop here
    stop there
    cp "$work/wire" "$work/here.ini" "$work/there.ini" "$work/$1"
    cp -r "$work/here" "$work/there" "$work/$1"
    strikes here >"$work/$1/printed"
    grep fix "$work/here.printed" >"$work/$1/fixes" || true
    # Texts alone, and those without stamps, stopwatch readings and what else the clock makes; no notes of connections.
    find "$work/$1" -iname '*.bmp' -delete
    rm -r "$work/$1"/*/log
    find "$work/$1" -type f -exec sed -i -E 's#[0-9]{4}([/-])[0-9]{2}[/-][0-9]{2}.[0-9]{2}:[0-9]{2}:[0-9]{2}#STAMP\1#g
        s#,[0-9]{9}(,|$)#,TICK\1#g; s#^4[0-9]{4}\.[0-9]+;[0-9]+#DAY;COUNT#; s#[0-9]{2}:[0-9]{2}:[0-9]{2}#TIME#; s#^[0-9]{1,5}$#N#; s#STAMP/.*HH#&#' {} +
    # The record of pairs on the map holds dates to the microsecond.
    find "$work/$1" -name pMA.dat -exec sed -i -E 's#4[0-9]{4}\.[0-9]+#DAY#g' {} +
}

# forms FILE: its lines with every number as 9: how they are written, without what the moment makes different.
forms() { sed -E 's/e-?[0-9]+//g; s/-?[0-9]+/9/g' "$1" | sort -u; }

run C
shows "strikes were heard and located" test "$(wc -l <"$work/C/printed")" -gt 20 -a "$(wc -l <"$work/C/fixes")" -gt 3
for locale in de_DE.UTF-8 fr_FR.UTF-8; do
    locale -a | grep -qi "^${locale/UTF-8/utf8}$" || { echo "no locale $locale" >&2; exit 77; }
    run "$locale"
    while read -r file; do
        case $file in
        *.ini | */StationList.dat | */MAP_2000.dat | ./shown) compare="cat" ;;
        *) compare="forms" ;;
        esac
        same "$locale: $file ($compare)" "$($compare "$work/C/$file")" "$($compare "$work/$locale/$file")"
    done < <(cd "$work/C" && find . -type f | sort)
    # The same strikes, but for the few in a block that is taken while the map is drawn anew.
    for file in printed wire; do
        differ=$(diff "$work/C/$file" "$work/$locale/$file" | grep -c '^[<>]' || true)
        shows "$locale: all but $differ lines of $file are alike to the byte" test "$differ" -le 4
    done
done
