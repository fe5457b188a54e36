// What the settings pages have in common beyond tabDlg: the library handle a
// page holds for its whole life, the usual way of taking a getter's result,
// and the On/Off caption of a checkable switch.
#ifndef PAGESUPPORT_H
#define PAGESUPPORT_H

#include "tabDlg.h"

#include <initializer_list>

class QAbstractButton;
class QWidget;

// A library handle taken when the page is built and released with the page.
// The handle is used unchecked: the library answers a bad handle with an error
// code, which the page reports like any other failure.
template <typename Handle, Handle (*Acquire)(), void (*Release)(Handle)> class HwHandle
{
public:
    HwHandle()
        : m_handle(Acquire())
    {
    }
    ~HwHandle() { Release(m_handle); }
    HwHandle(const HwHandle&) = delete;
    HwHandle& operator=(const HwHandle&) = delete;

    operator Handle() const { return m_handle; }

private:
    Handle m_handle;
};

using AboutRef = HwHandle<Korvane::AboutHandle, Korvane::GetAbout, Korvane::About_release>;
using BacklightRef = HwHandle<Korvane::BacklightHandle, Korvane::GetBacklight, Korvane::Backlight_release>;
using BatteryRef = HwHandle<Korvane::BatteryHandle, Korvane::GetBattery, Korvane::Battery_release>;
using BuzzerRef = HwHandle<Korvane::BuzzerHandle, Korvane::GetBuzzer, Korvane::Buzzer_release>;
using ConfigRef = HwHandle<Korvane::ConfigHandle, Korvane::GetConfig, Korvane::Config_release>;
using DiagnosticRef
    = HwHandle<Korvane::DiagnosticHandle, Korvane::GetDiagnostic, Korvane::Diagnostic_release>;
using FrontLEDRef = HwHandle<Korvane::FrontLEDHandle, Korvane::GetFrontLED, Korvane::FrontLED_release>;
using LightsensorRef
    = HwHandle<Korvane::LightsensorHandle, Korvane::GetLightsensor, Korvane::Lightsensor_release>;
using PowerRef = HwHandle<Korvane::PowerHandle, Korvane::GetPower, Korvane::Power_release>;
using TelematicsRef
    = HwHandle<Korvane::TelematicsHandle, Korvane::GetTelematics, Korvane::Telematics_release>;
using ZuAuxPrivateRef
    = HwHandle<Korvane::ZuAuxPrivateHandle, Korvane::GetZuAuxPrivate, Korvane::ZuAuxPrivate_release>;

// Takes the result of a read: true when the value may be shown. Code 2 (the
// unit lacks the setting) hides `hideWhenMissing` without a word; any other
// failure is reported on `page` as `where`.
bool acceptRead(
    tabDlg* page, Korvane::eErr err, const char* where, std::initializer_list<QWidget*> hideWhenMissing = {});

// What a field shows instead of a value it could not read: "<where>: Error: "
// and the library's text, joined by one more blank.
QString fieldError(const char* where, Korvane::eErr err);

// Checks or unchecks a switch button and captions it "On" or "Off" to match.
void showSwitch(QAbstractButton* button, bool on);

#endif // PAGESUPPORT_H
