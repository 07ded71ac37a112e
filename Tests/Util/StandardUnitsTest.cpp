#include "PlatformHooks.h"

#include "AQU_StandardUnits.h"

#include "Support/FailureCheck.h"
#include "Support/PageRows.h"

namespace {

// "g*m/s*s" as it stands; each name is one letter.
AQU_StandardUnits Unit(const std::string& text) {
    AQU_StandardUnits unit;
    for (std::size_t at = text.find_first_not_of("1*/"); at < text.size(); at = text.find_first_not_of("1*/", at + 1))
        at > text.find('/') ? unit.AddDenominator({&text[at], 1}) : unit.AddNominator({&text[at], 1});
    return unit;
}

std::string Text(const AQU_StandardUnits& unit) { return std::string(unit.GetAsString().bytes()); }

TEST(StandardUnits, FractionsAreReducedOneForOneAndLikeUnitsAloneAdded) {
    brindle_test::CheckBox("values.md", "units", [](const std::string& row) {
        const auto is = [&row](const char* operation) { return row.find(operation) != row.npos; };
        AQU_StandardUnits a = Unit(row.substr(0, row.find(' '))), b = Unit(row.substr(row.rfind(' ') + 1));
        if (is(" simplified")) a.Simplify();
        return Text(is(" x ") ? a * b : is(" : ") ? a / b : is(" + ") ? a + b : a);
    });
    static int logged = 0;
    brindle_platform::setLogSink([](const brindle_platform::LogRecord&) { ++logged; });
    AQU_StandardUnits unit = Unit("m*s/s");
    EXPECT_EQ(brindle_test::FailureOf([&] { unit.Add(Unit("m*s/m*s*s")); }),
              "QEException 401 0x35dfedff(\"m\", \"(m*s)/(m*s*s)\") Source/QUStandardUnits:120");
    EXPECT_TRUE(Text(unit) == "m" && logged == 1);
    AQU_StandardUnits nameless;
    nameless.AddDenominator("");
    EXPECT_EQ(Text(nameless), "1");
}

TEST(StandardUnits, OperationWithItselfAndEqualityTakeTheElementsAsTheyStand) {
    AQU_StandardUnits unit = Unit("m*s/s");
    EXPECT_EQ(Text(unit.Multiply(unit).Divide(unit).Add(unit)), "(m*s)/s");
    EXPECT_EQ(Text(unit * unit) + ", " + Text(unit / unit) + ", " + Text(unit + unit), "(m*m), , (m*s)/s");
    EXPECT_TRUE(!(Unit("a*b/c*d") != Unit("b*a/d*c")) && Unit("m") != Unit("m*m") && Unit("m") != Unit("m/s"));
}

} // namespace
