// The contract of a macro function. Derive from it to add a function to the language or to replace a built-in one.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQM_MacroValue.h"
#include "BrindleApi.h"

// A function lives as long as every expander that knows it. It keeps no state between calls: expanders on several
// threads may call it at once.
class BRINDLE_API AQM_I_MacroFunction {
public:
    virtual ~AQM_I_MacroFunction();

    // Answers a new value, which the caller owns, or null if the function can do nothing with these arguments (the
    // expansion then fails and names the function). `arguments` is an AQM_MacroValueArray that stays the caller's: the
    // call's LAST argument is its element 0, the first its element Size() - 1. May throw.
    virtual AQM_MacroValue* Execute(AQM_MacroValue* arguments) = 0;
    // Appends the declared types of the arguments (AQM_MacroValue::MacroValueType), first argument first. They inform
    // whoever asks; nothing enforces them.
    virtual void GetParameterTypes(std::vector<int>& types) = 0;
    // The name in the language, matched exactly.
    virtual I18NString GetName() = 0;
    virtual int GetReturnType() = 0;
};
