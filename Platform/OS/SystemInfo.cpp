#include "OS/SystemInfo.h"

#include <cstdio>
#include <ctime>

#include <unistd.h>

namespace brindle_platform {

unsigned long currentProcessNumber() { return static_cast<unsigned long>(::getpid()); }

std::string utcTimeStamp() {
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    struct tm fields {};
    ::gmtime_r(&now.tv_sec, &fields);
    char text[96];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", fields.tm_year + 1900, fields.tm_mon + 1,
                  fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec,
                  static_cast<int>(now.tv_nsec / 1000000));
    return text;
}

} // namespace brindle_platform
