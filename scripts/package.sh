#!/usr/bin/env bash
# Builds the Debian package for this computer's architecture into build/package, and names it.
#   scripts/package.sh            version-1
#   scripts/package.sh RELEASE    version-RELEASE, such as 2 for a second package of the same version
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

release=${1:-1}
[[ $release =~ ^[0-9][0-9A-Za-z.+~]*$ ]] || {
    echo "usage: scripts/package.sh [RELEASE]" >&2
    exit 64
}

scripts/setup.sh package
scripts/build.sh package veltrix veltrix-ctl veltrix-map veltrix-replay veltrix-storm SndInput Bmp2Png \
    veltrix_man veltrix_changelogs
cd build/package
# Within the package files have their usual rights, whatever this user's umask is.
umask 022
if ! cpack --config CPackConfig.cmake -D CPACK_DEBIAN_PACKAGE_RELEASE="$release" >cpack.log 2>&1; then
    cat cpack.log >&2
    exit 1
fi
find "$PWD" -maxdepth 1 -name "veltrix_*-${release}_*.deb" -newer CPackConfig.cmake
