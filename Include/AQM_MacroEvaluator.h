// The stack on which the macro language computes: one argument frame for each open call.
#pragma once

#include <stack>

#include "ZBLCore/I18NString.h"

#include "AQM_I_MacroFunction.h"
#include "AQM_MacroValue.h"
#include "BrindleApi.h"

// For one call: StartCall, a push for each argument, DoCall or DoCallAppFunction, PopValue. A call replaces the frame
// on top by its result. Whatever is left on the stack is freed with the evaluator. One thread at a time.
class BRINDLE_API AQM_MacroEvaluator {
public:
    AQM_MacroEvaluator() = default;
    AQM_MacroEvaluator(const AQM_MacroEvaluator&) = delete;
    AQM_MacroEvaluator& operator=(const AQM_MacroEvaluator&) = delete;
    ~AQM_MacroEvaluator();

    // Opens an empty argument frame.
    void StartCall();
    // Appends a text, or a value of any kind (null too), to the frame on top, which takes ownership. Without a frame on
    // top the value is deleted.
    void PushArgument(const I18NString& text);
    void PushValue(AQM_MacroValue* value);
    // The size of the frame on top; 0 if there is none.
    int GetNumberOfArguments() const;
    // Removes and answers the top entry, which is then the caller's; null on an empty stack.
    AQM_MacroValue* PopValue();

    // Runs one of the evaluator's own functions: "+", "_cts" (the block's value as a text) and "myfunc". A frame of the
    // wrong size is left as it is by the first two and replaced by null by the third; on an empty stack nothing happens
    // at all. Failures are QEException: code 202, message 0x35dc6529 without parameters for a "+" of anything but two
    // texts; code 1221, message 0x35ddd82c with the name for any other function. The frame then stays.
    void DoCall(const I18NString& name);
    // Runs a function on the frame; on an empty stack it is handed null. A null result is a QEException, code 202,
    // message 0x35ddd827 with the function's name; the frame then stays, as it does when the function throws.
    void DoCallAppFunction(AQM_I_MacroFunction* function);

private:
    AQM_MacroValueArray* TopFrame() const;
    AQM_MacroValue* Concatenate();
    void ReplaceTop(AQM_MacroValue* result);

    std::stack<AQM_MacroValue*> stack;
};
