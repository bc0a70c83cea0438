#!/usr/bin/env bash
# Writes docs/pictures/*.png: the window of a new station, then of one that hears the built-in storm together with another,
# on a screen that nobody sees. Takes about five minutes once all is built. The pictures are reduced to 128 colours, for the
# tree holds small ones only.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

width=1280
height=800
storm_seconds=240

scripts/setup.sh shots
scripts/build.sh release veltrix veltrix-ctl SndInput
bin=$PWD/build/release/bin
pictures=$PWD/docs/pictures
mkdir -p "$pictures"

station=$(mktemp -d)
screen=""
veltrix=""
bravo=""
cleanup() {
    for program in $veltrix $bravo; do kill "$program" 2>/dev/null || true; done
    for folder in "$station" "$station/Bravo" "$station/new"; do
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

# alpha FOLDER ADDRESS: starts a station in its window.
alpha() {
    SNDINPUT_SOURCE=storm:demo,Alpha "$bin/veltrix" --dir "$1" --settings "$1/veltrix.ini" --address "$2" \
        --recorder "$bin/SndInput" --control "$station/control" --print none >/dev/null &
    veltrix=$!
    until [[ -S $station/control ]]; do sleep 0.2; done
}

ctl() { "$bin/veltrix-ctl" --control "$station/control" "$@" >/dev/null; }
shot() {
    sleep 1.5 # for the next frame, and the next look of the status bar
    scrot --overwrite "$station/shot.png"
    pngquant --force --speed 1 --nofs --output "$pictures/$1.png" 128 "$station/shot.png"
    echo "docs/pictures/$1.png"
}

# A new station, as its user first sees it.
mkdir "$station/new"
cp "$station/window.ini" "$station/new"
alpha "$station/new" 127.0.0.3
sleep 20 # till the splash is gone, and some strikes have come
shot new
ctl quit
wait "$veltrix"

SNDINPUT_SOURCE=storm:demo,Bravo "$bin/veltrix" --headless --dir "$station/Bravo" --settings "$station/Bravo/veltrix.ini" \
    --address 127.0.0.2 --recorder "$bin/SndInput" --print none >/dev/null &
bravo=$!
alpha "$station" 127.0.0.1
sleep "$storm_seconds"
ctl set SSTab3 Gain
shot polar
ctl set SSTab1 Remote
shot remote
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
