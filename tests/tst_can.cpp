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

    row("two nets, the first shown",
        { .steps = { "tabCan.show" },
            .calls = net1,
            .state = { "comboBoxDevice.count=2", "comboBoxDevice.currentText=CAN1",
                "groupBoxSettings.title=Settings for CAN1", "comboBoxBaudRate.count=6",
                "comboBoxBaudRate.currentText=125", "comboBoxFrameType.currentText=Standard",
                "comboBoxFrameType.visible=true", "buttonApply.enabled=true" } });
    row("failed count probes nets 1 and 2",
        { .steps = { "About/NrOfCANConnections=4", "CanSetting/Baudrate_3=250",
              "About_getNrOfCANConnections=6", "build" },
            .calls = { "CanSetting_getBaudrate(1) -> 0", "CanSetting_getBaudrate(2) -> 0" },
            .state = { "comboBoxDevice.count=2" } });
    row("count 4, net 3 missing: two nets",
        { .steps = { "About/NrOfCANConnections=4", "build" },
            .calls = { "CanSetting_getBaudrate(1) -> 0", "CanSetting_getBaudrate(2) -> 0",
                "CanSetting_getBaudrate(3) -> 2" },
            .state = { "comboBoxDevice.count=2", "comboBoxDevice.enabled=true" } });
    // The slot is called directly: a disabled button is no guard.
    row("count 0",
        { .steps = { "About/NrOfCANConnections=0", "build", "tabCan.show", "tabCan.buttonApplyClicked",
              "comboBoxDevice.currentIndex=0" },
            .state = Steps { "comboBoxDevice.count=0" } + noNets });
    row("net 1 unreadable",
        { .steps = { "CanSetting_getBaudrate=7", "build", "tabCan.show" },
            .calls = { "CanSetting_getBaudrate(1) -> 7" },
            .state = Steps { "comboBoxDevice.count=1",
                         "comboBoxDevice.currentText=getBaudrate: Communication with the controller failed" }
                + noNets });
    row("83 kbit/s is a seventh item and written back",
        { .steps = { "CanSetting/Baudrate_1=83", "tabCan.show", "buttonApply.click" },
            .calls
            = net1 + Steps { "CanSetting_setFrameType(1, 0) -> 0", "CanSetting_setBaudrate(1, 83) -> 0" },
            .state = { "comboBoxBaudRate.count=7", "comboBoxBaudRate.currentIndex=6" } });
    // Nothing is ever taken off the list: each odd reading adds one item.
    row("every showing reads the first net again",
        { .steps = { "CanSetting/Baudrate_1=83", "tabCan.show", "comboBoxDevice.currentIndex=1",
              "tabCan.hide", "tabCan.show" },
            .calls
            = net1 + Steps { "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0" } + net1,
            .state = { "comboBoxDevice.currentIndex=0", "groupBoxSettings.title=Settings for CAN1",
                "comboBoxBaudRate.count=8", "comboBoxBaudRate.currentText=83" } });
    row("CAN2 written with its own choices",
        { .steps = { "tabCan.show", "comboBoxDevice.currentIndex=1", "comboBoxBaudRate.currentIndex=5",
              "comboBoxFrameType.currentIndex=2", "buttonApply.click" },
            .calls = net1
                + Steps { "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0",
                    "CanSetting_setFrameType(2, 2) -> 0", "CanSetting_setBaudrate(2, 1000) -> 0" },
            .state = { "groupBoxSettings.title=Settings for CAN2" } });
    row("frame type outside 0..2 shows Standard",
        { .steps = { "CanSetting/FrameType_2=7", "CanSetting/FrameType_1=1", "tabCan.show",
              "comboBoxFrameType.currentIndex=1", "comboBoxDevice.currentIndex=1" },
            .calls = net1 + Steps { "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0" },
            .state = { "comboBoxFrameType.currentIndex=0" } });
    // The error passes through both steps of a reading: two items.
    row("unreadable rate is an item Apply refuses",
        { .steps = { "CanSetting_getBaudrate=7", "tabCan.show", "buttonApply.click" },
            .calls = { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 7",
                "CanSetting_setFrameType(1, 0) -> 0" },
            .state = { "comboBoxBaudRate.count=8", "comboBoxBaudRate.currentText=" + readError },
            .boxes = { "Baud rate invalid format, net 1." } });
    row("missing rate hides its row; Apply writes the frame type",
        { .steps = { "CanSetting_getBaudrate=2", "tabCan.show", "buttonApply.click" },
            .calls = { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 2",
                "CanSetting_setFrameType(1, 0) -> 0" },
            .state = { "comboBoxBaudRate.count=7", "comboBoxBaudRate.currentText=",
                "comboBoxBaudRate.visible=false", "labelBaudRate.visible=false" } });
    row("the empty item of a missing rate is refused",
        { .steps = { "CanSetting_getBaudrate=2", "tabCan.show", "CanSetting_getBaudrate=0",
              "comboBoxDevice.currentIndex=1", "comboBoxBaudRate.currentIndex=6", "buttonApply.click" },
            .calls = { "CanSetting_getFrameType(1) -> 0", "CanSetting_getBaudrate(1) -> 2",
                "CanSetting_getFrameType(2) -> 0", "CanSetting_getBaudrate(2) -> 0",
                "CanSetting_setFrameType(2, 0) -> 0" },
            .state = { "comboBoxBaudRate.visible=true", "comboBoxBaudRate.count=7" },
            .boxes = { "Baud rate invalid format, net 2." } });
    row("an older extra is refused with the frame type message",
        { .steps = { "CanSetting/Baudrate_1=83", "tabCan.show", "tabCan.hide", "tabCan.show",
              "comboBoxBaudRate.currentIndex=7", "buttonApply.click" },
            .calls = net1 + net1 + Steps { "CanSetting_setFrameType(1, 0) -> 0" },
            .state = { "comboBoxBaudRate.count=8" },
            .boxes = { "Invalid frametype, net 1." } });
    row("unreadable frame type: told once, row gone for good",
        { .steps = { "CanSetting_getFrameType=8", "tabCan.show", "CanSetting_getFrameType=0", "tabCan.hide",
              "tabCan.show", "comboBoxBaudRate.currentIndex=2", "buttonApply.click" },
            .calls = Steps { "CanSetting_getFrameType(1) -> 8", "CanSetting_getBaudrate(1) -> 0" } + net1
                + Steps { "CanSetting_setBaudrate(1, 250) -> 0" },
            .state = { "comboBoxFrameType.visible=false", "labelFramType.visible=false" },
            .boxes = { "Error(8) in getFrameType: Checksum error in the controller's answer" } });
    row("missing frame type hidden without a word",
        { .steps = { "CanSetting_getFrameType=2", "tabCan.show" },
            .calls = { "CanSetting_getFrameType(1) -> 2", "CanSetting_getBaudrate(1) -> 0" },
            .state = { "comboBoxFrameType.visible=false" } });
    row("refused frame type stops Apply",
        { .steps = { "CanSetting_setFrameType=19", "tabCan.show", "buttonApply.click" },
            .calls = net1 + Steps { "CanSetting_setFrameType(1, 0) -> 19" },
            .boxes = { "Error(19) in setFrameType: Hardware fault" } });
    row("refused rate",
        { .steps = { "CanSetting_setBaudrate=11", "tabCan.show", "buttonApply.click" },
            .calls
            = net1 + Steps { "CanSetting_setFrameType(1, 0) -> 0", "CanSetting_setBaudrate(1, 125) -> 11" },
            .boxes = { "Error(11) in setBaudrate: Flash write failed" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabCanDlg(nullptr); }, QStringLiteral("CanSetting_"), {}, scenarios);
}
