#!/usr/bin/env bash
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer, runs
# every test suite with CTest, then the benchmarks on a release build.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh --bench
jobs="$(nproc)"

cmake -S . -B build-test -DCMAKE_BUILD_TYPE=Debug -DZUSETTINGS_SANITIZE=ON -DZUSETTINGS_BENCH=OFF >/dev/null
cmake --build build-test --parallel "$jobs"
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build-test --output-on-failure --parallel "$jobs"

cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DZUSETTINGS_TESTS=OFF >/dev/null
cmake --build build-bench --parallel "$jobs"
for bench in build-bench/bench/bench_*; do
    [ -f "$bench" ] && [ -x "$bench" ] || continue
    echo "== $(basename "$bench")"
    "$bench"
done
