// The evaluator's stack of argument frames, its own functions, and who frees which value.
#include <sstream>

#include "AQM_MacroEvaluator.h"

#include "Support/FailureCheck.h"
#include "Support/Rows.h"
#include "Support/ValueDump.h"

namespace {

using namespace brindle_test;

// A value of no kind that the language has; it counts those alive.
struct Probe : AQM_MacroValue {
    static inline int alive = 0;
    explicit Probe(MacroValueType valueType = MVT_Map) : AQM_MacroValue(valueType) { ++alive; }
    ~Probe() override { --alive; }
};

// Runs steps: "[" opens a frame, "{}", "0" and "?" push an array, null and a probe, "=" pops a value and pushes it into
// the frame below, "!name" calls the evaluator's function, "!!" one that answers its frame as a text, anything else is
// pushed as a text. The answer is all that is then popped, top first, or the failure and what lies on the stack behind
// it.
std::string StackAfter(const std::string& steps) {
    AQM_MacroEvaluator evaluator;
    TestFunction function("fr\u00e4me", [](const AQM_MacroValueArray& arguments) {
        const std::string frame = DescribeValue(&arguments);
        if (frame == "['throw']") throw "thrown";
        return frame == "[]" ? nullptr : new AQM_MacroValueString(frame.c_str());
    });
    const auto pushed = [&evaluator](const std::string& step) -> AQM_MacroValue* {
        if (step == "0") return nullptr;
        if (step == "?") return new Probe;
        if (step == "{}") return new AQM_MacroValueArray;
        if (step == "=") return evaluator.PopValue();
        return new AQM_MacroValueString(I18NString(step.c_str()));
    };
    const std::string failure = FailureOf([&] {
        std::istringstream in(steps);
        for (std::string step; in >> step;) {
            if (step == "[")
                evaluator.StartCall();
            else if (step == "!!")
                evaluator.DoCallAppFunction(&function);
            else if (step[0] == '!')
                evaluator.DoCall(step.substr(1).c_str());
            else
                evaluator.PushValue(pushed(step));
        }
    });
    std::string line = failure == "nothing thrown" ? "" : failure + " ";
    line += std::to_string(evaluator.GetNumberOfArguments());
    for (int i = 0; i < 2; ++i) {
        const std::unique_ptr<AQM_MacroValue> value(evaluator.PopValue());
        line += " " + DescribeValue(value.get());
    }
    return line;
}

TEST(MacroEvaluator, CallReplacesTheFrameByItsResultUnlessItFailsAndNothingIsLeft) {
    CheckRows(StackAfter, " -> 0 null null", "[ -> 0 [] null", "[ a {} 0 -> 3 ['a', [], null] null",
              "[ a [ b c -> 2 ['b', 'c'] ['a']", "[ a [ b = c -> 3 ['a', ['b'], 'c'] null", "[ a b !+ -> 0 'ab' null",
              "[ \u00e4 \u20ac !+ -> 0 '\u00e4\u20ac' null", "[ [ a b !+ = c !+ -> 0 'abc' null", "[ !+ -> 0 [] null",
              "[ a !+ -> 1 ['a'] null", "[ a b c !+ -> 3 ['a', 'b', 'c'] null", "[ !_cts -> 0 '' null",
              "[ a !_cts -> 0 'a' null", "[ {} !_cts -> 0 'array_tbd' null", "[ x [ 0 !_cts -> 0 null ['x']",
              "[ x [ ? !_cts -> 0 null ['x']", "[ a b !_cts -> 2 ['a', 'b'] null", "[ x [ !myfunc -> 0 null ['x']",
              "[ x [ {} !myfunc -> 0 null ['x']", "[ x [ a b !myfunc -> 0 null ['x']",
              "[ a !myfunc -> 0 'UH: don''t know what to do with:<a>' null", "[ a b !! -> 0 '['a', 'b']' null",
              "[ x [ throw !! -> text: thrown 1 ['throw'] ['x']");
    CheckRows(StackAfter, "!+ !_cts !myfunc -> 0 null null", "a ? {} 0 -> 0 null null", "[ a !_cts ? b -> 0 'a' null");
    for (const std::string operands : {"a {}", "{} a", "a 0", "0 a", "? a", "{} {}"})
        EXPECT_TRUE(StackAfter("[ x [ " + operands + " !+")
                        .starts_with("QEException 202 0x35dc6529() Source/QMMacroEvaluator:84 2 ["))
            << operands;
    CheckRows(StackAfter,
              "[ a !Myfunc -> QEException 1221 0x35ddd82c(\"Myfunc\") Source/QMMacroEvaluator:141 1 ['a'] null",
              "[ !_cts_ -> QEException 1221 0x35ddd82c(\"_cts_\") Source/QMMacroEvaluator:141 0 [] null",
              "[ x [ !! -> QEException 202 0x35ddd827(\"fr\u00e4me\") Source/QMMacroEvaluator:184 0 [] ['x']");
    for (const char* steps :
         {"?", "[ ?", "[ ? [ ? ?", "[ ? !_cts", "[ ? ? !_cts", "[ [ ? = a !+", "[ ? !!", "[ ? !no"}) {
        StackAfter(steps);
        EXPECT_EQ(Probe::alive, 0) << steps;
    }
}

TEST(MacroValue, ArraysOfAnyDepthAreFreed) {
    auto outer = std::make_unique<AQM_MacroValueArray>();
    for (int i = 0; i < 1'000'000; ++i) {
        auto next = std::make_unique<AQM_MacroValueArray>();
        if (i % 1000 == 0) next->AddValue(new Probe);
        next->AddValue(outer.release());
        // A value that calls itself an array without being one.
        if (i % 1000 == 1) next->AddValue(new Probe(AQM_MacroValue::MVT_Array));
        outer = std::move(next);
    }
    EXPECT_TRUE(Probe::alive == 2000 && outer->Get(0) && !outer->Get(-1) && !outer->Get(1));
    outer.reset();
    EXPECT_EQ(Probe::alive, 0);
}

} // namespace
