// Everything the macro language refuses: with which failure, at which place, and that the expander works on.
#include <stdexcept>

#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"
#include "Support/Rows.h"
#include "Support/ValueDump.h"

namespace {

using namespace brindle_test;

// The failure of every operation that reads the text, which must be the same; then the expander has to work on.
std::string Refusal(const std::string& text) {
    static AQM_I_MacroExpander expander;
    const Parameters parameters{{"x", "X"}};
    const I18NString input{std::string_view(text)};
    std::vector<AQM_I_MacroExpander::PositionInfo> positions;
    I18NString result = "old";
    const std::string failure = FailureOf([&] { expander.Expand(input, parameters.Get(), result); });
    EXPECT_EQ(FailureOf([&] { expander.GetMacroPositions(input, positions); }), failure);
    EXPECT_EQ(FailureOf([&] { expander.Analyze(input, parameters.Get(), positions); }), failure);
    EXPECT_EQ(FailureOf([&] { expander.GetAsXml(input); }), failure);
    EXPECT_TRUE(result == "old" && positions.empty()) << text;
    EXPECT_EQ(expander.Expand("a#$x#'#'##", parameters.Get()), "aX'#'");
    return failure;
}

// The failure of a parser or scanner that stopped in front of the position, which counts characters from 1. The message
// holds the text up to there.
std::string At(long position, const std::string& text, const char* flagAndSite) {
    const std::string place = std::to_string(position);
    const std::string read(I18NString(text.c_str()).substr(0, position - 1).bytes());
    return "QEExceptionExtended 901 0x35df687a(" + place + ", \"" + read + "\") @" + place + flagAndSite;
}

constexpr const char* kPlainText = " Source/QUYyError:256";
constexpr const char* kIllegal = " macro Source/QUYyError:256";
constexpr const char* kSyntax = " macro Source/QUYyError:251";
constexpr const char* kTooComplex = "QEException 901 0x35d5e2f1(\"text too complex\") Source/QUYyError:76";

// For rows "text -> position": the position, if the failure is as it should be there.
template <const char* const& FlagAndSite>
std::string PlaceOf(const std::string& text) {
    const std::string failure = Refusal(text);
    const std::string place = failure.substr(0, failure.rfind(FlagAndSite)).substr(failure.rfind('@') + 1);
    EXPECT_EQ(failure, At(std::atol(place.c_str()), text, FlagAndSite));
    return place;
}

TEST(MacroFailure, StandsAtThePlaceOfTheOffence) {
    CheckRows(PlaceOf<kPlainText>, "' -> 2", "it's #$x# -> 10", "''' -> 4", "\"\"\" -> 4", "[]] -> 4", "? -> 2",
              "?\? -> 3", "x/* -> 4", "/*/ -> 4", "#$x#? -> 6", "\u00e4\u20ac\U0001f600[\u00e4 -> 6");
    CheckRows(PlaceOf<kSyntax>, "#$# x -> 4", "# -> 2", "#$x -> 4", "a #  -> 5", "##\n#'a'\n -> 9", "#$x y# -> 6",
              "#$x$y# -> 5", "#'a'b# -> 6", "#'a''' -> 7", "#foo# -> 6", "#f(,)# -> 5", "#f($x,)# -> 8",
              "#f($x;;$x)# -> 8", "#f($x# -> 7", "#[f]()# -> 3", "#($x)# -> 3", "#+$x# -> 3", "#$[]# -> 5", "#$[ -> 4",
              "#$[x] ]# -> 8", "#$x{}# -> 6", "#$x{'k'# -> 9", "#$x{'k'}{# -> 10", "#%x{'k'}# -> 5",
              "#@x{'k','l'}# -> 9", "#$$x# -> 4", "#%# -> 4", "#/*c*/ ] # -> 9", "\u00e4#$x##\u20ac,# -> 9");
    CheckRows(PlaceOf<kIllegal>, "#$1# -> 4", "#$_x# -> 4", "#$a-b# -> 5", "#'a'1# -> 6", "#$x y!# -> 7", "#'a# -> 5",
              "#'a'' -> 6", "#\"a'# -> 6", "#$[a -> 5", "#$[a]]# -> 8", "#/* -> 4", "#/*/# -> 6", "#//$x# -> 7",
              "#//c\r!\n# -> 7", "#//c\r -> 6", "#//c\n!# -> 7", "#$x/# -> 6", "#/ -> 3", "#/ / -> 4",
              "\u00e4#$\u20ac* -> 6");
}

// The end of what was read is shown; it is cut at a byte, and half a character becomes U+FFFD.
TEST(MacroFailure, DisplayLimitCutsTheTextInTheMessage) {
    const auto underLimit = [](const std::string& row) {
        brindle_platform::overrideOption("General Options", "ExprDisplayLimit", row.substr(0, row.find(' ')).c_str());
        const std::string failure = Refusal(row.substr(row.find(' ') + 1)), before = "QEExceptionExtended 901 ";
        EXPECT_TRUE(failure.starts_with(before) && failure.ends_with(kSyntax)) << failure;
        return failure.substr(before.size(), failure.size() - before.size() - std::string(kSyntax).size());
    };
    CheckRows(underLimit,
              "10 1234567890123456789012345678901234567890abcdef#$# -> 0x35d924f0(50, 40, \"abcdef#$#\") @50",
              "6 abc#$#x -> 0x35d924f0(7, 1, \"bc#$#\") @7", "7 abc#$#x -> 0x35df687a(7, \"abc#$#\") @7",
              "1 abc#$#x -> 0x35d924f0(7, 6, \"\") @7", "-1 abc#$#x -> 0x35df687a(7, \"abc#$#\") @7",
              "5 \u00e4\u20ac#$# -> 0x35d924f0(6, 1, \"\ufffd\u20ac#$#\") @6",
              "2 \u00e4\u20ac#$# -> 0x35d924f0(6, 4, \"\ufffd#$#\") @6");
    brindle_platform::clearOverrides();
}

std::string Repeated(const std::string& piece, std::size_t count) {
    std::string text;
    for (; count > 0; --count)
        text += piece;
    return text;
}

TEST(MacroFailure, TextsWithoutMeasureAreRefusedOrExpanded) {
    constexpr std::size_t kMany = 1'000'000, kToken = std::size_t{1} << 20;
    const auto nested = [](const std::string& open, std::size_t depth) {
        return "#" + Repeated(open, depth) + "''" + Repeated(open.back() == '{' ? "}" : ")", depth) + "#";
    };
    for (const std::string open : {"$a{", "@[a]{", "f(", "f('',", "f(%a+"}) {
        EXPECT_EQ(FailureOf([&] { AQM_I_MacroExpander().GetAsXml(nested(open, 1000).c_str()); }), "nothing thrown");
        EXPECT_EQ(FailureOf([&] { AQM_I_MacroExpander().GetAsXml(nested(open, 9000).c_str()); }), kTooComplex) << open;
    }
    for (const char* open : {"$m{", "f("})
        EXPECT_EQ(Refusal(nested(open, kMany)), kTooComplex);
    const std::string token(kToken, 'n');
    EXPECT_EQ(PlaceOf<kIllegal>("#$" + token + "!"), std::to_string(kToken + 4));
    EXPECT_EQ(PlaceOf<kSyntax>("#'" + token + "'b#"), std::to_string(kToken + 5));
    EXPECT_EQ(PlaceOf<kPlainText>(token + "'#"), std::to_string(kToken + 3));

    const Parameters parameters{{"x", "X"}, {"y", "\u00e4"}};
    AQM_I_MacroExpander expander;
    const std::string terms = "#$x" + Repeated("+$y", kMany - 1) + "#";
    EXPECT_TRUE(expander.Expand(terms.c_str(), parameters.Get()) == ("X" + Repeated("\u00e4", kMany - 1)).c_str());
    EXPECT_EQ(expander.Expand((Repeated("##", kMany) + "x").c_str(), nullptr), "x");
    EXPECT_EQ(expander.GetReplacementCount(), static_cast<int>(kMany));
}

// Failures of execution leave the object as the last success left it, and Analyze with the entries it has made.
TEST(MacroFailure, ExecutionPassesFailuresOut) {
    const Parameters parameters{{"x", "X"}, {"syntax", "#$\u00e4\u00e4$#"}, {"text", "#'#"}, {"no", "#no()#"}};
    TestFunction thrower("t\u00e4", [](const AQM_MacroValueArray& frame) -> AQM_MacroValue* {
        const std::string what = DescribeValue(&frame);
        if (what == "['memory']") throw std::bad_alloc();
        if (what == "['standard']") throw std::runtime_error("mine");
        if (what == "['text']") throw "a text";
        return nullptr;
    });
    AQM_I_MacroExpander expander;
    expander.AddFunction(&thrower);
    const auto failure = [&](const std::string& block) {
        const I18NString text = ("#$x##" + block + "#").c_str();
        I18NString result = "old";
        std::vector<AQM_I_MacroExpander::PositionInfo> analyzed;
        EXPECT_EQ(expander.Expand("#$x#-#$x###", parameters.Get()), "X-X") << block;
        const std::string line = FailureOf([&] { expander.Expand(text, parameters.Get(), result); });
        EXPECT_TRUE(expander.GetReplacementCount() == 3 && result == "old") << block;
        EXPECT_EQ(FailureOf([&] { expander.Analyze(text, parameters.Get(), analyzed); }), line) << block;
        EXPECT_TRUE(analyzed.size() == 1 && analyzed[0].expansion == "X") << block;
        return line;
    };
    CheckRows(failure, "no($x) -> QEException 1221 0x35ddd82c(\"no\") Source/QMMacroEvaluator:141",
              "$no -> QEException 1221 0x35ddd82c(\"no\") Source/QMMacroEvaluator:141",
              "t\u00e4() -> QEException 202 0x35ddd827(\"t\u00e4\") Source/QMMacroEvaluator:184",
              "'a'+t\u00e4('memory') -> std: std::bad_alloc", "$m{t\u00e4('standard')} -> std: mine",
              "t\u00e4('text') -> text: a text");
    for (const char* block : {"@x+'a'", "'a'+@x", "$x+@x+$x", "'a'+myfunc()", "@x+@x"})
        EXPECT_EQ(failure(block), "QEException 202 0x35dc6529() Source/QMMacroEvaluator:84");
    EXPECT_EQ(failure("$syntax"), At(6, "#$\u00e4\u00e4$#", kSyntax)) << "a place in the nested text";
    EXPECT_EQ(failure("$text"), At(4, "#'#", kIllegal));
}

TEST(MacroFailure, TextAndResultAreDifferentObjects) {
    AQM_I_MacroExpander expander;
    I18NString text = "#$#";
    EXPECT_EQ(FailureOf([&] { expander.Expand(text, nullptr, text); }),
              "text: *DevErr: AQM_MacroExpander::Expand called with same 1st and 3rd arg");
    EXPECT_EQ(text, "#$#");
}

} // namespace
