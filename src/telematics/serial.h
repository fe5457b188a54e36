// A small blocking serial-port layer over termios, used for the telematics
// board's GSM/GPRS modem and GPS receiver: free functions over a heap record.
//
// A handle goes closed -> open (serial_open) -> configured (serial_setup) ->
// closed (serial_close; the owner then sets its pointer to null). Reads and
// writes need a configured handle. Broken preconditions abort the process by
// assertion in every build.
#ifndef SERIAL_H
#define SERIAL_H

#include <atomic>
#include <termios.h>

typedef enum {
    SERIAL_BAUD_1200 = 0,
    SERIAL_BAUD_1800 = 1,
    SERIAL_BAUD_2400 = 2,
    SERIAL_BAUD_4800 = 3,
    SERIAL_BAUD_9600 = 4,
    SERIAL_BAUD_19200 = 5,
    SERIAL_BAUD_38400 = 6,
    SERIAL_BAUD_57600 = 7,
    SERIAL_BAUD_115200 = 8
} serial_baud_t;

typedef enum { SERIAL_BITS_5 = 0, SERIAL_BITS_6 = 1, SERIAL_BITS_7 = 2, SERIAL_BITS_8 = 3 } serial_bits_t;

typedef enum { SERIAL_PARITY_NONE = 0, SERIAL_PARITY_EVEN = 1, SERIAL_PARITY_ODD = 2 } serial_parity_t;

typedef enum { SERIAL_STOPBIT_1 = 0, SERIAL_STOPBIT_2 = 1 } serial_stopbit_t;

typedef enum {
    SERIAL_OK = 0,
    SERIAL_ERR_IO = 1, // tcsetattr failed, write returned <= 0, or read returned < 0
    SERIAL_ERR_VERIFY = 2, // the attributes read back differ from those applied
    SERIAL_ERR_BAUD = 3,
    SERIAL_ERR_BITS = 4,
    SERIAL_ERR_PARITY = 5,
    SERIAL_ERR_STOPBIT = 6,
    SERIAL_ERR_TIMEOUT = 7 // the line fell silent before the requested count was complete
} serial_err_t;

typedef struct serial {
    int fd; // never negative in a live record
    struct termios saved; // as found at open time, restored on close
    struct termios work; // what serial_setup edits and applies
    bool configured; // set once serial_setup applied and verified a setting
    serial_baud_t baud;
    serial_bits_t bits;
    serial_parity_t parity;
    serial_stopbit_t stopbit;
} serial_t;

// Opens `path` for blocking reads and writes; null when it cannot be opened.
serial_t* serial_open(const char* path);

// Applies a line setting with a 3 s inter-byte read time-out and verifies it
// by reading it back. Asking again for the setting in force touches nothing.
// For parity the value 0x10 is ORed into the control flags, which lies inside
// the character-size field: 7 bits with parity come out as 8 bits. Units in
// the field depend on exactly these flags, so they stay so.
serial_err_t serial_setup(
    serial_t* h, serial_baud_t baud, serial_bits_t bits, serial_parity_t parity, serial_stopbit_t stopbit);

// Discards what was received and not read yet.
void serial_flush(const serial_t* h);

// Writes all `len` bytes, continuing after short writes.
serial_err_t serial_write(const serial_t* h, const void* buf, unsigned int len);

// Reads until `len` bytes are in `buf`. When the line stays silent for the
// inter-byte time-out first, returns SERIAL_ERR_TIMEOUT with the bytes that
// did arrive left in `buf`: callers that want a whole answer of unknown length
// pass a large zeroed buffer and use whatever arrived.
serial_err_t serial_read(const serial_t* h, void* buf, unsigned int len);

// Flushes input, restores the attributes found at open time, closes and frees.
void serial_close(serial_t* h);

// Always the empty string: there is no text form of a setting.
const char* serial_get_setup_str(const serial_t* h);

// The modem port, used on the GUI thread only.
extern serial_t* serial_dev_gsm;
// The GPS receiver port: opened on the GUI thread, then used and closed by the
// GPS reader thread, which sets it back to null when it ends.
extern std::atomic<serial_t*> serial_dev_gps;

#endif // SERIAL_H
