// The "Temperature" page on the simulated unit: the sensor list the unit
// answers for when the page is built, and the readings on every showing,
// Refresh and choice.
#include "pagecheck.h"
#include "tabs/tabTempDlg.h"

namespace
{
void scenarios()
{
    const QString full
        = "comboBoxSensor.items=System supervisor | PCB | CPU | CPU board | Processor module box";
    row("full unit",
        { .steps = { "tabTemp.show" },
            .state = { full, "editTemp_SS.text=39°C (102.2°F)", "editTemp_PCB.text=42°C (107.6°F)",
                "editTemp_CPU.text=51°C (123.8°F)", "editTemp_CPUBoard.text=38°C (100.4°F)",
                "editTemp.text=39°C (102.2°F)" } });
    row("-57, -56 and 255",
        { .steps = { "Diagnostic/SSTemp=-57", "Diagnostic/PCBTemp=-56", "Diagnostic/PMTemp_0=255",
              "tabTemp.show" },
            .state = { "editTemp_SS.text=N/A", "editTemp_PCB.text=-56°C (-68.8°F)",
                "editTemp_CPU.text=255°C (491°F)", "editTemp.text=N/A" } });
    // Each sensor past the twentieth is told, and not listed.
    row("21 sensors",
        { .steps = { "Diagnostic/PMSensorCount=19", "build", "tabTemp.show" },
            .state = { full + QString(" | CPU").repeated(15), "editTemp_CPU.text=0°C (32°F)" },
            .boxes = { "Error, SensorIndex array out of range." } });
    row("no processor-module sensor",
        { .steps = { "Diagnostic/PMSensorCount=0", "build", "tabTemp.show" },
            .state = { "comboBoxSensor.items=System supervisor | PCB", "editTemp_CPU.text=(gone)",
                "editTemp_CPUBoard.text=(gone)", "editTemp_PCB.text=42°C (107.6°F)" } });
    row("one processor-module sensor",
        { .steps = { "Diagnostic/PMSensorCount=1", "build", "tabTemp.show" },
            .state = { "comboBoxSensor.items=System supervisor | PCB | CPU",
                "editTemp_CPU.text=51°C (123.8°F)", "editTemp_CPUBoard.text=(gone)" } });
    row("every type",
        { .steps = { "Diagnostic/PMSensorCount=4", "Diagnostic/PMTempType_0=2", "Diagnostic/PMTempType_1=4",
              "Diagnostic/PMTempType_2=7", "Diagnostic/PMTempType_3=9", "build", "tabTemp.show" },
            .state
            = { "comboBoxSensor.items=System supervisor | PCB | Processor module env | Processor module "
                "backplane | Processor module other | Unknown sensor: 9",
                "editTemp_CPU.text=", "editTemp_CPUBoard.text=" } });
    // Without a supervisor the first entry is the PCB; the failing PCB is not listed.
    row("supervisor missing, PCB failing",
        { .steps = { "Diagnostic_getSSTemp=2", "Diagnostic_getPCBTemp=7", "build", "tabTemp.show" },
            .state
            = { "comboBoxSensor.items=CPU | CPU board | Processor module box", "editTemp_SS.text=(gone)",
                "editTemp_PCB.text=Error(7) in getPCBTemp: Communication with the controller failed",
                "editTemp.text=51°C (123.8°F)" } });
    row("supervisor failing when built",
        { .steps = { "Diagnostic_getSSTemp=18", "build", "tabTemp.show" },
            .state = { "comboBoxSensor.items=PCB | CPU | CPU board | Processor module box",
                "editTemp_SS.text=Error(18) in getSSTemp: Value not available" } });
    row("reads failing when shown",
        { .steps = { "Diagnostic_getSSTemp=2", "Diagnostic_getPCBTemp=6", "Diagnostic_getPMTemp=19",
              "tabTemp.show" },
            .state = { full, "editTemp_SS.text=",
                "editTemp_PCB.text=getPCBTemp: Error:  Timeout, the controller did not answer",
                "editTemp_CPU.text=getPMTemp: Error:  Hardware fault",
                "editTemp_CPUBoard.text=getPMTemp: Error:  Hardware fault", "editTemp.text=" } });
    // Every listed sensor is read again on Refresh and on a new choice, whose
    // reading shows beside the chooser.
    row("Refresh reads again",
        { .steps = { "tabTemp.show", "Diagnostic/PMTemp_1=-20", "tabTemp.refreshClicked" },
            .state = { "editTemp_CPUBoard.text=-20°C (-4°F)", "editTemp.text=39°C (102.2°F)" } });
    row("a choice reads again",
        { .steps = { "tabTemp.show", "Diagnostic/SSTemp=40", "Diagnostic/PMTemp_1=-20",
              "comboBoxSensor.currentIndex=3" },
            .state = { "editTemp_SS.text=40°C (104°F)", "editTemp.text=-20°C (-4°F)" } });
}
} // namespace

int main(int argc, char** argv)
{
    return runPageTest(
        argc, argv, [] { return new tabTempDlg(nullptr); }, QStringLiteral("Diagnostic_set"), {}, scenarios);
}
