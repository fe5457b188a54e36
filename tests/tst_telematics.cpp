// The "Telematics" page on the simulated unit: the fitted interfaces and their
// switches, the device paths it keeps, and its sub-pages on pseudo-terminals
// that play the modem and the GPS receiver, with the real reader thread.
#include "pagecheck.h"
#include "ptydevice.h"
#include "simunit.h"
#include "tabs/tabTelematicsDlg.h"
#include "telematics/MyGPSThread.h"
#include "telematics/serial.h"

#include <memory>

namespace
{
// A page on a unit changed by `unit` ("Family/Key=value", "Operation=code").
std::unique_ptr<tabTelematicsDlg> pageOn(const Steps& unit)
{
    resetUnit();
    for (const QString& setting : unit) {
        const QString name = setting.section(u'=', 0, 0);
        if (name.contains(u'/'))
            ZuAuxSim::setValue(name, setting.section(u'=', 1));
        else
            ZuAuxSim::forceCode(name, setting.section(u'=', 1).toInt());
    }
    return std::make_unique<tabTelematicsDlg>(nullptr);
}

// The properties `expected` names as the page holds them.
Steps statesOf(const QWidget& page, const Steps& expected)
{
    Steps actual;
    for (const QString& property : expected)
        actual << stateOf(page, property);
    return actual;
}

// A row on a new page: the steps before "build" change the unit, the others
// act on the page. Then the state, and the calls that match `calls` and the
// boxes, after the page has gone when `close`.
void check(const Scenario& row, const char* calls, bool close)
{
    const qsizetype built = row.steps.indexOf(QStringLiteral("build"));
    Dialogs::Recorder recorder;
    std::unique_ptr<tabTelematicsDlg> page = pageOn(row.steps.mid(0, qMax<qsizetype>(built, 0)));
    ZuAuxSim::clearTrace();
    for (const QString& step : row.steps.mid(built + 1))
        act(*page, recorder, step);
    QCOMPARE(statesOf(*page, row.state), row.state);
    if (close)
        page.reset();
    QCOMPARE(ZuAuxSim::trace().filter(QRegularExpression(QLatin1String(calls))), row.calls);
    QCOMPARE(recorder.texts(), row.boxes);
}
} // namespace

class tst_telematics : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { checkNoWindowLeft(); }
    void settings_data()
    {
        QTest::addColumn<Scenario>("row");

        const QString show = "tabTelematics.show";
        QTest::newRow("everything fitted") << Scenario { .steps
            = { "Telematics/WLANPowerStatus=1", "Telematics/GPSStartUpPowerStatus=1", "build", show },
            .state = { "tabWidget.count=3", "checkBoxWLAN.checked=true", "checkBoxGPS.checked=false",
                "checkBoxGPS_Startup.checked=true", "checkBoxBT_Startup.checked=false",
                "lineEditAvailInterfaces.text=Available interfaces: Bluetooth, WLAN, GSM/GPRS, GPS",
                "lineEditGSMdev.text=/dev/ttyUSB0", "lineEditGPSdev.text=/dev/ttyUSB1",
                "editGpsAcc.text=", "groupBox_2.title=GPS data", "buttonToggleData.text=Serial data" } };
        QTest::newRow("no GPS: its sub-page and switches are gone")
            << Scenario { .steps = { "About/IsGPSMounted=0", "Telematics/GPSPowerStatus=1", "build", show },
                   .state = { "tabWidget.count=2", "checkBoxGPS.visible=false", "checkBoxGPS.checked=false",
                       "checkBoxGPS_Startup.enabled=false",
                       "checkBoxGPS_Startup.toolTip=GPS is not available", "lineEditGPSdev.visible=false",
                       "lineEditAvailInterfaces.text=Available interfaces: Bluetooth, WLAN, GSM/GPRS" } };
        // The index of the GPS sub-page now holds the modem's, which is then
        // taken for the GPS page.
        QTest::newRow("no GPS: index 1 is taken for GPS")
            << Scenario { .steps = { "About/IsGPSMounted=0", "Telematics/GPRSPowerStatus=1", "build", show,
                              "tabWidget.currentIndex=1" },
                   .state = { "editGpsDate.text=GPS is not available!", "pushButtonCall.enabled=true" } };
        QTest::newRow("nothing fitted, a failing query counts as none")
            << Scenario { .steps = { "About/IsWLANMounted=0", "About/IsBTMounted=0", "About/IsGPSMounted=0",
                              "About_getIsGPRSMounted=7", "build", show },
                   .state = { "tabWidget.count=1", "checkBoxGPRS.toolTip=GSM/GPRS is not available",
                       "label_9.visible=false", "lineEditAvailInterfaces.text=Available interfaces: " } };
        QTest::newRow("failed power reads")
            << Scenario { .steps = { "Telematics_getGPRSPowerStatus=2", "Telematics_getWLANPowerStatus=6",
                              "Telematics_getBTPowerStatus=2", "Telematics/GPSStartUpPowerStatus=1",
                              "Telematics_getGPSStartUpPowerStatus=7", "build", show },
                   .state = { "checkBoxGPRS.visible=false", "checkBoxBT.visible=true",
                       "checkBoxGPS_Startup.checked=false" },
                   .boxes = { "Error(6) in getWLANPowerStatus: Timeout, the controller did not answer" } };
        QTest::newRow("switches write at once, failures stay ticked") << Scenario { .steps
            = { "Telematics_setBTStartUpPowerStatus=19", "build", show, "checkBoxGPRS.click",
                "checkBoxWLAN_Startup.click", "checkBoxBT_Startup.click", "checkBoxGPS.click",
                "checkBoxGPS.click" },
            .calls = { "Telematics_setGPRSPowerStatus(1) -> 0",
                "Telematics_setWLANStartUpPowerStatus(1) -> 0", "Telematics_setBTStartUpPowerStatus(1) -> 19",
                "Telematics_setGPSPowerStatus(1) -> 0", "Telematics_setGPSPowerStatus(0) -> 0" },
            .state = { "checkBoxBT_Startup.checked=true" },
            .boxes = { "Error(19) in setBTStartUpPowerStatus: Hardware fault" } };
        const QString noGsm = "Please enable GSM/GPRS power!";
        QTest::newRow("modem page without power") << Scenario { .steps = { show, "tabWidget.currentIndex=2" },
            .state = { "pushButtonCall.enabled=false", "pushButtonGetPIN.toolTip=" + noGsm,
                "textEditGSM.plainText=" + noGsm } };
        QTest::newRow("GPS page without power") << Scenario { .steps = { show, "tabWidget.currentIndex=1" },
            .state = { "buttonToggleData.enabled=false", "editGpsDate.text=Please enable GPS Power!" } };
        const Steps raw { show, "tabWidget.currentIndex=1", "tabTelematics.GPSModeClicked" };
        QTest::newRow("raw view") << Scenario { .steps = raw,
            .state = { "buttonToggleData.text=GPS data", "groupBox_2.title=Serial data",
                "editGpsPos.visible=false", "labelGpsAcc.visible=false", "textEdit.visible=true",
                "textEdit.x=16", "textEdit.y=30", "textEdit.width=400", "textEdit.height=180" } };
        QTest::newRow("raw view and back")
            << Scenario { .steps = raw + Steps { "tabTelematics.GPSModeClicked" },
                   .state = { "buttonToggleData.text=Serial data", "groupBox_2.title=GPS data",
                       "editGpsPos.visible=true", "textEdit.visible=false" } };
    }

    void settings()
    {
        QFETCH(Scenario, row);
        check(row, "^Telematics_set", false);
    }

    // The paths come from the unit's file settings, or are the defaults, and
    // go back there when the page goes, whether edited or not.
    void devicePaths_data()
    {
        QTest::addColumn<Scenario>("row");

        const auto stored = [](const QString& gsm, const QString& gps, int code = 0) {
            return Steps { QStringLiteral("ZuAuxPrivate_setFileSetting(\"ZusettingsGsmPort\", \"%1\") -> %2")
                               .arg(gsm)
                               .arg(code),
                QStringLiteral("ZuAuxPrivate_setFileSetting(\"ZusettingsGpsPort\", \"%1\") -> %2")
                    .arg(gps)
                    .arg(code) };
        };
        QTest::newRow("never stored") << Scenario { .calls = stored("/dev/ttyUSB0", "/dev/ttyUSB1") };
        QTest::newRow("stored") << Scenario { .steps
            = { "File/ZusettingsGsmPort=/dev/pts/7", "File/ZusettingsGpsPort=/dev/ttyS2", "build" },
            .calls = stored("/dev/pts/7", "/dev/ttyS2") };
        QTest::newRow("stored empty") << Scenario { .steps = { "File/ZusettingsGsmPort=", "build" },
            .calls = stored("/dev/ttyUSB0", "/dev/ttyUSB1") };
        QTest::newRow("typed") << Scenario { .steps = { "lineEditGSMdev.text=/dev/ttyACM0" },
            .calls = stored("/dev/ttyACM0", "/dev/ttyUSB1") };
        QTest::newRow("the unit cannot store") << Scenario { .steps
            = { "ZuAuxPrivate_setFileSetting=11", "build", "lineEditGSMdev.text=/dev/ttyACM0" },
            .calls = stored("/dev/ttyACM0", "/dev/ttyUSB1", 11),
            .boxes = { "Error(11) in setFileSetting ZusettingsGsmPort: Flash write failed",
                "Error(11) in setFileSetting ZusettingsGpsPort: Flash write failed" } };
    }

    void devicePaths()
    {
        QFETCH(Scenario, row);
        check(row, "^ZuAuxPrivate_setFileSetting", true);
    }

    // Entering the GPS sub-page starts the reader on the receiver's port;
    // leaving it, or closing the page, stops the reader, which closes the port.
    void gpsPage_data()
    {
        QTest::addColumn<bool>("closePage");
        QTest::newRow("leaving the sub-page") << false;
        QTest::newRow("closing the page") << true;
    }

    void gpsPage()
    {
        QFETCH(bool, closePage);

        PtyDevice device;
        Dialogs::Recorder recorder;
        std::unique_ptr<tabTelematicsDlg> page = pageOn(
            { "Telematics/GPSPowerStatus=1", QStringLiteral("File/ZusettingsGpsPort=") + device.path() });
        page->show();
        act(*page, recorder, "tabWidget.currentIndex=1");
        QVERIFY(serial_dev_gps);
        const termios line = device.attributes();
        QCOMPARE(cfgetospeed(&line), speed_t(B9600));
        QCOMPARE(stateOf(*page, "buttonToggleData.visible"), "buttonToggleData.visible=true");

        const QByteArray nmea("$GPRMC,140307.000,A,5740.1234,N,01158.5678,E,0.13,274.5,210612,,,A*6B\r\n"
                              "$GPGGA,140307.000,5740.1234,N,01158.5678,E,1,07,1.1,62.5,M,41.0,M,,0000*55\r\n"
                              "$PFST,FOM,6*63\r\n");
        // A whole read, so that the reader does not wait for more.
        const QByteArray block = nmea + QByteArray(512 - nmea.size(), '\n');
        device.send(block);
        QTRY_COMPARE_WITH_TIMEOUT(stateOf(*page, "editGpsAcc.text"), "editGpsAcc.text=6 meters", 10000);
        const Steps shown { "editGpsDate.text=2012-06-21 - 14:03:07",
            "editGpsPos.text=5740.1234N 01158.5678E ", "editGpsSat.text=07", "editGpsAlt.text=62.5 meters",
            "editGpsSpeed.text=0.13 knots, Heading: 274.5 degrees",
            "textEdit.plainText=" + QString::fromLatin1(block).remove(u'\r') };
        QCOMPARE(statesOf(*page, shown), shown);

        if (closePage) {
            page.reset();
        } else {
            // The decoded fields start over, all but the accuracy.
            act(*page, recorder, "tabWidget.currentIndex=0");
            const Steps left { "editGpsDate.text=INVALID", "editGpsAcc.text=6 meters",
                "buttonToggleData.visible=false" };
            QCOMPARE(statesOf(*page, left), left);
        }
        QVERIFY(!serial_dev_gps);
        QVERIFY(!gpsThreadRunning);
        QCOMPARE(recorder.texts(), QStringList());
    }
};

QTEST_MAIN(tst_telematics)
#include "tst_telematics.moc"
