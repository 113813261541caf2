#!/usr/bin/env bash
# Installs the distribution packages the station needs (when missing) and builds it.
# Usage: scripts/setup.sh [build-dir]   (default: build; KX_CMAKE_ARGS adds configure options)
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$here/build}

"$here/scripts/packages.sh"

cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=${KX_BUILD_TYPE:-RelWithDebInfo} \
    -DCMAKE_CXX_COMPILER_LAUNCHER=ccache ${KX_CMAKE_ARGS:-}
cmake --build "$build" -j"$(nproc)"
