#!/usr/bin/env bash
# A long run of three stations under the sanitizers while things go wrong around them; scripts/soak.sh --help tells more.
set -euo pipefail

usage() {
    cat <<'TEXT'
scripts/soak.sh [SECONDS] [OPTION...]

Runs the three stations of ./run on a synthetic storm, built with the address and undefined-behaviour sanitizers, and
does to them at random what happens in an attic: recorders and stations killed and started again, connections cut,
peers that talk garbage or never read, files damaged, clocks stepped, disks filled, names that nobody resolves, a
computer that sleeps. Afterwards it looks for sanitizer reports, wrong exit codes, memory or descriptors that grow, and
lines missing in the strike logs.

  SECONDS      how long (default: 300); a fifth of it at the end, at most three minutes, without faults
  --seed N     repeats the faults of another run (default: by the time; printed)
  --bin DIR    the programs (default: build/asan/bin, built now)
  --dir DIR    where all files go (default: a new folder under /tmp)
  -h, --help

It needs python3 and a C compiler. It has a network, process numbers and mounts of its own, as root or, where the kernel
allows it, as any user: no other station of this computer is touched. Exit code 0 when all was well, else 1; 64 for a
wrong command line.
TEXT
}

wrong() {
    echo "soak: $1; scripts/soak.sh --help tells more" >&2
    exit 64
}

here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
seconds=300
seed=$(date +%s)
bin=""
demo=""
inside=""
while [[ $# -gt 0 ]]; do
    case $1 in
    -h | --help)
        usage
        exit 0
        ;;
    --seed | --bin | --dir)
        [[ $# -gt 1 ]] || wrong "$1 needs a value"
        case $1 in --seed) seed=$2 ;; --bin) bin=$2 ;; --dir) demo=$2 ;; esac
        shift
        ;;
    --inside) inside=yes ;;
    *) seconds=$1 ;;
    esac
    shift
done
[[ $seconds =~ ^[1-9][0-9]{1,5}$ ]] || wrong "'$seconds' is no number of seconds, 10 or more"
[[ $seed =~ ^[0-9]{1,18}$ ]] || wrong "--seed: '$seed' is no whole number"

# Outside: programs and folder, then the same script in a world of its own.
if [[ -z $inside ]]; then
    if [[ -z $bin ]]; then
        "$here/build.sh" asan veltrix veltrix-ctl SndInput
        bin=$here/../build/asan/bin
    fi
    demo=$(realpath -m -- "${demo:-$(mktemp -d /tmp/veltrix-soak-XXXXXX)}")
    mkdir -p "$demo"
    cc -O2 -shared -fPIC -o "$demo/clock_shift.so" "$here/trials/clock_shift.c" -lm
    own=(--mount --net --pid --fork --kill-child --mount-proc)
    [[ $(id -u) == 0 ]] || own+=(--user --map-root-user)
    echo "soak: $seconds s, seed $seed, files in $demo"
    exec unshare "${own[@]}" "$here/soak.sh" --inside "$seconds" --seed "$seed" --bin "$(realpath "$bin")" --dir "$demo"
fi

# Inside: a loop of addresses, a small disk for each station, the files that ./run makes.
ip link set lo up
names=(Alpha Bravo Charlie)
# shellcheck disable=SC2034
storm=$here/../resources/storms/demo.ini
# shellcheck disable=SC1091
source "$here/demo.sh"
for name in "${names[@]}"; do
    mkdir -p "$demo/$name" "$demo/ram/$name"
    mount -t tmpfs -o size=48m tmpfs "$demo/$name"
    prepare "$name"
    set_ini_value "$demo/$name/veltrix.ini" setting NoiseLog 1
done
# One of them hands over its sound beside the disk, so that strikes are heard while that is full.
set_ini_value "$demo/Bravo/veltrix.ini" RAMDrive Path "$demo/ram/Bravo/"

common=verify_asan_link_order=0:quarantine_size_mb=8:malloc_context_size=16
export ASAN_OPTIONS=$common:log_path=$demo/sanitizer.txt UBSAN_OPTIONS=print_stacktrace=1:log_path=$demo/sanitizer.txt
export LSAN_OPTIONS=suppressions=$here/../cmake/leaks.supp:print_suppressions=0
# Not by exec: the shell takes in what the stations leave behind.
result=0
python3 -B "$here/soak/soak.py" "$seconds" "$seed" "$bin" "$demo" || result=$?
for name in "${names[@]}"; do # the small disks go with this world
    mkdir -p "$demo/kept/$name"
    cp -r "$demo/$name/." "$demo/kept/$name/" 2>/dev/null || true
done
exit "$result"
