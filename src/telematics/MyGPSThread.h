// The GPS receiver's reader: reads NMEA text from serial_dev_gps, hands the
// raw text and the decoded values to the GPS page by queued signals, and
// never touches a widget.
//
// It runs while gpsThreadRunning is set. The flag is raised when the thread
// object is created, so a stop that comes before the thread got going is not
// lost; whoever clears it (leaving the GPS page, closing the Telematics page)
// can rely on the thread ending within one read time-out (about 3 s), closing
// serial_dev_gps and setting it back to null on its way out.
#ifndef MYGPSTHREAD_H
#define MYGPSTHREAD_H

#include <QThread>

#include <atomic>

extern std::atomic<bool> gpsThreadRunning;

class MyGPSThread : public QThread
{
    Q_OBJECT

public:
    explicit MyGPSThread(QObject* parent = nullptr);

signals:
    void newText(const QString& text); // raw text, as read
    void newTime(const QString& text);
    void newPos(const QString& text);
    void newSat(const QString& text);
    void newAlt(const QString& text);
    void newSpeed(const QString& text);
    void newAcc(const QString& text);
    void newLabel(const QString& text); // kept for the page's connections; nothing sends it

protected:
    void run() override;
};

#endif // MYGPSTHREAD_H
