// The modem console: what the modem's answers show, and the bytes each button
// of the Telematics page's modem sub-page puts on a pseudo-terminal that
// answers like a modem.
#include "dialogs/Dialogs.h"
#include "pagecheck.h"
#include "ptydevice.h"
#include "simunit.h"
#include "tabs/tabTelematicsDlg.h"
#include "telematics/gsmanswer.h"
#include "telematics/serial.h"

#include <QRegularExpression>
#include <QTest>
#include <QThread>

#include <sys/ioctl.h>

namespace
{
using Bytes = QList<QByteArray>;

// The C string literals of a response line of the answer corpus.
Bytes literals(const QByteArray& line)
{
    Bytes found;
    const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\]|\\\\.)*)\""));
    for (const auto& match : literal.globalMatch(QString::fromLatin1(line))) {
        QByteArray text = match.captured(1).toLatin1();
        text.replace("\\r", "\r").replace("\\n", "\n").replace("\\\"", "\"");
        found << text;
    }
    return found;
}

// One use of the modem sub-page: the unit's settings before the page is
// built, the steps on the sub-page (the last one runs the operation), the
// modem's answers, each padded with zero bytes to `size`, the size the
// console reads, so that no exchange waits for the time-out; then the
// command each answer followed on the line and, last, what came after.
struct Exchange {
    Steps unit {};
    Steps steps {};
    Bytes answers {};
    int size = 128;
    Bytes wire {};
    Steps state {};
    QStringList boxes {};
};
} // namespace

Q_DECLARE_METATYPE(Exchange)

class tst_gsmconsole : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { checkNoWindowLeft(); }

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

        // The records that read as something known; the others read "Unknown".
        const QHash<QString, QString> known { { "creg-02", "Ok, registered" },
            { "creg-03", "Ok, registered" }, { "creg-11", "Ok, Roaming" }, { "cpin-01", "Ok" },
            { "cpin-02", "Ok" }, { "cpin-03", "Enter PIN" }, { "cpin-04", "Enter PIN" },
            { "cpin-05", "Enter PIN" } };
        QString id;
        int records = 0;
        for (const QByteArray& line :
            fileContents(QStringLiteral(ZUSETTINGS_CORPUS_DIR "/at/responses.txt")).split('\n')) {
            if (line.startsWith("id: "))
                id = QString::fromLatin1(line.mid(4).trimmed());
            if (!line.startsWith("response: "))
                continue;
            const QString status = (id.startsWith("creg") ? "Network status: " : "PIN code status: ")
                + known.value(id, "Unknown");
            const Bytes answers = literals(line);
            for (qsizetype i = 0; i < answers.size(); ++i)
                QTest::addRow("%s/%lld", qPrintable(id), qlonglong(i)) << answers[i] << status;
            ++records;
        }
        QCOMPARE(records, 20);
        QTest::newRow("0,2") << QByteArray("+CREG: 0,2\r\n") << "Network status: Searching";
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
        QTest::addColumn<Exchange>("exchange");

        const QByteArray ok("\r\nOK\r\n");
        QTest::newRow("network") << Exchange { .steps = { "pushButtonGetNetwork.click" },
            .answers = { "AT+CREG?\r\r\n+CREG: 0,5\r\n" + ok },
            .wire = { QByteArray("AT+CREG?\r\n", 11), "" },
            .state = { "textEditGSM.plainText=AT+CREG?\n\n+CREG: 0,5\n\nOK\n",
                "editNetworkStatus.text=Network status: Ok, Roaming" } };
        QTest::newRow("PIN state") << Exchange { .steps = { "pushButtonGetPIN.click" },
            .answers = { QByteArray("\r\n+CPIN: SIM PIN\r\n\0OK\r\n", 24) },
            .wire = { QByteArray("AT+CPIN?\r\n", 11), "" },
            .state = { "textEditGSM.plainText=\n+CPIN: SIM PIN\n\nOK\n",
                "editPinStatus.text=PIN code status: Enter PIN" } };
        QTest::newRow("hang up") << Exchange { .steps = { "tabTelematics.HangUpClicked" },
            .answers = { ok },
            .wire = { QByteArray("ATH\r\n", 6), "" },
            .state = { "textEditGSM.plainText=\nOK\n" } };
        QTest::newRow("PIN 1234") << Exchange { .steps = { "editPin.text=1234", "pushButtonSetPin.click" },
            .answers = { ok },
            .wire = { "AT+CPIN=1234\r\n", "" },
            .state = { "textEditGSM.plainText=\nOK\n" } };
        // A sign passes for a digit.
        QTest::newRow("PIN -123") << Exchange { .steps = { "editPin.text=-123", "pushButtonSetPin.click" },
            .answers = { "+CME ERROR: 16\r\n" },
            .wire = { "AT+CPIN=-123\r\n", "" },
            .state = { "textEditGSM.plainText=+CME ERROR: 16\n" } };
        for (const char* pin : { "12345", "12a4", "123" })
            QTest::addRow("PIN %s", pin)
                << Exchange { .steps = { QStringLiteral("editPin.text=") + pin, "pushButtonSetPin.click" },
                       .wire = { "" },
                       .boxes = { "Please enter a 4 digit PIN" } };
        // The text goes into the buffer that held the AT+CMGS command: Ctrl-Z
        // takes the place of its end, and the rest of the command follows.
        const Bytes smsAnswers { ok, "\r\n> ", "Hi\x1a\r\n+CMGS: 42\r\n" + ok };
        const QByteArray textMode("AT+CMGF=1\r\n", 12);
        const QString smsShown = "textEditGSM.plainText=Hi\x1a\n+CMGS: 42\n\nOK\n";
        QTest::newRow("SMS Hi") << Exchange { .steps
            = { "editNumber.text=0123456", "editSMStext.text=Hi", "pushButtonCall.click" },
            .answers = smsAnswers,
            .size = 256,
            .wire = { textMode, "AT+CMGS=0123456\r\n",
                "Hi\x1a"
                "CMGS=0123456\r\n",
                "" },
            .state = { smsShown } };
        QTest::newRow("SMS longer than the command") << Exchange { .steps
            = { "editNumber.text=+4912", "editSMStext.text=Longer than the command", "pushButtonCall.click" },
            .answers = smsAnswers,
            .size = 256,
            .wire = { textMode, "AT+CMGS=+4912\r\n", "Longer than the command\x1a", "" },
            .state = { smsShown } };
        QTest::newRow("SMS of 300 characters") << Exchange { .steps
            = { "editNumber.text=1", "editSMStext.text=" + QString(300, u'x'), "pushButtonCall.click" },
            .answers = smsAnswers,
            .size = 256,
            .wire = { textMode, "AT+CMGS=1\r\n", QByteArray(255, 'x') + "\x1a", "" },
            .state = { smsShown } };
        for (const char* missing : { "editNumber", "editSMStext" })
            QTest::addRow("SMS without %s", missing)
                << Exchange { .steps = { "editNumber.text=0123456", "editSMStext.text=Hi",
                                  QString::fromLatin1(missing) + ".text=", "pushButtonCall.click" },
                       .wire = { "" },
                       .boxes = { "Please enter a number and some text" } };
        QTest::newRow("command") << Exchange { .steps
            = { "editCustomAT.text=AT+CSQ", "pushButtonCustomExec.click" },
            .answers = { "+CSQ: 17,99\r\n" + ok },
            .size = 512,
            .wire = { "AT+CSQ\r\n", "" },
            .state = { "textEditGSM.plainText=+CSQ: 17,99\n\nOK\n" } };
        QTest::newRow("empty command") << Exchange { .steps = { "pushButtonCustomExec.click" },
            .answers = { "ERROR\r\n" },
            .size = 512,
            .wire = { "\r\n", "" },
            .state = { "textEditGSM.plainText=ERROR\n" } };
        // A modem that stays silent, and one whose port cannot be opened.
        const Steps unknown { "editNetworkStatus.text=Network status: Ok, registered",
            "pushButtonGetNetwork.click" };
        const Steps noData { "textEditGSM.plainText=No data received",
            "editNetworkStatus.text=Network status: Unknown" };
        QTest::newRow("silent modem")
            << Exchange { .steps = unknown, .wire = { QByteArray("AT+CREG?\r\n", 11) }, .state = noData };
        QTest::newRow("no port") << Exchange { .unit = { "File/ZusettingsGsmPort=/nonexistent/ttyUSB9" },
            .steps = unknown,
            .wire = { "" },
            .state = noData,
            .boxes = { "Could not open serial port: /nonexistent/ttyUSB9" } };
    }

    void operations()
    {
        QFETCH(Exchange, exchange);

        PtyDevice device;
        resetUnit();
        for (const QString& setting : Steps { "Telematics/GPRSPowerStatus=1",
                                          QStringLiteral("File/ZusettingsGsmPort=") + device.path() }
                + exchange.unit)
            change(setting);
        Dialogs::Recorder recorder;
        const auto page = std::make_unique<tabTelematicsDlg>(nullptr);
        page->show();
        act(*page, recorder, "tabWidget.currentIndex=2");

        // The modem answers each command it takes.
        Bytes wire;
        const std::unique_ptr<QThread> modem(QThread::create([&] {
            for (const QByteArray& answer : exchange.answers) {
                QByteArray command;
                for (int tries = 0; command.isEmpty() && tries < 100; ++tries)
                    command = device.receive(100);
                wire << command;
                device.send(answer + QByteArray(exchange.size - answer.size(), '\0'));
            }
        }));
        modem->start();
        for (const QString& step : exchange.steps)
            act(*page, recorder, step);
        QVERIFY(modem->wait(30000));
        wire << device.receive();
        QCOMPARE(wire, exchange.wire);
        QStringList state;
        for (const QString& expected : exchange.state)
            state << stateOf(*page, expected);
        QCOMPARE(state, exchange.state);
        QCOMPARE(recorder.texts(), exchange.boxes);
        for (const Dialogs::Shown& box : recorder.shown) {
            QCOMPARE(box.title, "Zusettings");
            QCOMPARE(box.icon, QMessageBox::Critical);
        }
        if (serial_dev_gsm) {
            const termios line = device.attributes();
            QCOMPARE(cfgetospeed(&line), speed_t(B57600));
            // The whole padded answer was read: the console's buffer has that size.
            int unread = -1;
            ioctl(serial_dev_gsm->fd, FIONREAD, &unread);
            QCOMPARE(unread, 0);
        }
        // Leaving the sub-page closes the port.
        act(*page, recorder, "tabWidget.currentIndex=0");
        QVERIFY(!serial_dev_gsm);
    }
};

QTEST_MAIN(tst_gsmconsole)
#include "tst_gsmconsole.moc"
