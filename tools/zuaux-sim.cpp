// Command-line client of the simulated unit, for scripts and for tests that
// need a second process. It works on the unit that the ZUAUX_SIM_* variables
// describe, like the application does.
//
//   zuaux-sim get <key>             prints the value as the unit reports it
//   zuaux-sim set <key> <value>     writes a value as a setter would
//   zuaux-sim call <operation> [arguments...]
//                                   calls a library operation; prints the
//                                   result code, then each output on a line
//   zuaux-sim press <button> [<ms>] presses front button 1..10 for <ms>
//                                   (default 200): key records of F1..F10
//                                   into the FIFO ZUSETTINGS_INPUT_DEVICE names
#include "zuaux2.h"
#include "zuauxsim.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <linux/input.h>
#include <map>
#include <unistd.h>

using namespace Korvane;

namespace
{

using Outputs = QStringList;
using Operation = std::function<eErr(const QStringList& args, Outputs& out)>;

int number(const QStringList& args, int i)
{
    return i < args.size() ? args.at(i).toInt() : 0;
}

const std::map<QString, std::pair<int, Operation>>& operations()
{
    static const std::map<QString, std::pair<int, Operation>> table = {
        { QStringLiteral("Backlight_getIntensity"),
            { 0,
                [](const QStringList&, Outputs& out) {
                    uint8_t value = 0;
                    const eErr e = Backlight_getIntensity(GetBacklight(), &value);
                    out << QString::number(value);
                    return e;
                } } },
        { QStringLiteral("Backlight_setIntensity"),
            { 1,
                [](const QStringList& a, Outputs&) {
                    return Backlight_setIntensity(GetBacklight(), uint8_t(number(a, 0)));
                } } },
        { QStringLiteral("CanSetting_getBaudrate"),
            { 1,
                [](const QStringList& a, Outputs& out) {
                    uint16_t value = 0;
                    const eErr e = CanSetting_getBaudrate(GetCanSetting(), uint8_t(number(a, 0)), &value);
                    out << QString::number(value);
                    return e;
                } } },
        { QStringLiteral("CanSetting_setBaudrate"),
            { 2,
                [](const QStringList& a, Outputs&) {
                    return CanSetting_setBaudrate(
                        GetCanSetting(), uint8_t(number(a, 0)), uint16_t(number(a, 1)));
                } } },
        { QStringLiteral("Config_getButtonFunction"),
            { 1,
                [](const QStringList& a, Outputs& out) {
                    ButtonConfigEnum value = BUTTON_ONLY_MP_ACTION;
                    const eErr e = Config_getButtonFunction(GetConfig(), uint8_t(number(a, 0)), &value);
                    out << QString::number(value);
                    return e;
                } } },
        { QStringLiteral("Config_setButtonFunction"),
            { 2,
                [](const QStringList& a, Outputs&) {
                    return Config_setButtonFunction(
                        GetConfig(), uint8_t(number(a, 0)), ButtonConfigEnum(number(a, 1)));
                } } },
        { QStringLiteral("Config_getStartupTriggerConfig"),
            { 0,
                [](const QStringList&, Outputs& out) {
                    TriggerConf value = TRIGGER_FRONT_BUTTON;
                    const eErr e = Config_getStartupTriggerConfig(GetConfig(), &value);
                    out << QString::number(value);
                    return e;
                } } },
        { QStringLiteral("Config_setStartupTriggerConfig"),
            { 1,
                [](const QStringList& a, Outputs&) {
                    return Config_setStartupTriggerConfig(GetConfig(), TriggerConf(number(a, 0)));
                } } },
        { QStringLiteral("Config_setStartupVoltageConfig"),
            { 1,
                [](const QStringList& a, Outputs&) {
                    return Config_setStartupVoltageConfig(GetConfig(), a.value(0).toDouble());
                } } },
        { QStringLiteral("FirmwareUpgrade_shutDown"),
            { 0,
                [](const QStringList&, Outputs&) {
                    return FirmwareUpgrade_shutDown(GetFirmwareUpgrade());
                } } },
        { QStringLiteral("ZuAuxPrivate_getFileSetting"),
            { 1,
                [](const QStringList& a, Outputs& out) {
                    char buffer[256] = {};
                    const eErr e = ZuAuxPrivate_getFileSetting(
                        GetZuAuxPrivate(), a.value(0).toLatin1().constData(), buffer, sizeof buffer);
                    out << QString::fromLatin1(buffer);
                    return e;
                } } },
        { QStringLiteral("ZuAuxPrivate_setFileSetting"),
            { 2,
                [](const QStringList& a, Outputs&) {
                    return ZuAuxPrivate_setFileSetting(GetZuAuxPrivate(), a.value(0).toLatin1().constData(),
                        a.value(1).toLatin1().constData());
                } } },
    };
    return table;
}

// Writes what the unit's key device gives for a press and a release of a
// front button, each followed by a report end, as the platform's records.
int press(const QStringList& args, QTextStream& err)
{
    bool ok = false;
    const int button = args.value(0).toInt(&ok);
    int holdMs = 200;
    if (ok && args.size() == 2)
        holdMs = args.at(1).toInt(&ok);
    if (!ok || button < 1 || button > 10 || holdMs < 0) {
        err << "usage: zuaux-sim press <button 1..10> [<ms>]\n";
        return 2;
    }
    const QString path = qEnvironmentVariable("ZUSETTINGS_INPUT_DEVICE");
    if (path.isEmpty()) {
        err << "zuaux-sim: ZUSETTINGS_INPUT_DEVICE names no FIFO\n";
        return 1;
    }
    // Without a reader the FIFO refuses at once instead of blocking.
    const int fd = ::open(QFile::encodeName(path).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        err << "zuaux-sim: cannot write " << path << ": "
            << (errno == ENXIO ? "no program reads it" : std::strerror(errno)) << '\n';
        return 1;
    }
    bool written = true;
    for (const int value : { 1, 0 }) {
        input_event records[2] = {};
        records[0].type = EV_KEY;
        records[0].code = static_cast<uint16_t>(KEY_F1 + button - 1);
        records[0].value = value;
        records[1].type = EV_SYN;
        written = written && ::write(fd, records, sizeof records) == static_cast<ssize_t>(sizeof records);
        if (value == 1)
            QThread::msleep(static_cast<unsigned long>(holdMs));
    }
    ::close(fd);
    if (!written)
        err << "zuaux-sim: cannot write " << path << '\n';
    return written ? 0 : 1;
}

int usage(QTextStream& err)
{
    err << "usage: zuaux-sim get <key> | set <key> <value> | call <operation> [arguments...]\n"
           "       zuaux-sim press <button> [<ms>]\n"
           "operations:";
    for (const auto& entry : operations())
        err << ' ' << entry.first;
    err << '\n';
    return 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    const QString command = args.value(0);

    if (command == QLatin1String("get") && args.size() == 2) {
        const QVariant value = ZuAuxSim::value(args.at(1));
        if (!value.isValid()) {
            err << "no such value: " << args.at(1) << '\n';
            return 1;
        }
        out << (value.userType() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(','))
                                                           : value.toString())
            << '\n';
        return 0;
    }
    if (command == QLatin1String("set") && args.size() == 3) {
        return ZuAuxSim::setValue(args.at(1), args.at(2)) ? 0 : 1;
    }
    if (command == QLatin1String("call") && args.size() >= 2) {
        const auto found = operations().find(args.at(1));
        if (found == operations().end() || args.size() - 2 != found->second.first)
            return usage(err);
        Outputs outputs;
        const eErr code = found->second.second(args.mid(2), outputs);
        out << int(code) << ' ' << GetErrorStringA(code) << '\n';
        if (code == ERR_SUCCESS) {
            for (const QString& line : outputs)
                out << line << '\n';
        }
        return 0;
    }
    if (command == QLatin1String("press") && args.size() >= 2 && args.size() <= 3)
        return press(args.mid(1), err);
    return usage(err);
}
