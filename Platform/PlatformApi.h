#pragma once

// BRINDLE_PLATFORM_API marks what the platform library exports; everything else in it is hidden.
#define BRINDLE_PLATFORM_API __attribute__((visibility("default")))
