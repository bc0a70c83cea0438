#!/usr/bin/env bash
# Writes docs/pictures/*.png: the window of a station that listens to another one, on a screen that nobody sees. First it
# hears some minutes of the built-in storm as fast as it can, then as they come, for the map. Takes about five minutes once
# all is built.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

width=1280
height=800
storm_seconds=600
watch_seconds=65
map_seconds=180

scripts/setup.sh shots
scripts/build.sh release veltrix veltrix-ctl veltrix-storm SndInput
bin=$PWD/build/release/bin
pictures=$PWD/docs/pictures
mkdir -p "$pictures"

station=$(mktemp -d)
screen=""
veltrix=""
bravo=""
cleanup() {
    for program in $veltrix $bravo; do kill "$program" 2>/dev/null || true; done
    for folder in "$station" "$station/Bravo"; do
        (cd "$folder" && timeout 15 "$bin/SndInput" /stop /of=audio.dat >/dev/null 2>&1) || true
    done
    [[ -z $screen ]] || kill "$screen" 2>/dev/null || true
    rm -rf "$station"
}
trap cleanup EXIT

mkdir "$station/Bravo"
printf '[Setting]\nStationName=Alpha\nLatitude=48.2\nLongitude=9.0\nTresholdQuotient=78\nRemoteHost=127.0.0.2\nTOAFilter=1\n[ClientSocket]\nTag0=1\nTag1=\n' \
    >"$station/veltrix.ini"
printf '[Setting]\nStationName=Bravo\nLatitude=50.6\nLongitude=12.2\nRemoteHost=127.0.0.1\n' >"$station/Bravo/veltrix.ini"
printf '[Window]\nLeft=0\nTop=0\nWidth=%s\nHeight=%s\n' "$width" "$height" >"$station/window.ini"

# The server chooses a free display and writes its number when it is ready.
mkfifo "$station/display"
Xvfb -displayfd 3 -screen 0 "${width}x${height}x24" -nolisten tcp 3>"$station/display" >/dev/null 2>&1 &
screen=$!
read -r number <"$station/display"
export DISPLAY=:$number QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$station}

# alpha SOURCE: starts the station, in its window.
alpha() {
    rm -f "$station/control"
    SNDINPUT_SOURCE=$1 "$bin/veltrix" --dir "$station" --settings "$station/veltrix.ini" --address 127.0.0.1 \
        --recorder "$bin/SndInput" --control "$station/control" --print none >/dev/null &
    veltrix=$!
    until [[ -S $station/control ]]; do sleep 0.2; done
}

"$bin/veltrix-storm" demo --station Alpha --seconds "$storm_seconds" --out "$station/storm.wav" 2>/dev/null
SNDINPUT_SOURCE=storm:demo,Bravo "$bin/veltrix" --headless --dir "$station/Bravo" --settings "$station/Bravo/veltrix.ini" \
    --address 127.0.0.2 --recorder "$bin/SndInput" --print none >/dev/null &
bravo=$!
alpha "file:$station/storm.wav;speed=max"

ctl() { "$bin/veltrix-ctl" --control "$station/control" "$@" >/dev/null; }
shot() {
    sleep 1 # for the next frame
    scrot --overwrite "$pictures/$1.png"
    echo "docs/pictures/$1.png"
}

sleep "$watch_seconds"
ctl set SSTab3 Gain
shot polar
ctl set SSTab1 Remote
shot remote
ctl click Picture1 left
ctl click Picture4 left
ctl set SSTab1 Internet
shot history
ctl quit
wait "$veltrix"

alpha storm:demo,Alpha
sleep "$map_seconds"
ctl click Picture1 left
ctl set SSTab1 Sync
shot map
ctl click 'Picture7(1)'
ctl set SSTab1 Gyrel
ctl set SSTab3 Calib
ctl set SSTab4 'Drag && Drop'
ctl set OptionCalibRemote 1
ctl set OptionCalibrateAngle 1
ctl mouse Picture4 down 330 300
ctl mouse Picture4 up 333 297
shot calibration
ctl quit
wait "$veltrix"
veltrix=""
