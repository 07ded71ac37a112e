// What a typed logger can be handed.
#pragma once

#include "PlatformApi.h"

class BRINDLE_PLATFORM_API LogIndication {
public:
    virtual ~LogIndication();
};
