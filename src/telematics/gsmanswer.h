// What the modem console makes of a modem's answer: the text it shows, and
// the registration and SIM PIN states read from that text.
#ifndef GSMANSWER_H
#define GSMANSWER_H

#include <QString>

// The text of an answer buffer as shown: every zero-terminated piece of at
// most 255 characters on a line of its own, zero bytes skipped; empty when
// the buffer holds no text. Never reads past `length`.
QString gsmAnswerText(const char* data, int length);

// "Network status: ..." for the shown answer to AT+CREG?. The registration
// is found by a plain search for "0,0", "0,1", "0,2", "0,3" or "0,5" in that
// order, anywhere in the answer (the command echo included).
QString networkStatusText(const QString& answer);

// "PIN code status: ..." for the shown answer to AT+CPIN?.
QString pinStatusText(const QString& answer);

#endif // GSMANSWER_H
