#include "hwsupport/OSSleep.h"

#include <ctime>

bool OSSleep(unsigned long milliseconds)
{
    struct timespec request;
    request.tv_sec = static_cast<time_t>(milliseconds / 1000);
    request.tv_nsec = static_cast<long>((milliseconds % 1000) * 1000000UL);
    return nanosleep(&request, nullptr) == 0;
}
