#include "PageCatalogue.h"

#include "tabAboutDlg.h"
#include "tabBacklightDlg.h"
#include "tabButtonsDlg.h"
#include "tabBuzzerDlg.h"
#include "tabLEDDlg.h"
#include "tabLightSensorDlg.h"
#include "tabMenuDlg.h"
#include "tabOnOffDlg.h"
#include "tabPowerDlg.h"
#include "tabSysConfDlg.h"
#include "tabTelematicsDlg.h"
#include "tabTempDlg.h"
#include "tabVersionDlg.h"

namespace
{
enum Offer { Menu, NoMenu };

template <typename Page> PageClass entry(const char* name, Offer offer = Menu)
{
    return { name, &Page::staticMetaObject, [](QWidget* parent) -> tabDlg* { return new Page(parent); },
        offer == Menu };
}
} // namespace

const std::vector<PageClass>& pageClasses()
{
    static const std::vector<PageClass> catalogue = {
        entry<tabMenuDlg>("menu"),
        entry<tabVersionDlg>("version"),
        entry<tabTempDlg>("temperature"),
        entry<tabBacklightDlg>("display"),
        entry<tabSysConfDlg>("heater"),
        entry<tabAboutDlg>("about"),
        entry<tabLEDDlg>("led"),
        entry<tabBuzzerDlg>("buzzer"),
        entry<tabLightSensorDlg>("lightsensor"),
        entry<tabOnOffDlg>("onoff"),
        entry<tabButtonsDlg>("buttons"),
        entry<tabPowerDlg>("power", NoMenu),
        entry<tabTelematicsDlg>("telematics", NoMenu),
    };
    return catalogue;
}

const PageClass* findPageClass(const QString& name)
{
    for (const PageClass& page : pageClasses()) {
        if (name == QLatin1String(page.name))
            return &page;
    }
    return nullptr;
}
