// Start and end of the utility library on behalf of a component.
#pragma once

#include "PlatformApi.h"

// Counts one more user and answers 0, or what the test hook asks for; then nothing is counted. Any thread.
BRINDLE_PLATFORM_API long AUT_Initialize(const char* component);

// Counts one user less. Everything stays usable behind the last one.
BRINDLE_PLATFORM_API void AUT_Terminate(const char* component);
