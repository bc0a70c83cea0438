#!/usr/bin/env bash
# Runs clang-tidy over the sources of src and apps, or over the files given, as many at a time as there are cores.
# Version 16 for all, since each version warns of other things.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mkdir -p build/tidy
if ! cmake --preset tidy >build/tidy/configure.log 2>&1; then
    cat build/tidy/configure.log >&2
    exit 1
fi

if [[ $# -gt 0 ]]; then printf '%s\0' "$@"; else find src apps -name '*.cpp' -print0 | sort -z; fi |
    xargs -0 -n1 -P"$(nproc)" clang-tidy-16 -p build/tidy --quiet 2> >(grep -v ' warnings\? generated\.$' >&2)
