#include "app/PageCatalogue.h"

#include "app/tabMenuDlg.h"
#include "tabs/tabAboutDlg.h"
#include "tabs/tabAdvancedDlg.h"
#include "tabs/tabBacklightDlg.h"
#include "tabs/tabButtonsDlg.h"
#include "tabs/tabBuzzerDlg.h"
#include "tabs/tabCanDlg.h"
#include "tabs/tabDigIODlg.h"
#include "tabs/tabIODlg.h"
#include "tabs/tabLEDDlg.h"
#include "tabs/tabLightSensorDlg.h"
#include "tabs/tabOnOffDlg.h"
#include "tabs/tabPowerDlg.h"
#include "tabs/tabSysConfDlg.h"
#include "tabs/tabTelematicsDlg.h"
#include "tabs/tabTempDlg.h"
#include "tabs/tabTouchDlg.h"
#include "tabs/tabVersionDlg.h"

namespace
{
enum Offer { Menu, NoMenu };

template <typename Page> PageClass entry(const char* name, Offer offer = Menu)
{
    return { name, &Page::staticMetaObject, makePage<Page>, offer == Menu };
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
        entry<tabCanDlg>("can"),
        entry<tabAdvancedDlg>("advanced"),
        entry<tabIODlg>("io"),
        entry<tabLightSensorDlg>("lightsensor"),
        entry<tabOnOffDlg>("onoff"),
        entry<tabButtonsDlg>("buttons"),
        entry<tabPowerDlg>("power", NoMenu),
        entry<tabTelematicsDlg>("telematics", NoMenu),
        entry<tabDigIODlg>("digio", NoMenu),
        entry<tabTouchDlg>("touch", NoMenu),
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
