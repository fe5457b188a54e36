#include "app/PageWindow.h"

#include "app/TitleLabel.h"
#include "app/ZuSettings.h"
#include "tabs/tabDlg.h"

#include <QVBoxLayout>

PageWindow::PageWindow(tabDlg* page)
    : QMainWindow(withApplicationFont())
    , m_page(page)
{
    setObjectName(QStringLiteral("PageWindow"));
    setStyleSheet(applicationStyleSheet());
    setFixedSize(600, 435);
    setWindowTitle(page->windowTitle());

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    auto* title = new TitleLabel(page->windowTitle(), central);
    title->setObjectName(QStringLiteral("tabTitle"));
    layout->addWidget(title);
    page->setParent(central);
    layout->addWidget(page, 1);
    setCentralWidget(central);
}
