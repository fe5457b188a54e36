// The hardware identity, diagnostic, voltage and battery sections of the
// system report. Each reads its area through the hardware library and returns
// its lines; failures become lines of their own.
#ifndef SECTIONS_H
#define SECTIONS_H

#include "zuaux2.h"

#include <QString>

QString readEeprom();
QString readDiag();
QString readAdc();
QString readBatteryInfo();
QString readCpuBoardInfo();

// Platform of the unit; this build knows only the standard platform.
bool GetPlatform(Korvane::platformType* out);

#endif // SECTIONS_H
