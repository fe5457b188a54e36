#include "app/ZuSettings.h"

#include "app/PageRegistry.h"
#include "dialogs/Dialogs.h"
#include "tabs/PictureLabel.h"
#include "ui_ZuSettings.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

ZuSettings::ZuSettings(QWidget* parent, Qt::WindowFlags flags)
    : QMainWindow(withApplicationFont(parent), flags)
    , ui(new Ui_ZuSettingsClass)
    , pageLayout(new QVBoxLayout)
{
    const Features features = discoverFeatures(about);

    ui->setupUi(this);
    // Read when the window system asks for it, if it does.
    setWindowIcon(iconOnUse(QStringLiteral(":/ZuSettings/Resources/zu.png")));
    setStyleSheet(applicationStyleSheet());
    connect(ui->buttonExit, &QPushButton::clicked, this, &ZuSettings::exit);
    connect(ui->buttonMenu, &QPushButton::clicked, this, &ZuSettings::menuClicked);

    // The menu, shown at once, is built in its place, where each widget is
    // styled as it is made. The other pages are built outside the styled
    // window and join it when first shown (showTab): a widget made inside it
    // has its style rules matched as it is made, shown or not.
    ui->tabWidget->setLayout(pageLayout);
    auto* menu = new tabMenuDlg(ui->tabWidget);
    addTab(menu, tabMenuDlg::MENU);
    for (const PageRow& row : pageRows())
        offer(*menu, row, has(features, row.needs));

    connect(menu, &tabMenuDlg::tabSelectionChanged, this, &ZuSettings::showTab);
    showTab(tabMenuDlg::MENU);
}

void ZuSettings::offer(tabMenuDlg& menu, const PageRow& row, bool present)
{
    if (present && row.make) {
        addTab(row.make(&unplaced), row.number);
        if (row.caption)
            menu.setCaption(row.number, QCoreApplication::translate("tabMenu", row.caption));
        if (row.icon)
            menu.setIcon(row.number, QString::fromLatin1(row.icon));
        return;
    }
    addTab(new tabDlg(&unplaced), row.placeholder < 0 ? row.number : tabMenuDlg::eTab(row.placeholder));
    const char* toolTip = present && row.presentToolTip ? row.presentToolTip : row.toolTip;
    menu.grey(row.number, QString::fromLatin1(row.greyIcon ? row.greyIcon : ""), tr(toolTip));
}

ZuSettings::~ZuSettings() = default;

QString applicationStyleSheet()
{
    QFile style(QStringLiteral(":/ZuSettings/Resources/ZuSettings.qss"));
    return style.open(QIODevice::ReadOnly) ? QString::fromLatin1(style.readAll()) : QString();
}

QWidget* withApplicationFont(QWidget* parent)
{
    QFont font(QStringLiteral("Arial"));
    font.setBold(true);
    font.setPixelSize(14);
    QApplication::setFont(font);
    return parent;
}

void ZuSettings::addTab(tabDlg* page, tabMenuDlg::eTab index)
{
    page->hide();
    page->holdUntilShown();
    pages[index] = page;
}

tabDlg* ZuSettings::page(int index) const
{
    return index >= 0 && index < tabMenuDlg::tabCount ? pages[index] : nullptr;
}

tabMenuDlg* ZuSettings::menu() const
{
    return static_cast<tabMenuDlg*>(pages[tabMenuDlg::MENU]);
}

void ZuSettings::showTab(int index)
{
    tabDlg* next = page(index);
    if (!next)
        return;
    if (pages[current])
        pages[current]->hide();
    if (pageLayout->indexOf(next) < 0)
        pageLayout->addWidget(next);
    next->show();
    ui->tabTitle->setText(next->windowTitle());
    current = index;
}

void ZuSettings::menuClicked()
{
    showTab(tabMenuDlg::MENU);
}

void ZuSettings::exit()
{
    close();
}

bool ZuSettings::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == windowHandle()
        && (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        QCoreApplication::sendEvent(this, event);
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void ZuSettings::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!event->isAutoRepeat())
        escapePressed = true;
}

void ZuSettings::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
        event->ignore();
        return;
    }
    event->accept();
    if (event->isAutoRepeat() || !escapePressed)
        return;
    escapePressed = false;
    if (current != tabMenuDlg::MENU)
        showTab(tabMenuDlg::MENU);
    else
        close();
}

void ZuSettings::changeEvent(QEvent* event)
{
    // A press whose release goes to another window (a box that opened
    // meanwhile) is not this window's any more.
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        escapePressed = false;
    QMainWindow::changeEvent(event);
}

void ZuSettings::closeEvent(QCloseEvent* event)
{
    Dialogs::closeAll();
    QMainWindow::closeEvent(event);
}

void ZuSettings::showEvent(QShowEvent* event)
{
    // The native window exists from the first showing on.
    windowHandle()->installEventFilter(this);
    Dialogs::reopen();
    QMainWindow::showEvent(event);
}
