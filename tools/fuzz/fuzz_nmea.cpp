// libFuzzer entry: the GPS reader's NMEA decoding.
#include "fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzNmea(data, size);
    return 0;
}
