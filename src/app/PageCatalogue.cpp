#include "PageCatalogue.h"

#include "tabAboutDlg.h"
#include "tabBacklightDlg.h"
#include "tabBuzzerDlg.h"
#include "tabLEDDlg.h"
#include "tabLightSensorDlg.h"
#include "tabMenuDlg.h"
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
        entry<tabBacklightDlg>("display"),
        entry<tabAboutDlg>("about"),
        entry<tabLEDDlg>("led"),
        entry<tabBuzzerDlg>("buzzer"),
        entry<tabLightSensorDlg>("lightsensor"),
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
