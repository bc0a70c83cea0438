# What the trials of this folder share; each sources it. A trial runs real stations in a world of its own (network,
# process numbers, mounts), prints a line for each thing that it looked at, and ends with exit code 1 when one was wrong.
# The programs: BIN, default build/release/bin. Where a failed trial's files stay: printed.
# shellcheck shell=bash

here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
bin=$(realpath "${BIN:-$here/../../build/release/bin}")
if [[ ! -x $bin/veltrix ]]; then
    echo "${0##*/}: no program $bin/veltrix; build it, or name another folder by BIN" >&2
    exit 64
fi
if [[ -z ${TRIAL_WORLD:-} ]]; then
    own=(--mount --net --pid --fork --kill-child --mount-proc)
    [[ $(id -u) == 0 ]] || own+=(--user --map-root-user)
    exec env TRIAL_WORLD=yes unshare "${own[@]}" "$0" "$@"
fi
ip link set lo up
work=$(mktemp -d "/tmp/veltrix-${0##*/}-XXXXXX")
failed=0
declare -A station_pid=()

# shows WHAT COMMAND...: runs a check and says how it went.
shows() {
    if "${@:2}"; then
        echo "ok     $1"
    else
        echo "WRONG  $1"
        failed=$((failed + 1))
    fi
}

# same WHAT WANTED GOT
same() {
    shows "$1" test "$2" == "$3" || true
    [[ $2 == "$3" ]] || printf '       wanted %q\n       got    %q\n' "$2" "$3"
}

# The clocks of all stations: seconds added to the time of day, and to the time since the computer's start.
shift_clocks() {
    echo "$1 ${2:-0}" >"$work/clock.new"
    mv "$work/clock.new" "$work/clock"
}

# start NAME ADDRESS [VARIABLE=VALUE]...: a station fed by hand, whose block file is beside its folder.
start() {
    local name=$1 address=$2
    mkdir -p "$work/$name" "$work/$name.ram"
    if [[ ! -e $work/$name.ini ]]; then
        printf '[Setting]\nStationName=%s\nLog=1\n[RAMDrive]\nPath=%s/\n' "$name" "$work/$name.ram" >"$work/$name.ini"
    fi
    env LD_PRELOAD="$work/clock_shift.so" CLOCK_SHIFT="$work/clock" "${@:3}" "$bin/veltrix" --headless \
        --print detections --dir "$work/$name" --settings "$work/$name.ini" --address "$address" --recorder none \
        --control "$work/$name.control" >>"$work/$name.printed" 2>>"$work/$name.errors" &
    station_pid[$name]=$!
    wait_for "$name starts" test -S "$work/$name.control"
    sleep 2.5 # blocks of the first seconds are thrown away
}

# wait_for WHAT COMMAND...: until it holds, or half a minute has passed.
wait_for() {
    for _ in {1..300}; do
        "${@:2}" && return 0
        sleep 0.1
    done
    shows "$1" false
}

ctl() { timeout 20 "$bin/veltrix-ctl" --control "$work/$1.control" "${@:2}"; }
# value NAME CONTROL: its text.
value() { ctl "$1" get "$2" | sed -n 's/^= //p'; }

# feed NAME BLOCK: brings a block as a recorder does, and waits until it is taken.
feed() {
    cp "$2" "$work/$1.ram/audio.tmp"
    mv "$work/$1.ram/audio.tmp" "$work/$1.ram/audio.dat"
    wait_for "$1 takes a block" test ! -e "$work/$1.ram/audio.dat"
}

# stop NAME: by a terminate signal; looks at the exit code.
stop() {
    local code=0
    kill -TERM "${station_pid[$1]}"
    wait "${station_pid[$1]}" || code=$?
    same "$1 ends in order" 0 "$code"
}

# strikes NAME: what it printed; logged NAME: what stands in its logs, in the order of the days.
strikes() { grep -E '^[0-9]{4}/.*,[0-9]{9}$' "$work/$1.printed" || true; }
logged() { cat "$work/$1"/Data/*N.csv 2>/dev/null || true; }

# noted NAME TEXT: whether its notes of any weekday say so.
noted() { grep -qsF -- "$2" "$work/$1"/log/*day.log; }
# connections NAME ADDRESS: the connections of the station at ADDRESS to that of NAME, by their ports.
connections() { ss -Htn state established "src $2 and dst $(address_of "$1"):4711" | awk '{ print $3, $4 }' | sort; }
address_of() { tr '\0' '\n' <"/proc/${station_pid[$1]}/cmdline" | sed -n '/^--address$/{n;p}'; }
# what NAME reported as failures, and said to its user.
complaints() { cat "$work/$1"/log/VX* "$work/$1.errors" 2>/dev/null || true; }

# sound STATION SECONDS: blocks of half a second of what a station of the built-in storm hears, as $work/STATION-*.
sound() {
    "$bin/veltrix-storm" demo --station "$1" --from 2024-01-01T01:00:00Z --seconds "$2" --out "$work/$1.wav"
    tail -c +45 "$work/$1.wav" | split -b 44100 -a 3 - "$work/$1-"
}

# The end of each trial.
finish() {
    local code=$?
    for pid in "${station_pid[@]}"; do
        if kill -KILL "$pid" 2>/dev/null; then wait "$pid" 2>/dev/null || true; fi
    done
    if [[ $code != 0 || $failed != 0 ]]; then
        mkdir -p "$work.kept"
        cp -r "$work/." "$work.kept/" 2>/dev/null || true # the small disks go with this world
        echo "${0##*/}: $failed wrong, exit code $code; files in $work.kept"
        exit 1
    fi
    echo "${0##*/}: all well"
    rm -rf "$work" 2>/dev/null || true
}
trap finish EXIT
cc -O2 -shared -fPIC -o "$work/clock_shift.so" "$here/clock_shift.c" -lm
shift_clocks 0
# One strike from the east in half a second of quiet: fed wherever a strike is wanted.
sound Alpha 30
