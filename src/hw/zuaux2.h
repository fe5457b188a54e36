// Contract of the unit's auxiliary hardware library, libzu-aux2.
//
// Every hardware value of the unit is read and written through these
// functions. They have C linkage so that the library shipped on the unit can
// replace the simulated unit at link time without rebuilding the application.
//
// Conventions shared by every family:
//  - Get<Family>() returns an opaque handle; <Family>_release(handle) frees it.
//  - Every operation takes the handle first and returns a Korvane::eErr.
//  - Values come back through pointer arguments. A caller that gets a
//    non-zero code treats its outputs as not written.
//  - Text outputs are 8-bit (Latin-1) strings written into a caller buffer of
//    the given size; the library always NUL-terminates within that size.
//  - Numbers (nets, buttons, inputs, channels) count from 1; sensor indexes
//    and ADC channels count from 0.
#ifndef ZUAUX2_H
#define ZUAUX2_H

#include <stdint.h>

namespace Korvane {

// ---------------------------------------------------------------------------
// Result codes
// ---------------------------------------------------------------------------
enum eErr : int {
    ERR_SUCCESS = 0,
    ERR_FAILED = 1,                   // unspecified failure
    ERR_NOT_SUPPORTED = 2,            // the unit lacks the feature or setting
    ERR_INVALID_HANDLE = 3,
    ERR_INVALID_PARAMETER = 4,        // argument out of range
    ERR_BUFFER_TOO_SMALL = 5,
    ERR_TIMEOUT = 6,                  // the controller did not answer in time
    ERR_COMMUNICATION = 7,            // transfer to a controller failed
    ERR_CHECKSUM = 8,                 // corrupt answer from a controller
    ERR_FILE_OPEN = 9,                // firmware or settings file not readable
    ERR_FILE_FORMAT = 10,             // firmware file content not usable
    ERR_FLASH_WRITE = 11,
    ERR_FLASH_VERIFY = 12,
    ERR_BUSY = 13,                    // another operation is in progress
    ERR_NOT_INITIALISED = 14,
    ERR_ACCESS_DENIED = 15,
    ERR_OUT_OF_MEMORY = 16,
    ERR_EEPROM = 17,                  // identity memory unreadable
    ERR_NOT_AVAILABLE = 18,           // value not available at the moment
    ERR_HARDWARE = 19,                // the device reports a hardware fault
    ERR_SENSOR_BUSY = 20,             // light sensor held by the automatic backlight
    ERR_STARTUP_TRIGGER_CONFLICT = 34 // trigger/button combination would leave no way to start
};

// ---------------------------------------------------------------------------
// Enumerations (numeric values are part of the contract)
// ---------------------------------------------------------------------------

// Start-up trigger: a set of event bits.
enum TriggerConf : int {
    TRIGGER_FRONT_BUTTON = 1,
    TRIGGER_ONOFF_SIGNAL = 2,
    TRIGGER_CAN = 4,
    TRIGGER_CI = 8,
    TRIGGER_BOTH = 3,
    TRIGGER_ALL = 15
};

enum PowerAction : int {
    POWER_ACTION_NONE = 0,
    POWER_ACTION_SUSPEND = 1,
    POWER_ACTION_SHUTDOWN = 2
};

enum CanFrameType : int {
    CAN_FRAME_STANDARD = 0,
    CAN_FRAME_EXTENDED = 1,
    CAN_FRAME_STANDARD_EXTENDED = 2
};

// Function of a front button: bit 1 adds the start-up trigger role, bits 2
// and 3 select the action. Odd values and values above 14 are not valid.
enum ButtonConfigEnum : int {
    BUTTON_ONLY_MP_ACTION = 0,
    BUTTON_AS_STARTUP_TRIG = 2,
    BUTTON_AS_ACTION_TRIG = 4,
    BUTTON_AS_ACTION_STARTUP_TRIG = 6,
    BUTTON_AS_BACKLIGHT_DECREASE = 8,
    BUTTON_AS_BACKLIGHT_DECR_STARTUP_TRIG = 10,
    BUTTON_AS_BACKLIGHT_INCREASE = 12,
    BUTTON_AS_BACKLIGHT_INCR_STARTUP_TRIG = 14
};

// On/off state of a peripheral or feature; every value other than 1 reads as
// disabled.
enum ZuStatus : int {
    ZU_DISABLED = 0,
    ZU_ENABLED = 1
};

enum UpgradeState : int {
    UPGRADE_INITIATING = 0,
    UPGRADE_PREPARING_COMMUNICATION = 1,
    UPGRADE_READING_FILE = 2,
    UPGRADE_CONVERTING_FILE = 3,
    UPGRADE_FLASHING = 4,
    UPGRADE_VERIFYING = 5,
    UPGRADE_DONE = 6,
    UPGRADE_COMPLETE_WITH_ERROR = 7
};

// Progress record of a firmware upgrade or verification.
struct UpgradeStatus {
    UpgradeState state;
    uint8_t percent; // 0..100
    eErr errorCode;  // ERR_SUCCESS while no error
};

// Front LED colour; each component 0..15.
struct ZuAuxColor {
    uint8_t red;
    uint8_t green;
    uint8_t blue;
};

enum CfgInModeEnum : int {
    CFGIN_NOT_IN_USE = 0,
    CFGIN_HI_SWITCH = 1,
    CFGIN_LOW_SWITCH = 2,
    CFGIN_VOLTAGE_2V5 = 3,
    CFGIN_VOLTAGE_5V = 4,
    CFGIN_RESISTANCE = 5,
    CFGIN_FREQ_FLOATING = 6,
    CFGIN_FREQ_PULL_UP = 7,
    CFGIN_FREQ_PULL_DOWN = 8
};

// Sampling mode of the light sensor (automatic backlight filter and
// averaging measurement).
enum LightsensorSamplingMode : int {
    LIGHTSENSOR_STANDARD_RANGE = 0,
    LIGHTSENSOR_EXTENDED_RANGE = 1,
    LIGHTSENSOR_AUTO_RANGE = 2
};

enum platformType : int {
    PLATFORM_STANDARD = 0,
    PLATFORM_TYPE1 = 1,
    PLATFORM_TYPE2 = 2
};

enum TouchScreenMode : int {
    TOUCH_MODE_MOUSE_NEXT_BOOT = 0,
    TOUCH_MODE_TOUCH_NEXT_BOOT = 1,
    TOUCH_MODE_MOUSE = 2,
    TOUCH_MODE_TOUCH = 3
};

// Keys of the advanced touch-screen parameters (values in ms or pixels).
enum TouchScreenModeSettings : int {
    TOUCH_RIGHT_CLICK_TIME = 0,
    TOUCH_DOUBLE_CLICK_TIME = 1,
    TOUCH_DOUBLE_CLICK_MAX_CLICK_TIME = 2,
    TOUCH_MAX_RIGHT_CLICK_DISTANCE = 3
};

// Board-vendor (processor module) temperature sensor types; other values are
// unknown sensors.
enum PMTempSensorType : int {
    PM_SENSOR_CPU = 0,
    PM_SENSOR_BOX = 1,
    PM_SENSOR_ENVIRONMENT = 2,
    PM_SENSOR_BOARD = 3,
    PM_SENSOR_BACKPLANE = 4,
    PM_SENSOR_CHIPSETS = 5,
    PM_SENSOR_VIDEO = 6,
    PM_SENSOR_OTHER = 7
};

// Run-time counters of the unit, in minutes, in this order.
struct DiagnosticTimer {
    uint32_t totalRunTime;
    uint32_t totalSuspendTime;
    uint32_t totalHeatTime;
    uint32_t runTime40to60;
    uint32_t runTime60to70;
    uint32_t runTime70to80;
    uint32_t runTimeAbove80;
};

// Run-time counters of the backup battery, in minutes, in this order.
struct BatteryTimer {
    uint32_t runTimeMainPower;
    uint32_t runTimeBatteryPower;
    uint32_t runTimeBelowMinus20;
    uint32_t runTimeMinus20to0;
    uint32_t runTime0to40;
    uint32_t runTime40to60;
    uint32_t runTime60to70;
    uint32_t runTime70to80;
    uint32_t runTimeAbove80;
};

// ---------------------------------------------------------------------------
// Handles: one opaque type per family
// ---------------------------------------------------------------------------
typedef struct AboutObject* AboutHandle;
typedef struct AdcObject* AdcHandle;
typedef struct AuxVersionObject* AuxVersionHandle;
typedef struct BacklightObject* BacklightHandle;
typedef struct BatteryObject* BatteryHandle;
typedef struct BuzzerObject* BuzzerHandle;
typedef struct CanSettingObject* CanSettingHandle;
typedef struct CfgInObject* CfgInHandle;
typedef struct ConfigObject* ConfigHandle;
typedef struct DiagnosticObject* DiagnosticHandle;
typedef struct DigIOObject* DigIOHandle;
typedef struct FirmwareUpgradeObject* FirmwareUpgradeHandle;
typedef struct FrontLEDObject* FrontLEDHandle;
typedef struct LightsensorObject* LightsensorHandle;
typedef struct PowerObject* PowerHandle;
typedef struct PWMOutObject* PWMOutHandle;
typedef struct TelematicsObject* TelematicsHandle;
typedef struct TouchScreenObject* TouchScreenHandle;
typedef struct ZuAuxPrivateObject* ZuAuxPrivateHandle;

extern "C" {

// ---------------------------------------------------------------------------
// Texts (library-owned, read-only, never NULL)
// ---------------------------------------------------------------------------
const char* GetErrorStringA(eErr err);
const char* GetHwErrorStatusStringA(uint16_t status);
const char* GetStartupReasonStringA(uint16_t reason);

// ---------------------------------------------------------------------------
// About: identity and inventory
// ---------------------------------------------------------------------------
AboutHandle GetAbout(void);
void About_release(AboutHandle h);
eErr About_getMainPCBSerial(AboutHandle h, char* buffer, uint32_t size);
eErr About_getMainPCBArt(AboutHandle h, char* buffer, uint32_t size);
eErr About_getMainHWversion(AboutHandle h, char* buffer, uint32_t size);
eErr About_getMainManufacturingDate(AboutHandle h, char* buffer, uint32_t size);
eErr About_getMainProdArtNr(AboutHandle h, char* buffer, uint32_t size);
eErr About_getMainProdRev(AboutHandle h, char* buffer, uint32_t size);
eErr About_getUnitSerial(AboutHandle h, char* buffer, uint32_t size);
eErr About_getAddOnPCBSerial(AboutHandle h, char* buffer, uint32_t size);
eErr About_getAddOnPCBArt(AboutHandle h, char* buffer, uint32_t size);
eErr About_getAddOnHWversion(AboutHandle h, char* buffer, uint32_t size);
eErr About_getAddOnManufacturingDate(AboutHandle h, char* buffer, uint32_t size);
eErr About_getNrOfButtons(AboutHandle h, int* count);
eErr About_getNrOfCANConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfCfgInConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfDigIOConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfETHConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfPWMOutConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfSerialConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfUSBConnections(AboutHandle h, uint8_t* count);
eErr About_getNrOfVideoConnections(AboutHandle h, uint8_t* count);
eErr About_getIsDisplayAvailable(AboutHandle h, bool* available);
eErr About_getIsTouchScreenAvailable(AboutHandle h, bool* available);
eErr About_getIsGPRSMounted(AboutHandle h, bool* mounted);
eErr About_getIsWLANMounted(AboutHandle h, bool* mounted);
eErr About_getIsGPSMounted(AboutHandle h, bool* mounted);
eErr About_getIsBTMounted(AboutHandle h, bool* mounted);

// ---------------------------------------------------------------------------
// Adc: supply voltages, in volts
// ---------------------------------------------------------------------------
AdcHandle GetAdc(void);
void Adc_release(AdcHandle h);
eErr Adc_getVoltage(AdcHandle h, uint8_t channel, double* volts);

// ---------------------------------------------------------------------------
// AuxVersion: firmware and software versions (major.minor.release.build)
// ---------------------------------------------------------------------------
AuxVersionHandle GetAuxVersion(void);
void AuxVersion_release(AuxVersionHandle h);
eErr AuxVersion_getFPGAVersion(AuxVersionHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);
eErr AuxVersion_getSSVersion(AuxVersionHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);
eErr AuxVersion_getFrontVersion(AuxVersionHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);
eErr AuxVersion_getZuAuxVersion(AuxVersionHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);
eErr AuxVersion_getZuAuxDrvVersion(AuxVersionHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);
eErr AuxVersion_getOSVersion(AuxVersionHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);

// ---------------------------------------------------------------------------
// Backlight: display backlight and automatic backlight
// ---------------------------------------------------------------------------
BacklightHandle GetBacklight(void);
void Backlight_release(BacklightHandle h);
eErr Backlight_getIntensity(BacklightHandle h, uint8_t* intensity); // 255 = full
eErr Backlight_setIntensity(BacklightHandle h, uint8_t intensity);
eErr Backlight_getStatus(BacklightHandle h, ZuStatus* status);
eErr Backlight_getHWStatus(BacklightHandle h, bool* ok);
eErr Backlight_getAutomaticBLStatus(BacklightHandle h, uint8_t* running);
eErr Backlight_startAutomaticBL(BacklightHandle h);
eErr Backlight_stopAutomaticBL(BacklightHandle h);
eErr Backlight_getAutomaticBLParams(BacklightHandle h, bool* softTransitions, double* k);
eErr Backlight_setAutomaticBLParams(BacklightHandle h, bool softTransitions);
eErr Backlight_getAutomaticBLFilter(BacklightHandle h, uint8_t* averageWindowSize, uint8_t* rejectWindowSize,
                                    uint32_t* rejectDeltaInLux, LightsensorSamplingMode* samplingMode);
eErr Backlight_setAutomaticBLFilter(BacklightHandle h, uint8_t averageWindowSize, uint8_t rejectWindowSize,
                                    uint32_t rejectDeltaInLux, LightsensorSamplingMode samplingMode);
eErr Backlight_getLedDimming(BacklightHandle h, ZuStatus* status);
eErr Backlight_setLedDimming(BacklightHandle h, ZuStatus status);

// ---------------------------------------------------------------------------
// Battery: optional backup battery
// ---------------------------------------------------------------------------
BatteryHandle GetBattery(void);
void Battery_release(BatteryHandle h);
eErr Battery_isBatteryPresent(BatteryHandle h, bool* present);
eErr Battery_getBatteryChargingStatus(BatteryHandle h, uint8_t* status); // 0..5
eErr Battery_getBatteryVoltageStatus(BatteryHandle h, uint8_t* percent);
eErr Battery_getBatteryTemp(BatteryHandle h, int16_t* celsius);
eErr Battery_getBatteryHWversion(BatteryHandle h, char* buffer, uint32_t size);
eErr Battery_getBatterySwVersion(BatteryHandle h, uint8_t* major, uint8_t* minor, uint8_t* release, uint8_t* build);
eErr Battery_getBatterySerial(BatteryHandle h, char* buffer, uint32_t size);
eErr Battery_getHwErrorStatus(BatteryHandle h, uint16_t* status); // 0..5
eErr Battery_getMinMaxTemp(BatteryHandle h, int16_t* minCelsius, int16_t* maxCelsius);
eErr Battery_getPowerSource(BatteryHandle h, uint8_t* source); // 0 battery, other external
eErr Battery_getTimer(BatteryHandle h, BatteryTimer* timer);

// ---------------------------------------------------------------------------
// Buzzer
// ---------------------------------------------------------------------------
BuzzerHandle GetBuzzer(void);
void Buzzer_release(BuzzerHandle h);
eErr Buzzer_getFrequency(BuzzerHandle h, uint16_t* hertz);
eErr Buzzer_setFrequency(BuzzerHandle h, uint16_t hertz);
eErr Buzzer_getVolume(BuzzerHandle h, uint16_t* volume); // 0..51
eErr Buzzer_setVolume(BuzzerHandle h, uint16_t volume);
eErr Buzzer_getTrigger(BuzzerHandle h, bool* on);
eErr Buzzer_setTrigger(BuzzerHandle h, bool on);

// ---------------------------------------------------------------------------
// CanSetting: per CAN net (counted from 1), baud rate in kbit/s
// ---------------------------------------------------------------------------
CanSettingHandle GetCanSetting(void);
void CanSetting_release(CanSettingHandle h);
eErr CanSetting_getBaudrate(CanSettingHandle h, uint8_t net, uint16_t* kbits);
eErr CanSetting_setBaudrate(CanSettingHandle h, uint8_t net, uint16_t kbits);
eErr CanSetting_getFrameType(CanSettingHandle h, uint8_t net, CanFrameType* type);
eErr CanSetting_setFrameType(CanSettingHandle h, uint8_t net, CanFrameType type);

// ---------------------------------------------------------------------------
// CfgIn: configurable inputs (counted from 1)
// ---------------------------------------------------------------------------
CfgInHandle GetCfgIn(void);
void CfgIn_release(CfgInHandle h);
eErr CfgIn_getCfgInMode(CfgInHandle h, uint8_t input, CfgInModeEnum* mode);
eErr CfgIn_setCfgInMode(CfgInHandle h, uint8_t input, CfgInModeEnum mode);
eErr CfgIn_getMinFrequencyThreshold(CfgInHandle h, uint8_t input, float* hertz);
eErr CfgIn_setMinFrequencyThreshold(CfgInHandle h, uint8_t input, float hertz);
// Switch state, voltage in 0.1 mV or resistance in ohm, by mode.
eErr CfgIn_getValue(CfgInHandle h, uint8_t input, uint16_t* value);
eErr CfgIn_getPwmValue(CfgInHandle h, uint8_t input, float* hertz, uint8_t* dutyCycle);

// ---------------------------------------------------------------------------
// Config: persistent start-up, shutdown and button configuration
// ---------------------------------------------------------------------------
ConfigHandle GetConfig(void);
void Config_release(ConfigHandle h);
eErr Config_getButtonFunction(ConfigHandle h, uint8_t button, ButtonConfigEnum* function);
eErr Config_setButtonFunction(ConfigHandle h, uint8_t button, ButtonConfigEnum function);
eErr Config_getCanStartupPowerConfig(ConfigHandle h, ZuStatus* status);
eErr Config_setCanStartupPowerConfig(ConfigHandle h, bool on);
eErr Config_getExtFanStartupPowerConfig(ConfigHandle h, ZuStatus* status);
eErr Config_setExtFanStartupPowerConfig(ConfigHandle h, bool on);
eErr Config_getVideoStartupPowerConfig(ConfigHandle h, uint8_t* channelMask);
eErr Config_setVideoStartupPowerConfig(ConfigHandle h, uint8_t channelMask);
eErr Config_getExtOnOffSigTrigTime(ConfigHandle h, uint32_t* milliseconds);
eErr Config_setExtOnOffSigTrigTime(ConfigHandle h, uint32_t milliseconds);
eErr Config_getFrontBtnTrigTime(ConfigHandle h, uint16_t* milliseconds);
eErr Config_setFrontBtnTrigTime(ConfigHandle h, uint16_t milliseconds);
eErr Config_getHeatingTempLimit(ConfigHandle h, int16_t* celsius);
eErr Config_setHeatingTempLimit(ConfigHandle h, int16_t celsius);
eErr Config_getLongButtonPressAction(ConfigHandle h, PowerAction* action);
eErr Config_setLongButtonPressAction(ConfigHandle h, PowerAction action);
eErr Config_getShortButtonPressAction(ConfigHandle h, PowerAction* action);
eErr Config_setShortButtonPressAction(ConfigHandle h, PowerAction action);
eErr Config_getOnOffSigAction(ConfigHandle h, PowerAction* action);
eErr Config_setOnOffSigAction(ConfigHandle h, PowerAction action);
eErr Config_getPowerOnStartup(ConfigHandle h, ZuStatus* status);
eErr Config_setPowerOnStartup(ConfigHandle h, bool on);
eErr Config_getStartupTriggerConfig(ConfigHandle h, TriggerConf* trigger);
eErr Config_setStartupTriggerConfig(ConfigHandle h, TriggerConf trigger);
eErr Config_getStartupVoltageConfig(ConfigHandle h, double* volts);
eErr Config_setStartupVoltageConfig(ConfigHandle h, double volts);
eErr Config_getSuspendMaxTime(ConfigHandle h, uint16_t* minutes); // 0 = infinite
eErr Config_setSuspendMaxTime(ConfigHandle h, uint16_t minutes);

// ---------------------------------------------------------------------------
// Diagnostic: reasons, counters and temperatures (degrees Celsius)
// ---------------------------------------------------------------------------
DiagnosticHandle GetDiagnostic(void);
void Diagnostic_release(DiagnosticHandle h);
eErr Diagnostic_getHwErrorStatus(DiagnosticHandle h, uint16_t* status);
eErr Diagnostic_getMinMaxTemp(DiagnosticHandle h, int16_t* minCelsius, int16_t* maxCelsius);
eErr Diagnostic_getPCBTemp(DiagnosticHandle h, int16_t* celsius);
eErr Diagnostic_getSSTemp(DiagnosticHandle h, int16_t* celsius);
// Processor-module sensor number `index` (from 0); fails past the last one.
eErr Diagnostic_getPMTemp(DiagnosticHandle h, uint8_t index, int16_t* celsius, PMTempSensorType* type);
eErr Diagnostic_getPowerCycles(DiagnosticHandle h, uint16_t* cycles);
eErr Diagnostic_getShutDownReason(DiagnosticHandle h, uint16_t* reason);
eErr Diagnostic_getStartupReason(DiagnosticHandle h, uint16_t* reason);
eErr Diagnostic_getTimer(DiagnosticHandle h, DiagnosticTimer* timer);

// ---------------------------------------------------------------------------
// DigIO: four digital inputs and outputs as a mask (bit 0 = channel 1)
// ---------------------------------------------------------------------------
DigIOHandle GetDigIO(void);
void DigIO_release(DigIOHandle h);
eErr DigIO_getDigIO(DigIOHandle h, uint8_t* mask);
eErr DigIO_setDigIO(DigIOHandle h, uint8_t mask);

// ---------------------------------------------------------------------------
// FirmwareUpgrade: program or verify auxiliary firmware from a file
// ---------------------------------------------------------------------------
FirmwareUpgradeHandle GetFirmwareUpgrade(void);
void FirmwareUpgrade_release(FirmwareUpgradeHandle h);
eErr FirmwareUpgrade_startFpgaUpgrade(FirmwareUpgradeHandle h, const char* fileName, bool blocking);
eErr FirmwareUpgrade_startFpgaVerification(FirmwareUpgradeHandle h, const char* fileName, bool blocking);
eErr FirmwareUpgrade_startSSUpgrade(FirmwareUpgradeHandle h, const char* fileName, bool blocking);
eErr FirmwareUpgrade_startSSVerification(FirmwareUpgradeHandle h, const char* fileName, bool blocking);
eErr FirmwareUpgrade_startFrontUpgrade(FirmwareUpgradeHandle h, const char* fileName, bool blocking);
eErr FirmwareUpgrade_startFrontVerification(FirmwareUpgradeHandle h, const char* fileName, bool blocking);
eErr FirmwareUpgrade_getUpgradeStatus(FirmwareUpgradeHandle h, UpgradeStatus* status, bool wait);
eErr FirmwareUpgrade_shutDown(FirmwareUpgradeHandle h);

// ---------------------------------------------------------------------------
// FrontLED: the button backlight
// ---------------------------------------------------------------------------
FrontLEDHandle GetFrontLED(void);
void FrontLED_release(FrontLEDHandle h);
eErr FrontLED_getColor(FrontLEDHandle h, uint8_t* red, uint8_t* green, uint8_t* blue);
eErr FrontLED_setColor(FrontLEDHandle h, uint8_t red, uint8_t green, uint8_t blue);
eErr FrontLED_getEnabledDuringStartup(FrontLEDHandle h, ZuStatus* status);
eErr FrontLED_setEnabledDuringStartup(FrontLEDHandle h, bool enabled);
eErr FrontLED_getIdleTime(FrontLEDHandle h, uint8_t* hundredsOfMs);
eErr FrontLED_setIdleTime(FrontLEDHandle h, uint8_t hundredsOfMs);
eErr FrontLED_getNrOfPulses(FrontLEDHandle h, uint8_t* pulses);
eErr FrontLED_setNrOfPulses(FrontLEDHandle h, uint8_t pulses);
eErr FrontLED_getOffTime(FrontLEDHandle h, uint8_t* time);
eErr FrontLED_setOffTime(FrontLEDHandle h, uint8_t time);
eErr FrontLED_getOnTime(FrontLEDHandle h, uint8_t* time);
eErr FrontLED_setOnTime(FrontLEDHandle h, uint8_t time);
eErr FrontLED_getSignal(FrontLEDHandle h, double* hertz, uint8_t* dutyCycle);
eErr FrontLED_setSignal(FrontLEDHandle h, double hertz, uint8_t dutyCycle);
eErr FrontLED_setOff(FrontLEDHandle h);

// ---------------------------------------------------------------------------
// Lightsensor: averaging illuminance measurement
// ---------------------------------------------------------------------------
LightsensorHandle GetLightsensor(void);
void Lightsensor_release(LightsensorHandle h);
eErr Lightsensor_getOperatingRange(LightsensorHandle h, uint8_t* range); // 0 standard, 1 extended
eErr Lightsensor_setOperatingRange(LightsensorHandle h, uint8_t range);
eErr Lightsensor_getAverageIlluminance(LightsensorHandle h, uint16_t* lux);
// Answers ERR_SENSOR_BUSY while the automatic backlight is running.
eErr Lightsensor_startAverageCalc(LightsensorHandle h, uint8_t averageWindowSize, uint8_t rejectWindowSize,
                                  uint16_t rejectDeltaInLux, LightsensorSamplingMode samplingMode);
eErr Lightsensor_stopAverageCalc(LightsensorHandle h);

// ---------------------------------------------------------------------------
// Power: peripheral power now
// ---------------------------------------------------------------------------
PowerHandle GetPower(void);
void Power_release(PowerHandle h);
eErr Power_getBLPowerStatus(PowerHandle h, ZuStatus* status);
eErr Power_setBLPowerStatus(PowerHandle h, bool on);
eErr Power_getCanPowerStatus(PowerHandle h, ZuStatus* status);
eErr Power_setCanPowerStatus(PowerHandle h, bool on);
eErr Power_getExtFanPowerStatus(PowerHandle h, ZuStatus* status);
eErr Power_setExtFanPowerStatus(PowerHandle h, bool on);
eErr Power_getVideoPowerStatus(PowerHandle h, uint8_t* channelMask);
eErr Power_setVideoPowerStatus(PowerHandle h, uint8_t channelMask);

// ---------------------------------------------------------------------------
// PWMOut: PWM outputs (counted from 1)
// ---------------------------------------------------------------------------
PWMOutHandle GetPWMOut(void);
void PWMOut_release(PWMOutHandle h);
eErr PWMOut_getPWMOutputChannelDutyCycle(PWMOutHandle h, uint8_t channel, uint8_t* percent);
eErr PWMOut_setPWMOutputChannelDutyCycle(PWMOutHandle h, uint8_t channel, uint8_t percent);
eErr PWMOut_getPWMOutputChannelFrequency(PWMOutHandle h, uint8_t channel, float* hertz);
eErr PWMOut_setPWMOutputChannelFrequency(PWMOutHandle h, uint8_t channel, float hertz);
eErr PWMOut_getPWMOutputStatus(PWMOutHandle h, uint8_t* faultMask); // bit 0 = output 1
eErr PWMOut_setPWMOutOff(PWMOutHandle h, uint8_t channel);

// ---------------------------------------------------------------------------
// Telematics: add-on board with GSM/GPRS, WLAN, GPS and Bluetooth
// ---------------------------------------------------------------------------
TelematicsHandle GetTelematics(void);
void Telematics_release(TelematicsHandle h);
eErr Telematics_getTelematicsAvailable(TelematicsHandle h, int* available); // 1 = present
eErr Telematics_getGPRSPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setGPRSPowerStatus(TelematicsHandle h, bool on);
eErr Telematics_getGPRSStartUpPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setGPRSStartUpPowerStatus(TelematicsHandle h, ZuStatus status);
eErr Telematics_getWLANPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setWLANPowerStatus(TelematicsHandle h, bool on);
eErr Telematics_getWLANStartUpPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setWLANStartUpPowerStatus(TelematicsHandle h, ZuStatus status);
eErr Telematics_getGPSPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setGPSPowerStatus(TelematicsHandle h, bool on);
eErr Telematics_getGPSStartUpPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setGPSStartUpPowerStatus(TelematicsHandle h, ZuStatus status);
eErr Telematics_getBTPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setBTPowerStatus(TelematicsHandle h, bool on);
eErr Telematics_getBTStartUpPowerStatus(TelematicsHandle h, ZuStatus* status);
eErr Telematics_setBTStartUpPowerStatus(TelematicsHandle h, ZuStatus status);
eErr Telematics_getGPSAntennaStatus(TelematicsHandle h, ZuStatus* status);

// ---------------------------------------------------------------------------
// TouchScreen
// ---------------------------------------------------------------------------
TouchScreenHandle GetTouchScreen(void);
void TouchScreen_release(TouchScreenHandle h);
eErr TouchScreen_getMode(TouchScreenHandle h, TouchScreenMode* mode);
eErr TouchScreen_setMode(TouchScreenHandle h, TouchScreenMode mode);
eErr TouchScreen_getMouseRightClickTime(TouchScreenHandle h, uint16_t* milliseconds);
eErr TouchScreen_setMouseRightClickTime(TouchScreenHandle h, uint16_t milliseconds);
eErr TouchScreen_getAdvancedSetting(TouchScreenHandle h, TouchScreenModeSettings key, uint16_t* value);
eErr TouchScreen_setAdvancedSetting(TouchScreenHandle h, TouchScreenModeSettings key, uint16_t value);

// ---------------------------------------------------------------------------
// ZuAuxPrivate: named unit file settings (8-bit text)
// ---------------------------------------------------------------------------
ZuAuxPrivateHandle GetZuAuxPrivate(void);
void ZuAuxPrivate_release(ZuAuxPrivateHandle h);
eErr ZuAuxPrivate_getFileSetting(ZuAuxPrivateHandle h, const char* key, char* buffer, uint32_t size);
eErr ZuAuxPrivate_setFileSetting(ZuAuxPrivateHandle h, const char* key, const char* value);

} // extern "C"
} // namespace Korvane

#endif // ZUAUX2_H
