#!/usr/bin/env bash
# Starts the demonstration site (simulated panels on 127.0.0.1) without a screen and saves a
# picture of every page of the main window in Turkish, English and Arabic, with the windows of
# the start, into a folder for a person to look at:
#   scripts/screenshots.sh [FOLDER]          (default: build/screenshots)
# The demonstration gets a data folder and panel ports of its own (KX_DEMO_DIR, default
# build/screenshot-demo; KX_DEMO_PORT, default 47201), so a demonstration already open is left
# alone. KX410_SCREENSHOT_DELAY_MS (default 4000) is how long the panels are heard first.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${KX_BUILD_DIR:-$here/build}
out=${1:-$build/screenshots}

if [ -f "$build/build.ninja" ] || [ -f "$build/Makefile" ]; then
    cmake --build "$build" -j2 --target kx410-station kx410ctl kx410-panelsim
else
    "$here/scripts/setup.sh" "$build"
fi

export KX_DEMO_DIR=${KX_DEMO_DIR:-$build/screenshot-demo}
export KX_DEMO_PORT=${KX_DEMO_PORT:-47201}
# Passages come quickly, so the live page has something to show.
export KX_DEMO_RATE=${KX_DEMO_RATE:-2}
export KX410_SCREENSHOT_DELAY_MS=${KX410_SCREENSHOT_DELAY_MS:-4000}
mkdir -p "$out"
rm -f "$out"/*.png

args=(--screenshot "$out")
# Sets up the site the first time, starts the simulator and puts --data-dir into $args.
source "$here/scripts/demo-site.sh"

station=$build/src/app/kx410-station
if command -v xvfb-run >/dev/null 2>&1; then
    xvfb-run -a -s "-screen 0 1600x1000x24" "$station" "${args[@]}"
else
    QT_QPA_PLATFORM=offscreen "$station" "${args[@]}"
fi
echo "screenshots: $(ls "$out"/*.png 2>/dev/null | wc -l) pictures in $out"
