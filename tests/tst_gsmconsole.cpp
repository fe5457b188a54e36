// The modem console: what the modem's answers show, and the bytes each
// operation puts on a pseudo-terminal that answers like a modem.
#include "dialogs/Dialogs.h"
#include "ptydevice.h"
#include "simunit.h"
#include "telematics/GsmConsole.h"
#include "telematics/gsmanswer.h"
#include "telematics/serial.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>
#include <QThread>

#include <sys/ioctl.h>

namespace
{

// The C string literals of a response line of the answer corpus.
QList<QByteArray> literals(const QByteArray& line)
{
    QList<QByteArray> found;
    QByteArray current;
    bool inside = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (!inside) {
            inside = c == '"';
            continue;
        }
        if (c == '"') {
            found << current;
            current.clear();
            inside = false;
        } else if (c == '\\' && i + 1 < line.size()) {
            const char e = line[++i];
            current += e == 'r' ? '\r' : e == 'n' ? '\n' : e;
        } else {
            current += c;
        }
    }
    return found;
}

enum Operation { Network, Pin, HangUp, SetPin, Sms, Command };

// A modem on the device side of a pseudo-terminal: records every command and
// answers each with the next scripted answer, padded with zero bytes to the
// size the console reads, so that no exchange waits for the time-out.
struct Modem {
    Modem(const QList<QByteArray>& answers, int size)
    {
        serial_dev_gsm = serial_open(device.path());
        serial_setup(serial_dev_gsm, SERIAL_BAUD_57600, SERIAL_BITS_8, SERIAL_PARITY_NONE, SERIAL_STOPBIT_1);
        worker.reset(QThread::create([this, answers, size] {
            for (const QByteArray& answer : answers) {
                QByteArray command;
                while (command.isEmpty() && !stopping)
                    command = device.receive(150);
                if (stopping)
                    return;
                wire << command;
                device.send(answer + QByteArray(size - answer.size(), '\0'));
            }
            wire << device.receive(500);
        }));
        worker->start();
    }
    ~Modem()
    {
        stopping = true;
        worker->wait();
        if (serial_dev_gsm)
            serial_close(serial_dev_gsm);
        serial_dev_gsm = nullptr;
    }

    PtyDevice device;
    QScopedPointer<QThread> worker;
    std::atomic<bool> stopping { false };
    QList<QByteArray> wire;
};

} // namespace

Q_DECLARE_METATYPE(Operation)

class tst_gsmconsole : public QObject
{
    Q_OBJECT

private slots:
    void answerText_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("text");

        QTest::newRow("pieces between zero bytes")
            << QByteArray("\0AT\0\0OK\r\n", 9) << 9 << QStringLiteral("AT\nOK\r\n");
        QTest::newRow("nothing") << QByteArray(128, '\0') << 128 << QString();
        QTest::newRow("length 0") << QByteArray("OK") << 0 << QString();
        QTest::newRow("cut at the length") << QByteArray("OKAY") << 2 << QStringLiteral("OK");
        QTest::newRow("255 characters a piece")
            << QByteArray(300, 'A') << 300 << QString(255, u'A') + u'\n' + QString(45, u'A');
        QTest::newRow("8-bit text") << QByteArray("25\xb0") << 3 << QStringLiteral("25\u00b0");
    }

    void answerText()
    {
        QFETCH(QByteArray, data);
        QFETCH(int, length);
        QFETCH(QString, text);
        // Exactly `length` bytes, without a terminating zero behind them.
        std::vector<char> exact(data.constData(), data.constData() + length);
        QCOMPARE(gsmAnswerText(exact.data(), length), text);
    }

    // Recorded answers of real modems, and the states the console reads.
    void recordedAnswers_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("status");

        const QHash<QString, QString> expected {
            { "creg-01", "Network status: Unknown" },
            { "creg-02", "Network status: Ok, registered" },
            { "creg-03", "Network status: Ok, registered" },
            { "creg-04", "Network status: Unknown" },
            { "creg-05", "Network status: Unknown" },
            { "creg-06", "Network status: Unknown" },
            { "creg-07", "Network status: Unknown" },
            { "creg-08", "Network status: Unknown" },
            { "creg-09", "Network status: Unknown" },
            { "creg-10", "Network status: Unknown" },
            { "creg-11", "Network status: Ok, Roaming" },
            { "cpin-01", "PIN code status: Ok" },
            { "cpin-02", "PIN code status: Ok" },
            { "cpin-03", "PIN code status: Enter PIN" },
            { "cpin-04", "PIN code status: Enter PIN" },
            { "cpin-05", "PIN code status: Enter PIN" },
            { "cpin-06", "PIN code status: Unknown" },
            { "cpin-07", "PIN code status: Unknown" },
            { "cpin-08", "PIN code status: Unknown" },
            { "cpin-09", "PIN code status: Unknown" },
        };
        QString id;
        int rows = 0;
        for (const QByteArray& line :
            fileContents(QStringLiteral(ZUSETTINGS_CORPUS_DIR "/at/responses.txt")).split('\n')) {
            if (line.startsWith("id: "))
                id = QString::fromLatin1(line.mid(4).trimmed());
            if (!line.startsWith("response: "))
                continue;
            QVERIFY2(expected.contains(id), qPrintable(id));
            const QList<QByteArray> answers = literals(line);
            for (qsizetype i = 0; i < answers.size(); ++i)
                QTest::addRow("%s/%lld", qPrintable(id), qlonglong(i)) << answers[i] << expected[id];
            ++rows;
        }
        QCOMPARE(rows, expected.size());
        QTest::newRow("registered") << QByteArray("+CREG: 0,1\r\nOK\r\n") << "Network status: Ok, registered";
        QTest::newRow("n=2") << QByteArray("+CREG: 2,1\r\n") << "Network status: Unknown";
        QTest::newRow("searching first")
            << QByteArray("+CREG: 0,1 +CREG: 0,0") << "Network status: Searching";
        QTest::newRow("denied") << QByteArray("+CREG: 0,3\r\n") << "Network status: Registration denied";
        QTest::newRow("lower case") << QByteArray("+cpin: ready") << "PIN code status: Ok";
        QTest::newRow("PH-SIM PIN") << QByteArray("+CPIN: PH-SIM PIN") << "PIN code status: Enter PIN";
    }

    void recordedAnswers()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, status);
        QByteArray buffer(128, '\0');
        buffer.replace(0, answer.size(), answer);
        const QString shown = gsmAnswerText(buffer.constData(), int(buffer.size()));
        QCOMPARE(status.startsWith("Network") ? networkStatusText(shown) : pinStatusText(shown), status);
    }

    void operations_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QList<QByteArray>>("answers");
        QTest::addColumn<int>("size");
        QTest::addColumn<QList<QByteArray>>("wire");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QStringList>("boxes");

        using Bytes = QList<QByteArray>;
        const QByteArray ok("\r\nOK\r\n");
        QTest::newRow("network") << Network << QString() << Bytes { "AT+CREG?\r\r\n+CREG: 0,5\r\n" + ok }
                                 << 128 << Bytes { QByteArray("AT+CREG?\r\n", 11), "" }
                                 << "AT+CREG?\n\n+CREG: 0,5\n\nOK\n"
                                 << "Network status: Ok, Roaming" << QStringList();
        QTest::newRow("PIN state") << Pin << QString()
                                   << Bytes { QByteArray("\r\n+CPIN: SIM PIN\r\n\0OK\r\n", 24) } << 128
                                   << Bytes { QByteArray("AT+CPIN?\r\n", 11), "" }
                                   << "\n+CPIN: SIM PIN\n\nOK\n"
                                   << "PIN code status: Enter PIN" << QStringList();
        QTest::newRow("hang up") << HangUp << QString() << Bytes { ok } << 128
                                 << Bytes { QByteArray("ATH\r\n", 6), "" } << "\nOK\n"
                                 << QString() << QStringList();
        QTest::newRow("PIN 1234") << SetPin << "1234" << Bytes { ok } << 128
                                  << Bytes { "AT+CPIN=1234\r\n", "" } << "\nOK\n"
                                  << QString() << QStringList();
        // A sign passes for a digit.
        QTest::newRow("PIN -123") << SetPin << "-123" << Bytes { "+CME ERROR: 16\r\n" } << 128
                                  << Bytes { "AT+CPIN=-123\r\n", "" } << "+CME ERROR: 16\n"
                                  << QString() << QStringList();
        const QStringList noPin { "Please enter a 4 digit PIN" };
        QTest::newRow("PIN 12345") << SetPin << "12345" << Bytes() << 128 << Bytes { "" } << QString()
                                   << QString() << noPin;
        QTest::newRow("PIN 12a4") << SetPin << "12a4" << Bytes() << 128 << Bytes { "" } << QString()
                                  << QString() << noPin;
        QTest::newRow("PIN 123") << SetPin << "123" << Bytes() << 128 << Bytes { "" } << QString()
                                 << QString() << noPin;
        // The text goes into the buffer that held the AT+CMGS command: Ctrl-Z
        // takes the place of its end, and the rest of the command follows.
        const Bytes smsAnswers { ok, "\r\n> ", "Hi\x1a\r\n+CMGS: 42\r\n" + ok };
        const QByteArray textMode("AT+CMGF=1\r\n", 12);
        QTest::newRow("SMS Hi") << Sms << "0123456|Hi" << smsAnswers << 256
                                << Bytes { textMode, "AT+CMGS=0123456\r\n",
                                       "Hi\x1a"
                                       "CMGS=0123456\r\n",
                                       "" }
                                << "Hi\x1a\n+CMGS: 42\n\nOK\n"
                                << QString() << QStringList();
        QTest::newRow("SMS longer than the command")
            << Sms << "+4912|Longer than the command" << smsAnswers << 256
            << Bytes { textMode, "AT+CMGS=+4912\r\n", "Longer than the command\x1a", "" }
            << "Hi\x1a\n+CMGS: 42\n\nOK\n"
            << QString() << QStringList();
        QTest::newRow("SMS of 300 characters")
            << Sms << "1|" + QString(300, u'x') << smsAnswers << 256
            << Bytes { textMode, "AT+CMGS=1\r\n", QByteArray(255, 'x') + "\x1a", "" }
            << "Hi\x1a\n+CMGS: 42\n\nOK\n"
            << QString() << QStringList();
        const QStringList noSms { "Please enter a number and some text" };
        QTest::newRow("SMS without number")
            << Sms << "|Hi" << Bytes() << 256 << Bytes { "" } << QString() << QString() << noSms;
        QTest::newRow("SMS without text")
            << Sms << "0123456|" << Bytes() << 256 << Bytes { "" } << QString() << QString() << noSms;
        QTest::newRow("command") << Command << "AT+CSQ" << Bytes { "+CSQ: 17,99\r\n" + ok } << 512
                                 << Bytes { "AT+CSQ\r\n", "" } << "+CSQ: 17,99\n\nOK\n"
                                 << QString() << QStringList();
        QTest::newRow("empty command")
            << Command << "" << Bytes { "ERROR\r\n" } << 512 << Bytes { "\r\n", "" } << "ERROR\n"
            << QString() << QStringList();
    }

    void operations()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, input);
        QFETCH(QList<QByteArray>, answers);
        QFETCH(int, size);
        QFETCH(QList<QByteArray>, wire);
        QFETCH(QString, shown);
        QFETCH(QString, status);
        QFETCH(QStringList, boxes);

        Modem modem(answers, size);
        Dialogs::Recorder recorder;
        run(operation, input);
        modem.worker->wait();
        QCOMPARE(modem.wire, wire);
        // Line ends show as line breaks.
        if (!answers.isEmpty())
            QCOMPARE(answerBox.toPlainText(), shown);
        // The whole padded answer was read: the console's buffer has that size.
        int unread = -1;
        ioctl(serial_dev_gsm->fd, FIONREAD, &unread);
        QCOMPARE(unread, 0);
        if (operation == Network)
            QCOMPARE(networkStatus.text(), status);
        if (operation == Pin)
            QCOMPARE(pinStatus.text(), status);
        QCOMPARE(recorder.texts(), boxes);
        for (const Dialogs::Shown& box : recorder.shown) {
            QCOMPARE(box.title, "Zusettings");
            QCOMPARE(box.icon, QMessageBox::Critical);
        }
    }

    // A silent modem, and no modem port at all, read as "No data received".
    void noAnswer_data()
    {
        QTest::addColumn<bool>("port");
        QTest::addColumn<int>("minMs");
        QTest::newRow("silent modem") << true << 2900;
        QTest::newRow("no port") << false << 0;
    }

    void noAnswer()
    {
        QFETCH(bool, port);
        QFETCH(int, minMs);
        PtyDevice device;
        if (port) {
            serial_dev_gsm = serial_open(device.path());
            serial_setup(
                serial_dev_gsm, SERIAL_BAUD_57600, SERIAL_BITS_8, SERIAL_PARITY_NONE, SERIAL_STOPBIT_1);
        }
        networkStatus.setText("Network status: Ok, registered");
        QElapsedTimer clock;
        clock.start();
        console.getNetworkStatus();
        QVERIFY(clock.elapsed() >= minMs && clock.elapsed() < minMs + 1000);
        QCOMPARE(answerBox.toPlainText(), "No data received");
        QCOMPARE(networkStatus.text(), "Network status: Unknown");
        if (serial_dev_gsm)
            serial_close(serial_dev_gsm);
        serial_dev_gsm = nullptr;
    }

private:
    void run(Operation operation, const QString& input)
    {
        switch (operation) {
        case Network:
            return console.getNetworkStatus();
        case Pin:
            return console.getPinStatus();
        case HangUp:
            return console.hangUp();
        case SetPin:
            pin.setText(input);
            return console.setPin();
        case Sms:
            number.setText(input.section(u'|', 0, 0));
            smsText.setText(input.section(u'|', 1));
            return console.sendSms();
        case Command:
            command.setText(input);
            return console.sendCommand();
        }
    }

    QWidget page;
    QPlainTextEdit answerBox { &page };
    QLineEdit networkStatus { &page }, pinStatus { &page }, pin { &page }, number { &page },
        smsText { &page }, command { &page };
    GsmConsole console { &page,
        { &answerBox, &networkStatus, &pinStatus, &pin, &number, &smsText, &command } };
};

QTEST_MAIN(tst_gsmconsole)
#include "tst_gsmconsole.moc"
