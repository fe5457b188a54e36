#!/usr/bin/env bash
# Builds Zusettings and starts it on the simulated unit. Arguments are passed
# on (for example: ./run.sh --systemreport report.txt).
#   ZUAUX_SIM_PROFILE  unit profile (full, headless, unsupported, faulty, quirky or an INI path); default full
#   ZUAUX_SIM_STATE    state file of the simulated unit
#   ZUAUX_SIM_TRACE    file that receives one line per library call
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZUSETTINGS_TESTS=OFF >/dev/null
cmake --build build --parallel "$(nproc)" --target zusettings zuaux-sim

export ZUAUX_SIM_PROFILE="${ZUAUX_SIM_PROFILE:-full}"
if [ -z "${ZUSETTINGS_INPUT_DEVICE:-}" ]; then
    # The Buttons page reads key events from an input device; give it a FIFO of
    # our own so that the window opens cleanly on a desktop.
    fifo="${XDG_RUNTIME_DIR:-/tmp}/zusettings-buttons-$$"
    mkfifo "$fifo"
    trap 'rm -f "$fifo"' EXIT
    export ZUSETTINGS_INPUT_DEVICE="$fifo"
    echo "run.sh: press a front button: ZUSETTINGS_INPUT_DEVICE=$fifo build/tools/zuaux-sim press <1..10>" >&2
fi
status=0
build/src/zusettings "$@" || status=$?
if [ "$status" -ne 0 ] && [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
    echo "run.sh: the window needs a desktop session (DISPLAY or WAYLAND_DISPLAY); the" \
        "--systemreport and --factorydefault modes and build/tools/gallery work without one." >&2
fi
exit "$status"
