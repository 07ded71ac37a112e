// The stack owns what is on it. A call puts its result in the place of its frame when nothing can fail any more, so
// that a failure leaves the frame as it was.
#include "AQM_MacroEvaluator.h"

#include <cstring>
#include <memory>
#include <utility>

#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"
#include "QMMacroValueAccess.h"

namespace {

constexpr long kCodeWrongArguments = 202;
constexpr long kCodeUnknownFunction = 1221;

[[noreturn]] void Fail(long code, long message, int parameterCount, const I18NString& parameter, long line) {
    QEException failure(ZBLSeverity::error, code);
    QEAddMessages(failure, message, parameterCount, parameter);
    QELogAndThrow(failure, "Source/QMMacroEvaluator", line);
}

} // namespace

AQM_MacroEvaluator::~AQM_MacroEvaluator() {
    for (; !stack.empty(); stack.pop())
        delete stack.top();
}

void AQM_MacroEvaluator::StartCall() {
    auto frame = std::make_unique<AQM_MacroValueArray>();
    stack.push(frame.get());
    frame.release();
}

void AQM_MacroEvaluator::PushArgument(const I18NString& text) { PushValue(new AQM_MacroValueString(text)); }

void AQM_MacroEvaluator::PushValue(AQM_MacroValue* value) {
    if (AQM_MacroValueArray* const frame = TopFrame())
        frame->AddValue(value);
    else
        delete value;
}

AQM_MacroValueArray* AQM_MacroEvaluator::TopFrame() const {
    if (stack.empty() || !stack.top() || stack.top()->GetValueType() != AQM_MacroValue::MVT_Array) return nullptr;
    return static_cast<AQM_MacroValueArray*>(stack.top());
}

int AQM_MacroEvaluator::GetNumberOfArguments() const {
    const AQM_MacroValueArray* const frame = TopFrame();
    return frame ? frame->Size() : 0;
}

AQM_MacroValue* AQM_MacroEvaluator::PopValue() {
    if (stack.empty()) return nullptr;
    AQM_MacroValue* const value = stack.top();
    stack.pop();
    return value;
}

// The result takes the place of the frame, so nothing can fail here.
void AQM_MacroEvaluator::ReplaceTop(AQM_MacroValue* result) {
    delete stack.top();
    stack.top() = result;
}

// The frame goes with the call, so the left text itself grows: a concatenation of many terms stays linear in its
// result.
AQM_MacroValue* AQM_MacroEvaluator::Concatenate() {
    AQM_MacroValueArray* const frame = TopFrame();
    AQM_MacroValue* const left = frame->values.front();
    AQM_MacroValue* const right = frame->values.back();
    if (!QMAsString(left) || !QMAsString(right))
        Fail(kCodeWrongArguments, kQEMsgMacroWrongArguments, 0, I18NString(), 84);
    static_cast<AQM_MacroValueString*>(left)->value.append(static_cast<AQM_MacroValueString*>(right)->value);
    frame->values.erase(frame->values.begin());
    return left;
}

void AQM_MacroEvaluator::DoCall(const I18NString& name) {
    if (stack.empty()) return;
    const int count = GetNumberOfArguments();
    if (name == QMConcatenation()) {
        if (count == 2) ReplaceTop(Concatenate());
        return;
    }
    if (name == QMConversionToString()) {
        if (count > 1) return;
        AQM_MacroValue* const argument = count ? TopFrame()->values.front() : nullptr;
        if (count == 0) {
            ReplaceTop(new AQM_MacroValueString(I18NString()));
        } else if (QMAsString(argument)) {
            TopFrame()->values.clear();
            ReplaceTop(argument);
        } else {
            // An array has no text of its own; this fixed one stands for it. No other value has any.
            ReplaceTop(QMAsArray(argument) ? new AQM_MacroValueString(I18NString("array_tbd")) : nullptr);
        }
        return;
    }
    if (std::strcmp(name.c_str(), "myfunc") == 0) {
        const AQM_MacroValue* const argument = count == 1 ? TopFrame()->values.front() : nullptr;
        std::unique_ptr<AQM_MacroValueString> result;
        if (QMAsString(argument)) {
            I18NString text("UH: don''t know what to do with:<");
            text.append(static_cast<const AQM_MacroValueString*>(argument)->GetValue()).append(U'>');
            result = std::make_unique<AQM_MacroValueString>(std::move(text));
        }
        ReplaceTop(result.release());
        return;
    }
    Fail(kCodeUnknownFunction, kQEMsgMacroUnknownFunction, 1, name, 141);
}

void AQM_MacroEvaluator::DoCallAppFunction(AQM_I_MacroFunction* function) {
    std::unique_ptr<AQM_MacroValue> result(function->Execute(stack.empty() ? nullptr : stack.top()));
    if (!result) Fail(kCodeWrongArguments, kQEMsgMacroFunctionNoResult, 1, function->GetName(), 184);
    if (stack.empty()) stack.push(nullptr);
    ReplaceTop(result.release());
}
