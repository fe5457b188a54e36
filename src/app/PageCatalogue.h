// Every page class of the application under a short name, registered in the
// main window or not, so that tools can build any page on its own.
#ifndef PAGECATALOGUE_H
#define PAGECATALOGUE_H

#include <QString>

#include <vector>

class QMetaObject;
class QWidget;
class tabDlg;

struct PageClass {
    const char* name; // short name, e.g. "buzzer"
    const QMetaObject* meta;
    tabDlg* (*create)(QWidget* parent);
    // Whether the main window offers the class under a page number on some
    // unit; the others are reached through tools only.
    bool inMenu;
};

// How every page class is built.
template <typename Page> tabDlg* makePage(QWidget* parent)
{
    return new Page(parent);
}

// The classes of the menu first, then the others.
const std::vector<PageClass>& pageClasses();

// The entry named `name`, or null.
const PageClass* findPageClass(const QString& name);

#endif // PAGECATALOGUE_H
