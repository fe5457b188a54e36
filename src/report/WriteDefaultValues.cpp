#include "report/WriteDefaultValues.h"

#include "hwsupport/ErrorReport.h"
#include "hwsupport/HwHandle.h"
#include "hwsupport/OSSleep.h"
#include "report/Sections.h"

#include <QByteArray>

#include <algorithm>

using namespace Korvane;

namespace
{

// More nets than this are left as they are.
const uint8_t maxCanNets = 7;
// A unit has at most this many front buttons; a larger count is not believed.
const int maxButtons = 10;

struct Inventory {
    uint8_t can = 0;
    uint8_t video = 0;
    int buttons = 0;
    uint8_t pwmOutputs = 0;
    uint8_t cfgInputs = 0;
};

// A failed query leaves its count at 0, which skips that hardware.
Inventory readInventory()
{
    Inventory inventory;
    const AboutRef h;
    About_getNrOfCANConnections(h, &inventory.can);
    About_getNrOfVideoConnections(h, &inventory.video);
    About_getNrOfButtons(h, &inventory.buttons);
    About_getNrOfPWMOutConnections(h, &inventory.pwmOutputs);
    About_getNrOfCfgInConnections(h, &inventory.cfgInputs);
    return inventory;
}

void writeBacklight()
{
    const BacklightRef h;
    showErr(Backlight_setIntensity(h, 255), "setIntensity");
    showErr(Backlight_stopAutomaticBL(h), "stopAutomaticBL");
    showErr(Backlight_setAutomaticBLParams(h, false), "setAutomaticBLParams");
    showErr(Backlight_setAutomaticBLFilter(h, 5, 5, 50, LIGHTSENSOR_AUTO_RANGE), "setAutomaticBLFilter");
    showErr(Backlight_setLedDimming(h, ZU_ENABLED), "setLedDimming");
}

void writeBuzzer()
{
    const BuzzerRef h;
    showErr(Buzzer_setFrequency(h, 700), "setFrequency");
    showErr(Buzzer_setVolume(h, 0), "setVolume");
    showErr(Buzzer_setTrigger(h, false), "setTrigger");
}

void writeCan(uint8_t nets)
{
    const CanSettingRef h;
    for (uint8_t net = 1; net <= nets && net <= maxCanNets; ++net) {
        const QByteArray label = "setBaudrate CAN" + QByteArray::number(net);
        showErr(CanSetting_setBaudrate(h, net, 125), label.constData());
    }
}

void writeConfig(const Inventory& inventory, platformType platform)
{
    const ConfigRef h;

    // Whether the unit can suspend at all decides the power button's action.
    uint16_t scratch = 0;
    const eErr suspend = Config_getSuspendMaxTime(h, &scratch);

    if (inventory.can != 0)
        showErr(Config_setCanStartupPowerConfig(h, false), "setCanStartupPowerConfig");
    showErr(Config_setExtFanStartupPowerConfig(h, false), "setExtFanStartupPowerConfig");
    showErr(Config_setExtOnOffSigTrigTime(h, 4), "setExtOnOffSigTrigTime");
    showErr(Config_setFrontBtnTrigTime(h, 4000), "setFrontBtnTrigTime");
    showErr(Config_setHeatingTempLimit(h, -25), "setHeatingTempLimit");
    showErr(Config_setLongButtonPressAction(h, POWER_ACTION_SHUTDOWN), "setLongButtonPressAction");
    showErr(Config_setOnOffSigAction(h, POWER_ACTION_SHUTDOWN), "setOnOffSigAction");

    if (suspend == ERR_NOT_SUPPORTED) {
        showErr(Config_setShortButtonPressAction(h, POWER_ACTION_SHUTDOWN), "setShortButtonPressAction");
        showErr(Config_setStartupTriggerConfig(h, TRIGGER_BOTH), "setStartupTriggerConfig");
        showErr(Config_setStartupVoltageConfig(h, 9.0), "setStartupVoltageConfig");
    } else {
        showErr(Config_setShortButtonPressAction(h, POWER_ACTION_SUSPEND), "setShortButtonPressAction");
        showErr(Config_setStartupTriggerConfig(h, TRIGGER_BOTH), "setStartupTriggerConfig");
        showErr(Config_setStartupVoltageConfig(h, 9.0), "setStartupVoltageConfig");
        showErr(Config_setSuspendMaxTime(h, 60), "setSuspendMaxTime");
    }

    if (inventory.video != 0)
        showErr(Config_setVideoStartupPowerConfig(h, 0), "setVideoStartupPowerConfig");
    showErr(Config_setPowerOnStartup(h, true), "setPowerOnStartup");

    if (platform == PLATFORM_TYPE1 || platform == PLATFORM_TYPE2) {
        Config_setStartupTriggerConfig(h, TRIGGER_BOTH);
        Config_setShortButtonPressAction(h, POWER_ACTION_SHUTDOWN);
        Config_setLongButtonPressAction(h, POWER_ACTION_SHUTDOWN);
        Config_setOnOffSigAction(h, POWER_ACTION_NONE);
    }

    for (int button = std::min(inventory.buttons, maxButtons); button >= 1; --button)
        showErr(Config_setButtonFunction(h, static_cast<uint8_t>(button), BUTTON_ONLY_MP_ACTION),
            "Config_setButtonFunction");
}

void writeCfgInputs(uint8_t inputs)
{
    const CfgInRef h;
    for (int input = inputs; input >= 1; --input) {
        showErr(CfgIn_setMinFrequencyThreshold(h, static_cast<uint8_t>(input), 1.0f),
            "CfgIn_setMinFrequencyThreshold");
        showErr(CfgIn_setCfgInMode(h, static_cast<uint8_t>(input), CFGIN_NOT_IN_USE), "CfgIn_setCfgInMode");
    }
}

void writePwmOutputs(uint8_t outputs)
{
    const PWMOutRef h;
    for (int output = outputs; output >= 1; --output) {
        showErr(PWMOut_setPWMOutputChannelDutyCycle(h, static_cast<uint8_t>(output), 0),
            "PWMOut_setPWMOutputChannelDutyCycle");
        showErr(PWMOut_setPWMOutputChannelFrequency(h, static_cast<uint8_t>(output), 0.0f),
            "PWMOut_setPWMOutputChannelFrequency");
    }
}

void writeFrontLed()
{
    const FrontLEDRef h;
    showErr(FrontLED_setColor(h, 0, 0, 15), "setColor");
    showErr(FrontLED_setEnabledDuringStartup(h, true), "setEnabledDuringStartup");
    showErr(FrontLED_setIdleTime(h, 0), "setIdleTime");
    showErr(FrontLED_setNrOfPulses(h, 0), "setNrOfPulses");
    showErr(FrontLED_setOffTime(h, 0), "setOffTime");
    showErr(FrontLED_setOnTime(h, 100), "setOnTime");
}

void writeLightsensor()
{
    const LightsensorRef h;
    showErr(Lightsensor_setOperatingRange(h, 0), "setOperatingRange");
}

void writePower(const Inventory& inventory)
{
    const PowerRef h;
    showErr(Power_setBLPowerStatus(h, true), "setBLPowerStatus");
    if (inventory.can != 0)
        showErr(Power_setCanPowerStatus(h, false), "setCanPowerStatus");
    showErr(Power_setExtFanPowerStatus(h, false), "setExtFanPowerStatus");
    if (inventory.video != 0)
        showErr(Power_setVideoPowerStatus(h, 0), "setVideoPowerStatus");
}

void writeTouchScreen()
{
    // The touch controller needs these pauses to settle, and only takes the
    // touch profile reliably after passing through the mouse profile.
    const TouchScreenRef h;
    showErr(TouchScreen_setMode(h, TOUCH_MODE_TOUCH), "setMode");
    OSSleep(500);
    showErr(TouchScreen_setMode(h, TOUCH_MODE_MOUSE), "setMode");
    OSSleep(500);
    showErr(TouchScreen_setMouseRightClickTime(h, 1000), "setMouseRightClickTime");
    OSSleep(100);
    showErr(TouchScreen_setMode(h, TOUCH_MODE_TOUCH), "setMode");
    OSSleep(500);
}

void writeTelematics()
{
    const TelematicsRef h;
    int available = 0;
    if (Telematics_getTelematicsAvailable(h, &available) == ERR_SUCCESS && available == 1) {
        const AboutRef about;
        bool mounted = false;
        if (About_getIsGPRSMounted(about, &mounted) == ERR_SUCCESS && mounted) {
            showErr(Telematics_setGPRSPowerStatus(h, false), "setGPRSPowerStatus");
            showErr(Telematics_setGPRSStartUpPowerStatus(h, ZU_DISABLED), "setGPRSStartUpPowerStatus");
        }
        mounted = false;
        if (About_getIsWLANMounted(about, &mounted) == ERR_SUCCESS && mounted) {
            showErr(Telematics_setWLANPowerStatus(h, false), "setWLANPowerStatus");
            showErr(Telematics_setWLANStartUpPowerStatus(h, ZU_DISABLED), "setWLANStartUpPowerStatus");
        }
        mounted = false;
        if (About_getIsGPSMounted(about, &mounted) == ERR_SUCCESS && mounted) {
            showErr(Telematics_setGPSPowerStatus(h, false), "setGPSPowerStatus");
            showErr(Telematics_setGPSStartUpPowerStatus(h, ZU_DISABLED), "setGPSStartUpPowerStatus");
        }
        mounted = false;
        if (About_getIsBTMounted(about, &mounted) == ERR_SUCCESS && mounted) {
            showErr(Telematics_setBTPowerStatus(h, false), "setBTPowerStatus");
            showErr(Telematics_setBTStartUpPowerStatus(h, ZU_DISABLED), "setBTStartUpPowerStatus");
        }
    }
}

} // namespace

bool WriteDefaultValues()
{
    platformType platform = PLATFORM_STANDARD;
    if (!GetPlatform(&platform))
        platform = PLATFORM_STANDARD;

    const Inventory inventory = readInventory();
    writeBacklight();
    writeBuzzer();
    writeCan(inventory.can);
    writeConfig(inventory, platform);
    writeCfgInputs(inventory.cfgInputs);
    writePwmOutputs(inventory.pwmOutputs);
    writeFrontLed();
    writeLightsensor();
    writePower(inventory);
    writeTouchScreen();
    writeTelematics();
    return true;
}
