#include "app/PageRegistry.h"

#include "app/PageCatalogue.h"
#include "hwsupport/HwHandle.h"
#include "tabs/tabAboutDlg.h"
#include "tabs/tabAdvancedDlg.h"
#include "tabs/tabBacklightDlg.h"
#include "tabs/tabButtonsDlg.h"
#include "tabs/tabBuzzerDlg.h"
#include "tabs/tabCanDlg.h"
#include "tabs/tabIODlg.h"
#include "tabs/tabLEDDlg.h"
#include "tabs/tabLightSensorDlg.h"
#include "tabs/tabOnOffDlg.h"
#include "tabs/tabSysConfDlg.h"
#include "tabs/tabTempDlg.h"
#include "tabs/tabVersionDlg.h"

namespace
{

// The feature counts as present unless the unit answered and said no.
bool presentUnlessDenied(Korvane::eErr result, bool present)
{
    return result != Korvane::ERR_SUCCESS || present;
}

} // namespace

Features discoverFeatures(Korvane::AboutHandle about)
{
    using namespace Korvane;
    Features features;

    bool gprs = false;
    About_getIsGPRSMounted(about, &gprs);

    uint8_t count = 0;
    eErr result = About_getNrOfCANConnections(about, &count);
    features.can = presentUnlessDenied(result, count != 0);
    count = 0;
    result = About_getNrOfDigIOConnections(about, &count);
    features.digio = presentUnlessDenied(result, count != 0);
    bool available = false;
    result = About_getIsDisplayAvailable(about, &available);
    features.display = presentUnlessDenied(result, available);
    if (features.display) {
        available = false;
        result = About_getIsTouchScreenAvailable(about, &available);
        features.touch = presentUnlessDenied(result, available);
    }

    const ConfigRef config;
    int16_t limit = 0;
    features.heater = Config_getHeatingTempLimit(config, &limit) != ERR_NOT_SUPPORTED;
    return features;
}

bool has(const Features& features, Needs needs)
{
    switch (needs) {
    case Needs::Nothing:
        return true;
    case Needs::Display:
        return features.display;
    case Needs::Touch:
        return features.touch;
    case Needs::Heater:
        return features.heater;
    case Needs::Can:
        return features.can;
    case Needs::DigIO:
        return features.digio;
    }
    return false;
}

const std::vector<PageRow>& pageRows()
{
    using T = tabMenuDlg;
    using N = Needs;
    // Page number, what it needs, its page; caption and icon when offered;
    // grey icon, tool tip, tool tip when the feature is there, placeholder
    // number when greyed. Captions are translated in the "tabMenu" context,
    // tool tips in the "ZuSettings" one.
    static const std::vector<PageRow> rows = {
        { T::VERSION, N::Nothing, makePage<tabVersionDlg> },
        { T::TEMPERATURE, N::Nothing, makePage<tabTempDlg> },
        { T::DISPLAY, N::Display, makePage<tabBacklightDlg>, {}, {}, "backgroundGrey.png",
            "Display is not available" },
        // Greyed on every unit: the window offers no Power page.
        { T::POWER, N::Nothing, nullptr, {}, {}, "energyGrey.png", "Power is not available" },
        { T::SYSCONFIG, N::Heater, makePage<tabSysConfDlg>, {}, {}, "heaterGrey.png",
            "Heater is not available" },
        { T::ADVANCED, N::Nothing, makePage<tabAdvancedDlg> },
        { T::LED, N::Nothing, makePage<tabLEDDlg>, "Btn backlight" },
        // Without a display the placeholder is registered under the Display
        // number, not the Buzzer one: it takes the place of the Display
        // placeholder and leaves the Buzzer entry empty.
        { T::BUZZER, N::Display, makePage<tabBuzzerDlg>, {}, {}, {}, "Buzzer is not available", {},
            T::DISPLAY },
        { T::ABOUT, N::Nothing, makePage<tabAboutDlg> },
        { T::CAN, N::Can, makePage<tabCanDlg>, {}, {}, {}, "Can is not available" },
        { T::DIGIO, N::DigIO, makePage<tabIODlg>, "I/O", "IO.png", {}, "Digital Input is not available" },
        { T::LIGHTSENSOR, N::Display, makePage<tabLightSensorDlg>, {}, {}, "FullGrey.png",
            "Light sensor is not available" },
        // Greyed on every unit: a touch screen is calibrated from the unit's
        // start menu, and the tool tip says so where there is one.
        { T::TOUCH, N::Touch, nullptr, {}, {}, "tabletGrey.png", "Touch Screen is not available",
            "Touch Screen calibration from start menu" },
        { T::ONOFF, N::Nothing, makePage<tabOnOffDlg> },
        // The Telematics number serves the front buttons.
        { T::TELEMATICS, N::Nothing, makePage<tabButtonsDlg>, "Buttons", "Buttons.png" },
    };
    return rows;
}
