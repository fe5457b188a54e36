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
    QTest::newRow("FPGA programmed") << start("buttonProgFPGA", "fw.mcs")
                                     << run({ started("startFpgaUpgrade", "fw.mcs") })
                                     << Steps { "Dialogs.titles=Update progress | Update progress",
                                            "Dialogs.started=", done }
                                     << Steps { harm, updated };
    QTest::newRow("FPGA verified without a question")
        << start("buttonProgFPGA", "fw.mcs", true) << run({ started("startFpgaVerification", "fw.mcs") })
        << Steps { "Dialogs.titles=Verify", "buttonProgFPGA.text=Verify FPGA",
               "buttonProgFront.text=Verify Front uC", "buttonProgSS.text=Verify SS", done }
        << Steps { verified };
    QTest::newRow("captions back to programming")
        << Steps { "tabAdvanced.show", "checkBox.checked=true", "checkBox.checked=false" } << Steps()
        << Steps { "checkBox.text=Verify only", "buttonProgFPGA.text=Program FPGA",
               "buttonProgFront.text=Program Front uC", "buttonProgSS.text=Program SS" }
        << Steps();
    QTest::newRow("update.HEX refused") << start("buttonProgFront", "update.HEX") << run({})
                                        << Steps { "Dialogs.titles=Zusettings", "Dialogs.started=" }
                                        << Steps { "The file to program must be a .hex file!" };
    QTest::newRow("fw.MCS refused for verifying")
        << start("buttonProgFPGA", "fw.MCS", true) << run({}) << Steps { "Dialogs.progress=" }
        << Steps { "The file to verify must be a .mcs file!" };
    QTest::newRow("front: No leaves the serial line")
        << Steps { "Dialogs.answer=No" } + start("buttonProgFront", "fw.hex") << run({})
        << Steps { "Dialogs.started=", "Dialogs.progress=" } << Steps { harm };
    QTest::newRow("front verified, serial line freed first")
        << start("buttonProgFront", "fw.hex", true) << run({ started("startFrontVerification", "fw.hex") })
        << Steps { flashServer, done } << Steps { verified };
    QTest::newRow("front start refused")
        << Steps { "FirmwareUpgrade_startFrontUpgrade=13" } + start("buttonProgFront", "fw.hex")
        << run({ started("startFrontUpgrade", "fw.hex", 13) }) << Steps { flashServer, "Dialogs.progress=" }
        << Steps { harm, errorBox(13, "startFrontUpgrade") };
    QTest::newRow("run ending in state 7")
        << Steps { "Unit/UpgradeEndsWithError=12" } + start("buttonProgFPGA", "fw.mcs", true)
        << run({ started("startFpgaVerification", "fw.mcs") })
        << Steps { "Dialogs.titles=Update progress",
               progress + "value 99 | label Done - ERROR | reset | close" }
        << Steps { "Upgrade failed in state: Complete with error (99%). \nError: Flash verification failed" };
    QTest::newRow("unreadable status ends the run")
        << Steps { "FirmwareUpgrade_getUpgradeStatus=7" } + start("buttonProgFPGA", "fw.mcs", true)
        << run({ started("startFpgaVerification", "fw.mcs") })
        << Steps { progress + "value 0 | label Initiating | reset | close" }
        << Steps {
               "Upgrade failed in state: Initiating (0%). \nError: Communication with the controller failed"
           };
    QTest::newRow("SS on battery stops at the warning")
        << Steps { "Battery/PowerSource=0" } + start("buttonProgSS", "fw.hex")
        << run({ "Battery_getPowerSource() -> 0" })
        << Steps { "Dialogs.titles=Warning. Battery Power", "Dialogs.started=", "Dialogs.progress=" }
        << Steps { "Please use external power when updating SS!" };
    QTest::newRow("SS programmed on external power")
        << start("buttonProgSS", "fw.hex")
        << run({ "Battery_getPowerSource() -> 0", started("startSSUpgrade", "fw.hex") })
        << Steps { "Dialogs.titles=Update progress | Update progress", flashServer, done }
        << Steps {
               harmSS,
               "Software update succeeded!\nPlease shut down or restart the OS for the update to take effect."
           };
    QTest::newRow("SS verified on battery")
        << Steps { "Battery/PowerSource=0" } + start("buttonProgSS", "fw.hex", true)
        << run({ started("startSSVerification", "fw.hex") })
        << Steps { "Dialogs.titles=Verify | Verify", flashServer, done }
        << Steps { "After verifying SS, the unit power must be turned off and then on again.\n\nIf you are "
                   "verifying after an upgrade, or after another verification, the process may fail in the "
                   "state preparing communication. In this case, it may work to retry.\n\nDo you want to "
                   "continue?",
               "Software verification succeeded!\nPlease shut down or restart the OS to restore SS in "
               "operating state." };
    QTest::addRow("SS refused for an %s", ordinaryUser)
        << start("buttonProgSS", "fw.hex") << run({}) << Steps { "Dialogs.started=", "Dialogs.progress=" }
        << Steps { errorBox(1, "This operation requires superuser priviledges") };
    QTest::newRow("file chooser starts in the last folder")
        << Steps { "Dialogs.file=" + dir + "/fw.hex", "buttonFile.click", "buttonFile.click" } << Steps()
        << Steps { "editFileName.text=" + dir + "/fw.hex", "Dialogs.folders= | " + dir } << Steps();
    QTest::newRow("shutdown refused")
        << Steps { "FirmwareUpgrade_shutDown=19", "buttonShutdown.click" }
        << Steps { "FirmwareUpgrade_shutDown() -> 19" } << Steps() << Steps { errorBox(19, "shutDown") };
    const QString reset
        = "This operation will reset all settings to the factory default state.\n\nThis includes "
          "settings that are only available from the API and not from Zusettings\n\nDo you "
          "want to continue?";
    QTest::newRow("defaults: No writes nothing")
        << Steps { "Dialogs.answer=No", "buttonDefaults.click" } << Steps() << Steps() << Steps { reset };
    // The writer's last steps are the touch screen's modes.
    QTest::newRow("defaults written")
        << Steps { "buttonDefaults.click" }
        << Steps { "TouchScreen_setMode(3) -> 0", "TouchScreen_setMode(2) -> 0",
               "TouchScreen_setMode(3) -> 0" }
        << Steps { "Dialogs.titles=Default Settings | Default Settings" }
        << Steps { reset, "Operation complete. Restart the system for all settings to take effect." };
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
