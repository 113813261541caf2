#!/usr/bin/env bash
# Sets up, builds and starts the station on its embedded database (SQLite) with simulated panels
# on loopback. Extra arguments go to the station (for example --data-dir DIR).
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${KX_BUILD_DIR:-$here/build}
"$here/scripts/setup.sh" "$build"

args=("$@")
if [ -x "$build/sim/kx410-panelsim" ] && [ -f "$here/scripts/demo-site.sh" ]; then
    # Simulated panels on loopback and a demo roster that points at them.
    source "$here/scripts/demo-site.sh"
fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    exec xvfb-run -a "$build/src/app/kx410-station" "${args[@]}"
fi
exec "$build/src/app/kx410-station" "${args[@]}"
