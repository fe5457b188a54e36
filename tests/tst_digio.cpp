// The "Digital I/O" page on the simulated unit: the output probe, the input
// polling and the output mask.
#include "pagecheck.h"
#include "tabs/tabDigIODlg.h"

namespace
{
Steps boxes(const QString& kind, const QString& checked)
{
    Steps state;
    for (int n = 1; n <= 4; ++n)
        state << QStringLiteral("checkBox%1_%2.checked=%3")
                     .arg(kind)
                     .arg(n)
                     .arg(checked[n - 1] == QLatin1Char('1') ? "true" : "false");
    return state;
}

void scenarios()
{
    row("built: the outputs as read and written back",
        { .steps = { "DigIO/DigIO=6", "build" },
            .calls = { "DigIO_getDigIO() -> 0", "DigIO_setDigIO(6) -> 0" },
            .state = boxes("DO", "0110")
                + Steps { "checkBoxDO_4.checkable=true", "groupBoxStatus_2.enabled=true",
                    "labelStatus.text=Updated every 250 ms" } });
    row("output write answering 2 at start: inputs only",
        { .steps = { "DigIO_setDigIO=2", "build", "tabDigIO.show" },
            .calls = { "DigIO_getDigIO() -> 0", "DigIO_setDigIO(0) -> 2", "DigIO_getDigIO() -> 0" },
            .state = { "groupBoxStatus_2.visible=false", "groupBoxStatus_2.enabled=false",
                "groupBoxStatus.visible=true" } });
    row("failed probe read drops the outputs silently",
        { .steps = { "DigIO_getDigIO=7", "build" },
            .calls = { "DigIO_getDigIO() -> 7" },
            .state = { "groupBoxStatus_2.enabled=false", "checkBoxDO_1.checkable=false" } });
    row("shown: the inputs, polled every 250 ms",
        { .steps = { "DigIO/DigIO=9", "tabDigIO.show" },
            .calls = { "DigIO_getDigIO() -> 0" },
            .state = boxes("DI", "1001") + Steps { "timer.active=true", "timer.interval=250" } });
    row("an unchanged mask leaves the boxes",
        { .steps
            = { "DigIO/DigIO=1", "tabDigIO.show", "checkBoxDI_1.checked=false", "tabDigIO.updateIOValues" },
            .calls = { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 0" },
            .state = boxes("DI", "0000") });
    row("the first mask 0 changes nothing",
        { .steps = { "checkBoxDI_2.checked=true", "tabDigIO.show" },
            .calls = { "DigIO_getDigIO() -> 0" },
            .state = boxes("DI", "0100") });
    row("inputs answering 2 are hidden for good",
        { .steps = { "tabDigIO.show", "DigIO_getDigIO=2", "tabDigIO.updateIOValues", "DigIO_getDigIO=0",
              "DigIO/DigIO=15", "tabDigIO.updateIOValues" },
            .calls = { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 2", "DigIO_getDigIO() -> 0" },
            .state = { "groupBoxStatus.visible=false", "timer.active=true" } });
    row("another read failure stops polling",
        { .steps = { "tabDigIO.show", "DigIO_getDigIO=6", "tabDigIO.updateIOValues" },
            .calls = { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 6" },
            .state = { "timer.active=false", "groupBoxStatus.visible=true" },
            .boxes = { "Error(6) in getDigIO: Timeout, the controller did not answer" } });
    row("polling again on the next showing",
        { .steps = { "tabDigIO.show", "DigIO_getDigIO=6", "tabDigIO.updateIOValues", "tabDigIO.hide",
              "DigIO_getDigIO=0", "tabDigIO.show" },
            .calls = { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 6", "DigIO_getDigIO() -> 0" },
            .state = { "timer.active=true" },
            .boxes = { "Error(6) in getDigIO: Timeout, the controller did not answer" } });
    row("outputs written as a mask",
        { .steps = { "checkBoxDO_3.click", "checkBoxDO_1.click", "checkBoxDO_3.click" },
            .calls = { "DigIO_setDigIO(4) -> 0", "DigIO_setDigIO(5) -> 0", "DigIO_setDigIO(1) -> 0" },
            .state = boxes("DO", "1000") });
    row("output write answering 2 drops the outputs",
        { .steps = { "DigIO_setDigIO=2", "checkBoxDO_2.click" },
            .calls = { "DigIO_setDigIO(2) -> 2" },
            .state = { "groupBoxStatus_2.enabled=false" } });
    row("refused output write: told, the box as the user left it",
        { .steps = { "DigIO_setDigIO=19", "checkBoxDO_4.click" },
            .calls = { "DigIO_setDigIO(8) -> 19" },
            .state = boxes("DO", "0001") + Steps { "groupBoxStatus_2.enabled=true" },
            .boxes = { "Error(19) in DigIO_setDigIO: Hardware fault" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabDigIODlg(nullptr); }, QStringLiteral("DigIO_"), {}, scenarios);
}
