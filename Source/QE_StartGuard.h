// The guard of the library's start and end. The catalogue takes it, too, before its own: its first start and last end
// call those of the library, and the other way round, so threads that begin with either must take the two guards in one
// order.
#pragma once

#include "ZBLCore/ZBLThread.h"

// Recursive: a start or end nested in another one on the same thread passes through.
inline constinit ZBLThreadCriticalSection QE_StartGuard{1};
