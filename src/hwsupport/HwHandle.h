// RAII ownership of the library's handles.
#ifndef HWSUPPORT_HWHANDLE_H
#define HWSUPPORT_HWHANDLE_H

#include "zuaux2.h"

// A library handle taken when its owner is built and released with it.
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
using AdcRef = HwHandle<Korvane::AdcHandle, Korvane::GetAdc, Korvane::Adc_release>;
using AuxVersionRef
    = HwHandle<Korvane::AuxVersionHandle, Korvane::GetAuxVersion, Korvane::AuxVersion_release>;
using BacklightRef = HwHandle<Korvane::BacklightHandle, Korvane::GetBacklight, Korvane::Backlight_release>;
using BatteryRef = HwHandle<Korvane::BatteryHandle, Korvane::GetBattery, Korvane::Battery_release>;
using BuzzerRef = HwHandle<Korvane::BuzzerHandle, Korvane::GetBuzzer, Korvane::Buzzer_release>;
using CanSettingRef
    = HwHandle<Korvane::CanSettingHandle, Korvane::GetCanSetting, Korvane::CanSetting_release>;
using CfgInRef = HwHandle<Korvane::CfgInHandle, Korvane::GetCfgIn, Korvane::CfgIn_release>;
using ConfigRef = HwHandle<Korvane::ConfigHandle, Korvane::GetConfig, Korvane::Config_release>;
using DiagnosticRef
    = HwHandle<Korvane::DiagnosticHandle, Korvane::GetDiagnostic, Korvane::Diagnostic_release>;
using DigIORef = HwHandle<Korvane::DigIOHandle, Korvane::GetDigIO, Korvane::DigIO_release>;
using FirmwareUpgradeRef
    = HwHandle<Korvane::FirmwareUpgradeHandle, Korvane::GetFirmwareUpgrade, Korvane::FirmwareUpgrade_release>;
using FrontLEDRef = HwHandle<Korvane::FrontLEDHandle, Korvane::GetFrontLED, Korvane::FrontLED_release>;
using LightsensorRef
    = HwHandle<Korvane::LightsensorHandle, Korvane::GetLightsensor, Korvane::Lightsensor_release>;
using PowerRef = HwHandle<Korvane::PowerHandle, Korvane::GetPower, Korvane::Power_release>;
using PWMOutRef = HwHandle<Korvane::PWMOutHandle, Korvane::GetPWMOut, Korvane::PWMOut_release>;
using TelematicsRef
    = HwHandle<Korvane::TelematicsHandle, Korvane::GetTelematics, Korvane::Telematics_release>;
using TouchScreenRef
    = HwHandle<Korvane::TouchScreenHandle, Korvane::GetTouchScreen, Korvane::TouchScreen_release>;
using ZuAuxPrivateRef
    = HwHandle<Korvane::ZuAuxPrivateHandle, Korvane::GetZuAuxPrivate, Korvane::ZuAuxPrivate_release>;

#endif // HWSUPPORT_HWHANDLE_H
