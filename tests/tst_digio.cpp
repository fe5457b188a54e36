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
    QTest::newRow("built: the outputs as read and written back")
        << Steps { "DigIO/DigIO=6", "build" } << Steps { "DigIO_getDigIO() -> 0", "DigIO_setDigIO(6) -> 0" }
        << boxes("DO", "0110")
            + Steps { "checkBoxDO_4.checkable=true", "groupBoxStatus_2.enabled=true",
                  "labelStatus.text=Updated every 250 ms" }
        << Steps();
    QTest::newRow("output write answering 2 at start: inputs only")
        << Steps { "DigIO_setDigIO=2", "build", "tabDigIO.show" }
        << Steps { "DigIO_getDigIO() -> 0", "DigIO_setDigIO(0) -> 2", "DigIO_getDigIO() -> 0" }
        << Steps { "groupBoxStatus_2.visible=false", "groupBoxStatus_2.enabled=false",
               "groupBoxStatus.visible=true" }
        << Steps();
    QTest::newRow("failed probe read drops the outputs silently")
        << Steps { "DigIO_getDigIO=7", "build" } << Steps { "DigIO_getDigIO() -> 7" }
        << Steps { "groupBoxStatus_2.enabled=false", "checkBoxDO_1.checkable=false" } << Steps();
    QTest::newRow("shown: the inputs, polled every 250 ms")
        << Steps { "DigIO/DigIO=9", "tabDigIO.show" } << Steps { "DigIO_getDigIO() -> 0" }
        << boxes("DI", "1001") + Steps { "timer.active=true", "timer.interval=250" } << Steps();
    QTest::newRow("an unchanged mask leaves the boxes")
        << Steps { "DigIO/DigIO=1", "tabDigIO.show", "checkBoxDI_1.checked=false", "tabDigIO.updateIOValues" }
        << Steps { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 0" } << boxes("DI", "0000") << Steps();
    QTest::newRow("the first mask 0 changes nothing")
        << Steps { "checkBoxDI_2.checked=true", "tabDigIO.show" } << Steps { "DigIO_getDigIO() -> 0" }
        << boxes("DI", "0100") << Steps();
    QTest::newRow("inputs answering 2 are hidden for good")
        << Steps { "tabDigIO.show", "DigIO_getDigIO=2", "tabDigIO.updateIOValues", "DigIO_getDigIO=0",
               "DigIO/DigIO=15", "tabDigIO.updateIOValues" }
        << Steps { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 2", "DigIO_getDigIO() -> 0" }
        << Steps { "groupBoxStatus.visible=false", "timer.active=true" } << Steps();
    QTest::newRow("another read failure stops polling")
        << Steps { "tabDigIO.show", "DigIO_getDigIO=6", "tabDigIO.updateIOValues" }
        << Steps { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 6" }
        << Steps { "timer.active=false", "groupBoxStatus.visible=true" }
        << Steps { "Error(6) in getDigIO: Timeout, the controller did not answer" };
    QTest::newRow("polling again on the next showing")
        << Steps { "tabDigIO.show", "DigIO_getDigIO=6", "tabDigIO.updateIOValues", "tabDigIO.hide",
               "DigIO_getDigIO=0", "tabDigIO.show" }
        << Steps { "DigIO_getDigIO() -> 0", "DigIO_getDigIO() -> 6", "DigIO_getDigIO() -> 0" }
        << Steps { "timer.active=true" }
        << Steps { "Error(6) in getDigIO: Timeout, the controller did not answer" };
    QTest::newRow("no polling while hidden")
        << Steps { "tabDigIO.show", "tabDigIO.hide" } << Steps { "DigIO_getDigIO() -> 0" }
        << Steps { "timer.active=false" } << Steps();
    QTest::newRow("outputs written as a mask")
        << Steps { "checkBoxDO_3.click", "checkBoxDO_1.click", "checkBoxDO_3.click" }
        << Steps { "DigIO_setDigIO(4) -> 0", "DigIO_setDigIO(5) -> 0", "DigIO_setDigIO(1) -> 0" }
        << boxes("DO", "1000") << Steps();
    QTest::newRow("output write answering 2 drops the outputs")
        << Steps { "DigIO_setDigIO=2", "checkBoxDO_2.click" } << Steps { "DigIO_setDigIO(2) -> 2" }
        << Steps { "groupBoxStatus_2.enabled=false" } << Steps();
    QTest::newRow("refused output write: told, the box as the user left it")
        << Steps { "DigIO_setDigIO=19", "checkBoxDO_4.click" } << Steps { "DigIO_setDigIO(8) -> 19" }
        << boxes("DO", "0001") + Steps { "groupBoxStatus_2.enabled=true" }
        << Steps { "Error(19) in DigIO_setDigIO: Hardware fault" };
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabDigIODlg(nullptr); }, QStringLiteral("DigIO_"), {}, scenarios);
}
