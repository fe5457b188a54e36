// libFuzzer entry: the modem console's reading of an answer.
#include "fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzModemAnswer(data, size);
    return 0;
}
