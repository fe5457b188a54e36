#include "tabs/tabButtonsDlg.h"

#include "tabs/PictureLabel.h"
#include "ui_tabButtonsDlg.h"

#include <QFile>
#include <QSocketNotifier>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Korvane;

namespace
{
// The combo entries: caption, icon and the function each stands for, by index.
struct Function {
    const char* caption;
    const char* icon;
    ButtonConfigEnum value;
};
constexpr Function functions[] = {
    { "Only MP action", "Buttons_small_off.png", BUTTON_ONLY_MP_ACTION },
    { "Startup trigger", "energy.png", BUTTON_AS_STARTUP_TRIG },
    { "Action trigger", "ok.png", BUTTON_AS_ACTION_TRIG },
    { "Startup & action trigger", "status_ok.png", BUTTON_AS_ACTION_STARTUP_TRIG },
    { "BL decrease", "arrow_down.png", BUTTON_AS_BACKLIGHT_DECREASE },
    { "BL decrease & startup", "arrow_down.png", BUTTON_AS_BACKLIGHT_DECR_STARTUP_TRIG },
    { "BL increase", "arrow_up.png", BUTTON_AS_BACKLIGHT_INCREASE },
    { "BL increase & startup", "arrow_up.png", BUTTON_AS_BACKLIGHT_INCR_STARTUP_TRIG },
};

// The keys F1..F10 are the front buttons 1..10.
constexpr int firstButtonKey = KEY_F1;
constexpr int maxButtons = 10;

const QString resource = QStringLiteral(":/ZuSettings/Resources/");
} // namespace

tabButtonsDlg::tabButtonsDlg(QWidget* parent)
    : tabDlg(parent)
    , ui(std::make_unique<Ui_tabButtons>())
{
    ui->setupUi(this);

    {
        AboutRef about;
        int count = 0;
        if (About_getNrOfButtons(about, &count) == ERR_SUCCESS)
            m_buttonCount = static_cast<uint8_t>(count);
    }

    const std::pair<QComboBox*, QLabel*> combos[maxButtons]
        = { { ui->comboBox_B1, ui->picture_B1 }, { ui->comboBox_B2, ui->picture_B2 },
              { ui->comboBox_B3, ui->picture_B3 }, { ui->comboBox_B4, ui->picture_B4 },
              { ui->comboBox_B5, ui->picture_B5 }, { ui->comboBox_B6, ui->picture_B6 },
              { ui->comboBox_B7, ui->picture_B7 }, { ui->comboBox_B8, ui->picture_B8 },
              { ui->comboBox_B9, ui->picture_B9 }, { ui->comboBox_B10, ui->picture_B10 } };
    // One icon per function, shared by every combo and read when first drawn.
    for (const Function& function : functions)
        m_icons.append(iconOnUse(resource + QLatin1String(function.icon)));
    for (const auto& combo : combos)
        populateCombobox(combo.first);
    // With 8 buttons or fewer, the combos B5 and B10 are out of use and out
    // of view, and the other eight stand for the buttons in order.
    const bool fullRow = m_buttonCount > 8;
    for (int i = 0; i < maxButtons; ++i) {
        if (fullRow || (i != 4 && i != 9))
            m_buttons.append(combos[i]);
    }
    if (!fullRow) {
        for (QWidget* unused : std::initializer_list<QWidget*> { ui->label_B5, ui->comboBox_B5,
                 ui->picture_B5, ui->label_B10, ui->comboBox_B10, ui->picture_B10 })
            unused->hide();
        // The captions follow the buttons the combos stand for.
        const QList<QLabel*> captions { ui->label_B6, ui->label_B7, ui->label_B8, ui->label_B9 };
        for (int i = 0; i < captions.size(); ++i)
            captions[i]->setText(QStringLiteral("B%1").arg(5 + i));
    }

    if (!openInputDevice())
        showError(QStringLiteral("Failed to open input device %1")
                      .arg(QString::fromLocal8Bit(std::strerror(errno))));
    m_ready = true;
}

tabButtonsDlg::~tabButtonsDlg()
{
    if (m_inputFd >= 0)
        ::close(m_inputFd);
}

QString tabButtonsDlg::inputDevicePath()
{
    const QString path = qEnvironmentVariable("ZUSETTINGS_INPUT_DEVICE");
    return path.isEmpty() ? QStringLiteral("/dev/input/event0") : path;
}

// Never blocks: a FIFO without a writer opens at once for reading.
bool tabButtonsDlg::openInputDevice()
{
    if (m_notifier) {
        // This may run inside the notifier's own signal.
        m_notifier->setEnabled(false);
        m_notifier->deleteLater();
        m_notifier = nullptr;
    }
    if (m_inputFd >= 0)
        ::close(m_inputFd);
    m_inputFd = ::open(QFile::encodeName(inputDevicePath()).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (m_inputFd < 0)
        return false;
    m_notifier = new QSocketNotifier(m_inputFd, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &tabButtonsDlg::processButtonEvent);
    return true;
}

void tabButtonsDlg::populateCombobox(QComboBox* combo)
{
    for (size_t i = 0; i < std::size(functions); ++i)
        combo->insertItem(int(2 * i), m_icons[i], QString::fromLatin1(functions[i].caption));
}

void tabButtonsDlg::showEvent(QShowEvent* event)
{
    tabDlg::showEvent(event);
    for (int button = 1; button <= m_buttons.size(); ++button)
        getButtonConfig(static_cast<unsigned char>(button));
}

void tabButtonsDlg::getButtonConfig(unsigned char button)
{
    const auto& [combo, picture] = m_buttons.at(button - 1);
    ButtonConfigEnum value = BUTTON_ONLY_MP_ACTION;
    const eErr err = Config_getButtonFunction(m_config, button, &value);
    // A button the unit lacks answers 2 and leaves the page.
    const QByteArray where = QStringLiteral("Config_getButtonFunction - button #%1").arg(button).toLatin1();
    if (!acceptRead(this, err, where.constData(), { combo, picture }))
        return;
    int index = 0;
    for (int i = 0; i < static_cast<int>(std::size(functions)); ++i) {
        if (functions[i].value == value)
            index = i;
    }
    // What the unit holds is not written back.
    const QSignalBlocker quiet(combo);
    combo->setCurrentIndex(index);
}

void tabButtonsDlg::setButtonConfig(unsigned char button, ButtonConfigEnum value)
{
    const eErr err = Config_setButtonFunction(m_config, button, value);
    if (err == ERR_SUCCESS)
        return;
    if (err == ERR_STARTUP_TRIGGER_CONFLICT) {
        showError(
            QStringLiteral("Button Setting not allowed in combination with the Start-up trigger. Check "
                           "On/Off tab - Unit start-up.\r\nIf the signal is not set as start-up trigger, "
                           "at least one of the buttons must be."));
        return;
    }
    const QByteArray where = QStringLiteral("Config_setButtonFuntion - button #%1, function %2")
                                 .arg(button)
                                 .arg(static_cast<int>(value))
                                 .toLatin1();
    showError(err, where.constData());
}

void tabButtonsDlg::comboChanged(int combo, int index)
{
    if (!m_ready || index < 0 || index >= static_cast<int>(std::size(functions)))
        return;
    int button = combo;
    if (m_buttonCount <= 8) {
        if (combo == 5 || combo == 10)
            return;
        button = combo < 5 ? combo : combo - 1;
    }
    setButtonConfig(static_cast<unsigned char>(button), functions[index].value);
}

void tabButtonsDlg::on_comboBox_B1_currentIndexChanged(int index)
{
    comboChanged(1, index);
}

void tabButtonsDlg::on_comboBox_B2_currentIndexChanged(int index)
{
    comboChanged(2, index);
}

void tabButtonsDlg::on_comboBox_B3_currentIndexChanged(int index)
{
    comboChanged(3, index);
}

void tabButtonsDlg::on_comboBox_B4_currentIndexChanged(int index)
{
    comboChanged(4, index);
}

void tabButtonsDlg::on_comboBox_B5_currentIndexChanged(int index)
{
    comboChanged(5, index);
}

void tabButtonsDlg::on_comboBox_B6_currentIndexChanged(int index)
{
    comboChanged(6, index);
}

void tabButtonsDlg::on_comboBox_B7_currentIndexChanged(int index)
{
    comboChanged(7, index);
}

void tabButtonsDlg::on_comboBox_B8_currentIndexChanged(int index)
{
    comboChanged(8, index);
}

void tabButtonsDlg::on_comboBox_B9_currentIndexChanged(int index)
{
    comboChanged(9, index);
}

void tabButtonsDlg::on_comboBox_B10_currentIndexChanged(int index)
{
    comboChanged(10, index);
}

// One key event record of this platform's size (16 bytes on the unit, 24 on a
// 64-bit PC) per call.
void tabButtonsDlg::processButtonEvent()
{
    struct input_event event;
    const ssize_t length = ::read(m_inputFd, &event, sizeof event);
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (length == 0) {
        // The last writer of a FIFO went away: open it again to wait for the
        // next one. Anything else that ends has nothing more to tell.
        struct stat status;
        if (::fstat(m_inputFd, &status) == 0 && S_ISFIFO(status.st_mode))
            openInputDevice();
        else
            m_notifier->setEnabled(false);
        return;
    }
    if (length != static_cast<ssize_t>(sizeof event)) {
        showError(QStringLiteral("Unexpected leght read %1").arg(length));
        // A device that fails to read would fail again at once.
        if (length < 0)
            m_notifier->setEnabled(false);
        return;
    }
    if (event.type != EV_KEY)
        return;
    const int button = event.code - firstButtonKey + 1;
    if (button < 1 || button > maxButtons || (button > 8 && button > m_buttonCount))
        return;
    updateButtonStatus(button, event.value);
}

void tabButtonsDlg::updateButtonStatus(int button, unsigned int value)
{
    if (button > m_buttons.size())
        return;
    m_buttons.at(button - 1)
        .second->setPixmap(readPicture(resource
            + (value != 0 ? QLatin1String("Buttons_small.png") : QLatin1String("Buttons_small_off.png"))));
}
