// Turns a failure of the macro language into a diagnostic: which file or parameter value, where in it, and what was
// found there.
#pragma once

#include <utility>

#include "ZBLCore/ZBLException.h"

#include "Diagnostic.h"
#include "Files.h"
#include "ParameterFile.h"

namespace brindle_tool {

// A position in the failure may belong to the text or to a value of `parameters` that is a macro block itself. Which
// one it is shows when they are parsed by themselves.
Diagnostic DescribeMacroFailure(const Input& input, const ParameterTable& parameters, const ZBLException& failure);

// Runs `work` on the text and gives its result; a failure of the library leaves as Failure.
template <class Work>
auto OrMacroFailure(const Input& input, const ParameterTable& parameters, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const ZBLException& failure) {
        throw Failure(DescribeMacroFailure(input, parameters, failure));
    }
}

} // namespace brindle_tool
