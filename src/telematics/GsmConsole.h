// The GSM/GPRS modem console of the Telematics page: registration and SIM PIN
// queries, PIN entry, hang-up, SMS and any typed AT command over
// serial_dev_gsm, with the modem's raw answer shown in the answer box.
//
// Every operation blocks the GUI thread until the modem has been silent for
// the serial layer's 3 s read time-out. The page owns the controls and calls
// the operation matching each button. Without an open and configured modem
// port nothing is sent and the answer box reads as for a silent modem.
#ifndef GSMCONSOLE_H
#define GSMCONSOLE_H

class QLineEdit;
class QPlainTextEdit;
class QWidget;

class GsmConsole
{
public:
    struct Controls {
        QPlainTextEdit* answer; // textEditGSM
        QLineEdit* networkStatus; // editNetworkStatus
        QLineEdit* pinStatus; // editPinStatus
        QLineEdit* pin; // editPin
        QLineEdit* number; // editNumber
        QLineEdit* smsText; // editSMStext
        QLineEdit* command; // editCustomAT
    };

    // `parent` is the parent of the console's message boxes.
    GsmConsole(QWidget* parent, const Controls& controls);

    void getNetworkStatus(); // AT+CREG?
    void getPinStatus(); // AT+CPIN?
    void hangUp(); // ATH
    void setPin(); // AT+CPIN=<pin>
    void sendSms(); // AT+CMGF=1, AT+CMGS=<number>, the text and Ctrl-Z
    void sendCommand(); // the typed command

    // Shows an answer buffer in the answer box, or "No data received".
    void printData(const char* data, int length);

private:
    void send(const char* command, unsigned int length);
    void receive(char* answer, unsigned int size);
    void exchange(const char* command, unsigned int length, char* answer, unsigned int size);

    QWidget* parent;
    Controls ui;
};

#endif // GSMCONSOLE_H
