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
    row("shown as the unit has it",
        { .steps = { "TouchScreen/AdvancedSetting_3=25", "tabTouch.show" },
            .state = { "radioTouch.checked=true", "labelProfile.visible=false", "spinRightClick.value=1000",
                "spinAdvanced_1.value=400", "spinAdvanced_3.value=25", "buttonCalibrate.visible=true",
                "labelNoTouch.visible=false" } });
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
        row(QLatin1String("mode ") + profile.mode,
            { .steps = { QStringLiteral("TouchScreen/Mode=") + profile.mode, "tabTouch.show" },
                .state = { QStringLiteral("radioTouch.checked=") + profile.touch,
                    QStringLiteral("radioMouse.checked=") + profile.mouse,
                    QStringLiteral("labelProfile.text=") + profile.note,
                    QStringLiteral("labelProfile.visible=") + (*profile.note ? "true" : "false") } });
    row("Apply writes what changed, once",
        { .steps = { "tabTouch.show", "radioMouse.click", "spinAdvanced_3.value=30", "buttonApply.click",
              "buttonApply.click" },
            .calls = { "TouchScreen_setMode(2) -> 0", "TouchScreen_setAdvancedSetting(3, 30) -> 0" },
            .state = { "radioMouse.checked=true", "spinAdvanced_3.value=30" } });
    row("a profile from the next start is not written again",
        { .steps = { "TouchScreen/Mode=1", "tabTouch.show", "buttonApply.click" } });
    row("unknown mode: written once a profile is chosen",
        { .steps = { "TouchScreen/Mode=7", "tabTouch.show", "buttonApply.click", "radioTouch.click",
              "buttonApply.click" },
            .calls = { "TouchScreen_setMode(3) -> 0" },
            .state = { "labelProfile.visible=false" } });
    row("no touch screen: nothing to show, write or calibrate",
        { .steps = { "About/IsTouchScreenAvailable=0", "tabTouch.show", "buttonApply.click" },
            .state = { "groupBoxProfile.visible=false", "groupBoxAdvanced.visible=false",
                "buttonCalibrate.visible=false", "buttonApply.visible=false",
                "labelNoTouch.visible=true" } });
    row("unreadable right-click time: told, never written",
        { .steps = { "TouchScreen_getMouseRightClickTime=7", "tabTouch.show", "spinRightClick.value=1500",
              "buttonApply.click" },
            .state = { "spinRightClick.visible=true", "spinRightClick.enabled=false" },
            .boxes = { "Error(7) in getMouseRightClickTime: Communication with the controller failed" } });
    row("unreadable advanced settings: one box, all disabled",
        { .steps = { "TouchScreen_getAdvancedSetting=18", "tabTouch.show" },
            .state = { "spinAdvanced_0.enabled=false", "spinAdvanced_3.enabled=false",
                "spinRightClick.enabled=true" },
            .boxes = { "Error(18) in getAdvancedSetting: Value not available" } });
    row("advanced settings missing: their group goes",
        { .steps = { "TouchScreen_getAdvancedSetting=2", "tabTouch.show" },
            .state = { "groupBoxAdvanced.visible=false", "groupBoxProfile.visible=true",
                "buttonApply.visible=true" } });
    row("a refused write ends Apply, the choices stay",
        { .steps = { "TouchScreen_setMode=19", "tabTouch.show", "radioMouse.click",
              "spinRightClick.value=800", "buttonApply.click" },
            .calls = { "TouchScreen_setMode(2) -> 19" },
            .state = { "radioMouse.checked=true", "spinRightClick.value=800" },
            .boxes = { "Error(19) in setMode: Hardware fault" } });
    row("calibrator installed: started, nothing else",
        { .steps = { "tabTouch.show", "buttonCalibrate.click" },
            .state = { "Dialogs.started=" + calibratorDir + "/xinput_calibrator" } });
    row("no calibrator: told so",
        { .steps = { "tabTouch.show", "buttonCalibrate.click" },
            .state = { "Dialogs.started=" },
            .boxes = { "Calibrating the touch screen needs the program xinput_calibrator, which is not "
                       "installed.\nIt comes with the package xinput-calibrator." } });
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
