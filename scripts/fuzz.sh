#!/usr/bin/env bash
# Builds the fuzz targets and runs each for a while: scripts/fuzz.sh SECONDS [TARGET...]. What it finds stays in
# build/fuzz/found; a finding that was mended belongs into fuzz/corpus. Stops at the first finding.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

seconds=${1:?usage: scripts/fuzz.sh SECONDS [TARGET...]}
shift
scripts/setup.sh fuzz
scripts/build.sh fuzz

targets=("$@")
if [[ ${#targets[@]} -eq 0 ]]; then mapfile -t targets < <(ls fuzz/corpus); fi
for target in "${targets[@]}"; do
    found=build/fuzz/found/$target
    mkdir -p "$found/corpus"
    echo "fuzz: $target for $seconds s"
    if ! "build/fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -artifact_prefix="$found/" \
        "$found/corpus" "fuzz/corpus/$target" >"$found/log" 2>&1; then
        tail -n 40 "$found/log" >&2
        exit 1
    fi
    tail -n 1 "$found/log"
done
