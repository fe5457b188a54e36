#!/usr/bin/env bash
# Builds the suites that run threads (battery monitor, GPS reader, serial
# layer, modem console, Telematics page, front buttons, the simulated unit
# under several threads) with ThreadSanitizer into build-tsan/ and runs them.
#
# Qt itself is not built with the sanitizer: its QMutex and the queued
# signals between threads synchronise in code the sanitizer cannot see, and
# every QThread end would be reported. ignore_noninstrumented_modules drops
# what happens inside Qt; our own code is still checked.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install-deps.sh
suites=(tst_batterymonitor tst_power tst_buttons tst_gpsthread tst_serial tst_gsmconsole tst_telematics tst_simthreads "$@")
cmake -S . -B build-tsan -DCMAKE_BUILD_TYPE=Debug -DZUSETTINGS_TSAN=ON -DZUSETTINGS_BENCH=OFF >/dev/null
cmake --build build-tsan --parallel "$(nproc)" --target "${suites[@]}"
export TSAN_OPTIONS="ignore_noninstrumented_modules=1 halt_on_error=0 exitcode=66"
regex="^($(IFS='|'; echo "${suites[*]}"))\$"
ctest --test-dir build-tsan -R "$regex" --output-on-failure
