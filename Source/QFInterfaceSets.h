// The built-in sets of interface codes: what "all_rel" and "all_olap" stand for, and which interfaces count as
// relational where the user has set nothing else.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

// In the order of their tables. Built on first need under a lock of its own that is held for nothing else; any thread.
const std::vector<I18NString>& AQF_GetRelationalInterfaces();
const std::vector<I18NString>& AQF_GetMultidimensionalInterfaces();

// The relational codes joined by commas.
I18NString AQF_GetDefaultRelInterfaces();
