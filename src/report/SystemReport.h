// The plain-text system report of the unit.
#ifndef SYSTEMREPORT_H
#define SYSTEMREPORT_H

#include <QString>

// Builds the whole report from the hardware library; writes nothing.
QString SystemReport();

#endif // SYSTEMREPORT_H
