#include "telematics/serial.h"

// The preconditions hold in release builds too.
#undef NDEBUG
#include <cassert>

#include <fcntl.h>
#include <unistd.h>

serial_t* serial_dev_gsm = nullptr;
std::atomic<serial_t*> serial_dev_gps { nullptr };

namespace
{

const speed_t speeds[] = { B1200, B1800, B2400, B4800, B9600, B19200, B38400, B57600, B115200 };
const tcflag_t sizes[] = { CS5, CS6, CS7, CS8 };

// The input flag INPCK's value, ORed into the control flags together with
// PARENB. It falls inside CSIZE, so it widens 5/6/7-bit characters with
// parity by one size step; units rely on the resulting line setting.
const tcflag_t parityMark = 0x10;

} // namespace

serial_t* serial_open(const char* path)
{
    serial_t* h = new serial_t();
    h->fd = open(path, O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (h->fd < 0) {
        delete h;
        return nullptr;
    }
    fcntl(h->fd, F_SETFL, 0);
    tcgetattr(h->fd, &h->saved);
    tcgetattr(h->fd, &h->work);
    return h;
}

serial_err_t serial_setup(
    serial_t* h, serial_baud_t baud, serial_bits_t bits, serial_parity_t parity, serial_stopbit_t stopbit)
{
    assert(h && h->fd > -1);

    if (static_cast<unsigned>(baud) > SERIAL_BAUD_115200)
        return SERIAL_ERR_BAUD;
    if (static_cast<unsigned>(bits) > SERIAL_BITS_8)
        return SERIAL_ERR_BITS;
    tcflag_t parityFlags;
    switch (parity) {
    case SERIAL_PARITY_NONE:
        parityFlags = 0;
        break;
    case SERIAL_PARITY_EVEN:
        parityFlags = PARENB | parityMark;
        break;
    case SERIAL_PARITY_ODD:
        parityFlags = PARENB | PARODD | parityMark;
        break;
    default:
        return SERIAL_ERR_PARITY;
    }
    tcflag_t stopFlags;
    switch (stopbit) {
    case SERIAL_STOPBIT_1:
        stopFlags = 0;
        break;
    case SERIAL_STOPBIT_2:
        stopFlags = CSTOPB;
        break;
    default:
        return SERIAL_ERR_STOPBIT;
    }

    if (h->configured && h->baud == baud && h->bits == bits && h->parity == parity && h->stopbit == stopbit)
        return SERIAL_OK;

    termios& t = h->work;
    cfmakeraw(&t);
    t.c_iflag &= ~(IXON | IXOFF | IXANY);
    t.c_iflag &= ~IGNPAR;
    t.c_cflag &= ~(CRTSCTS | CSIZE);
    t.c_lflag &= ~(ECHOK | ECHOCTL | ECHOKE);
    t.c_oflag &= ~(OPOST | ONLCR);
    cfsetispeed(&t, speeds[baud]);
    cfsetospeed(&t, speeds[baud]);
    // PARODD and CSTOPB of an earlier setting are not cleared here.
    t.c_cflag |= CREAD | CLOCAL | sizes[bits] | parityFlags | stopFlags;
    t.c_cc[VTIME] = 30;
    t.c_cc[VMIN] = 0;

    tcflush(h->fd, TCIFLUSH);
    if (tcsetattr(h->fd, TCSANOW, &t) != 0)
        return SERIAL_ERR_IO;
    termios applied {};
    tcgetattr(h->fd, &applied);
    if (applied.c_iflag != t.c_iflag || applied.c_oflag != t.c_oflag || applied.c_cflag != t.c_cflag
        || applied.c_lflag != t.c_lflag)
        return SERIAL_ERR_VERIFY;

    h->configured = true;
    h->baud = baud;
    h->bits = bits;
    h->parity = parity;
    h->stopbit = stopbit;
    return SERIAL_OK;
}

void serial_flush(const serial_t* h)
{
    assert(h && h->fd > -1);
    tcflush(h->fd, TCIFLUSH);
}

serial_err_t serial_write(const serial_t* h, const void* buf, unsigned int len)
{
    assert(h && h->fd > -1 && h->configured);
    const char* p = static_cast<const char*>(buf);
    while (len > 0) {
        const ssize_t n = write(h->fd, p, len);
        if (n <= 0)
            return SERIAL_ERR_IO;
        p += n;
        len -= static_cast<unsigned int>(n);
    }
    return SERIAL_OK;
}

serial_err_t serial_read(const serial_t* h, void* buf, unsigned int len)
{
    assert(h && h->fd > -1 && h->configured);
    char* p = static_cast<char*>(buf);
    while (len > 0) {
        const ssize_t n = read(h->fd, p, len);
        if (n < 0)
            return SERIAL_ERR_IO;
        if (n == 0)
            return SERIAL_ERR_TIMEOUT;
        p += n;
        len -= static_cast<unsigned int>(n);
    }
    return SERIAL_OK;
}

void serial_close(serial_t* h)
{
    assert(h && h->fd > -1);
    tcflush(h->fd, TCIFLUSH);
    tcsetattr(h->fd, TCSANOW, &h->saved);
    close(h->fd);
    delete h;
}

const char* serial_get_setup_str(const serial_t*)
{
    static char text[11];
    text[0] = 0;
    return text;
}
