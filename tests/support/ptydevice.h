// A pseudo-terminal that plays a serial device: the code under test opens
// path() like a tty device, the test talks through the master side.
#ifndef PTYDEVICE_H
#define PTYDEVICE_H

#include <QByteArray>
#include <termios.h>

class PtyDevice
{
public:
    PtyDevice();
    ~PtyDevice();
    PtyDevice(const PtyDevice&) = delete;
    PtyDevice& operator=(const PtyDevice&) = delete;

    const char* path() const { return name; }
    // The line setting in force on the device side.
    termios attributes() const;
    void setAttributes(const termios& t);

    // Sends bytes as the device.
    void send(const QByteArray& bytes);
    // What the code under test wrote: everything that arrives until the line
    // has been quiet for `quietMs`.
    QByteArray receive(int quietMs = 200);
    // Closes the device side: the other end then sees a hung-up line.
    void hangUp();

private:
    int master = -1;
    int slave = -1;
    char name[64] = {};
};

#endif // PTYDEVICE_H
