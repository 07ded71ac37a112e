// What a record says about the process that it comes from. Any thread.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

struct BRINDLE_PLATFORM_API ZBLUtSystemInfo {
    // Now in UTC: "20251121T092400Z" for form 0, which is fit for file names, "2025-11-21T09:24:00.123Z" for any other.
    static I18NString getTimeStamp(int form);

    static unsigned long getProcessId();
};
