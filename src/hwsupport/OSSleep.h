// The pause between steps that the unit's controller needs.
#ifndef HWSUPPORT_OSSLEEP_H
#define HWSUPPORT_OSSLEEP_H

// Sleeps `milliseconds`; true when the sleep was not interrupted.
bool OSSleep(unsigned long milliseconds);

#endif // HWSUPPORT_OSSLEEP_H
