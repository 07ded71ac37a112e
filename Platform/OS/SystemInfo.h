// Facts about the process and the clock.
#pragma once

#include <string>

namespace brindle_platform {

unsigned long currentProcessNumber();

// Now in UTC, to the millisecond: "2025-11-21T09:24:00.123Z".
std::string utcTimeStamp();

} // namespace brindle_platform
