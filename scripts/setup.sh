#!/usr/bin/env bash
# Installs the Debian packages that are missing. Says nothing and takes a moment when all are there.
#   scripts/setup.sh run    what building and running the programs takes
#   scripts/setup.sh dev    that, and what tests, benchmarks, format check and clang-tidy take
#   scripts/setup.sh fuzz   that, and what fuzzing takes
#   scripts/setup.sh bench  what running takes, and what the figures of docs/performance.md take
#   scripts/setup.sh shots  what running takes, and what screenshots take
#   scripts/setup.sh package  what building takes, and what the Debian package takes
set -euo pipefail

run_packages=(g++ cmake ninja-build pkg-config qt6-base-dev portaudio19-dev libsndfile1-dev libsimpleini-dev
    libgeographiclib-dev libasound2-dev libsamplerate0-dev nlohmann-json3-dev)
dev_packages=(libgtest-dev libbenchmark-dev clang-format clang-tidy-16 shellcheck mandoc desktop-file-utils appstream
    systemd iproute2 python3)
fuzz_packages=(clang-16 libclang-rt-16-dev)
bench_packages=(libbenchmark-dev python3 python3-numpy python3-scipy)
shots_packages=(xvfb scrot pngquant)
package_packages=(dpkg-dev file)

packages=("${run_packages[@]}")
case "${1:-}" in
run) ;;
dev) packages+=("${dev_packages[@]}") ;;
fuzz) packages+=("${dev_packages[@]}" "${fuzz_packages[@]}") ;;
bench) packages+=("${bench_packages[@]}") ;;
shots) packages+=("${shots_packages[@]}") ;;
package) packages+=("${package_packages[@]}") ;;
*)
    echo "usage: scripts/setup.sh run|dev|fuzz|bench|shots|package" >&2
    exit 64
    ;;
esac

if ! { command -v dpkg-query && command -v apt-get; } >/dev/null; then
    echo "setup: not a Debian system, so nothing is installed; needed are the equivalents of: ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null || true)
    grep -qx installed <<<"$status" || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
    # Without a terminal nobody could type a password.
    as_root=(sudo)
    [[ -t 0 ]] || as_root=(sudo -n)
    if ! command -v sudo >/dev/null || { [[ ! -t 0 ]] && ! sudo -n true 2>/dev/null; }; then
        echo "setup: neither root nor sudo here; have installed: apt-get install ${missing[*]}" >&2
        exit 1
    fi
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=120 "$@" </dev/null; }
echo "setup: installing ${missing[*]}"
if ! { apt update && apt install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "setup: apt-get could not install: ${missing[*]}" >&2
    exit 1
fi
