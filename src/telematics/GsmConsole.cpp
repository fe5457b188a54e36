#include "telematics/GsmConsole.h"

#include "dialogs/Dialogs.h"
#include "hwsupport/OSSleep.h"
#include "telematics/gsmanswer.h"
#include "telematics/serial.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <cstdio>
#include <cstring>

namespace
{

const int commandSize = 256;
const unsigned long stepPauseMs = 100;
const char ctrlZ = 0x1A;

// The fixed commands go out with their terminating zero byte, the formatted
// ones without: modems in the field have seen exactly these bytes.
template <unsigned int N> constexpr unsigned int withZero(const char (&)[N])
{
    return N;
}

void showCritical(QWidget* parent, const char* text)
{
    Dialogs::message(parent, QMessageBox::Critical, QStringLiteral("Zusettings"), QLatin1String(text));
}

} // namespace

GsmConsole::GsmConsole(QWidget* parent, const Controls& controls)
    : parent(parent)
    , ui(controls)
{
}

namespace
{
bool modemReady()
{
    return serial_dev_gsm && serial_dev_gsm->configured;
}
} // namespace

void GsmConsole::send(const char* command, unsigned int length)
{
    if (modemReady())
        serial_write(serial_dev_gsm, command, length);
}

void GsmConsole::receive(char* answer, unsigned int size)
{
    std::memset(answer, 0, size);
    if (modemReady())
        serial_read(serial_dev_gsm, answer, size);
    printData(answer, static_cast<int>(size));
}

void GsmConsole::exchange(const char* command, unsigned int length, char* answer, unsigned int size)
{
    send(command, length);
    receive(answer, size);
}

void GsmConsole::printData(const char* data, int length)
{
    ui.answer->clear();
    const QString text = gsmAnswerText(data, length);
    ui.answer->appendPlainText(text.isEmpty() ? QStringLiteral("No data received") : text);
}

void GsmConsole::getNetworkStatus()
{
    static const char command[] = "AT+CREG?\r\n";
    char answer[128];
    exchange(command, withZero(command), answer, sizeof answer);
    ui.networkStatus->setText(networkStatusText(ui.answer->toPlainText()));
}

void GsmConsole::getPinStatus()
{
    static const char command[] = "AT+CPIN?\r\n";
    char answer[128];
    exchange(command, withZero(command), answer, sizeof answer);
    ui.pinStatus->setText(pinStatusText(ui.answer->toPlainText()));
}

void GsmConsole::hangUp()
{
    static const char command[] = "ATH\r\n";
    char answer[128];
    exchange(command, withZero(command), answer, sizeof answer);
}

void GsmConsole::setPin()
{
    // Four characters that read as a number up to 9999: a sign counts as a
    // character, so "-123" passes and goes to the modem as typed.
    const QString pin = ui.pin->text();
    bool isNumber = false;
    const int value = pin.toInt(&isNumber, 10);
    if (pin.size() != 4 || !isNumber || value > 9999) {
        showCritical(parent, "Please enter a 4 digit PIN");
        return;
    }
    char command[commandSize];
    std::snprintf(command, sizeof command, "AT+CPIN=%s\r\n", pin.toLatin1().constData());
    char answer[128];
    exchange(command, static_cast<unsigned int>(std::strlen(command)), answer, sizeof answer);
}

void GsmConsole::sendSms()
{
    if (ui.smsText->text().isEmpty() || ui.number->text().isEmpty()) {
        showCritical(parent, "Please enter a number and some text");
        return;
    }
    char answer[256];
    static const char textMode[] = "AT+CMGF=1\r\n";
    exchange(textMode, withZero(textMode), answer, sizeof answer);
    QCoreApplication::processEvents();
    OSSleep(stepPauseMs);

    // One command buffer for the number and the text, not cleared between
    // them: a text shorter than the AT+CMGS command is followed on the line
    // by Ctrl-Z and the rest of that command, which the modem ignores.
    char command[commandSize] = {};
    std::snprintf(command, sizeof command, "AT+CMGS=%s\r\n", ui.number->text().toLatin1().constData());
    exchange(command, static_cast<unsigned int>(std::strlen(command)), answer, sizeof answer);
    QCoreApplication::processEvents();
    OSSleep(stepPauseMs);

    const int textLength
        = std::snprintf(command, sizeof command, "%s", ui.smsText->text().toLatin1().constData());
    command[std::min(textLength, commandSize - 1)] = ctrlZ;
    send(command, static_cast<unsigned int>(strnlen(command, sizeof command)));
    QCoreApplication::processEvents();
    OSSleep(stepPauseMs);
    receive(answer, sizeof answer);
}

void GsmConsole::sendCommand()
{
    char command[commandSize];
    std::snprintf(command, sizeof command, "%s\r\n", ui.command->text().toLatin1().constData());
    char answer[512];
    exchange(command, static_cast<unsigned int>(std::strlen(command)), answer, sizeof answer);
}
