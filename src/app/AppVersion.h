// The settings program's own version, as the Version page and the system
// report show it.
#ifndef APPVERSION_H
#define APPVERSION_H

constexpr char zusettingsVersion[] = "2.7.5.0";

#endif // APPVERSION_H
