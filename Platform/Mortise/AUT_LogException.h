// Record of a failure at the place where it arises.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/ZBLException.h"

// Writes one record of level 1 to the log entry "Exception": class, code and message of the failure, then path and line
// of the place. Nothing is formatted if no one takes the record. Any thread.
BRINDLE_PLATFORM_API void AUT_LogException(const ZBLThrowable& failure, const char* sourcePath, long line) noexcept;
