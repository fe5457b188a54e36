// The "CAN" page on the simulated unit: the nets it lists, what it shows of
// the chosen net, and what Apply writes.
#include "pagecheck.h"
#include "tabs/tabCanDlg.h"

namespace
{
void scenarios()
{
    const Steps net1 { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 0" };
    const Steps noNets { "comboBoxDevice.enabled=false", "comboBoxBaudRate.enabled=false",
        "buttonApply.enabled=false", "comboBoxBaudRate.currentText=No Can nets available",
        "comboBoxFrameType.currentText=No Can nets available", "comboBoxFrameType.visible=false",
        "labelFramType.visible=false", "groupBoxSettings.title=Settings" };
    const QString readError = QStringLiteral("getBaudrate: Error:  Communication with the controller failed");

    QTest::newRow("two nets, the first shown")
        << Steps { "tabCan.show" } << net1
        << Steps { "comboBoxDevice.count=2", "comboBoxDevice.currentText=CAN1",
               "groupBoxSettings.title=Settings for CAN1", "comboBoxBaudRate.count=6",
               "comboBoxBaudRate.currentText=125", "comboBoxFrameType.currentText=Standard",
               "comboBoxFrameType.visible=true", "buttonApply.enabled=true" }
        << Steps();
    QTest::newRow("failed count probes nets 1 and 2") << Steps { "About/NrOfCANConnections=4",
        "CanSetting/Baudrate_3=250", "About_getNrOfCANConnections=6",
        "build" } << Steps { "CanSetting_getBaudrate(1) -> 0", "CanSetting_getBaudrate(2) -> 0" }
                                                      << Steps { "comboBoxDevice.count=2" } << Steps();
    QTest::newRow("count 4, net 3 missing: two nets")
        << Steps { "About/NrOfCANConnections=4", "build" }
        << Steps { "CanSetting_getBaudrate(1) -> 0", "CanSetting_getBaudrate(2) -> 0",
               "CanSetting_getBaudrate(3) -> 2" }
        << Steps { "comboBoxDevice.count=2", "comboBoxDevice.enabled=true" } << Steps();
    // The slot is called directly: a disabled button is no guard.
    QTest::newRow("count 0") << Steps { "About/NrOfCANConnections=0", "build", "tabCan.show",
        "tabCan.buttonApplyClicked", "comboBoxDevice.currentIndex=0" }
                             << Steps() << Steps { "comboBoxDevice.count=0" } + noNets << Steps();
    QTest::newRow("net 1 unreadable")
        << Steps { "CanSetting_getBaudrate=7", "build", "tabCan.show" }
        << Steps { "CanSetting_getBaudrate(1) -> 7" }
        << Steps { "comboBoxDevice.count=1",
               "comboBoxDevice.currentText=getBaudrate: Communication with the controller failed" }
            + noNets
        << Steps();
    QTest::newRow("83 kbit/s is a seventh item and written back")
        << Steps { "CanSetting/Baudrate_1=83", "tabCan.show", "buttonApply.click" }
        << net1 + Steps { "CanSetting_setFrameType(1, 0) -> 0", "CanSetting_setBaudrate(1, 83) -> 0" }
        << Steps { "comboBoxBaudRate.count=7", "comboBoxBaudRate.currentIndex=6" } << Steps();
    // Nothing is ever taken off the list: each odd reading adds one item.
    QTest::newRow("every showing reads the first net again")
        << Steps { "CanSetting/Baudrate_1=83", "tabCan.show", "comboBoxDevice.currentIndex=1", "tabCan.hide",
               "tabCan.show" }
        << net1 + Steps { "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0" } + net1
        << Steps { "comboBoxDevice.currentIndex=0", "groupBoxSettings.title=Settings for CAN1",
               "comboBoxBaudRate.count=8", "comboBoxBaudRate.currentText=83" }
        << Steps();
    QTest::newRow("CAN2 written with its own choices")
        << Steps { "tabCan.show", "comboBoxDevice.currentIndex=1", "comboBoxBaudRate.currentIndex=5",
               "comboBoxFrameType.currentIndex=2", "buttonApply.click" }
        << net1
            + Steps { "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0",
                  "CanSetting_setFrameType(2, 2) -> 0", "CanSetting_setBaudrate(2, 1000) -> 0" }
        << Steps { "groupBoxSettings.title=Settings for CAN2" } << Steps();
    QTest::newRow("frame type outside 0..2 shows Standard")
        << Steps { "CanSetting/FrameType_2=7", "CanSetting/FrameType_1=1", "tabCan.show",
               "comboBoxFrameType.currentIndex=1", "comboBoxDevice.currentIndex=1" }
        << net1 + Steps { "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0" }
        << Steps { "comboBoxFrameType.currentIndex=0" } << Steps();
    // The error passes through both steps of a reading: two items.
    QTest::newRow("unreadable rate is an item Apply refuses")
        << Steps { "CanSetting_getBaudrate=7", "tabCan.show", "buttonApply.click" }
        << Steps { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 7",
               "CanSetting_setFrameType(1, 0) -> 0" }
        << Steps { "comboBoxBaudRate.count=8", "comboBoxBaudRate.currentText=" + readError }
        << Steps { "Baud rate invalid format, net 1." };
    QTest::newRow("missing rate hides its row; Apply writes the frame type")
        << Steps { "CanSetting_getBaudrate=2", "tabCan.show", "buttonApply.click" }
        << Steps { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 2",
               "CanSetting_setFrameType(1, 0) -> 0" }
        << Steps { "comboBoxBaudRate.count=7",
               "comboBoxBaudRate.currentText=", "comboBoxBaudRate.visible=false",
               "labelBaudRate.visible=false" }
        << Steps();
    QTest::newRow("the empty item of a missing rate is refused")
        << Steps { "CanSetting_getBaudrate=2", "tabCan.show", "CanSetting_getBaudrate=0",
               "comboBoxDevice.currentIndex=1", "comboBoxBaudRate.currentIndex=6", "buttonApply.click" }
        << Steps { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 2",
               "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0",
               "CanSetting_setFrameType(2, 0) -> 0" }
        << Steps { "comboBoxBaudRate.visible=true", "comboBoxBaudRate.count=7" }
        << Steps { "Baud rate invalid format, net 2." };
    QTest::newRow("an older extra is refused with the frame type message")
        << Steps { "CanSetting/Baudrate_1=83", "tabCan.show", "tabCan.hide", "tabCan.show",
               "comboBoxBaudRate.currentIndex=7", "buttonApply.click" }
        << net1 + net1 + Steps { "CanSetting_setFrameType(1, 0) -> 0" }
        << Steps { "comboBoxBaudRate.count=8" } << Steps { "Invalid frametype, net 1." };
    QTest::newRow("unreadable frame type: told once, row gone for good")
        << Steps { "CanSetting_getFrameType=8", "tabCan.show", "CanSetting_getFrameType=0", "tabCan.hide",
               "tabCan.show", "comboBoxBaudRate.currentIndex=2", "buttonApply.click" }
        << Steps { "CanSetting_getFrameType(1) -> 8", "CanSetting_getBaudrate(1) -> 0" } + net1
            + Steps { "CanSetting_setBaudrate(1, 250) -> 0" }
        << Steps { "comboBoxFrameType.visible=false", "labelFramType.visible=false" }
        << Steps { "Error(8) in getFrameType: Checksum error in the controller's answer" };
    QTest::newRow("missing frame type hidden without a word")
        << Steps { "CanSetting_getFrameType=2", "tabCan.show" }
        << Steps { "CanSetting_getFrameType(1) -> 2", "CanSetting_getBaudrate(1) -> 0" }
        << Steps { "comboBoxFrameType.visible=false" } << Steps();
    QTest::newRow("refused frame type stops Apply")
        << Steps { "CanSetting_setFrameType=19", "tabCan.show", "buttonApply.click" }
        << net1 + Steps { "CanSetting_setFrameType(1, 0) -> 19" } << Steps()
        << Steps { "Error(19) in setFrameType: Hardware fault" };
    QTest::newRow("refused rate") << Steps { "CanSetting_setBaudrate=11", "tabCan.show", "buttonApply.click" }
                                  << net1
            + Steps { "CanSetting_setFrameType(1, 0) -> 0", "CanSetting_setBaudrate(1, 125) -> 11" }
                                  << Steps() << Steps { "Error(11) in setBaudrate: Flash write failed" };
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabCanDlg(nullptr); }, QStringLiteral("CanSetting_"), {}, scenarios);
}
