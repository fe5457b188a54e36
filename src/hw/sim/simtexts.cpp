// The library's own texts for result codes, hardware error states and start-up
// reasons. They are not traced: callers use them to present other results.
#include "zuaux2.h"

namespace Korvane
{

const char* GetErrorStringA(eErr err)
{
    switch (err) {
    case ERR_SUCCESS:
        return "Success";
    case ERR_FAILED:
        return "Operation failed";
    case ERR_NOT_SUPPORTED:
        return "Not supported by this unit";
    case ERR_INVALID_HANDLE:
        return "Invalid handle";
    case ERR_INVALID_PARAMETER:
        return "Invalid parameter";
    case ERR_BUFFER_TOO_SMALL:
        return "Buffer too small";
    case ERR_TIMEOUT:
        return "Timeout, the controller did not answer";
    case ERR_COMMUNICATION:
        return "Communication with the controller failed";
    case ERR_CHECKSUM:
        return "Checksum error in the controller's answer";
    case ERR_FILE_OPEN:
        return "Could not open file";
    case ERR_FILE_FORMAT:
        return "Invalid file format";
    case ERR_FLASH_WRITE:
        return "Flash write failed";
    case ERR_FLASH_VERIFY:
        return "Flash verification failed";
    case ERR_BUSY:
        return "Busy, another operation is in progress";
    case ERR_NOT_INITIALISED:
        return "Not initialised";
    case ERR_ACCESS_DENIED:
        return "Access denied";
    case ERR_OUT_OF_MEMORY:
        return "Out of memory";
    case ERR_EEPROM:
        return "EEPROM could not be read";
    case ERR_NOT_AVAILABLE:
        return "Value not available";
    case ERR_HARDWARE:
        return "Hardware fault";
    case ERR_SENSOR_BUSY:
        return "Light sensor busy, used by the automatic backlight";
    case ERR_STARTUP_TRIGGER_CONFLICT:
        return "Start-up trigger conflicts with the button functions";
    }
    return "Unknown error";
}

const char* GetHwErrorStatusStringA(uint16_t status)
{
    static const char* const texts[] = {
        "No error",
        "Temperature sensor error",
        "Secondary temperature sensor error",
        "Supply voltage out of range",
        "Overcurrent detected",
        "Controller not initialised",
        "Fan failure",
        "Backlight failure",
    };
    return status < sizeof texts / sizeof texts[0] ? texts[status] : "Unknown hardware error";
}

const char* GetStartupReasonStringA(uint16_t reason)
{
    static const char* const texts[] = {
        "Power on",
        "Front button",
        "On/off signal",
        "CAN message",
        "Configurable input",
        "Wake-up from suspend",
        "Watchdog reset",
        "Software restart",
        "Suspend time-out",
    };
    return reason < sizeof texts / sizeof texts[0] ? texts[reason] : "Unknown start-up reason";
}

} // namespace Korvane
