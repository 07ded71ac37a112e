// The door to the one configuration service of the process.
#pragma once

#include <memory>

#include "PlatformApi.h"
#include "ZBLCFGAPI/IZBLConfiguration.h"

struct BRINDLE_PLATFORM_API ZBLConfigurationFactory {
    // Any thread, no lock. The reference stays good to the end of the process, also when another service is put in
    // place.
    static IZBLConfiguration& getInstance();

    // Puts another service in place, for programs that find their files differently and for tests; null goes back to
    // the built-in one. The service is kept to the end of the process. If it can't be, the one in force stays.
    static void setInstance(std::shared_ptr<IZBLConfiguration> service);
};
