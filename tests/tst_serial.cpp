// The serial layer on real pseudo-terminals: line settings as applied and as
// the device keeps them, the 3 s inter-byte time-out, complete writes, and
// the assertions that guard every call.
#include "ptydevice.h"
#include "telematics/serial.h"

#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <memory>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct Setting {
    int baud, bits, parity, stopbit;
};

serial_err_t applySetting(serial_t* h, const Setting& s)
{
    return serial_setup(h, static_cast<serial_baud_t>(s.baud), static_cast<serial_bits_t>(s.bits),
        static_cast<serial_parity_t>(s.parity), static_cast<serial_stopbit_t>(s.stopbit));
}

// The control flags that a setting decides, without the speed.
tcflag_t lineFlags(const termios& t)
{
    return t.c_cflag & (CSIZE | PARENB | PARODD | CSTOPB | CREAD | CLOCAL | CRTSCTS);
}

// Closes the port at the end of a test, also when a comparison failed.
using Port = std::unique_ptr<serial_t, void (*)(serial_t*)>;
Port openPort(const char* path)
{
    return Port(serial_open(path), serial_close);
}

// Runs `call` in a child process and returns what it wrote to stderr when it
// died of SIGABRT, or "survived".
QByteArray abortMessage(const std::function<void()>& call)
{
    int err[2];
    if (pipe(err) != 0)
        return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        dup2(err[1], STDERR_FILENO);
        call();
        _exit(0);
    }
    close(err[1]);
    QByteArray text;
    char chunk[512];
    ssize_t n;
    while ((n = read(err[0], chunk, sizeof chunk)) > 0)
        text.append(chunk, n);
    close(err[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT ? text : QByteArray("survived");
}

} // namespace

using Call = std::function<void(serial_t*)>;
Q_DECLARE_METATYPE(Setting)
Q_DECLARE_METATYPE(Call)

class tst_serial : public QObject
{
    Q_OBJECT

private slots:
    void setting_data()
    {
        QTest::addColumn<Setting>("setting");
        QTest::addColumn<int>("result");
        QTest::addColumn<tcflag_t>("flags");
        QTest::addColumn<speed_t>("speed");

        const tcflag_t base = CREAD | CLOCAL;
        QTest::newRow("modem 57600 8N1")
            << Setting { 7, 3, 0, 0 } << int(SERIAL_OK) << (base | CS8) << speed_t(B57600);
        QTest::newRow("1200 8N2") << Setting { 0, 3, 0, 1 } << int(SERIAL_OK) << (base | CS8 | CSTOPB)
                                  << speed_t(B1200);
        QTest::newRow("115200 7N1") << Setting { 8, 2, 0, 0 } << int(SERIAL_ERR_VERIFY) << (base | CS7)
                                    << speed_t(B115200);
        // Parity widens the character: 7E1 is applied as 8 bits with parity.
        // A pseudo-terminal drops PARENB, which the read-back catches.
        QTest::newRow("7E1 as 8 bits")
            << Setting { 4, 2, 1, 0 } << int(SERIAL_ERR_VERIFY) << (base | CS8 | PARENB) << speed_t(B9600);
        QTest::newRow("5O2 as 6 bits") << Setting { 3, 0, 2, 1 } << int(SERIAL_ERR_VERIFY)
                                       << (base | CS6 | PARENB | PARODD | CSTOPB) << speed_t(B4800);
        // Checked in the order baud, bits, parity, stop bits; nothing applied.
        QTest::newRow("baud 9") << Setting { 9, 4, 3, 2 } << int(SERIAL_ERR_BAUD) << tcflag_t(0)
                                << speed_t(0);
        QTest::newRow("bits 4") << Setting { 8, 4, 3, 2 } << int(SERIAL_ERR_BITS) << tcflag_t(0)
                                << speed_t(0);
        QTest::newRow("parity 3") << Setting { 8, 3, 3, 2 } << int(SERIAL_ERR_PARITY) << tcflag_t(0)
                                  << speed_t(0);
        QTest::newRow("parity -1") << Setting { 8, 3, -1, 0 } << int(SERIAL_ERR_PARITY) << tcflag_t(0)
                                   << speed_t(0);
        QTest::newRow("stop bits 2") << Setting { 8, 3, 0, 2 } << int(SERIAL_ERR_STOPBIT) << tcflag_t(0)
                                     << speed_t(0);
    }

    void setting()
    {
        QFETCH(Setting, setting);
        QFETCH(int, result);
        QFETCH(tcflag_t, flags);
        QFETCH(speed_t, speed);

        PtyDevice device;
        const termios before = device.attributes();
        Port port = openPort(device.path());
        serial_t* h = port.get();
        // Reads and writes block from now on.
        QCOMPARE(fcntl(h->fd, F_GETFL) & O_NONBLOCK, 0);
        QVERIFY(!h->configured);
        QCOMPARE(int(applySetting(h, setting)), result);
        QCOMPARE(h->configured, result == SERIAL_OK);
        const termios now = device.attributes();
        if (speed == 0) {
            QCOMPARE(lineFlags(h->work), lineFlags(before));
            QCOMPARE(now.c_cflag, before.c_cflag);
        } else {
            QCOMPARE(lineFlags(h->work), flags);
            QCOMPARE(cfgetispeed(&h->work), speed);
            QCOMPARE(cfgetospeed(&now), speed);
            QCOMPARE(int(h->work.c_cc[VTIME]), 30);
            QCOMPARE(int(h->work.c_cc[VMIN]), 0);
            QCOMPARE(h->work.c_lflag & (ICANON | ECHO | ECHOK | ECHOCTL | ECHOKE | ISIG), tcflag_t(0));
            QCOMPARE(h->work.c_iflag & (IXON | IXOFF | IXANY | IGNPAR | ICRNL), tcflag_t(0));
            QCOMPARE(h->work.c_oflag & (OPOST | ONLCR), tcflag_t(0));
        }
        port.reset();
        // Closing restores what the port had before.
        const termios after = device.attributes();
        QCOMPARE(after.c_cflag, before.c_cflag);
        QCOMPARE(after.c_lflag, before.c_lflag);
        QCOMPARE(after.c_iflag, before.c_iflag);
        QCOMPARE(after.c_oflag, before.c_oflag);
    }

    // Asked again for the setting in force, the port is left as it is; another
    // setting is applied over the earlier one, whose PARODD and second stop
    // bit stay (a pseudo-terminal keeps them, but drops PARENB).
    void setupAgain()
    {
        PtyDevice device;
        const Port port = openPort(device.path());
        serial_t* h = port.get();
        QCOMPARE(applySetting(h, { 4, 3, 2, 1 }), SERIAL_ERR_VERIFY);
        QCOMPARE(applySetting(h, { 7, 3, 0, 0 }), SERIAL_OK);
        QCOMPARE(lineFlags(device.attributes()), tcflag_t(CS8 | CREAD | CLOCAL | PARODD | CSTOPB));
        termios other = device.attributes();
        cfsetospeed(&other, B300);
        other.c_cc[VTIME] = 5;
        device.setAttributes(other);
        QCOMPARE(applySetting(h, { 7, 3, 0, 0 }), SERIAL_OK);
        termios now = device.attributes();
        QCOMPARE(cfgetospeed(&now), speed_t(B300));
        QCOMPARE(applySetting(h, { 8, 3, 0, 0 }), SERIAL_OK);
        now = device.attributes();
        QCOMPARE(cfgetospeed(&now), speed_t(B115200));
        QCOMPARE(int(now.c_cc[VTIME]), 30);
    }

    void read_data()
    {
        QTest::addColumn<QList<QByteArray>>("pieces"); // sent one second apart
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("result");
        QTest::addColumn<QByteArray>("received");
        QTest::addColumn<int>("minMs");

        const QByteArray twenty("$GPGGA,1,2,3,4,5,6\r\n");
        QTest::newRow("silent device")
            << QList<QByteArray>() << 512 << int(SERIAL_ERR_TIMEOUT) << QByteArray() << 2900;
        QTest::newRow("20 bytes, then silence")
            << QList<QByteArray> { twenty } << 512 << int(SERIAL_ERR_TIMEOUT) << twenty << 2900;
        QTest::newRow("pauses below the time-out")
            << QList<QByteArray> { "AT\r", QByteArray("\0OK", 3), "\r\n" } << 8 << int(SERIAL_OK)
            << QByteArray("AT\r\0OK\r\n", 8) << 1900;
        QTest::newRow("more than asked")
            << QList<QByteArray> { twenty } << 6 << int(SERIAL_OK) << QByteArray("$GPGGA") << 0;
        QTest::newRow("nothing asked") << QList<QByteArray>() << 0 << int(SERIAL_OK) << QByteArray() << 0;
    }

    void read()
    {
        QFETCH(QList<QByteArray>, pieces);
        QFETCH(int, length);
        QFETCH(int, result);
        QFETCH(QByteArray, received);
        QFETCH(int, minMs);

        PtyDevice device;
        const Port port = openPort(device.path());
        serial_t* h = port.get();
        QCOMPARE(applySetting(h, { 4, 3, 0, 0 }), SERIAL_OK);
        QScopedPointer<QThread> sender(QThread::create([&] {
            for (qsizetype i = 0; i < pieces.size(); ++i) {
                if (i)
                    QThread::msleep(1000);
                device.send(pieces[i]);
            }
        }));
        sender->start();
        QByteArray buffer(513, '\0');
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(int(serial_read(h, buffer.data(), static_cast<unsigned>(length))), result);
        const qint64 ms = clock.elapsed();
        sender->wait();
        QVERIFY2(ms >= minMs && ms < minMs + 1500, QByteArray::number(ms));
        QCOMPARE(buffer.left(received.size()), received);
        // Nothing is written past what arrived.
        QCOMPARE(buffer.mid(received.size()), QByteArray(513 - received.size(), '\0'));
    }

    void write()
    {
        PtyDevice device;
        const Port port = openPort(device.path());
        serial_t* h = port.get();
        QCOMPARE(applySetting(h, { 7, 3, 0, 0 }), SERIAL_OK);
        const QByteArray command("AT+CREG?\r\n", 11);
        QCOMPARE(serial_write(h, command.constData(), 11), SERIAL_OK);
        QCOMPARE(serial_write(h, "ignored", 0), SERIAL_OK);
        QCOMPARE(device.receive(), command);

        // Far more than the line buffers: written in several parts.
        QByteArray big(300000, '\0');
        for (int i = 0; i < big.size(); ++i)
            big[i] = char(i * 7);
        QByteArray got;
        QScopedPointer<QThread> reader(QThread::create([&] { got = device.receive(1000); }));
        reader->start();
        QCOMPARE(serial_write(h, big.constData(), unsigned(big.size())), SERIAL_OK);
        reader->wait();
        QCOMPARE(got.size(), big.size());
        QVERIFY(got == big);

        device.hangUp();
        QCOMPARE(serial_write(h, "AT\r\n", 4), SERIAL_ERR_IO);
        // A vanished device reads as a silent one, at once.
        char buffer[16] = {};
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(serial_read(h, buffer, sizeof buffer), SERIAL_ERR_TIMEOUT);
        QVERIFY(clock.elapsed() < 1000);
    }

    void preconditions_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<bool>("withHandle");
        QTest::addColumn<QByteArray>("message");

        const QByteArray open("h && h->fd > -1' failed");
        const QByteArray configured("h && h->fd > -1 && h->configured' failed");
        QTest::newRow("setup without handle")
            << Call([](serial_t* h) {
                   applySetting(h, { 4, 3, 0, 0 });
               })
            << false
            << "serial_err_t serial_setup(serial_t*, serial_baud_t, serial_bits_t, serial_parity_t, "
               "serial_stopbit_t): Assertion `"
                + open;
        QTest::newRow("flush without handle")
            << Call(serial_flush) << false << "void serial_flush(const serial_t*): Assertion `" + open;
        QTest::newRow("close without handle")
            << Call(serial_close) << false << "void serial_close(serial_t*): Assertion `" + open;
        QTest::newRow("write unconfigured")
            << Call([](serial_t* h) { serial_write(h, "AT", 2); }) << true
            << "serial_err_t serial_write(const serial_t*, const void*, unsigned int): Assertion `"
                + configured;
        QTest::newRow("read unconfigured")
            << Call([](serial_t* h) {
                   char buffer[4];
                   serial_read(h, buffer, 4);
               })
            << true
            << "serial_err_t serial_read(const serial_t*, void*, unsigned int): Assertion `" + configured;
    }

    void preconditions()
    {
        QFETCH(Call, call);
        QFETCH(bool, withHandle);
        QFETCH(QByteArray, message);

        PtyDevice device;
        const Port port = openPort(withHandle ? device.path() : "/dev/ttyUSB9-none");
        serial_t* h = port.get();
        QCOMPARE(!h, !withHandle);
        const QByteArray text = abortMessage([&] { call(h); });
        QVERIFY2(text.contains(message), text.constData());
    }
};

QTEST_GUILESS_MAIN(tst_serial)
#include "tst_serial.moc"
