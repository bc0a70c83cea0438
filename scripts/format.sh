#!/usr/bin/env bash
# Checks that all sources stand as clang-format would write them; scripts/format.sh --fix rewrites them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

action=(--dry-run -Werror)
if [[ ${1:-} == --fix ]]; then action=(-i); fi
find src apps tests bench fuzz \( -name '*.h' -o -name '*.cpp' \) -print0 | xargs -0 clang-format "${action[@]}"
