// A value of the macro language on one line: 'text', [elements], null, and its type's number for any other kind; and
// functions written as lambdas.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "AQM_I_MacroFunction.h"
#include "AQM_MacroValue.h"

namespace brindle_test {

inline std::string DescribeValue(const AQM_MacroValue* value) {
    if (!value) return "null";
    if (const auto* const text = dynamic_cast<const AQM_MacroValueString*>(value))
        return "'" + std::string(text->GetValue().bytes()) + "'";
    const auto* const array = dynamic_cast<const AQM_MacroValueArray*>(value);
    if (!array) return std::to_string(value->GetValueType());
    std::string line = "[";
    for (const AQM_MacroValue* const element : array->GetValues())
        line += (line.size() > 1 ? ", " : "") + DescribeValue(element);
    return line + "]";
}

struct TestFunction : AQM_I_MacroFunction {
    using Run = std::function<AQM_MacroValue*(const AQM_MacroValueArray&)>;
    TestFunction(const char* functionName, const Run& execute) : name(functionName), run(execute) {}
    AQM_MacroValue* Execute(AQM_MacroValue* frame) override { return run(dynamic_cast<AQM_MacroValueArray&>(*frame)); }
    void GetParameterTypes(std::vector<int>&) override {}
    I18NString GetName() override { return name; }
    int GetReturnType() override { return AQM_MacroValue::MVT_None; }
    const char* name;
    Run run;
};

} // namespace brindle_test
