#!/usr/bin/env bash
# Configures and builds a preset: scripts/build.sh PRESET [TARGET...]. Quiet where no terminal shows the progress.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=${1:?usage: scripts/build.sh PRESET [TARGET...]}
shift

options=()
if command -v ccache >/dev/null; then options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
mkdir -p "build/$preset"
log=build/$preset/configure.log
if ! cmake --preset "$preset" "${options[@]}" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi

build=(cmake --build "build/$preset")
if [[ $# -gt 0 ]]; then build+=(--target "$@"); fi
if [[ ! -t 1 ]]; then build+=(-- --quiet); fi
"${build[@]}"
