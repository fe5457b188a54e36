// In-process control of the simulated unit, for tests and developer tools.
//
// Only the simulated libzu-aux2 exports these functions; the application never
// calls them. They act on the same state that the library operations use.
//
// Keys
// ----
// Every value of the unit has a key "<Family>/<Name>", the same in profile
// files, in the state file and here. <Name> is the operation name without its
// "<Family>_get" prefix ("Backlight_getIntensity" -> "Backlight/Intensity").
// Indexed values carry the index after an underscore: "CanSetting/Baudrate_2",
// "Config/ButtonFunction_3", "Adc/Voltage_0", "CfgIn/CfgInMode_1".
// Operations with several outputs store each under its own name:
//   Backlight/AutomaticBLParams -> Backlight/SoftTransitions, Backlight/KValue
//   Backlight/AutomaticBLFilter -> Backlight/AverageWindowSize, Backlight/RejectWindowSize,
//                                  Backlight/RejectDeltaInLux, Backlight/SamplingMode
//   Backlight/AutomaticBLStatus (running flag, 0/1)
//   Lightsensor/AverageCalc     -> Lightsensor/AverageCalcRunning (0/1, set by start/stop)
//   FrontLED/Color              -> FrontLED/ColorRed, FrontLED/ColorGreen, FrontLED/ColorBlue
//   FrontLED/Signal             -> FrontLED/SignalFrequency, FrontLED/SignalDutyCycle
//   Diagnostic/MinMaxTemp       -> Diagnostic/MinTemp, Diagnostic/MaxTemp
//   Diagnostic/PMTemp_<i>       -> Diagnostic/PMTemp_<i> and Diagnostic/PMTempType_<i>;
//                                  Diagnostic/PMSensorCount says how many exist
//   Diagnostic/Timer            -> seven comma-separated minute counts
//   Battery/MinMaxTemp          -> Battery/MinTemp, Battery/MaxTemp
//   Battery/BatterySwVersion    -> "a.b.c.d"; AuxVersion/<X>Version likewise ("1.2.3.4")
//   Battery/Timer               -> nine comma-separated minute counts
//   CfgIn/PwmValue_<i>          -> CfgIn/PwmFrequency_<i>, CfgIn/PwmDutyCycle_<i>
//   TouchScreen/AdvancedSetting_<key number>
//   FirmwareUpgrade/ShutDownCount (how often FirmwareUpgrade_shutDown ran)
// Private file settings live under "File/<key>" ("File/Screen_Rotation").
// Enumerations, counts and flags are stored as decimal numbers, floating point
// values as decimal text, texts as they are.
//
// What is fitted is described by the About keys (About/NrOfCANConnections,
// About/IsDisplayAvailable, ...) plus these unit keys:
//   Unit/SuspendSupported (0/1), Unit/HasBattery (0/1), Unit/HasHeater (0/1),
//   Unit/TelematicsAvailable (0/1), Unit/UpgradeEndsWithError (error code,
//   0 = the upgrade ends in state Done).
//
// Result codes
// ------------
// The [errors] section maps an exact operation name to the code it returns
// ("Backlight_getIntensity=2"); "*" applies to every operation without its own
// entry. forceCode() below adds to that map at run time.
#ifndef ZUAUXSIM_H
#define ZUAUXSIM_H

#include <QString>
#include <QStringList>
#include <QVariant>

#if defined(ZUAUXSIM_BUILD)
#define ZUAUXSIM_EXPORT Q_DECL_EXPORT
#else
#define ZUAUXSIM_EXPORT Q_DECL_IMPORT
#endif

namespace ZuAuxSim
{

// Reload the unit from `profile` (a shipped profile name or an INI path) and
// `stateFile` (empty: no state file, nothing persists). Clears forced codes,
// held readings and the in-memory trace, and turns the in-memory trace on.
ZUAUXSIM_EXPORT void reset(
    const QString& profile = QStringLiteral("full"), const QString& stateFile = QString());

// Write a value as a setter would (it persists when a state file is in use);
// false when the state file cannot take it.
ZUAUXSIM_EXPORT bool setValue(const QString& key, const QVariant& value);
// Read a value as the unit holds it now (live readings included).
ZUAUXSIM_EXPORT QVariant value(const QString& key);

// Hold a live reading (temperatures, voltages, illuminance, inputs, battery
// level) at a fixed value; `freezeLive(true)` holds every live reading at its
// profile value.
ZUAUXSIM_EXPORT void hold(const QString& key, const QVariant& value);
ZUAUXSIM_EXPORT void freezeLive(bool frozen);

// Make `operation` (exact name, or "*") answer `code`; clearCodes() removes
// every code forced here (the profile's [errors] stay).
ZUAUXSIM_EXPORT void forceCode(const QString& operation, int code);
ZUAUXSIM_EXPORT void clearCodes();

// The in-memory call trace: one line per call, in the same format as the
// ZUAUX_SIM_TRACE file ("Backlight_setIntensity(255) -> 0").
ZUAUXSIM_EXPORT QStringList trace();
ZUAUXSIM_EXPORT void clearTrace();
// Turns the in-memory trace on or off (reset() turns it on). With no trace
// file and the in-memory trace off, calls build no trace text at all.
ZUAUXSIM_EXPORT void traceCalls(bool on);

} // namespace ZuAuxSim

#endif // ZUAUXSIM_H
