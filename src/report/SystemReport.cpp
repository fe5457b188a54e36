#include "report/SystemReport.h"

#include "hwsupport/HwHandle.h"
#include "hwsupport/Version.h"
#include "report/Formatters.h"
#include "report/Sections.h"

#include <QDateTime>

using namespace Korvane;

namespace
{

QString header(const char* title)
{
    const QString rule(18, QLatin1Char('-'));
    return QStringLiteral("\n%1  %2  %3\n").arg(rule, QLatin1String(title), rule);
}

typedef eErr (*VersionQuery)(AuxVersionHandle, uint8_t*, uint8_t*, uint8_t*, uint8_t*);

QString versionLine(AuxVersionHandle h, const char* label, VersionQuery query)
{
    uint8_t major = 0, minor = 0, release = 0, build = 0;
    const eErr err = query(h, &major, &minor, &release, &build);
    return PrintVersion(QLatin1String(label), major, minor, release, build, err);
}

QString versions()
{
    QString text = QStringLiteral("Zusettings v%1\n").arg(QLatin1String(zusettingsVersion));
    const AuxVersionRef h;
    text += versionLine(h, "Zuaux API", AuxVersion_getZuAuxVersion);
    text += versionLine(h, "Zuaux Driver", AuxVersion_getZuAuxDrvVersion);
    text += versionLine(h, "FPGA", AuxVersion_getFPGAVersion);
    text += versionLine(h, "Front uc", AuxVersion_getFrontVersion);
    text += versionLine(h, "System Supervisor", AuxVersion_getSSVersion);
    text += versionLine(h, "OS version", AuxVersion_getOSVersion);
    return text;
}

QString backlightSettings()
{
    const BacklightRef h;
    QString text = QStringLiteral("Backlight:\n");
    eErr err;

    uint8_t intensity = 0;
    err = Backlight_getIntensity(h, &intensity);
    text += PrintSettingInt(QStringLiteral("Intensity"), intensity, err);

    ZuStatus dimming = ZU_DISABLED;
    err = Backlight_getLedDimming(h, &dimming);
    text += PrintSettingStatus(QStringLiteral("Led dimming"), dimming, err);

    ZuStatus status = ZU_DISABLED;
    err = Backlight_getStatus(h, &status);
    text += PrintSettingInt(QStringLiteral("Backlight Status"), status, err);

    uint8_t automatic = 0;
    err = Backlight_getAutomaticBLStatus(h, &automatic);
    text += PrintSettingInt(QStringLiteral("Automatic backlight Status"), automatic, err);

    bool softTransitions = false;
    double k = 0.0;
    err = Backlight_getAutomaticBLParams(h, &softTransitions, &k);
    if (err != ERR_SUCCESS) {
        text += errorLine("getAutomaticBLParams", err);
    } else {
        uint8_t averageWindowSize = 0;
        uint8_t rejectWindowSize = 0;
        uint32_t rejectDeltaInLux = 0;
        LightsensorSamplingMode samplingMode = LIGHTSENSOR_STANDARD_RANGE;
        err = Backlight_getAutomaticBLFilter(
            h, &averageWindowSize, &rejectWindowSize, &rejectDeltaInLux, &samplingMode);
        if (err != ERR_SUCCESS) {
            text += errorLine("getAutomaticBLFilter", err);
        } else {
            text += QStringLiteral("Automatic backlight settings:\n");
            text += QStringLiteral("   Soft transitions: %1\n").arg(softTransitions ? 1 : 0);
            text += QStringLiteral("   K value: %1\n").arg(doubleText(k));
            text += QStringLiteral("   Average window size: %1\n")
                        .arg(static_cast<unsigned>(averageWindowSize));
            text
                += QStringLiteral("   Reject window size: %1\n").arg(static_cast<unsigned>(rejectWindowSize));
            text += QStringLiteral("   Reject delta in lux: %1\n").arg(rejectDeltaInLux);
            text += QStringLiteral("   Sampling mode: %1\n\n").arg(static_cast<int>(samplingMode));
        }
    }
    return text;
}

QString buzzerSettings()
{
    const BuzzerRef h;
    QString text = QStringLiteral("\nBuzzer:\n");
    eErr err;

    uint16_t frequency = 0;
    err = Buzzer_getFrequency(h, &frequency);
    text += PrintSettingInt(QStringLiteral("Frequency"), frequency, err);
    uint16_t volume = 0;
    err = Buzzer_getVolume(h, &volume);
    text += PrintSettingInt(QStringLiteral("Volume"), volume, err);
    bool trigger = false;
    err = Buzzer_getTrigger(h, &trigger);
    text += PrintSettingInt(QStringLiteral("Trigger (On/Off)"), trigger, err);
    return text;
}

QString canSettings()
{
    const CanSettingRef h;
    QString text = QStringLiteral("\nCan Settings:\n");
    for (uint8_t net = 1; net <= 4; ++net) {
        uint16_t rate = 0;
        const eErr err = CanSetting_getBaudrate(h, net, &rate);
        text += PrintSettingInt(QStringLiteral("CAN%1 Baud rate").arg(net), rate, err);
    }
    return text;
}

QString buttonLine(ConfigHandle h, uint8_t button)
{
    ButtonConfigEnum function = BUTTON_ONLY_MP_ACTION;
    const eErr err = Config_getButtonFunction(h, button, &function);
    return PrintSettingButtonConfig(QStringLiteral("ButtonFunction %1").arg(button), function, err);
}

QString configSettings()
{
    const ConfigRef h;
    QString text = QStringLiteral("\nConfig:\n");
    eErr err;

    ZuStatus status = ZU_DISABLED;
    err = Config_getCanStartupPowerConfig(h, &status);
    text += PrintSettingStatus(QStringLiteral("CanStartupPowerConfig"), status, err);
    status = ZU_DISABLED;
    err = Config_getExtFanStartupPowerConfig(h, &status);
    text += PrintSettingStatus(QStringLiteral("ExtFanStartupPowerConfig"), status, err);

    uint32_t onOffTime = 0;
    err = Config_getExtOnOffSigTrigTime(h, &onOffTime);
    text += PrintSettingInt(QStringLiteral("ExtOnOffSigTrigTime"), static_cast<int>(onOffTime), err);
    uint16_t buttonTime = 0;
    err = Config_getFrontBtnTrigTime(h, &buttonTime);
    text += PrintSettingInt(QStringLiteral("FrontBtnTrigTime"), buttonTime, err);
    int16_t heating = 0;
    err = Config_getHeatingTempLimit(h, &heating);
    text += PrintSettingInt(QStringLiteral("HeatingTempLimit"), heating, err);

    PowerAction action = POWER_ACTION_NONE;
    err = Config_getLongButtonPressAction(h, &action);
    text += PrintSettingAction(QStringLiteral("LongButtonPressAction"), action, err);
    action = POWER_ACTION_NONE;
    err = Config_getShortButtonPressAction(h, &action);
    text += PrintSettingAction(QStringLiteral("ShortButtonPressAction"), action, err);
    action = POWER_ACTION_NONE;
    err = Config_getOnOffSigAction(h, &action);
    text += PrintSettingAction(QStringLiteral("OnOffSigAction"), action, err);

    status = ZU_DISABLED;
    err = Config_getPowerOnStartup(h, &status);
    text += PrintSettingStatus(QStringLiteral("PowerOnStartup"), status, err);

    TriggerConf trigger = TRIGGER_FRONT_BUTTON;
    err = Config_getStartupTriggerConfig(h, &trigger);
    text += PrintSettingTriggerConfig(QStringLiteral("StartupTrigger"), trigger, err);
    double volts = 0.0;
    err = Config_getStartupVoltageConfig(h, &volts);
    text += PrintSettingDouble(QStringLiteral("StartupVoltage"), volts, err);
    uint16_t suspend = 0;
    err = Config_getSuspendMaxTime(h, &suspend);
    text += PrintSettingInt(QStringLiteral("SuspendMaxTime"), suspend, err);
    uint8_t video = 0;
    err = Config_getVideoStartupPowerConfig(h, &video);
    text += PrintSettingInt(QStringLiteral("VideoStartupPowerConfig"), video, err);

    // Buttons 1 to 8 are always asked for (a unit with fewer answers 2 and
    // the line vanishes); 9 and 10 only exist on units that have them.
    int buttons = 0;
    {
        const AboutRef about;
        About_getNrOfButtons(about, &buttons);
    }
    for (uint8_t button = 1; button <= 8; ++button)
        text += buttonLine(h, button);
    if (buttons > 8)
        text += buttonLine(h, 9);
    if (buttons > 9)
        text += buttonLine(h, 10);
    return text;
}

QString pwmSettings()
{
    const PWMOutRef h;
    QString text = QStringLiteral("\n PWM outputs:\n");
    eErr err;
    for (uint8_t channel = 1; channel <= 2; ++channel) {
        uint8_t duty = 0;
        err = PWMOut_getPWMOutputChannelDutyCycle(h, channel, &duty);
        if (err != ERR_SUCCESS)
            text += errorLine("PWMOut_getPWMOutputChannelDutyCycle", err);
        else
            text += QStringLiteral("PWMOut channel %1 duty cycle: %2\n").arg(channel).arg(duty);

        float hertz = 0.0f;
        err = PWMOut_getPWMOutputChannelFrequency(h, channel, &hertz);
        if (err != ERR_SUCCESS)
            text += errorLine("PWMOut_getPWMOutputChannelFrequency", err);
        else
            text += QStringLiteral("PWMOut channel %1 frequency: %2\n").arg(channel).arg(doubleText(hertz));
    }

    uint8_t faults = 0;
    err = PWMOut_getPWMOutputStatus(h, &faults);
    if (err != ERR_SUCCESS) {
        text += errorLine("PWMOut_getPWMOutputStatus", err);
    } else {
        if (faults & 0x01)
            text += QStringLiteral("Status PWMOut channel 1: Not OK\n");
        if (faults & 0x02)
            text += QStringLiteral("Status PWMOut channel 2: Not OK\n");
        if (faults == 0)
            text += QStringLiteral("Status PWMOut channel 1 & 2 OK\n");
    }
    return text;
}

QString frontLedSettings()
{
    const FrontLEDRef h;
    QString text = QStringLiteral("\nFrontLED:\n");
    eErr err;

    ZuStatus enabled = ZU_DISABLED;
    err = FrontLED_getEnabledDuringStartup(h, &enabled);
    text += PrintSettingStatus(QStringLiteral("EnabledDuringStartup"), enabled, err);

    uint8_t red = 0, green = 0, blue = 0;
    err = FrontLED_getColor(h, &red, &green, &blue);
    text += PrintSettingInt(QStringLiteral("Color R"), red, err);
    text += PrintSettingInt(QStringLiteral("Color G"), green, err);
    text += PrintSettingInt(QStringLiteral("Color B"), blue, err);

    typedef eErr (*ByteQuery)(FrontLEDHandle, uint8_t*);
    static const struct {
        const char* label;
        ByteQuery query;
    } times[] = {
        { "IdleTime", FrontLED_getIdleTime },
        { "NrOfPulses", FrontLED_getNrOfPulses },
        { "OffTime", FrontLED_getOffTime },
        { "OnTime", FrontLED_getOnTime },
    };
    for (const auto& entry : times) {
        uint8_t value = 0;
        err = entry.query(h, &value);
        text += PrintSettingInt(QLatin1String(entry.label), value, err);
    }

    double frequency = 0.0;
    uint8_t dutyCycle = 0;
    err = FrontLED_getSignal(h, &frequency, &dutyCycle);
    text += PrintSettingDouble(QStringLiteral("Signal frequency"), frequency, err);
    text += PrintSettingInt(QStringLiteral("Signal duty cycle"), dutyCycle, err);
    return text;
}

QString powerSettings()
{
    const PowerRef h;
    QString text = QStringLiteral("\nPower:\n");
    eErr err;

    ZuStatus status = ZU_DISABLED;
    err = Power_getBLPowerStatus(h, &status);
    text += PrintSettingStatus(QStringLiteral("BLPowerStatus"), status, err);
    status = ZU_DISABLED;
    err = Power_getCanPowerStatus(h, &status);
    text += PrintSettingStatus(QStringLiteral("CanPowerStatus"), status, err);
    status = ZU_DISABLED;
    err = Power_getExtFanPowerStatus(h, &status);
    text += PrintSettingStatus(QStringLiteral("ExtFanPowerStatus"), status, err);
    // A channel mask, so a number rather than Enabled/Disabled.
    uint8_t video = 0;
    err = Power_getVideoPowerStatus(h, &video);
    text += PrintSettingInt(QStringLiteral("VideoPowerStatus"), video, err);
    return text;
}

QString touchScreenSettings()
{
    const TouchScreenRef h;
    QString text = QStringLiteral("\nTouchScreen:\n");
    eErr err;

    uint16_t rightClick = 0;
    err = TouchScreen_getMouseRightClickTime(h, &rightClick);
    text += PrintSettingInt(QStringLiteral("MouseRightClickTime (for mouse profile)"), rightClick, err);

    TouchScreenMode mode = TOUCH_MODE_MOUSE_NEXT_BOOT;
    err = TouchScreen_getMode(h, &mode);
    if (err != ERR_SUCCESS) {
        text += errorLine("TouchScreenMode", err);
    } else {
        const char* name;
        switch (mode) {
        case TOUCH_MODE_MOUSE_NEXT_BOOT:
            name = "Mouse profile (next boot)";
            break;
        case TOUCH_MODE_TOUCH_NEXT_BOOT:
            name = "Touch profile (next boot)";
            break;
        case TOUCH_MODE_MOUSE:
            name = "Mouse profile";
            break;
        case TOUCH_MODE_TOUCH:
            name = "Touch profile";
            break;
        default:
            name = "Undefined value";
            break;
        }
        text += QStringLiteral("TouchScreenMode: %1\n").arg(QLatin1String(name));
    }
    return text;
}

QString telematicsSettings()
{
    const TelematicsRef h;
    QString text = QStringLiteral("\nTelematics:\n");

    int available = 0;
    eErr err = Telematics_getTelematicsAvailable(h, &available);
    text += PrintSettingStatus(
        QStringLiteral("Telematics board available"), static_cast<ZuStatus>(available), err);
    if (err == ERR_SUCCESS && available == ZU_ENABLED) {
        typedef eErr (*StatusQuery)(TelematicsHandle, ZuStatus*);
        static const struct {
            const char* label;
            StatusQuery query;
        } modules[] = {
            { "GPRSPowerStatus", Telematics_getGPRSPowerStatus },
            { "GPRSStartUpPowerStatus", Telematics_getGPRSStartUpPowerStatus },
            { "GPSAntennaStatus", Telematics_getGPSAntennaStatus },
            { "WLANPowerStatus", Telematics_getWLANPowerStatus },
            { "WLANStartUpPowerStatus", Telematics_getWLANStartUpPowerStatus },
        };
        for (const auto& entry : modules) {
            ZuStatus status = ZU_DISABLED;
            err = entry.query(h, &status);
            text += PrintSettingStatus(QLatin1String(entry.label), status, err);
        }
    }
    return text;
}

} // namespace

QString SystemReport()
{
    QString report = QStringLiteral("\nSystem report generated on: %1\n")
                         .arg(QDateTime::currentDateTime().toString(Qt::TextDate));

    report += header("SW Versions");
    report += versions();
    report += header("EEPROM data");
    report += readEeprom();
    report += header("Diagnostic data");
    report += readDiag();
    report += header("ADC data");
    report += readAdc();
    report += header("CPU board data");
    report += readCpuBoardInfo();

    report += header("Settings");
    report += backlightSettings();
    report += buzzerSettings();
    report += canSettings();
    report += configSettings();
    report += pwmSettings();
    report += frontLedSettings();
    report += powerSettings();
    report += touchScreenSettings();
    report += telematicsSettings();
    report += QStringLiteral("\nBattery:\n");
    report += readBatteryInfo();

    report += header("Log Files");
    report += header("End of report");
    return report;
}
