// The one table of the built-in macro functions.
#pragma once

#include <span>

#include "AQM_I_MacroFunction.h"

// The functions that every outermost expander knows, in the order of their registration. The objects live as long as
// the process.
std::span<AQM_I_MacroFunction* const> QMGetBuiltInFunctions();
