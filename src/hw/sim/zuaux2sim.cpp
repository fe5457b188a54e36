// Every operation of libzu-aux2 on top of the simulated unit's value store.
// The value of "<Family>_get<Name>" lives under the key "<Family>/<Name>".
#include "simops.h"
#include "zuaux2.h"

#include <QFile>
#include <QThread>

#include <algorithm>
#include <cmath>

using namespace SimOps;

namespace Korvane
{

namespace
{

// A firmware run lasts this long in wall time.
constexpr double upgradeSeconds = 2.0;

// Values kept under keys of their own by operations with several outputs,
// and the unit's own keys.
SIM_RANGE(softTransitionsRange, "Backlight/SoftTransitions", bool)
SIM_RANGE(kValueRange, "Backlight/KValue", double)
SIM_RANGE(averageWindowRange, "Backlight/AverageWindowSize", uint8_t)
SIM_RANGE(rejectWindowRange, "Backlight/RejectWindowSize", uint8_t)
SIM_RANGE(rejectDeltaRange, "Backlight/RejectDeltaInLux", uint32_t)
SIM_RANGE(samplingModeRange, "Backlight/SamplingMode", LightsensorSamplingMode)
SIM_RANGE(batteryMinTempRange, "Battery/MinTemp", int16_t)
SIM_RANGE(batteryMaxTempRange, "Battery/MaxTemp", int16_t)
SIM_RANGE(pwmFrequencyRange, "CfgIn/PwmFrequency_", float)
SIM_RANGE(pwmDutyCycleRange, "CfgIn/PwmDutyCycle_", uint8_t)
SIM_RANGE(minTempRange, "Diagnostic/MinTemp", int16_t)
SIM_RANGE(maxTempRange, "Diagnostic/MaxTemp", int16_t)
SIM_RANGE(pmTempRange, "Diagnostic/PMTemp_", int16_t)
SIM_RANGE(pmTempTypeRange, "Diagnostic/PMTempType_", PMTempSensorType)
SIM_RANGE(adcVoltageRange, "Adc/Voltage_", double)
SIM_RANGE(colorRedRange, "FrontLED/ColorRed", uint8_t)
SIM_RANGE(colorGreenRange, "FrontLED/ColorGreen", uint8_t)
SIM_RANGE(colorBlueRange, "FrontLED/ColorBlue", uint8_t)
SIM_RANGE(signalFrequencyRange, "FrontLED/SignalFrequency", double)
SIM_RANGE(signalDutyCycleRange, "FrontLED/SignalDutyCycle", uint8_t)
SIM_RANGE(advancedSettingRange, "TouchScreen/AdvancedSetting_", uint16_t)
// One sensor for each index an 8-bit sensor number can give.
const SimStore::ValueRange pmSensorCountRange("Diagnostic/PMSensorCount", 0, 256, true);

bool validStatus(int status)
{
    return status == ZU_DISABLED || status == ZU_ENABLED;
}
bool validAction(int action)
{
    return action >= POWER_ACTION_NONE && action <= POWER_ACTION_SHUTDOWN;
}
bool validButtonFunction(int function)
{
    return function >= 0 && function <= 14 && function % 2 == 0;
}
bool within(double value, double lowest, double highest)
{
    return std::isfinite(value) && value >= lowest && value <= highest;
}
bool validMask(Store& u, const QString& countKey, int mask)
{
    return mask >= 0 && mask < (1LL << std::clamp(u.integer(countKey), 0, 62));
}

bool hasDisplay(Store& u)
{
    return flag(u, QStringLiteral("About/IsDisplayAvailable"));
}
bool hasTouch(Store& u)
{
    return flag(u, QStringLiteral("About/IsTouchScreenAvailable"));
}
bool hasBattery(Store& u)
{
    return flag(u, QStringLiteral("Unit/HasBattery"));
}
bool hasTelematics(Store& u)
{
    return flag(u, QStringLiteral("Unit/TelematicsAvailable"));
}
bool hasCount(Store& u, const QString& countKey)
{
    return u.integer(countKey) > 0;
}

// The unit must stay startable: without the on/off signal as a trigger, the
// front button must be one and at least one button must carry the start-up
// role. `button` (0 = none) is checked with `function` instead of its own.
bool startable(Store& u, int trigger, int button, int function)
{
    if (trigger & TRIGGER_ONOFF_SIGNAL)
        return true;
    if (!(trigger & TRIGGER_FRONT_BUTTON))
        return false;
    const int buttons = u.integer(QStringLiteral("About/NrOfButtons"));
    for (int b = 1; b <= buttons; ++b) {
        const QString key = indexed("Config/ButtonFunction", b);
        const int f = b == button ? function : (u.has(key) ? u.integer(key) : 0);
        if (f & BUTTON_AS_STARTUP_TRIG)
            return true;
    }
    return false;
}

eErr startUpgrade(const char* operation, FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    const eErr code = run(operation, h, traceArgs(fileName, blocking), [&](Store& u) -> eErr {
        if (!fileName)
            return ERR_INVALID_PARAMETER;
        const double started = u.scratch(QStringLiteral("UpgradeStarted")).toDouble();
        if (u.scratch(QStringLiteral("UpgradeStarted")).isValid() && u.elapsed() - started < upgradeSeconds)
            return ERR_BUSY;
        QFile file(QFile::decodeName(fileName));
        if (!file.open(QIODevice::ReadOnly))
            return ERR_FILE_OPEN;
        if (file.size() == 0)
            return ERR_FILE_FORMAT;
        u.setScratch(QStringLiteral("UpgradeStarted"), u.elapsed());
        return ERR_SUCCESS;
    });
    if (code == ERR_SUCCESS && blocking)
        QThread::msleep(static_cast<unsigned long>(upgradeSeconds * 1000) + 50);
    return code;
}

} // namespace

#define SIM_FAMILY(Family)                                                                                   \
    struct Family##Object {                                                                                  \
        char tag;                                                                                            \
    };                                                                                                       \
    Family##Handle Get##Family(void)                                                                         \
    {                                                                                                        \
        static Family##Object object {};                                                                     \
        traceHandleCall("Get" #Family "()");                                                                 \
        return &object;                                                                                      \
    }                                                                                                        \
    void Family##_release(Family##Handle)                                                                    \
    {                                                                                                        \
        traceHandleCall(#Family "_release()");                                                               \
    }

#define SIM_GET(Family, Name, Type, fitted)                                                                  \
    SIM_RANGE(Family##_get##Name##_range, #Family "/" #Name, Type)                                           \
    eErr Family##_get##Name(Family##Handle h, Type* out)                                                     \
    {                                                                                                        \
        return run(#Family "_get" #Name, h, QString(), [&](Store& u) -> eErr {                               \
            if (!(fitted))                                                                                   \
                return ERR_NOT_SUPPORTED;                                                                    \
            return getOne(u, QStringLiteral(#Family "/" #Name), out);                                        \
        });                                                                                                  \
    }

#define SIM_SET(Family, Name, Type, fitted, valid)                                                           \
    SIM_RANGE(Family##_set##Name##_range, #Family "/" #Name, Type)                                           \
    eErr Family##_set##Name(Family##Handle h, Type value)                                                    \
    {                                                                                                        \
        return run(#Family "_set" #Name, h, traceArgs(value), [&](Store& u) -> eErr {                        \
            if (!(fitted))                                                                                   \
                return ERR_NOT_SUPPORTED;                                                                    \
            return setOne(u, QStringLiteral(#Family "/" #Name), value, (valid));                             \
        });                                                                                                  \
    }

#define SIM_GET_AT(Family, Name, Type, countKey)                                                             \
    SIM_RANGE(Family##_get##Name##_range, #Family "/" #Name "_", Type)                                       \
    eErr Family##_get##Name(Family##Handle h, uint8_t index, Type* out)                                      \
    {                                                                                                        \
        return run(#Family "_get" #Name, h, traceArgs(index), [&](Store& u) -> eErr {                        \
            if (!inRange(u, QStringLiteral(countKey), index))                                                \
                return ERR_NOT_SUPPORTED;                                                                    \
            return getOne(u, indexed(#Family "/" #Name, index), out);                                        \
        });                                                                                                  \
    }

#define SIM_SET_AT(Family, Name, Type, countKey, valid)                                                      \
    SIM_RANGE(Family##_set##Name##_range, #Family "/" #Name "_", Type)                                       \
    eErr Family##_set##Name(Family##Handle h, uint8_t index, Type value)                                     \
    {                                                                                                        \
        return run(#Family "_set" #Name, h, traceArgs(index, value), [&](Store& u) -> eErr {                 \
            if (!inRange(u, QStringLiteral(countKey), index))                                                \
                return ERR_NOT_SUPPORTED;                                                                    \
            return setOne(u, indexed(#Family "/" #Name, index), value, (valid));                             \
        });                                                                                                  \
    }

#define SIM_TEXT(Family, Name, fitted)                                                                       \
    eErr Family##_get##Name(Family##Handle h, char* buffer, uint32_t size)                                   \
    {                                                                                                        \
        return run(#Family "_get" #Name, h, QString(), [&](Store& u) -> eErr {                               \
            const QString key = QStringLiteral(#Family "/" #Name);                                           \
            if (!(fitted) || !u.has(key))                                                                    \
                return ERR_NOT_SUPPORTED;                                                                    \
            return copyText(u.text(key), buffer, size);                                                      \
        });                                                                                                  \
    }

#define SIM_VERSION(Family, Name, fitted)                                                                    \
    eErr Family##_get##Name(                                                                                 \
        Family##Handle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build)                  \
    {                                                                                                        \
        return run(#Family "_get" #Name, h, QString(), [&](Store& u) -> eErr {                               \
            if (!(fitted))                                                                                   \
                return ERR_NOT_SUPPORTED;                                                                    \
            return getVersion(u, QStringLiteral(#Family "/" #Name), major, minor, release, build);           \
        });                                                                                                  \
    }

// ---------------------------------------------------------------------------
SIM_FAMILY(About)
SIM_TEXT(About, MainPCBSerial, true)
SIM_TEXT(About, MainPCBArt, true)
SIM_TEXT(About, MainHWversion, true)
SIM_TEXT(About, MainManufacturingDate, true)
SIM_TEXT(About, MainProdArtNr, true)
SIM_TEXT(About, MainProdRev, true)
SIM_TEXT(About, UnitSerial, true)
SIM_TEXT(About, AddOnPCBSerial, hasTelematics(u))
SIM_TEXT(About, AddOnPCBArt, hasTelematics(u))
SIM_TEXT(About, AddOnHWversion, hasTelematics(u))
SIM_TEXT(About, AddOnManufacturingDate, hasTelematics(u))
SIM_GET(About, NrOfButtons, int, true)
SIM_GET(About, NrOfCANConnections, uint8_t, true)
SIM_GET(About, NrOfCfgInConnections, uint8_t, true)
SIM_GET(About, NrOfDigIOConnections, uint8_t, true)
SIM_GET(About, NrOfETHConnections, uint8_t, true)
SIM_GET(About, NrOfPWMOutConnections, uint8_t, true)
SIM_GET(About, NrOfSerialConnections, uint8_t, true)
SIM_GET(About, NrOfUSBConnections, uint8_t, true)
SIM_GET(About, NrOfVideoConnections, uint8_t, true)
SIM_GET(About, IsDisplayAvailable, bool, true)
SIM_GET(About, IsTouchScreenAvailable, bool, true)
SIM_GET(About, IsGPRSMounted, bool, hasTelematics(u))
SIM_GET(About, IsWLANMounted, bool, hasTelematics(u))
SIM_GET(About, IsGPSMounted, bool, hasTelematics(u))
SIM_GET(About, IsBTMounted, bool, hasTelematics(u))

// ---------------------------------------------------------------------------
SIM_FAMILY(Adc)

eErr Adc_getVoltage(AdcHandle h, uint8_t channel, double* volts)
{
    // A channel exists exactly when the profile gives it a voltage.
    return run("Adc_getVoltage", h, traceArgs(channel),
        [&](Store& u) { return getOne(u, indexed("Adc/Voltage", channel), volts); });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(AuxVersion)
SIM_VERSION(AuxVersion, FPGAVersion, true)
SIM_VERSION(AuxVersion, SSVersion, true)
SIM_VERSION(AuxVersion, FrontVersion, true)
SIM_VERSION(AuxVersion, ZuAuxVersion, true)
SIM_VERSION(AuxVersion, ZuAuxDrvVersion, true)
SIM_VERSION(AuxVersion, OSVersion, true)

// ---------------------------------------------------------------------------
SIM_FAMILY(Backlight)
SIM_GET(Backlight, Intensity, uint8_t, hasDisplay(u))
SIM_SET(Backlight, Intensity, uint8_t, hasDisplay(u), true)
SIM_GET(Backlight, Status, ZuStatus, hasDisplay(u))
SIM_GET(Backlight, HWStatus, bool, hasDisplay(u))
SIM_GET(Backlight, AutomaticBLStatus, uint8_t, hasDisplay(u))
SIM_GET(Backlight, LedDimming, ZuStatus, hasDisplay(u))
SIM_SET(Backlight, LedDimming, ZuStatus, hasDisplay(u), validStatus(value))

static eErr setAutomaticBL(const char* operation, BacklightHandle h, int running)
{
    return run(operation, h, QString(), [&](Store& u) -> eErr {
        const QString key = QStringLiteral("Backlight/AutomaticBLStatus");
        if (!hasDisplay(u) || !u.has(key))
            return ERR_NOT_SUPPORTED;
        u.write(key, running);
        return ERR_SUCCESS;
    });
}

eErr Backlight_startAutomaticBL(BacklightHandle h)
{
    return setAutomaticBL("Backlight_startAutomaticBL", h, 1);
}
eErr Backlight_stopAutomaticBL(BacklightHandle h)
{
    return setAutomaticBL("Backlight_stopAutomaticBL", h, 0);
}

eErr Backlight_getAutomaticBLParams(BacklightHandle h, bool* softTransitions, double* k)
{
    return run("Backlight_getAutomaticBLParams", h, QString(), [&](Store& u) -> eErr {
        if (!hasDisplay(u))
            return ERR_NOT_SUPPORTED;
        return getPair(u, QStringLiteral("Backlight/SoftTransitions"), softTransitions,
            QStringLiteral("Backlight/KValue"), k);
    });
}

eErr Backlight_setAutomaticBLParams(BacklightHandle h, bool softTransitions)
{
    return run("Backlight_setAutomaticBLParams", h, traceArgs(softTransitions), [&](Store& u) -> eErr {
        if (!hasDisplay(u))
            return ERR_NOT_SUPPORTED;
        return setOne(u, QStringLiteral("Backlight/SoftTransitions"), softTransitions, true);
    });
}

static const char* const blFilterKeys[] = { "Backlight/AverageWindowSize", "Backlight/RejectWindowSize",
    "Backlight/RejectDeltaInLux", "Backlight/SamplingMode" };

static bool hasAll(Store& u, const char* const* keys, int count)
{
    for (int i = 0; i < count; ++i) {
        if (!u.has(u.key(keys[i])))
            return false;
    }
    return true;
}

eErr Backlight_getAutomaticBLFilter(BacklightHandle h, uint8_t* averageWindowSize, uint8_t* rejectWindowSize,
    uint32_t* rejectDeltaInLux, LightsensorSamplingMode* samplingMode)
{
    return run("Backlight_getAutomaticBLFilter", h, QString(), [&](Store& u) -> eErr {
        if (!hasDisplay(u) || !hasAll(u, blFilterKeys, 4))
            return ERR_NOT_SUPPORTED;
        if (!averageWindowSize || !rejectWindowSize || !rejectDeltaInLux || !samplingMode)
            return ERR_INVALID_PARAMETER;
        *averageWindowSize = fromStore<uint8_t>(u, u.key(blFilterKeys[0]));
        *rejectWindowSize = fromStore<uint8_t>(u, u.key(blFilterKeys[1]));
        *rejectDeltaInLux = fromStore<uint32_t>(u, u.key(blFilterKeys[2]));
        *samplingMode = fromStore<LightsensorSamplingMode>(u, u.key(blFilterKeys[3]));
        return ERR_SUCCESS;
    });
}

eErr Backlight_setAutomaticBLFilter(BacklightHandle h, uint8_t averageWindowSize, uint8_t rejectWindowSize,
    uint32_t rejectDeltaInLux, LightsensorSamplingMode samplingMode)
{
    return run("Backlight_setAutomaticBLFilter", h,
        traceArgs(averageWindowSize, rejectWindowSize, rejectDeltaInLux, samplingMode),
        [&](Store& u) -> eErr {
            if (!hasDisplay(u) || !hasAll(u, blFilterKeys, 4))
                return ERR_NOT_SUPPORTED;
            if (averageWindowSize < 1 || samplingMode < LIGHTSENSOR_STANDARD_RANGE
                || samplingMode > LIGHTSENSOR_AUTO_RANGE)
                return ERR_INVALID_PARAMETER;
            u.write(u.key(blFilterKeys[0]), averageWindowSize);
            u.write(u.key(blFilterKeys[1]), rejectWindowSize);
            u.write(u.key(blFilterKeys[2]), rejectDeltaInLux);
            u.write(u.key(blFilterKeys[3]), int(samplingMode));
            return ERR_SUCCESS;
        });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(Battery)

eErr Battery_isBatteryPresent(BatteryHandle h, bool* present)
{
    return run("Battery_isBatteryPresent", h, QString(), [&](Store& u) -> eErr {
        if (!present)
            return ERR_INVALID_PARAMETER;
        *present = hasBattery(u);
        return ERR_SUCCESS;
    });
}

SIM_GET(Battery, BatteryChargingStatus, uint8_t, hasBattery(u))
SIM_GET(Battery, BatteryVoltageStatus, uint8_t, hasBattery(u))
SIM_GET(Battery, BatteryTemp, int16_t, hasBattery(u))
SIM_TEXT(Battery, BatteryHWversion, hasBattery(u))
SIM_VERSION(Battery, BatterySwVersion, hasBattery(u))
SIM_TEXT(Battery, BatterySerial, hasBattery(u))
SIM_GET(Battery, HwErrorStatus, uint16_t, hasBattery(u))
SIM_GET(Battery, PowerSource, uint8_t, hasBattery(u))

eErr Battery_getMinMaxTemp(BatteryHandle h, int16_t* minCelsius, int16_t* maxCelsius)
{
    return run("Battery_getMinMaxTemp", h, QString(), [&](Store& u) -> eErr {
        if (!hasBattery(u))
            return ERR_NOT_SUPPORTED;
        return getPair(
            u, QStringLiteral("Battery/MinTemp"), minCelsius, QStringLiteral("Battery/MaxTemp"), maxCelsius);
    });
}

// Minute counters stored as one comma-separated list; missing counts read 0.
static bool readCounters(Store& u, const QString& key, uint32_t* counters, int count)
{
    if (!u.has(key))
        return false;
    const QStringList parts = u.text(key).split(QLatin1Char(','));
    for (int i = 0; i < count; ++i)
        counters[i] = i < parts.size() ? parts.at(i).trimmed().toUInt() : 0;
    return true;
}

eErr Battery_getTimer(BatteryHandle h, BatteryTimer* timer)
{
    return run("Battery_getTimer", h, QString(), [&](Store& u) -> eErr {
        uint32_t counters[9];
        if (!hasBattery(u) || !readCounters(u, QStringLiteral("Battery/Timer"), counters, 9))
            return ERR_NOT_SUPPORTED;
        if (!timer)
            return ERR_INVALID_PARAMETER;
        *timer = BatteryTimer { counters[0], counters[1], counters[2], counters[3], counters[4], counters[5],
            counters[6], counters[7], counters[8] };
        return ERR_SUCCESS;
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(Buzzer)
SIM_GET(Buzzer, Frequency, uint16_t, true)
SIM_SET(Buzzer, Frequency, uint16_t, true, value >= 1 && value <= 20000)
SIM_GET(Buzzer, Volume, uint16_t, true)
SIM_SET(Buzzer, Volume, uint16_t, true, value <= 51)
SIM_GET(Buzzer, Trigger, bool, true)
SIM_SET(Buzzer, Trigger, bool, true, true)

// ---------------------------------------------------------------------------
SIM_FAMILY(CanSetting)
SIM_GET_AT(CanSetting, Baudrate, uint16_t, "About/NrOfCANConnections")
SIM_SET_AT(CanSetting, Baudrate, uint16_t, "About/NrOfCANConnections", value >= 10 && value <= 1000)
SIM_GET_AT(CanSetting, FrameType, CanFrameType, "About/NrOfCANConnections")
SIM_SET_AT(CanSetting, FrameType, CanFrameType, "About/NrOfCANConnections",
    value >= CAN_FRAME_STANDARD && value <= CAN_FRAME_STANDARD_EXTENDED)

// ---------------------------------------------------------------------------
SIM_FAMILY(CfgIn)
SIM_GET_AT(CfgIn, CfgInMode, CfgInModeEnum, "About/NrOfCfgInConnections")
SIM_SET_AT(CfgIn, CfgInMode, CfgInModeEnum, "About/NrOfCfgInConnections",
    value >= CFGIN_NOT_IN_USE && value <= CFGIN_FREQ_PULL_DOWN)
SIM_GET_AT(CfgIn, MinFrequencyThreshold, float, "About/NrOfCfgInConnections")
SIM_SET_AT(CfgIn, MinFrequencyThreshold, float, "About/NrOfCfgInConnections", within(value, 0, 100000))
SIM_GET_AT(CfgIn, Value, uint16_t, "About/NrOfCfgInConnections")

eErr CfgIn_getPwmValue(CfgInHandle h, uint8_t input, float* hertz, uint8_t* dutyCycle)
{
    return run("CfgIn_getPwmValue", h, traceArgs(input), [&](Store& u) -> eErr {
        if (!inRange(u, QStringLiteral("About/NrOfCfgInConnections"), input))
            return ERR_NOT_SUPPORTED;
        return getPair(
            u, indexed("CfgIn/PwmFrequency", input), hertz, indexed("CfgIn/PwmDutyCycle", input), dutyCycle);
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(Config)
SIM_GET_AT(Config, ButtonFunction, ButtonConfigEnum, "About/NrOfButtons")

eErr Config_setButtonFunction(ConfigHandle h, uint8_t button, ButtonConfigEnum function)
{
    return run("Config_setButtonFunction", h, traceArgs(button, function), [&](Store& u) -> eErr {
        const QString key = indexed("Config/ButtonFunction", button);
        if (!inRange(u, QStringLiteral("About/NrOfButtons"), button) || !u.has(key))
            return ERR_NOT_SUPPORTED;
        if (!validButtonFunction(function))
            return ERR_INVALID_PARAMETER;
        const int trigger = u.integer(QStringLiteral("Config/StartupTriggerConfig"));
        if (!startable(u, trigger, button, function))
            return ERR_STARTUP_TRIGGER_CONFLICT;
        u.write(key, int(function));
        return ERR_SUCCESS;
    });
}

SIM_GET(Config, CanStartupPowerConfig, ZuStatus, hasCount(u, QStringLiteral("About/NrOfCANConnections")))
SIM_SET(Config, CanStartupPowerConfig, bool, hasCount(u, QStringLiteral("About/NrOfCANConnections")), true)
SIM_GET(Config, ExtFanStartupPowerConfig, ZuStatus, true)
SIM_SET(Config, ExtFanStartupPowerConfig, bool, true, true)
SIM_GET(Config, VideoStartupPowerConfig, uint8_t, hasCount(u, QStringLiteral("About/NrOfVideoConnections")))
SIM_SET(Config, VideoStartupPowerConfig, uint8_t, hasCount(u, QStringLiteral("About/NrOfVideoConnections")),
    validMask(u, QStringLiteral("About/NrOfVideoConnections"), value))
SIM_GET(Config, ExtOnOffSigTrigTime, uint32_t, true)
SIM_SET(Config, ExtOnOffSigTrigTime, uint32_t, true, true)
SIM_GET(Config, FrontBtnTrigTime, uint16_t, true)
SIM_SET(Config, FrontBtnTrigTime, uint16_t, true, true)
SIM_GET(Config, HeatingTempLimit, int16_t, flag(u, QStringLiteral("Unit/HasHeater")))
SIM_SET(
    Config, HeatingTempLimit, int16_t, flag(u, QStringLiteral("Unit/HasHeater")), value >= -40 && value <= 85)
SIM_GET(Config, LongButtonPressAction, PowerAction, true)
SIM_SET(Config, LongButtonPressAction, PowerAction, true, validAction(value))
SIM_GET(Config, ShortButtonPressAction, PowerAction, true)
SIM_SET(Config, ShortButtonPressAction, PowerAction, true, validAction(value))
SIM_GET(Config, OnOffSigAction, PowerAction, true)
SIM_SET(Config, OnOffSigAction, PowerAction, true, validAction(value))
SIM_GET(Config, PowerOnStartup, ZuStatus, true)
SIM_SET(Config, PowerOnStartup, bool, true, true)
SIM_GET(Config, StartupTriggerConfig, TriggerConf, true)

eErr Config_setStartupTriggerConfig(ConfigHandle h, TriggerConf trigger)
{
    return run("Config_setStartupTriggerConfig", h, traceArgs(trigger), [&](Store& u) -> eErr {
        const QString key = QStringLiteral("Config/StartupTriggerConfig");
        if (!u.has(key))
            return ERR_NOT_SUPPORTED;
        if (trigger < 1 || trigger > TRIGGER_ALL)
            return ERR_INVALID_PARAMETER;
        if (!startable(u, trigger, 0, 0))
            return ERR_STARTUP_TRIGGER_CONFLICT;
        u.write(key, int(trigger));
        return ERR_SUCCESS;
    });
}

SIM_GET(Config, StartupVoltageConfig, double, true)
SIM_SET(Config, StartupVoltageConfig, double, true, within(value, 0, 36))
SIM_GET(Config, SuspendMaxTime, uint16_t, flag(u, QStringLiteral("Unit/SuspendSupported")))
SIM_SET(Config, SuspendMaxTime, uint16_t, flag(u, QStringLiteral("Unit/SuspendSupported")), true)

// ---------------------------------------------------------------------------
SIM_FAMILY(Diagnostic)
SIM_GET(Diagnostic, HwErrorStatus, uint16_t, true)
SIM_GET(Diagnostic, PCBTemp, int16_t, true)
SIM_GET(Diagnostic, SSTemp, int16_t, true)
SIM_GET(Diagnostic, PowerCycles, uint16_t, true)
SIM_GET(Diagnostic, ShutDownReason, uint16_t, true)
SIM_GET(Diagnostic, StartupReason, uint16_t, true)

eErr Diagnostic_getMinMaxTemp(DiagnosticHandle h, int16_t* minCelsius, int16_t* maxCelsius)
{
    return run("Diagnostic_getMinMaxTemp", h, QString(), [&](Store& u) {
        return getPair(u, QStringLiteral("Diagnostic/MinTemp"), minCelsius,
            QStringLiteral("Diagnostic/MaxTemp"), maxCelsius);
    });
}

eErr Diagnostic_getPMTemp(DiagnosticHandle h, uint8_t index, int16_t* celsius, PMTempSensorType* type)
{
    return run("Diagnostic_getPMTemp", h, traceArgs(index), [&](Store& u) -> eErr {
        const QString count = QStringLiteral("Diagnostic/PMSensorCount");
        if (!u.has(count))
            return ERR_NOT_SUPPORTED;
        // Past the last sensor is a bad index, which callers use to end their loop.
        if (index >= u.integer(count))
            return ERR_INVALID_PARAMETER;
        if (!celsius || !type)
            return ERR_INVALID_PARAMETER;
        *celsius = fromStore<int16_t>(u, indexed("Diagnostic/PMTemp", index));
        *type = fromStore<PMTempSensorType>(u, indexed("Diagnostic/PMTempType", index));
        return ERR_SUCCESS;
    });
}

eErr Diagnostic_getTimer(DiagnosticHandle h, DiagnosticTimer* timer)
{
    return run("Diagnostic_getTimer", h, QString(), [&](Store& u) -> eErr {
        uint32_t counters[7];
        if (!readCounters(u, QStringLiteral("Diagnostic/Timer"), counters, 7))
            return ERR_NOT_SUPPORTED;
        if (!timer)
            return ERR_INVALID_PARAMETER;
        *timer = DiagnosticTimer { counters[0], counters[1], counters[2], counters[3], counters[4],
            counters[5], counters[6] };
        return ERR_SUCCESS;
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(DigIO)
SIM_GET(DigIO, DigIO, uint8_t, hasCount(u, QStringLiteral("About/NrOfDigIOConnections")))
SIM_SET(DigIO, DigIO, uint8_t, hasCount(u, QStringLiteral("About/NrOfDigIOConnections")), value <= 15)

// ---------------------------------------------------------------------------
SIM_FAMILY(FirmwareUpgrade)

eErr FirmwareUpgrade_startFpgaUpgrade(FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    return startUpgrade("FirmwareUpgrade_startFpgaUpgrade", h, fileName, blocking);
}
eErr FirmwareUpgrade_startFpgaVerification(FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    return startUpgrade("FirmwareUpgrade_startFpgaVerification", h, fileName, blocking);
}
eErr FirmwareUpgrade_startSSUpgrade(FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    return startUpgrade("FirmwareUpgrade_startSSUpgrade", h, fileName, blocking);
}
eErr FirmwareUpgrade_startSSVerification(FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    return startUpgrade("FirmwareUpgrade_startSSVerification", h, fileName, blocking);
}
eErr FirmwareUpgrade_startFrontUpgrade(FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    return startUpgrade("FirmwareUpgrade_startFrontUpgrade", h, fileName, blocking);
}
eErr FirmwareUpgrade_startFrontVerification(FirmwareUpgradeHandle h, const char* fileName, bool blocking)
{
    return startUpgrade("FirmwareUpgrade_startFrontVerification", h, fileName, blocking);
}

eErr FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle h, UpgradeStatus* status, bool wait)
{
    // Pace the caller's polling loop without holding the unit.
    if (wait)
        QThread::msleep(30);
    return run("FirmwareUpgrade_getUpgradeStatus", h, traceArgs(wait), [&](Store& u) -> eErr {
        const QVariant started = u.scratch(QStringLiteral("UpgradeStarted"));
        if (!started.isValid())
            return ERR_NOT_INITIALISED;
        if (!status)
            return ERR_INVALID_PARAMETER;
        const double progress = (u.elapsed() - started.toDouble()) / upgradeSeconds;
        if (progress < 1.0) {
            *status = UpgradeStatus { UpgradeState(int(progress * UPGRADE_DONE)), uint8_t(progress * 100),
                ERR_SUCCESS };
            return ERR_SUCCESS;
        }
        // A failing run stops just short of the end, in verification.
        const auto failure = eErr(u.integer(QStringLiteral("Unit/UpgradeEndsWithError")));
        if (failure != ERR_SUCCESS)
            *status = UpgradeStatus { UPGRADE_COMPLETE_WITH_ERROR, 99, failure };
        else
            *status = UpgradeStatus { UPGRADE_DONE, 100, ERR_SUCCESS };
        return ERR_SUCCESS;
    });
}

eErr FirmwareUpgrade_shutDown(FirmwareUpgradeHandle h)
{
    return run("FirmwareUpgrade_shutDown", h, QString(), [&](Store& u) -> eErr {
        const QString key = QStringLiteral("FirmwareUpgrade/ShutDownCount");
        u.write(key, u.integer(key) + 1);
        return ERR_SUCCESS;
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(FrontLED)

static const char* const colorKeys[] = { "FrontLED/ColorRed", "FrontLED/ColorGreen", "FrontLED/ColorBlue" };

eErr FrontLED_getColor(FrontLEDHandle h, uint8_t* red, uint8_t* green, uint8_t* blue)
{
    return run("FrontLED_getColor", h, QString(), [&](Store& u) -> eErr {
        if (!hasAll(u, colorKeys, 3))
            return ERR_NOT_SUPPORTED;
        if (!red || !green || !blue)
            return ERR_INVALID_PARAMETER;
        *red = fromStore<uint8_t>(u, u.key(colorKeys[0]));
        *green = fromStore<uint8_t>(u, u.key(colorKeys[1]));
        *blue = fromStore<uint8_t>(u, u.key(colorKeys[2]));
        return ERR_SUCCESS;
    });
}

eErr FrontLED_setColor(FrontLEDHandle h, uint8_t red, uint8_t green, uint8_t blue)
{
    return run("FrontLED_setColor", h, traceArgs(red, green, blue), [&](Store& u) -> eErr {
        if (!hasAll(u, colorKeys, 3))
            return ERR_NOT_SUPPORTED;
        if (red > 15 || green > 15 || blue > 15)
            return ERR_INVALID_PARAMETER;
        u.write(u.key(colorKeys[0]), red);
        u.write(u.key(colorKeys[1]), green);
        u.write(u.key(colorKeys[2]), blue);
        return ERR_SUCCESS;
    });
}

SIM_GET(FrontLED, EnabledDuringStartup, ZuStatus, true)
SIM_SET(FrontLED, EnabledDuringStartup, bool, true, true)
SIM_GET(FrontLED, IdleTime, uint8_t, true)
SIM_SET(FrontLED, IdleTime, uint8_t, true, true)
SIM_GET(FrontLED, NrOfPulses, uint8_t, true)
SIM_SET(FrontLED, NrOfPulses, uint8_t, true, true)
SIM_GET(FrontLED, OffTime, uint8_t, true)
SIM_SET(FrontLED, OffTime, uint8_t, true, true)
SIM_GET(FrontLED, OnTime, uint8_t, true)
SIM_SET(FrontLED, OnTime, uint8_t, true, true)

eErr FrontLED_getSignal(FrontLEDHandle h, double* hertz, uint8_t* dutyCycle)
{
    return run("FrontLED_getSignal", h, QString(), [&](Store& u) {
        return getPair(u, QStringLiteral("FrontLED/SignalFrequency"), hertz,
            QStringLiteral("FrontLED/SignalDutyCycle"), dutyCycle);
    });
}

// The signal drives the LED; setting it switches the LED on, setOff off.
eErr FrontLED_setSignal(FrontLEDHandle h, double hertz, uint8_t dutyCycle)
{
    return run("FrontLED_setSignal", h, traceArgs(hertz, dutyCycle), [&](Store& u) -> eErr {
        const QString frequency = QStringLiteral("FrontLED/SignalFrequency");
        const QString duty = QStringLiteral("FrontLED/SignalDutyCycle");
        if (!u.has(frequency) || !u.has(duty))
            return ERR_NOT_SUPPORTED;
        if (!within(hertz, 0.1, 100) || dutyCycle > 100)
            return ERR_INVALID_PARAMETER;
        u.write(frequency, toStore(hertz));
        u.write(duty, dutyCycle);
        u.write(QStringLiteral("FrontLED/On"), 1);
        return ERR_SUCCESS;
    });
}

eErr FrontLED_setOff(FrontLEDHandle h)
{
    return run("FrontLED_setOff", h, QString(), [&](Store& u) -> eErr {
        u.write(QStringLiteral("FrontLED/On"), 0);
        return ERR_SUCCESS;
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(Lightsensor)
SIM_GET(Lightsensor, OperatingRange, uint8_t, true)
SIM_SET(Lightsensor, OperatingRange, uint8_t, true, value <= 1)
SIM_GET(Lightsensor, AverageIlluminance, uint16_t, true)

eErr Lightsensor_startAverageCalc(LightsensorHandle h, uint8_t averageWindowSize, uint8_t rejectWindowSize,
    uint16_t rejectDeltaInLux, LightsensorSamplingMode samplingMode)
{
    return run("Lightsensor_startAverageCalc", h,
        traceArgs(averageWindowSize, rejectWindowSize, rejectDeltaInLux, samplingMode),
        [&](Store& u) -> eErr {
            const QString key = QStringLiteral("Lightsensor/AverageCalcRunning");
            if (!u.has(key))
                return ERR_NOT_SUPPORTED;
            if (u.integer(QStringLiteral("Backlight/AutomaticBLStatus")) == 1)
                return ERR_SENSOR_BUSY;
            if (averageWindowSize < 1 || samplingMode < LIGHTSENSOR_STANDARD_RANGE
                || samplingMode > LIGHTSENSOR_AUTO_RANGE)
                return ERR_INVALID_PARAMETER;
            u.write(key, 1);
            return ERR_SUCCESS;
        });
}

eErr Lightsensor_stopAverageCalc(LightsensorHandle h)
{
    return run("Lightsensor_stopAverageCalc", h, QString(), [&](Store& u) -> eErr {
        const QString key = QStringLiteral("Lightsensor/AverageCalcRunning");
        if (!u.has(key))
            return ERR_NOT_SUPPORTED;
        u.write(key, 0);
        return ERR_SUCCESS;
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(Power)
SIM_GET(Power, BLPowerStatus, ZuStatus, hasDisplay(u))
SIM_SET(Power, BLPowerStatus, bool, hasDisplay(u), true)
SIM_GET(Power, CanPowerStatus, ZuStatus, hasCount(u, QStringLiteral("About/NrOfCANConnections")))
SIM_SET(Power, CanPowerStatus, bool, hasCount(u, QStringLiteral("About/NrOfCANConnections")), true)
SIM_GET(Power, ExtFanPowerStatus, ZuStatus, true)
SIM_SET(Power, ExtFanPowerStatus, bool, true, true)
SIM_GET(Power, VideoPowerStatus, uint8_t, hasCount(u, QStringLiteral("About/NrOfVideoConnections")))
SIM_SET(Power, VideoPowerStatus, uint8_t, hasCount(u, QStringLiteral("About/NrOfVideoConnections")),
    validMask(u, QStringLiteral("About/NrOfVideoConnections"), value))

// ---------------------------------------------------------------------------
SIM_FAMILY(PWMOut)
SIM_GET_AT(PWMOut, PWMOutputChannelDutyCycle, uint8_t, "About/NrOfPWMOutConnections")
SIM_SET_AT(PWMOut, PWMOutputChannelDutyCycle, uint8_t, "About/NrOfPWMOutConnections", value <= 100)
SIM_GET_AT(PWMOut, PWMOutputChannelFrequency, float, "About/NrOfPWMOutConnections")
SIM_SET_AT(PWMOut, PWMOutputChannelFrequency, float, "About/NrOfPWMOutConnections", within(value, 0, 100000))
SIM_GET(PWMOut, PWMOutputStatus, uint8_t, hasCount(u, QStringLiteral("About/NrOfPWMOutConnections")))

eErr PWMOut_setPWMOutOff(PWMOutHandle h, uint8_t channel)
{
    return run("PWMOut_setPWMOutOff", h, traceArgs(channel), [&](Store& u) -> eErr {
        if (!inRange(u, QStringLiteral("About/NrOfPWMOutConnections"), channel))
            return ERR_NOT_SUPPORTED;
        return setOne(u, indexed("PWMOut/PWMOutputChannelDutyCycle", channel), 0, true);
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(Telematics)

eErr Telematics_getTelematicsAvailable(TelematicsHandle h, int* available)
{
    return run("Telematics_getTelematicsAvailable", h, QString(), [&](Store& u) -> eErr {
        if (!available)
            return ERR_INVALID_PARAMETER;
        *available = hasTelematics(u) ? 1 : 0;
        return ERR_SUCCESS;
    });
}

#define SIM_TELEMATICS_MODULE(Module)                                                                        \
    SIM_GET(Telematics, Module##PowerStatus, ZuStatus,                                                       \
        hasTelematics(u) && flag(u, QStringLiteral("About/Is" #Module "Mounted")))                           \
    SIM_SET(Telematics, Module##PowerStatus, bool,                                                           \
        hasTelematics(u) && flag(u, QStringLiteral("About/Is" #Module "Mounted")), true)                     \
    SIM_GET(Telematics, Module##StartUpPowerStatus, ZuStatus,                                                \
        hasTelematics(u) && flag(u, QStringLiteral("About/Is" #Module "Mounted")))                           \
    SIM_SET(Telematics, Module##StartUpPowerStatus, ZuStatus,                                                \
        hasTelematics(u) && flag(u, QStringLiteral("About/Is" #Module "Mounted")), validStatus(value))

SIM_TELEMATICS_MODULE(GPRS)
SIM_TELEMATICS_MODULE(WLAN)
SIM_TELEMATICS_MODULE(GPS)
SIM_TELEMATICS_MODULE(BT)
SIM_GET(
    Telematics, GPSAntennaStatus, ZuStatus, hasTelematics(u) && flag(u, QStringLiteral("About/IsGPSMounted")))

// ---------------------------------------------------------------------------
SIM_FAMILY(TouchScreen)
SIM_GET(TouchScreen, Mode, TouchScreenMode, hasTouch(u))
SIM_SET(TouchScreen, Mode, TouchScreenMode, hasTouch(u),
    value >= TOUCH_MODE_MOUSE_NEXT_BOOT && value <= TOUCH_MODE_TOUCH)
SIM_GET(TouchScreen, MouseRightClickTime, uint16_t, hasTouch(u))
SIM_SET(TouchScreen, MouseRightClickTime, uint16_t, hasTouch(u), true)

eErr TouchScreen_getAdvancedSetting(TouchScreenHandle h, TouchScreenModeSettings key, uint16_t* value)
{
    return run("TouchScreen_getAdvancedSetting", h, traceArgs(key), [&](Store& u) -> eErr {
        if (!hasTouch(u))
            return ERR_NOT_SUPPORTED;
        if (key < TOUCH_RIGHT_CLICK_TIME || key > TOUCH_MAX_RIGHT_CLICK_DISTANCE)
            return ERR_INVALID_PARAMETER;
        return getOne(u, indexed("TouchScreen/AdvancedSetting", key), value);
    });
}

eErr TouchScreen_setAdvancedSetting(TouchScreenHandle h, TouchScreenModeSettings key, uint16_t value)
{
    return run("TouchScreen_setAdvancedSetting", h, traceArgs(key, value), [&](Store& u) -> eErr {
        if (!hasTouch(u))
            return ERR_NOT_SUPPORTED;
        if (key < TOUCH_RIGHT_CLICK_TIME || key > TOUCH_MAX_RIGHT_CLICK_DISTANCE)
            return ERR_INVALID_PARAMETER;
        return setOne(u, indexed("TouchScreen/AdvancedSetting", key), value, true);
    });
}

// ---------------------------------------------------------------------------
SIM_FAMILY(ZuAuxPrivate)

static bool validSettingName(const char* key)
{
    return key && *key && !std::strchr(key, '/') && !std::strchr(key, '\\');
}

eErr ZuAuxPrivate_getFileSetting(ZuAuxPrivateHandle h, const char* key, char* buffer, uint32_t size)
{
    return run("ZuAuxPrivate_getFileSetting", h, traceArgs(key), [&](Store& u) -> eErr {
        if (!validSettingName(key))
            return ERR_INVALID_PARAMETER;
        const QString name = QStringLiteral("File/") + QString::fromLatin1(key);
        // A setting never written does not exist: a plain failure.
        if (!u.has(name))
            return ERR_FAILED;
        return copyText(u.text(name), buffer, size);
    });
}

eErr ZuAuxPrivate_setFileSetting(ZuAuxPrivateHandle h, const char* key, const char* value)
{
    return run("ZuAuxPrivate_setFileSetting", h, traceArgs(key, value), [&](Store& u) -> eErr {
        if (!validSettingName(key) || !value)
            return ERR_INVALID_PARAMETER;
        u.write(QStringLiteral("File/") + QString::fromLatin1(key), QString::fromLatin1(value));
        return ERR_SUCCESS;
    });
}

} // namespace Korvane
