// The "Advanced" page on the simulated unit: firmware runs from the file check
// through the questions and the progress dialog to their messages, the file
// chooser, the captions, shutdown and the factory settings.
#include "pagecheck.h"
#include "tabs/tabAdvancedDlg.h"

#include <QDir>
#include <QFile>

namespace
{
const QString dir = QStringLiteral(ZUSETTINGS_BINARY_DIR "/tests/firmware");
// Rows whose name says so run for a user other than root.
const char* const ordinaryUser = "ordinary user";

const QString harm = "This operation may cause harm to your device.\nDo you want to continue?";
const QString harmSS
    = "This operation may cause harm to your device.\nAfter the update, the unit power must be "
      "turned off and then on again.\nDo you want to continue?";
const QString updated
    = "Software update succeeded!\nPlease shut down the computer in order for the update to take effect.";
const QString verified = "Software verification succeeded!";
const QString flashServer = "Dialogs.started=sudo /bin/bash /usr/bin/stm32_flash_server.sh";
const QString progress = "Dialogs.progress=open Update progress: Fetching data... (-1..100) | value 0 | ";
const QString done = progress + "value 100 | label Done | reset | close";

Steps start(const QString& button, const QString& file, bool verify = false)
{
    return { "checkBox.checked=" + QString::fromLatin1(verify ? "true" : "false"),
        "editFileName.text=" + dir + "/" + file, button + ".click" };
}

// The calls of a run: the handle renewed, then `calls`.
Steps run(const Steps& calls)
{
    return Steps { "FirmwareUpgrade_release()", "GetFirmwareUpgrade()" } + calls;
}

QString started(const QString& operation, const QString& file, int code = 0)
{
    return QStringLiteral("FirmwareUpgrade_%1(\"%2/%3\", 0) -> %4").arg(operation, dir, file).arg(code);
}

void scenarios()
{
    row("FPGA programmed",
        { .steps = start("buttonProgFPGA", "fw.mcs"),
            .calls = run({ started("startFpgaUpgrade", "fw.mcs") }),
            .state = { "Dialogs.titles=Update progress | Update progress", "Dialogs.started=", done },
            .boxes = { harm, updated } });
    row("FPGA verified without a question",
        { .steps = start("buttonProgFPGA", "fw.mcs", true),
            .calls = run({ started("startFpgaVerification", "fw.mcs") }),
            .state = { "Dialogs.titles=Verify", "buttonProgFPGA.text=Verify FPGA",
                "buttonProgFront.text=Verify Front uC", "buttonProgSS.text=Verify SS", done },
            .boxes = { verified } });
    row("captions back to programming",
        { .steps = { "tabAdvanced.show", "checkBox.checked=true", "checkBox.checked=false" },
            .state = { "checkBox.text=Verify only", "buttonProgFPGA.text=Program FPGA",
                "buttonProgFront.text=Program Front uC", "buttonProgSS.text=Program SS" } });
    row("update.HEX refused",
        { .steps = start("buttonProgFront", "update.HEX"),
            .calls = run({}),
            .state = { "Dialogs.titles=Zusettings", "Dialogs.started=" },
            .boxes = { "The file to program must be a .hex file!" } });
    row("fw.MCS refused for verifying",
        { .steps = start("buttonProgFPGA", "fw.MCS", true),
            .calls = run({}),
            .state = { "Dialogs.progress=" },
            .boxes = { "The file to verify must be a .mcs file!" } });
    row("front: No leaves the serial line",
        { .steps = Steps { "Dialogs.answer=No" } + start("buttonProgFront", "fw.hex"),
            .calls = run({}),
            .state = { "Dialogs.started=", "Dialogs.progress=" },
            .boxes = { harm } });
    row("front verified, serial line freed first",
        { .steps = start("buttonProgFront", "fw.hex", true),
            .calls = run({ started("startFrontVerification", "fw.hex") }),
            .state = { flashServer, done },
            .boxes = { verified } });
    row("front start refused",
        { .steps = Steps { "FirmwareUpgrade_startFrontUpgrade=13" } + start("buttonProgFront", "fw.hex"),
            .calls = run({ started("startFrontUpgrade", "fw.hex", 13) }),
            .state = { flashServer, "Dialogs.progress=" },
            .boxes = { harm, "Error(13) in startFrontUpgrade: Busy, another operation is in progress" } });
    row("run ending in state 7",
        { .steps = Steps { "Unit/UpgradeEndsWithError=12" } + start("buttonProgFPGA", "fw.mcs", true),
            .calls = run({ started("startFpgaVerification", "fw.mcs") }),
            .state = { "Dialogs.titles=Update progress",
                progress + "value 99 | label Done - ERROR | reset | close" },
            .boxes
            = { "Upgrade failed in state: Complete with error (99%). \nError: Flash verification failed" } });
    row("unreadable status ends the run",
        { .steps = Steps { "FirmwareUpgrade_getUpgradeStatus=7" } + start("buttonProgFPGA", "fw.mcs", true),
            .calls = run({ started("startFpgaVerification", "fw.mcs") }),
            .state = { progress + "value 0 | label Initiating | reset | close" },
            .boxes = { "Upgrade failed in state: Initiating (0%). \nError: Communication with the controller "
                       "failed" } });
    row("SS on battery stops at the warning",
        { .steps = Steps { "Battery/PowerSource=0" } + start("buttonProgSS", "fw.hex"),
            .calls = run({ "Battery_getPowerSource() -> 0" }),
            .state = { "Dialogs.titles=Warning. Battery Power", "Dialogs.started=", "Dialogs.progress=" },
            .boxes = { "Please use external power when updating SS!" } });
    row("SS programmed on external power",
        { .steps = start("buttonProgSS", "fw.hex"),
            .calls = run({ "Battery_getPowerSource() -> 0", started("startSSUpgrade", "fw.hex") }),
            .state = { "Dialogs.titles=Update progress | Update progress", flashServer, done },
            .boxes = { harmSS,
                "Software update succeeded!\nPlease shut down or restart the OS for the update to take "
                "effect." } });
    row("SS verified on battery",
        { .steps = Steps { "Battery/PowerSource=0" } + start("buttonProgSS", "fw.hex", true),
            .calls = run({ started("startSSVerification", "fw.hex") }),
            .state = { "Dialogs.titles=Verify | Verify", flashServer, done },
            .boxes
            = { "After verifying SS, the unit power must be turned off and then on again.\n\nIf you are "
                "verifying after an upgrade, or after another verification, the process may fail in the "
                "state preparing communication. In this case, it may work to retry.\n\nDo you want to "
                "continue?",
                "Software verification succeeded!\nPlease shut down or restart the OS to restore SS in "
                "operating state." } });
    row(QLatin1String("SS refused for an ") + ordinaryUser,
        { .steps = start("buttonProgSS", "fw.hex"),
            .calls = run({}),
            .state = { "Dialogs.started=", "Dialogs.progress=" },
            .boxes = { "Error(1) in This operation requires superuser priviledges: Operation failed" } });
    row("file chooser starts in the last folder",
        { .steps = { "Dialogs.file=" + dir + "/fw.hex", "buttonFile.click", "buttonFile.click" },
            .state = { "editFileName.text=" + dir + "/fw.hex", "Dialogs.folders= | " + dir } });
    row("shutdown refused",
        { .steps = { "FirmwareUpgrade_shutDown=19", "buttonShutdown.click" },
            .calls = { "FirmwareUpgrade_shutDown() -> 19" },
            .boxes = { "Error(19) in shutDown: Hardware fault" } });
    const QString reset
        = "This operation will reset all settings to the factory default state.\n\nThis includes "
          "settings that are only available from the API and not from Zusettings\n\nDo you "
          "want to continue?";
    row("defaults: No writes nothing",
        { .steps = { "Dialogs.answer=No", "buttonDefaults.click" }, .boxes = { reset } });
    // The writer's last steps are the touch screen's modes.
    row("defaults written",
        { .steps = { "buttonDefaults.click" },
            .calls
            = { "TouchScreen_setMode(3) -> 0", "TouchScreen_setMode(2) -> 0", "TouchScreen_setMode(3) -> 0" },
            .state = { "Dialogs.titles=Default Settings | Default Settings" },
            .boxes = { reset, "Operation complete. Restart the system for all settings to take effect." } });
}
} // namespace

int main(int argc, char** argv)
{
    QDir().mkpath(dir);
    for (const char* name : { "fw.mcs", "fw.hex", "update.HEX", "fw.MCS" }) {
        QFile file(dir + "/" + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(":00000001FF\n") < 0)
            return 1;
    }
    return runPageTest(
        argc, argv,
        [] {
            // Root, unless the row's name says otherwise.
            tabAdvancedDlg::runsAsRoot
                = [] { return !QByteArray(QTest::currentDataTag()).contains(ordinaryUser); };
            return new tabAdvancedDlg(nullptr);
        },
        QStringLiteral(
            "GetFirmwareUpgrade|FirmwareUpgrade_(release|start|shut)|Battery_get|TouchScreen_setMode"),
        {}, scenarios);
}
