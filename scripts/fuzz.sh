#!/usr/bin/env bash
# Builds the fuzz targets with clang's libFuzzer (AddressSanitizer and UBSan on) and runs each
# for SECONDS, starting from its seed inputs in fuzz/corpus/NAME.
#
#   scripts/fuzz.sh [SECONDS] [NAME...]     (default: 30 seconds, every target)
#
# Inputs that reach new code are kept in build-fuzz/corpus/NAME (the committed seeds stay as they
# are); an input that crashes a target or breaks one of its checks is written to
# build-fuzz/crashes/ and the script fails. Replay one with: build-fuzz/fuzz/fuzz_NAME FILE
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${KX_FUZZ_BUILD_DIR:-$here/build-fuzz}
seconds=${1:-30}
[ $# -gt 0 ] && shift
names=("$@")
if [ ${#names[@]} -eq 0 ]; then
    for d in "$here"/fuzz/corpus/*/; do names+=("$(basename "$d")"); done
fi

# Debian 12's clang carries libFuzzer in its runtime package.
"$here/scripts/packages.sh" clang libclang-rt-14-dev
CC=clang CXX=clang++ cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKX_FUZZ=ON -DKX_DEBUG_INFO=lines \
    -DCMAKE_CXX_COMPILER_LAUNCHER=ccache >/dev/null
targets=()
for n in "${names[@]}"; do targets+=(--target "fuzz_$n"); done
cmake --build "$build" -j"$(nproc)" "${targets[@]}"

symbolizer=$(command -v llvm-symbolizer || ls /usr/lib/llvm-*/bin/llvm-symbolizer 2>/dev/null | tail -n 1 || true)
[ -n "$symbolizer" ] && export ASAN_SYMBOLIZER_PATH=$symbolizer UBSAN_SYMBOLIZER_PATH=$symbolizer
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}

mkdir -p "$build/crashes" "$build/logs"
passed=0
failed=0
for n in "${names[@]}"; do
    mkdir -p "$build/corpus/$n"
    log=$build/logs/$n.log
    if "$build/fuzz/fuzz_$n" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$build/crashes/$n-" "$build/corpus/$n" "$here/fuzz/corpus/$n" >"$log" 2>&1; then
        runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
        echo "fuzz: $n: ${runs:-?} inputs in ${seconds} s, no failure"
        passed=$((passed + 1))
    else
        echo "fuzz: $n FAILED; the end of its log ($log):"
        tail -n 40 "$log"
        failed=$((failed + 1))
    fi
done
echo "fuzz: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
