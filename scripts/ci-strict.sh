#!/usr/bin/env bash
# Continuous integration: the packages, then three phases, each timed:
#   1. the test command of README.md (scripts/test.sh) with warnings as errors: every test;
#   2. the build without windows (libraries, command line, simulator, their tests and the
#      benchmarks) under AddressSanitizer and UBSan, warnings as errors, and its tests;
#   3. every fuzz target for a short while from its seed inputs.
# Every phase runs even when an earlier one failed, so one run shows every failure. Nothing here
# needs debug information beyond the sanitizers' line numbers, and leaving it out saves a third
# of the compile time.
set -uo pipefail
cd "$(dirname "$0")/.."
here=$PWD
fuzz_seconds=${KX_CI_FUZZ_SECONDS:-25}

failed=()
timings=()
phase() {
    local name=$1 start=$SECONDS status=0
    shift
    echo "ci: === $name"
    "$@" || status=$?
    timings+=("$(printf '%5d s  %s' $((SECONDS - start)) "$name")")
    if [ "$status" -ne 0 ]; then
        echo "ci: === $name FAILED (exit $status)"
        failed+=("$name")
    fi
}

# Every package of the three phases in one go (the fuzz phase needs Debian's clang and libFuzzer).
phase "packages" \
    scripts/packages.sh clang libclang-rt-14-dev
phase "main build and every test" \
    env KX_CMAKE_ARGS="-DKX_WERROR=ON -DKX_DEBUG_INFO=none" scripts/test.sh
phase "no windows, sanitizers" \
    env KX_BUILD_DIR="$here/build-asan" KX_CMAKE_ARGS="-DKX_WITH_UI=OFF -DKX_SANITIZE=ON -DKX_WERROR=ON -DKX_DEBUG_INFO=lines" \
    scripts/test.sh
phase "fuzz targets" \
    scripts/fuzz.sh "$fuzz_seconds"

echo "ci: phase times"
printf 'ci: %s\n' "${timings[@]}"
if [ ${#failed[@]} -gt 0 ]; then
    echo "ci: failed: ${failed[*]}"
    exit 1
fi
echo "ci: every phase passed"
