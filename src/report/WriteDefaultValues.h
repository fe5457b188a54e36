// Puts every persistent hardware setting of the unit back to its factory value.
#ifndef WRITEDEFAULTVALUES_H
#define WRITEDEFAULTVALUES_H

// Each failing setter is reported through showErr(); the sequence never stops
// early. The result is always true.
bool WriteDefaultValues();

#endif // WRITEDEFAULTVALUES_H
