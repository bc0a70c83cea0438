#!/usr/bin/env bash
# Measures all that docs/performance.md says, and writes its tables anew. Takes some minutes; on a computer that does
# nothing else the figures are steadier.
#   scripts/performance.sh            everything
#   scripts/performance.sh PART...    some of: machine loop parts storm commands scipy
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh bench
scripts/build.sh bench veltrix_bench storm_hour detect_recording veltrix-storm veltrix-replay
# Debian's own Python: only that one has Debian's NumPy.
/usr/bin/python3 bench/performance.py build/bench/bin docs/performance.md "$@"
