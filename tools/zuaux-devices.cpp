// Plays the telematics board's GPS receiver and GSM modem on two
// pseudo-terminals, so that the Telematics page can be tried on any PC:
//
//   zuaux-devices [--pin <pin>] [--fix <seconds with fix>,<seconds without>]
//
// The receiver sends $GPRMC, $GPGGA and $PFST,FOM once a second: the current
// UTC time, a position that moves at a dozen knots on a slowly turning
// course, and a fix that is there for a while (default 40 s) and then lost
// for a while (default 10 s). The modem answers AT commands with echo:
// +CREG, +CPIN (the SIM wants --pin, default 1234; three wrong ones block it),
// +CMGF, +CMGS with its "> " prompt (a sent SMS is printed here), +CSQ,
// +COPS?, ATI, ATH, ATE0/ATE1, and ERROR to anything else. Lines that do not
// begin with AT are ignored, as a modem does.
//
// The two device paths are stored in the simulated unit's file settings
// "ZusettingsGsmPort" and "ZusettingsGpsPort" (the unit of ZUAUX_SIM_*), where
// the Telematics page of `pageview telematics` finds them. Ctrl-C stops it.
#include "zuaux2.h"

#include <QByteArray>
#include <QDateTime>

#include <atomic>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace
{

std::atomic<bool> stopRequested { false };
static_assert(std::atomic<bool>::is_always_lock_free, "the stop flag is set from a signal handler");

extern "C" void requestStop(int)
{
    stopRequested = true;
}

// The device side of a pseudo-terminal. The other side stays open here as
// well, raw, so that it echoes nothing before the application sets it up and
// so that the application can close and reopen it.
class Pty
{
public:
    bool open()
    {
        if (openpty(&master, &slave, name, nullptr, nullptr) != 0)
            return false;
        termios t {};
        tcgetattr(slave, &t);
        cfmakeraw(&t);
        tcsetattr(slave, TCSANOW, &t);
        // Nobody may be listening: what cannot be sent at once is lost.
        fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
        return true;
    }
    ~Pty()
    {
        if (master >= 0)
            close(master);
        if (slave >= 0)
            close(slave);
    }

    void send(const QByteArray& bytes) const
    {
        if (!bytes.isEmpty() && write(master, bytes.constData(), static_cast<size_t>(bytes.size())) < 0
            && errno != EAGAIN)
            std::fprintf(stderr, "zuaux-devices: %s: %s\n", name, std::strerror(errno));
    }

    int master = -1;
    int slave = -1;
    char name[64] = {};
};

// "$<body>*<checksum>\r\n": the checksum is the XOR of the body's bytes.
QByteArray sentence(const QByteArray& body)
{
    unsigned char sum = 0;
    for (char c : body)
        sum ^= static_cast<unsigned char>(c);
    return '$' + body + '*' + QByteArray::number(sum, 16).toUpper().rightJustified(2, '0') + "\r\n";
}

// ddmm.mmmm (or dddmm.mmmm) and the hemisphere letter.
QByteArray coordinate(double degrees, int width, char positive, char negative)
{
    const double magnitude = std::fabs(degrees);
    int whole = static_cast<int>(magnitude);
    double minutes = std::round((magnitude - whole) * 60 * 10000) / 10000;
    if (minutes >= 60) {
        ++whole;
        minutes -= 60;
    }
    char text[32];
    std::snprintf(
        text, sizeof text, "%0*d%07.4f,%c", width, whole, minutes, degrees < 0 ? negative : positive);
    return text;
}

class Receiver
{
public:
    Receiver(int withFix, int withoutFix)
        : withFix(withFix)
        , cycle(withFix + withoutFix)
    {
    }

    // One second of output.
    QByteArray next(const QDateTime& utc)
    {
        const bool fix = elapsed % cycle < withFix;
        const double t = elapsed++;
        const double knots = 12 + 4 * std::sin(t / 37);
        const double course = std::fmod(360 + 60 + 50 * std::sin(t / 120), 360);
        const double miles = knots / 3600;
        const double rad = course * M_PI / 180;
        latitude += miles * std::cos(rad) / 60;
        longitude += miles * std::sin(rad) / (60 * std::cos(latitude * M_PI / 180));

        const QByteArray time = utc.toString(QStringLiteral("HHmmss.00")).toLatin1();
        const QByteArray date = utc.toString(QStringLiteral("ddMMyy")).toLatin1();
        const QByteArray position
            = coordinate(latitude, 2, 'N', 'S') + ',' + coordinate(longitude, 3, 'E', 'W');
        const int satellites = 6 + static_cast<int>(elapsed / 7 % 5);
        char motion[32] = ",";
        if (fix)
            std::snprintf(motion, sizeof motion, "%.1f,%.1f", knots, course);
        char quality[64] = "0,00,99.9,,M,,M,,";
        if (fix)
            std::snprintf(quality, sizeof quality, "1,%02d,0.9,%.1f,M,41.0,M,,", satellites,
                62.5 + 3 * std::sin(t / 20));
        char merit[16];
        std::snprintf(merit, sizeof merit, "%d", fix ? 3 + static_cast<int>(elapsed % 5) : 99);

        return sentence("GPRMC," + time + ',' + (fix ? "A," : "V,") + position + ',' + motion + ',' + date
                   + ",,," + (fix ? "A" : "N"))
            + sentence("GPGGA," + time + ',' + position + ',' + quality)
            + sentence(QByteArray("PFST,FOM,") + merit);
    }

private:
    int withFix;
    int cycle;
    long elapsed = 0;
    double latitude = 57.668723; // 5740.1234N
    double longitude = 11.976130; // 01158.5678E
};

class Modem
{
public:
    explicit Modem(const QByteArray& pin)
        : pin(pin)
    {
    }

    // What the modem sends back for the bytes it received.
    QByteArray feed(const char* data, ssize_t length)
    {
        QByteArray out;
        for (ssize_t i = 0; i < length; ++i)
            out += composing ? compose(data[i]) : take(data[i]);
        return out;
    }

private:
    static constexpr int maxLine = 256;
    static constexpr int maxSms = 160;

    static QByteArray info(const QByteArray& text) { return "\r\n" + text + "\r\n\r\nOK\r\n"; }

    QByteArray echoed(char c) const { return echo ? QByteArray(1, c) : QByteArray(); }

    QByteArray take(char c)
    {
        if (c == '\n' || c == '\0')
            return QByteArray();
        if (c == '\b') {
            line.chop(1);
            return echo ? QByteArray("\b \b") : QByteArray();
        }
        if (c != '\r') {
            if (line.size() < maxLine)
                line += c;
            return echoed(c);
        }
        const QByteArray command = line.trimmed();
        line.clear();
        const QByteArray lineEnd = echoed(c); // before ATE0 takes effect
        return lineEnd + answer(command);
    }

    QByteArray compose(char c)
    {
        if (c == 0x1B) { // escape: nothing is sent
            composing = false;
            return "\r\nOK\r\n";
        }
        if (c == 0x1A) {
            composing = false;
            std::printf("zuaux-devices: SMS %d to %s: %s\n", reference, number.constData(), sms.constData());
            std::fflush(stdout);
            return info("+CMGS: " + QByteArray::number(reference++));
        }
        if (c == '\n' && sms.isEmpty()) // the end of the AT+CMGS line
            return QByteArray();
        if (sms.size() < maxSms)
            sms += c;
        return echoed(c);
    }

    QByteArray answer(const QByteArray& command)
    {
        const QByteArray upper = command.toUpper();
        if (!upper.startsWith("AT"))
            return QByteArray();
        const QByteArray name = upper.mid(2);
        QByteArray argument = command.mid(command.indexOf('=') + 1);
        if (argument.startsWith('"') && argument.endsWith('"') && argument.size() > 1)
            argument = argument.mid(1, argument.size() - 2);

        if (name.isEmpty() || name == "H" || name == "H0")
            return "\r\nOK\r\n";
        if (name == "E0" || name == "E1") {
            echo = name == "E1";
            return "\r\nOK\r\n";
        }
        if (name == "I")
            return info("ZU-SIM GSM/GPRS modem, simulated, revision 1.0");
        if (name == "+CREG?")
            return info("+CREG: " + QByteArray::number(cregMode) + ',' + (ready ? '1' : '0'));
        if (name.startsWith("+CREG=") && (argument == "0" || argument == "1" || argument == "2")) {
            cregMode = argument.toInt();
            return "\r\nOK\r\n";
        }
        if (name == "+CPIN?")
            return info(ready ? "+CPIN: READY" : tries >= 3 ? "+CPIN: SIM PUK" : "+CPIN: SIM PIN");
        if (name.startsWith("+CPIN="))
            return enterPin(argument);
        if (name == "+CMGF=0" || name == "+CMGF=1") {
            textMode = name.endsWith('1');
            return "\r\nOK\r\n";
        }
        if (name == "+CMGF?")
            return info(textMode ? "+CMGF: 1" : "+CMGF: 0");
        if (name.startsWith("+CMGS="))
            return startSms(argument);
        if (name == "+CSQ")
            return info("+CSQ: " + QByteArray::number(ready ? 14 + reference % 8 : 99) + ",99");
        if (name == "+COPS?")
            return info(ready ? "+COPS: 0,0,\"ZU-SIM\"" : "+COPS: 0");
        return "\r\nERROR\r\n";
    }

    QByteArray enterPin(const QByteArray& given)
    {
        if (ready)
            return "\r\n+CME ERROR: 3\r\n"; // operation not allowed
        if (tries >= 3)
            return "\r\n+CME ERROR: 12\r\n"; // SIM PUK required
        if (given != pin) {
            ++tries;
            return "\r\n+CME ERROR: 16\r\n"; // incorrect password
        }
        ready = true;
        return "\r\nOK\r\n";
    }

    QByteArray startSms(const QByteArray& to)
    {
        if (!ready)
            return "\r\n+CMS ERROR: 311\r\n"; // SIM PIN required
        if (!textMode)
            return "\r\n+CMS ERROR: 304\r\n"; // invalid PDU mode parameter
        if (to.isEmpty())
            return "\r\nERROR\r\n";
        number = to;
        sms.clear();
        composing = true;
        return "\r\n> ";
    }

    const QByteArray pin;
    QByteArray line;
    bool echo = true;
    bool ready = false;
    int tries = 0;
    int cregMode = 0;
    bool textMode = false;
    bool composing = false;
    QByteArray number;
    QByteArray sms;
    int reference = 1;
};

bool storePath(const char* key, const char* path)
{
    Korvane::ZuAuxPrivateHandle files = Korvane::GetZuAuxPrivate();
    const Korvane::eErr err = Korvane::ZuAuxPrivate_setFileSetting(files, key, path);
    Korvane::ZuAuxPrivate_release(files);
    if (err != Korvane::ERR_SUCCESS)
        std::fprintf(stderr, "zuaux-devices: cannot store %s: Error(%d) %s\n", key, static_cast<int>(err),
            Korvane::GetErrorStringA(err));
    return err == Korvane::ERR_SUCCESS;
}

int usage()
{
    std::fprintf(stderr, "usage: zuaux-devices [--pin <pin>] [--fix <seconds with fix>,<seconds without>]\n");
    return 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QByteArray pin("1234");
    int withFix = 40;
    int withoutFix = 10;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (i + 1 >= argc)
            return usage();
        const QByteArray value(argv[++i]);
        const QList<QByteArray> seconds = value.split(',');
        bool ok = true;
        bool ok2 = true;
        if (arg == "--pin" && !value.isEmpty()) {
            pin = value;
        } else if (arg == "--fix" && seconds.size() == 2) {
            withFix = seconds[0].toInt(&ok);
            withoutFix = seconds[1].toInt(&ok2);
        } else {
            return usage();
        }
        if (!ok || !ok2 || withFix < 0 || withoutFix < 0 || withFix + withoutFix == 0)
            return usage();
    }

    Pty modemPort;
    Pty gpsPort;
    if (!modemPort.open() || !gpsPort.open()) {
        std::fprintf(stderr, "zuaux-devices: no pseudo-terminal: %s\n", std::strerror(errno));
        return 1;
    }
    const bool stored
        = storePath("ZusettingsGsmPort", modemPort.name) && storePath("ZusettingsGpsPort", gpsPort.name);

    struct sigaction action {
    };
    action.sa_handler = requestStop;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);

    std::printf("zuaux-devices: modem on %s (SIM PIN %s)\n", modemPort.name, pin.constData());
    std::printf(
        "zuaux-devices: GPS receiver on %s (fix %d s, none %d s)\n", gpsPort.name, withFix, withoutFix);
    if (stored)
        std::printf(
            "zuaux-devices: stored as ZusettingsGsmPort and ZusettingsGpsPort of the simulated unit\n");
    std::printf("zuaux-devices: try `pageview telematics` and switch on GSM/GPRS and GPS power there\n");
    std::printf("zuaux-devices: stop with Ctrl-C (or kill %d)\n", static_cast<int>(getpid()));
    std::fflush(stdout);

    Receiver receiver(withFix, withoutFix);
    Modem modem(pin);
    qint64 nextFix = QDateTime::currentMSecsSinceEpoch();
    while (!stopRequested) {
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        if (now >= nextFix) {
            gpsPort.send(receiver.next(QDateTime::currentDateTimeUtc()));
            nextFix += 1000;
            if (nextFix <= now) // after a stall, go on from now
                nextFix = now + 1000;
            continue;
        }
        pollfd line { modemPort.master, POLLIN, 0 };
        if (poll(&line, 1, static_cast<int>(nextFix - now)) > 0 && (line.revents & POLLIN)) {
            char bytes[512];
            const ssize_t n = read(modemPort.master, bytes, sizeof bytes);
            if (n > 0)
                modemPort.send(modem.feed(bytes, n));
        }
    }
    std::printf("zuaux-devices: stopped\n");
    return 0;
}
