// What one fuzz input does to the decoders of device text: the NMEA decoder
// of the GPS reader and the modem console's reading of an answer. Shared by
// the libFuzzer targets of tools/fuzz and the bounded random run of the tests.
// The input lies in a buffer of exactly its size, so that a read past its end
// is caught by AddressSanitizer; a broken promise of the decoders aborts.
#ifndef FUZZING_H
#define FUZZING_H

#include <cstddef>
#include <cstdint>

// Feeds the input as a receiver's stream in reads of up to 512 bytes to one
// decoder that lives as long as the process, as the reader thread's does.
void fuzzNmea(const uint8_t* data, size_t size);

// Takes the input as a modem's answer buffer.
void fuzzModemAnswer(const uint8_t* data, size_t size);

#endif // FUZZING_H
