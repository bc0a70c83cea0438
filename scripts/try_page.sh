#!/usr/bin/env bash
# Pictures of the web page of a station that hears the built-in storm together with two others, made by the real scripts.
#   scripts/try_page.sh                     writes docs/pictures/page.png
#   scripts/try_page.sh FOLDER [SECONDS]    writes FOLDER/page-WIDTHxHEIGHT.png, in three sizes of a browser's window
# The stations listen for SECONDS (default: 120). Takes chromium, which it does not install.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

pictures=${1:-}
seconds=${2:-120}
browser=$(command -v chromium || command -v chromium-browser || command -v google-chrome) || {
    echo "try_page: there is no chromium; on Debian: apt-get install chromium" >&2
    exit 1
}
[[ $seconds =~ ^[1-9][0-9]{0,4}$ ]] || {
    echo "usage: scripts/try_page.sh [FOLDER [SECONDS]]" >&2
    exit 64
}

scripts/setup.sh shots
scripts/build.sh release veltrix veltrix-ctl veltrix-storm SndInput Bmp2Png
bin=$PWD/build/release/bin
scratch=$(mktemp -d)
demo=""
cleanup() {
    if [[ -n $demo ]]; then
        kill -INT "$demo" 2>/dev/null || true
        wait "$demo" || true
    fi
    rm -rf "$scratch"
}
trap cleanup EXIT

station=$scratch/Alpha
mkdir "$station"
cp packaging/examples/publish.bat "$station"
ln -s "$bin/Bmp2Png" "$station/Bmp2Png.exe"
echo 'STATION=Alpha' >"$station/publish.conf"
# In a group of its own, a job in the background would not hear the interrupt signal.
set -m
./run "$scratch" --headless --stations 3 --seconds "$((seconds + 60))" >"$scratch/run.txt" &
demo=$!
set +m
ctl() { "$bin/veltrix-ctl" --control "$station/control" "$@" >/dev/null; }
until [[ -S $station/control ]]; do
    kill -0 "$demo"
    sleep 0.2
done
sleep "$seconds"
ctl click cmdTestFtp
for _ in {1..300}; do
    [[ -e $station/web/index.html ]] && break
    sleep 0.1
done
[[ -e $station/web/index.html ]] || {
    echo "try_page: no page came; publish.log: $(cat "$station/publish.log" 2>&1)" >&2
    exit 1
}

as_root=()
if [[ $(id -u) -eq 0 ]]; then as_root=(--no-sandbox); fi
# shot WIDTH HEIGHT FILE
shot() {
    "$browser" --headless "${as_root[@]}" --disable-gpu --hide-scrollbars --user-data-dir="$scratch/browser" \
        --window-size="$1,$2" --virtual-time-budget=2000 --screenshot="$3" "file://$station/web/index.html" >/dev/null 2>&1
    echo "$3"
}

if [[ -z $pictures ]]; then
    shot 1280 800 "$scratch/page.png"
    pngquant --force --speed 1 --nofs --output docs/pictures/page.png 128 "$scratch/page.png" # the tree holds small pictures only
else
    mkdir -p "$pictures"
    pictures=$(realpath "$pictures")
    for size in 360x740 1024x600 1920x1080; do shot "${size%x*}" "${size#*x}" "$pictures/page-$size.png"; done
fi
