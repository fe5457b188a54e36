// Which pages the main window offers on a unit: what the unit has, and one
// row per page number of the menu saying how that number is served.
#ifndef PAGEREGISTRY_H
#define PAGEREGISTRY_H

#include "app/tabMenuDlg.h"
#include "zuaux2.h"

#include <vector>

// What the unit has, as far as the menu cares.
struct Features {
    bool display = false;
    bool touch = false; // asked only when there is a display
    bool heater = false;
    bool can = false;
    bool digio = false;
};

// Asks the unit through `about`, which the caller keeps, and a Config handle
// of its own. A query the library cannot answer counts as present: a page is
// rather offered than hidden when the unit cannot tell. Only the heater is
// missing on code 2 (the unit lacks the setting).
Features discoverFeatures(Korvane::AboutHandle about);

enum class Needs { Nothing, Display, Touch, Heater, Can, DigIO };

bool has(const Features& features, Needs needs);

// How one page number of the menu is served.
struct PageRow {
    tabMenuDlg::eTab number;
    Needs needs;
    // The page when the unit has what it needs; null: greyed on every unit.
    tabDlg* (*make)(QWidget* parent);
    // Caption and icon file the button gets when the page is offered; null
    // keeps the form's.
    const char* caption = nullptr;
    const char* icon = nullptr;
    // A greyed button: its grey icon (null keeps the icon), its tool tip, and
    // the tool tip instead when the unit has the feature all the same.
    const char* greyIcon = nullptr;
    const char* toolTip = nullptr;
    const char* presentToolTip = nullptr;
    // The number the plain page in place of a missing one is registered
    // under, when not its own.
    int placeholder = -1;
};

// Every page number but the menu's, in the order the pages are built.
const std::vector<PageRow>& pageRows();

#endif // PAGEREGISTRY_H
