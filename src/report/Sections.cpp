#include "report/Sections.h"

#include "hwsupport/HwHandle.h"
#include "report/Formatters.h"

using namespace Korvane;

namespace
{

const uint8_t maxPMSensors = 20;

// Labels are 8-bit texts; the degree sign is the Latin-1 byte 0xB0.
QString latin1(const char* text)
{
    return QString::fromLatin1(text);
}

QString degrees()
{
    return QString::fromLatin1("\xB0"
                               "C");
}

// "<what>. Error(<code>) <library text>\n" for the battery steps.
QString couldNotGet(const char* what, eErr err)
{
    return QStringLiteral("Could not get %1. Error(%2) %3\n")
        .arg(QLatin1String(what))
        .arg(static_cast<int>(err))
        .arg(errorString(err));
}

// One of six texts chosen by a status code; nothing for a code past them.
QString statusText(eErr err, const char* what, unsigned code, const char* const (&texts)[6])
{
    if (err != ERR_SUCCESS)
        return couldNotGet(what, err);
    return code < 6 ? QString::fromLatin1(texts[code]) : QString();
}

// The unit and its battery count the warm hours in the same four bands.
template <typename Timer> QString warmBandLines(eErr err, const Timer& timer)
{
    QString text;
    text += createStringTime(err,
        latin1("Total run time 40-60\xB0"
               "C"),
        timer.runTime40to60);
    text += createStringTime(err,
        latin1("Total run time 60-70\xB0"
               "C"),
        timer.runTime60to70);
    text += createStringTime(err,
        latin1("Total run time 70-80\xB0"
               "C"),
        timer.runTime70to80);
    text += createStringTime(err,
        latin1("Total run time above 80\xB0"
               "C"),
        timer.runTimeAbove80);
    return text;
}

typedef eErr (*TextQuery)(AboutHandle, char*, uint32_t);
typedef eErr (*CountQuery)(AboutHandle, uint8_t*);
typedef eErr (*FlagQuery)(AboutHandle, bool*);

QString textLine(AboutHandle h, const char* label, TextQuery query)
{
    char buffer[200] = {};
    const eErr err = query(h, buffer, sizeof buffer);
    return createString(err, latin1(label), static_cast<const char*>(buffer), QString());
}

QString countLine(AboutHandle h, const char* label, CountQuery query, bool connections)
{
    uint8_t count = 0;
    const eErr err = query(h, &count);
    return connections ? createStringNumberOf(err, latin1(label), count)
                       : createStringNumberOf2(err, latin1(label), count);
}

QString mountedLine(AboutHandle h, const char* label, FlagQuery query)
{
    bool mounted = false;
    const eErr err = query(h, &mounted);
    return createStringMounted(err, latin1(label), mounted);
}

QString pmSensorLabel(int type)
{
    switch (type) {
    case PM_SENSOR_CPU:
        return QStringLiteral("JIDA CPU temp");
    case PM_SENSOR_BOX:
        return QStringLiteral("JIDA box temp");
    case PM_SENSOR_ENVIRONMENT:
        return QStringLiteral("JIDA environment temp");
    case PM_SENSOR_BOARD:
        return QStringLiteral("JIDA board temp");
    case PM_SENSOR_BACKPLANE:
        return QStringLiteral("JIDA backplane temp");
    case PM_SENSOR_CHIPSETS:
        return QStringLiteral("JIDA chipsets temp");
    case PM_SENSOR_VIDEO:
        return QStringLiteral("JIDA video temp");
    case PM_SENSOR_OTHER:
        return QStringLiteral("JIDA other temp");
    default:
        return QStringLiteral("JIDA unknown temp");
    }
}

} // namespace

QString readEeprom()
{
    const AboutRef h;
    QString text = QStringLiteral("Mainboard:\n");
    text += textLine(h, "Main PCB Serial", About_getMainPCBSerial);
    text += textLine(h, "Unit serial number", About_getUnitSerial);
    text += textLine(h, "Main PCB article number", About_getMainPCBArt);
    text += textLine(h, "Main manufacturing date", About_getMainManufacturingDate);
    text += textLine(h, "Main hardware version", About_getMainHWversion);
    text += textLine(h, "Main product revision", About_getMainProdRev);
    text += textLine(h, "Main product art.nr", About_getMainProdArtNr);
    text += countLine(h, "Ethernet", About_getNrOfETHConnections, true);
    text += countLine(h, "CAN", About_getNrOfCANConnections, true);
    text += countLine(h, "Video", About_getNrOfVideoConnections, true);
    text += countLine(h, "USB", About_getNrOfUSBConnections, true);
    text += countLine(h, "Serial", About_getNrOfSerialConnections, true);
    text += countLine(h, "Digital input", About_getNrOfDigIOConnections, true);
    text += mountedLine(h, "Display", About_getIsDisplayAvailable);
    text += mountedLine(h, "Touchscreen", About_getIsTouchScreenAvailable);
    text += countLine(h, "Configurable inputs", About_getNrOfCfgInConnections, false);
    text += countLine(h, "PWM outputs", About_getNrOfPWMOutConnections, false);
    {
        // The button count is an int in the library; the line prints its low byte.
        int buttons = 0;
        const eErr err = About_getNrOfButtons(h, &buttons);
        text += createStringNumberOf2(
            err, QStringLiteral("Configurable buttons"), static_cast<unsigned char>(buttons));
    }

    // Printed whether or not an add-on board is fitted.
    text += QStringLiteral("\nAddon/Telematics board:\n");
    text += textLine(h, "Addon PCB serial", About_getAddOnPCBSerial);
    text += textLine(h, "Addon board article number", About_getAddOnPCBArt);
    text += textLine(h, "Addon manufacturing date", About_getAddOnManufacturingDate);
    text += textLine(h, "Addon hardware version", About_getAddOnHWversion);
    text += mountedLine(h, "WLAN", About_getIsWLANMounted);
    text += mountedLine(h, "GPS", About_getIsGPSMounted);
    text += mountedLine(h, "Bluetooth", About_getIsBTMounted);
    text += mountedLine(h, "GSM/GPRS", About_getIsGPRSMounted);
    return text;
}

QString readDiag()
{
    const DiagnosticRef h;
    QString text = QStringLiteral("Diagnostic data:\n");
    eErr err;

    uint16_t reason = 0;
    err = Diagnostic_getStartupReason(h, &reason);
    text += createString(err, QStringLiteral("Startup reason"), GetStartupReasonStringA(reason), QString());

    reason = 0;
    err = Diagnostic_getShutDownReason(h, &reason);
    // Only reason 31 is shown as a word; every other one as its number.
    if (reason == 31)
        text += createString(err, QStringLiteral("ShutDown reason"), "NoError", QString());
    else
        text += createString(
            err, QStringLiteral("ShutDown reason"), static_cast<unsigned short>(reason), QString());

    uint16_t status = 0;
    err = Diagnostic_getHwErrorStatus(h, &status);
    text += createString(err, QStringLiteral("HW error status"), GetHwErrorStatusStringA(status), QString());

    DiagnosticTimer timer = {};
    err = Diagnostic_getTimer(h, &timer);
    text += createStringTime(err, QStringLiteral("Total run time"), timer.totalRunTime);
    text += createStringTime(err, QStringLiteral("Total suspend time"), timer.totalSuspendTime);
    text += createStringTime(err, QStringLiteral("Total heat time"), timer.totalHeatTime);
    text += warmBandLines(err, timer);

    int16_t minimum = 0;
    int16_t maximum = 0;
    err = Diagnostic_getMinMaxTemp(h, &minimum, &maximum);
    text += createString(err, QStringLiteral("Minimum temp"), static_cast<short>(minimum), degrees());
    text += createString(err, QStringLiteral("Maximum temp"), static_cast<short>(maximum), degrees());

    uint16_t cycles = 0;
    err = Diagnostic_getPowerCycles(h, &cycles);
    text += createString(
        err, QStringLiteral("Number of power cycles"), static_cast<unsigned short>(cycles), QString());

    // The library fails past the last sensor; that failure ends the list. A
    // processor module carries at most 20 sensors, so a library that never
    // fails cannot keep the report going.
    for (uint8_t index = 0; index < maxPMSensors; ++index) {
        int16_t celsius = 0;
        PMTempSensorType type = PM_SENSOR_CPU;
        if (Diagnostic_getPMTemp(h, index, &celsius, &type) != ERR_SUCCESS)
            break;
        text += createString(ERR_SUCCESS, pmSensorLabel(type), static_cast<short>(celsius), degrees());
    }

    int16_t celsius = 0;
    err = Diagnostic_getSSTemp(h, &celsius);
    text += createString(err, QStringLiteral("SS temp"), static_cast<short>(celsius), degrees());
    celsius = 0;
    err = Diagnostic_getPCBTemp(h, &celsius);
    text += createString(err, QStringLiteral("PCB temp"), static_cast<short>(celsius), degrees());
    return text;
}

QString readAdc()
{
    // Channel 1 is not read.
    static const struct {
        uint8_t channel;
        const char* label;
    } channels[] = {
        { 0, "Voltage 24V in" },
        { 2, "Voltage 12V" },
        { 3, "Voltage 12V video" },
        { 4, "Voltage 5V" },
        { 5, "Voltage 3.3V" },
        { 6, "Voltage TFT" },
        { 7, "Voltage 5V STB" },
        { 8, "Voltage 1.9V" },
        { 9, "Voltage 1.8V" },
        { 10, "Voltage 1.5V" },
        { 11, "Voltage 1.2V" },
        { 12, "Voltage 1.05V" },
        { 13, "Voltage 1.0V" },
        { 14, "Voltage 0.9V" },
        { 15, "Voltage SS VREF" },
        { 16, "Voltage 24V Backup" },
        { 17, "Voltage 2.5V" },
        { 18, "Voltage 1.1V" },
        { 19, "Voltage 1.3V PER" },
        { 20, "Voltage 1.3V VDDA" },
        { 21, "Voltage 3V3 STBY" },
        { 22, "Voltage VPMIC" },
        { 23, "Voltage VMAIN" },
    };

    const AdcRef h;
    QString text = QStringLiteral("ADC values\n");
    for (const auto& entry : channels) {
        double volts = 0.0;
        const eErr err = Adc_getVoltage(h, entry.channel, &volts);
        text += createString(err, latin1(entry.label), volts, QStringLiteral("V"));
    }
    return text;
}

QString readBatteryInfo()
{
    // Not a BatteryRef: the early answer for a unit without a battery keeps
    // the handle, as this report always has.
    BatteryHandle h = GetBattery();
    eErr err;

    bool present = false;
    err = Battery_isBatteryPresent(h, &present);
    if (err != ERR_SUCCESS || !present)
        return QStringLiteral("External battery not available.\n");

    QString text;

    static const char* const hwErrorTexts[] = {
        "Battery reports no HW errors\n",
        "Battery error! The thermistor temp sensor is not working\n",
        "Battery error! The secondary temp sensor is not working\n",
        "Battery error! Charging failed\n",
        "Battery error! Overcurrent detected\n",
        "Battery error! Battery not initiated\n",
    };
    uint16_t hwError = 0;
    err = Battery_getHwErrorStatus(h, &hwError);
    text += statusText(err, "battery error status code", hwError, hwErrorTexts);

    char buffer[20] = {};
    err = Battery_getBatteryHWversion(h, buffer, sizeof buffer);
    if (err != ERR_SUCCESS)
        text += couldNotGet("battery HW version", err);
    else
        text += QStringLiteral("Battery HW version: %1\n").arg(QString::fromLatin1(buffer));

    uint8_t major = 0, minor = 0, release = 0, build = 0;
    err = Battery_getBatterySwVersion(h, &major, &minor, &release, &build);
    if (err != ERR_SUCCESS)
        text += couldNotGet("battery SW version", err);
    else
        text += QStringLiteral("Battery SW version: %1.%2.%3.%4\n")
                    .arg(static_cast<unsigned>(major))
                    .arg(static_cast<unsigned>(minor))
                    .arg(static_cast<unsigned>(release))
                    .arg(static_cast<unsigned>(build));

    char serial[20] = {};
    err = Battery_getBatterySerial(h, serial, sizeof serial);
    if (err != ERR_SUCCESS)
        text += couldNotGet("battery serial number", err);
    else
        text += QStringLiteral("Battery serial number: %1\n").arg(QString::fromLatin1(serial));

    static const char* const chargingTexts[] = {
        "Battery is not being charged\n",
        "Battery is being charged\n",
        "Battery is fully charged\n",
        "Temperature is too low to charge the battery\n",
        "Temperature is too high to charge the battery\n",
        "Could not get battery charging status\n",
    };
    uint8_t charging = 0;
    err = Battery_getBatteryChargingStatus(h, &charging);
    text += statusText(err, "battery charging status", charging, chargingTexts);

    uint8_t source = 0;
    err = Battery_getPowerSource(h, &source);
    if (err != ERR_SUCCESS)
        text += couldNotGet("power source", err);
    else if (source == 0)
        text += QStringLiteral("Power source: Battery\n");
    else
        text += QStringLiteral("Power source: External power\n");

    uint8_t level = 0;
    err = Battery_getBatteryVoltageStatus(h, &level);
    if (err != ERR_SUCCESS)
        text += couldNotGet("battery voltage level", err);
    else
        text += QStringLiteral("Battery voltage level: %1%\n").arg(static_cast<unsigned>(level));

    int16_t celsius = 0;
    err = Battery_getBatteryTemp(h, &celsius);
    if (err != ERR_SUCCESS)
        text += couldNotGet("battery temperature", err);
    else
        text += QStringLiteral("Battery temperature: %1 deg C\n").arg(static_cast<int>(celsius));

    int16_t minimum = 0;
    int16_t maximum = 0;
    err = Battery_getMinMaxTemp(h, &minimum, &maximum);
    if (err != ERR_SUCCESS)
        text += couldNotGet("battery min/max temperature", err);
    else
        text += QStringLiteral("Battery minimum temp: %1 deg C, maximum temp: %2 deg C\n")
                    .arg(static_cast<int>(minimum))
                    .arg(static_cast<int>(maximum));

    BatteryTimer timer = {};
    err = Battery_getTimer(h, &timer);
    if (err != ERR_SUCCESS) {
        text += couldNotGet("battery diagnostic times", err);
    } else {
        text += createStringTime(
            ERR_SUCCESS, QStringLiteral("Total run time on main power"), timer.runTimeMainPower);
        text += createStringTime(
            ERR_SUCCESS, QStringLiteral("Total run time on battery power"), timer.runTimeBatteryPower);
        text += createStringTime(ERR_SUCCESS,
            latin1("Total run time < -20\xB0"
                   "C"),
            timer.runTimeBelowMinus20);
        text += createStringTime(ERR_SUCCESS,
            latin1("Total run time -20-0\xB0"
                   "C"),
            timer.runTimeMinus20to0);
        text += createStringTime(ERR_SUCCESS,
            latin1("Total run time 0-40\xB0"
                   "C"),
            timer.runTime0to40);
        text += warmBandLines(ERR_SUCCESS, timer);
    }

    Battery_release(h);
    return text;
}

QString readCpuBoardInfo()
{
    return QString();
}

bool GetPlatform(platformType* out)
{
    *out = PLATFORM_STANDARD;
    return true;
}
