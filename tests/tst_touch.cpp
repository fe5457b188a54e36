// The "Touch Screen" page on the simulated unit: profile and click settings as
// read and as Apply writes them, and the start of the calibrator.
#include "pagecheck.h"
#include "tabs/tabTouchDlg.h"

#include <QDir>
#include <QFile>

namespace
{
// Rows whose name starts so run with a calibrator on the PATH, or with none.
const QString withCalibrator = QStringLiteral("calibrator installed");
const QString withoutCalibrator = QStringLiteral("no calibrator");
const QString calibratorDir = QStringLiteral(ZUSETTINGS_BINARY_DIR "/tests/calibrator");

void scenarios()
{
    QTest::newRow("shown as the unit has it")
        << Steps { "TouchScreen/AdvancedSetting_3=25", "tabTouch.show" } << Steps()
        << Steps { "radioTouch.checked=true", "labelProfile.visible=false", "spinRightClick.value=1000",
               "spinAdvanced_1.value=400", "spinAdvanced_3.value=25", "buttonCalibrate.visible=true",
               "labelNoTouch.visible=false" }
        << Steps();
    const struct {
        const char* mode;
        const char* touch;
        const char* mouse;
        const char* note;
    } profiles[] = {
        { "2", "false", "true", "" },
        { "1", "true", "false", "The unit takes this profile at its next start." },
        { "0", "false", "true", "The unit takes this profile at its next start." },
        { "7", "false", "false", "The unit reports the unknown profile 7." },
    };
    for (const auto& profile : profiles)
        QTest::addRow("mode %s", profile.mode)
            << Steps { QStringLiteral("TouchScreen/Mode=") + profile.mode, "tabTouch.show" } << Steps()
            << Steps { QStringLiteral("radioTouch.checked=") + profile.touch,
                   QStringLiteral("radioMouse.checked=") + profile.mouse,
                   QStringLiteral("labelProfile.text=") + profile.note,
                   QStringLiteral("labelProfile.visible=") + (*profile.note ? "true" : "false") }
            << Steps();
    QTest::newRow("Apply writes what changed, once")
        << Steps { "tabTouch.show", "radioMouse.click", "spinAdvanced_3.value=30", "buttonApply.click",
               "buttonApply.click" }
        << Steps { "TouchScreen_setMode(2) -> 0", "TouchScreen_setAdvancedSetting(3, 30) -> 0" }
        << Steps { "radioMouse.checked=true", "spinAdvanced_3.value=30" } << Steps();
    QTest::newRow("a profile from the next start is not written again") << Steps { "TouchScreen/Mode=1",
        "tabTouch.show", "buttonApply.click" } << Steps() << Steps() << Steps();
    QTest::newRow("unknown mode: written once a profile is chosen")
        << Steps { "TouchScreen/Mode=7", "tabTouch.show", "buttonApply.click", "radioTouch.click",
               "buttonApply.click" }
        << Steps { "TouchScreen_setMode(3) -> 0" } << Steps { "labelProfile.visible=false" } << Steps();
    QTest::newRow("no touch screen: nothing to show, write or calibrate")
        << Steps { "About/IsTouchScreenAvailable=0", "tabTouch.show", "buttonApply.click" } << Steps()
        << Steps { "groupBoxProfile.visible=false", "groupBoxAdvanced.visible=false",
               "buttonCalibrate.visible=false", "buttonApply.visible=false", "labelNoTouch.visible=true" }
        << Steps();
    QTest::newRow("unreadable right-click time: told, never written")
        << Steps { "TouchScreen_getMouseRightClickTime=7", "tabTouch.show", "spinRightClick.value=1500",
               "buttonApply.click" }
        << Steps() << Steps { "spinRightClick.visible=true", "spinRightClick.enabled=false" }
        << Steps { errorBox(7, "getMouseRightClickTime") };
    QTest::newRow("unreadable advanced settings: one box, all disabled")
        << Steps { "TouchScreen_getAdvancedSetting=18", "tabTouch.show" } << Steps()
        << Steps { "spinAdvanced_0.enabled=false", "spinAdvanced_3.enabled=false",
               "spinRightClick.enabled=true" }
        << Steps { errorBox(18, "getAdvancedSetting") };
    QTest::newRow("advanced settings missing: their group goes")
        << Steps { "TouchScreen_getAdvancedSetting=2", "tabTouch.show" } << Steps()
        << Steps { "groupBoxAdvanced.visible=false", "groupBoxProfile.visible=true",
               "buttonApply.visible=true" }
        << Steps();
    QTest::newRow("a refused write ends Apply, the choices stay")
        << Steps { "TouchScreen_setMode=19", "tabTouch.show", "radioMouse.click", "spinRightClick.value=800",
               "buttonApply.click" }
        << Steps { "TouchScreen_setMode(2) -> 19" }
        << Steps { "radioMouse.checked=true", "spinRightClick.value=800" }
        << Steps { errorBox(19, "setMode") };
    QTest::newRow("calibrator installed: started, nothing else")
        << Steps { "tabTouch.show", "buttonCalibrate.click" } << Steps()
        << Steps { "Dialogs.started=" + calibratorDir + "/xinput_calibrator" } << Steps();
    QTest::newRow("no calibrator: told so")
        << Steps { "tabTouch.show", "buttonCalibrate.click" } << Steps() << Steps { "Dialogs.started=" }
        << Steps { "Calibrating the touch screen needs the program xinput_calibrator, which is not "
                   "installed.\nIt comes with the package xinput-calibrator." };
}

// The PATH a row runs with: a folder holding a stand-in calibrator, or one
// holding nothing.
void choosePath()
{
    static const QByteArray original = qgetenv("PATH");
    const QString tag = QString::fromLatin1(QTest::currentDataTag());
    QByteArray path = original;
    if (tag.startsWith(withCalibrator) || tag.startsWith(withoutCalibrator)) {
        const QString dir = calibratorDir + (tag.startsWith(withCalibrator) ? "" : "/none");
        QDir().mkpath(dir);
        QFile program(calibratorDir + "/xinput_calibrator");
        if (program.open(QIODevice::WriteOnly))
            program.write("#!/bin/sh\nexit 0\n");
        program.close();
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        path = QFile::encodeName(dir);
    }
    qputenv("PATH", path);
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv,
        [] {
            choosePath();
            return new tabTouchDlg(nullptr);
        },
        QStringLiteral("TouchScreen_set"), {}, scenarios);
}
