#include "ptydevice.h"

#include <QtGlobal>

#include <poll.h>
#include <pty.h>
#include <unistd.h>

PtyDevice::PtyDevice()
{
    if (openpty(&master, &slave, name, nullptr, nullptr) != 0)
        qFatal("openpty failed");
}

PtyDevice::~PtyDevice()
{
    hangUp();
    close(slave);
}

termios PtyDevice::attributes() const
{
    termios t {};
    tcgetattr(slave, &t);
    return t;
}

void PtyDevice::setAttributes(const termios& t)
{
    tcsetattr(slave, TCSANOW, &t);
}

void PtyDevice::send(const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = write(master, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (n <= 0)
            qFatal("writing to the pseudo-terminal failed");
        done += n;
    }
}

QByteArray PtyDevice::receive(int quietMs)
{
    QByteArray got;
    pollfd p { master, POLLIN, 0 };
    while (poll(&p, 1, quietMs) > 0 && (p.revents & POLLIN)) {
        char chunk[4096];
        const ssize_t n = read(master, chunk, sizeof chunk);
        if (n <= 0)
            break;
        got.append(chunk, n);
    }
    return got;
}

void PtyDevice::hangUp()
{
    if (master >= 0)
        close(master);
    master = -1;
}
