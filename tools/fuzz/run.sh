#!/bin/sh
# Builds the fuzz targets of the device-text decoders with clang's libFuzzer
# under AddressSanitizer and UndefinedBehaviorSanitizer, and runs each one:
#
#   tools/fuzz/run.sh [inputs per target]      (default 1000000)
#
# Targets: fuzz_nmea (the GPS reader's NMEA decoding) and fuzz_modem (the
# modem console's reading of an answer). They start from the recorded device
# traffic in ../shared/corpus when it is there, keep what they learn in
# build-fuzz/corpus-<target>, and stop at the first finding, leaving the
# input that caused it in build-fuzz. Needs clang (apt-get install clang) and
# the Qt 6 development files; the regular build and tests do not.
set -eu

src=$(cd "$(dirname "$0")/../.." && pwd)
out=${FUZZ_OUT:-$src/build-fuzz}
runs=${1:-1000000}
corpus=$src/../shared/corpus

command -v clang++ >/dev/null || { echo "run.sh: clang++ is missing (apt-get install clang)" >&2; exit 1; }
mkdir -p "$out"
cd "$out"

# shellcheck disable=SC2046 # the flags are words
for target in nmea modem; do
    clang++ -std=c++17 -g -O1 -fPIC -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
        $(pkg-config --cflags Qt6Core) -I"$src/src" -I"$src/tests/support" \
        -o "fuzz_$target" "$src/tools/fuzz/fuzz_$target.cpp" "$src/tests/support/fuzzing.cpp" \
        "$src/src/telematics/nmeadecoder.cpp" "$src/src/telematics/gsmanswer.cpp" \
        $(pkg-config --libs Qt6Core)
    mkdir -p "corpus-$target" "seeds-$target"
done

if [ -d "$corpus/nmea" ] && [ -z "$(ls seeds-nmea)" ]; then
    for capture in "$corpus"/nmea/*.log; do
        split -b 1024 "$capture" "seeds-nmea/$(basename "$capture" .log)-"
    done
fi
if [ -f "$corpus/at/responses.txt" ] && [ -z "$(ls seeds-modem)" ]; then
    split -l 1 "$corpus/at/responses.txt" seeds-modem/response-
fi

for target in nmea modem; do
    echo "== fuzz_$target: $runs inputs"
    "./fuzz_$target" -runs="$runs" -max_len=1100 -print_final_stats=1 "corpus-$target" "seeds-$target"
done
