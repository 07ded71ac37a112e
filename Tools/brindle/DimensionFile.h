// The files of "brindle dimensions": JSON of the form
//
//     {"items": {"1": "year"}, "keys": [[1]], "groups": [[1]]}
//
// where each member may be missing.
#pragma once

#include <functional>

#include "Diagnostic.h"
#include "Files.h"

class AQU_I_DimensionInfoFinder;

namespace brindle_tool {

using NoteTaker = std::function<void(const Diagnostic&)>;

// Fills the finder; each set that it is going to drop is noted. Throws a Failure if the text isn't JSON or of another
// form; the finder then has what stands in front of the fault.
void ReadDimensionFile(const Input& input, AQU_I_DimensionInfoFinder& finder, const NoteTaker& note);

} // namespace brindle_tool
