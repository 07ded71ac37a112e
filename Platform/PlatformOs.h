// The few calls of the operating system that the library makes itself: performance counter, time zone, modules loaded
// at run time, a test for a file. They bear the names of the system that the library comes from; there its own headers
// declare them, everywhere else this layer does.
#pragma once

#ifdef _WIN32

#include <windows.h>

#include <io.h>

#else

#include "PlatformApi.h"

using BOOL = int;
using DWORD = unsigned int;
using LONG = int;
using HMODULE = void*;
using FARPROC = int (*)();

union LARGE_INTEGER {
    long long QuadPart;
};

struct TIME_ZONE_INFORMATION {
    LONG Bias; // minutes; local time + Bias = UTC
    LONG StandardBias;
    LONG DaylightBias;
};

// Ticks of a clock that never goes back; answers 1. Any thread.
BRINDLE_PLATFORM_API BOOL QueryPerformanceCounter(LARGE_INTEGER* ticks);

// 1, and the ticks per second; 0, and none, where there is no such clock.
BRINDLE_PLATFORM_API BOOL QueryPerformanceFrequency(LARGE_INTEGER* ticksPerSecond);

// Bias is the zone's standard time, north and south of the equator: the smallest offset from UTC that it has at the
// start of a month of the current year. The other fields are 0, and so is the answer.
BRINDLE_PLATFORM_API DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone);

// Loads the module, or finds it loaded, with all its symbols resolved and none of them visible to others. The path must
// hold a "/". Where it names no file and ends in ".dll", `X.so` and `libX.so` stand in for `X.dll`. Null on failure.
BRINDLE_PLATFORM_API HMODULE LoadLibraryExA(const char* path, void* reserved, DWORD flags);

// Null if the module is null or has no such symbol.
BRINDLE_PLATFORM_API FARPROC GetProcAddress(HMODULE module, const char* name);

// Takes back one LoadLibraryExA; 0 on failure and for null.
BRINDLE_PLATFORM_API BOOL FreeLibrary(HMODULE module);

// Does nothing; answers 1.
BRINDLE_PLATFORM_API BOOL DisableThreadLibraryCalls(HMODULE module);

// 0 if the file or directory exists and allows what `mode` asks (0 nothing, 2 writing, 4 reading), else -1.
BRINDLE_PLATFORM_API int _access(const char* path, int mode);

#endif
