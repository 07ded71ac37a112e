// Everything the macro language refuses: with which failure, at which place, and that the expander works on.
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"

namespace {

using brindle_test::FailureOf;
using brindle_test::Parameters;

constexpr const char* kSyntax = " Source/QUYyError:251";
constexpr const char* kIllegal = " Source/QUYyError:256";

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
    EXPECT_EQ(result, "old");
    EXPECT_TRUE(positions.empty());
    EXPECT_EQ(expander.Expand("a#$x#'#'##", parameters.Get()), "aX'#'");
    EXPECT_EQ(expander.GetReplacementCount(), 2);
    return failure;
}

// The message holds the text up to the failing token's end; its place is the character behind that.
std::string At(long position, const std::string& read, const char* rest) {
    return "QEExceptionExtended 901 0x35df687a(" + std::to_string(position) + ", \"" + read + "\") @" +
           std::to_string(position) + rest;
}

struct Row {
    const char *text, *read;
    long position;
};

TEST(MacroFailure, PlainTextMustEndWhatItBegins) {
    const Row rows[] = {
        {"'", "'", 2},
        {"it's #$x#", "it's #$x#", 10},
        {"'''", "'''", 4},
        {"\"\"\"", "\"\"\"", 4},
        {"[]]", "[]]", 4},
        {"?", "?", 2},
        {"?\?", "?\?", 3},
        {"x/*", "x/*", 4},
        {"/*/", "/*/", 4},
        {"#$x# '\n", "#$x# '\n", 8},
        {"#$x#?", "#$x#?", 6},
        {"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80[\xc3\xa4", "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80[\xc3\xa4", 6},
    };
    for (const auto& [text, read, position] : rows)
        EXPECT_EQ(Refusal(text), At(position, read, "") + kIllegal) << text;
}

TEST(MacroFailure, GrammarHasNoPlaceForTheToken) {
    const Row rows[] = {
        {"#$# x", "#$#", 4},
        {"#", "#", 2},
        {"#$x", "#$x", 4},
        {"a # ", "a # ", 5},
        {"##\n#'a'\n", "##\n#'a'\n", 9},
        {"#$x y#", "#$x y", 6},
        {"#$x$y#", "#$x$", 5},
        {"#@x%y#", "#@x%", 5},
        {"#'a'b#", "#'a'b", 6},
        {"#'a''b'\"c\"#", "#'a''b'\"c\"", 11},
        {"#foo#", "#foo#", 6},
        {"#foo $x#", "#foo $", 7},
        {"#f(,)#", "#f(,", 5},
        {"#f($x,)#", "#f($x,)", 8},
        {"#f($x;;$x)#", "#f($x;;", 8},
        {"#f($x#", "#f($x#", 7},
        {"#f()()#", "#f()(", 6},
        {"#[f]()#", "#[", 3},
        {"#($x)#", "#(", 3},
        {"#$x+#", "#$x+#", 6},
        {"#+$x#", "#+", 3},
        {"#$x+(#", "#$x+(", 6},
        {"#$[]#", "#$[]", 5},
        {"#$[", "#$[", 4},
        {"#$[x]]#", "#$[x]]#", -8},
        {"#$[x] ]#", "#$[x] ]", 8},
        {"#$x{}#", "#$x{}", 6},
        {"#$x{'k'#", "#$x{'k'#", 9},
        {"#$x{'k'}{#", "#$x{'k'}{", 10},
        {"#%x{'k'}#", "#%x{", 5},
        {"#@x{'k','l'}#", "#@x{'k',", 9},
        {"#$$x#", "#$$", 4},
        {"#%#", "#%#", 4},
        {"#@'x'#", "#@'x'", 6},
        {"#/*c*/ ] #", "#/*c*/ ]", 9},
        {"\xc3\xa4#$x##\xe2\x82\xac,#", "\xc3\xa4#$x##\xe2\x82\xac,", 9},
    };
    for (const auto& [text, read, position] : rows)
        EXPECT_EQ(Refusal(text),
                  position < 0 ? At(-position, read, " macro") + kIllegal : At(position, read, " macro") + kSyntax)
            << text;
}

TEST(MacroFailure, BlockHoldsAByteThatBeginsNothingOrLacksAnEnd) {
    const Row rows[] = {
        {"#$1#", "#$1", 4},
        {"#$_x#", "#$_", 4},
        {"#$a-b#", "#$a-", 5},
        {"#$a:b#", "#$a:", 5},
        {"# 1 + 2#", "# 1", 4},
        {"#'a'1#", "#'a'1", 6},
        {"#'a#", "#'a#", 5},
        {"#'a''", "#'a''", 6},
        {"#\"a'#", "#\"a'#", 6},
        {"#$[a", "#$[a", 5},
        {"#$[a]]", "#$[a]]", 7},
        {"#/*", "#/*", 4},
        {"#/*/#", "#/*/#", 6},
        {"#//$x#", "#//$x#", 7},
        {"#//", "#//", 4},
        {"#//c\r!\n#", "#//c\r!", 7},
        {"#//c\n!#", "#//c\n!", 7},
        {"#$x/#", "#$x/#", 6},
        {"#/", "#/", 3},
        {"#/ /", "#/ ", 4},
        {"\xc3\xa4#$\xe2\x82\xac*", "\xc3\xa4#$\xe2\x82\xac*", 6},
    };
    for (const auto& [text, read, position] : rows)
        EXPECT_EQ(Refusal(text), At(position, read, " macro") + kIllegal) << text;
}

// The end of what was read is shown; it is cut at a byte, and half a character becomes U+FFFD.
TEST(MacroFailure, DisplayLimitCutsTheTextInTheMessage) {
    const struct {
        std::string text;
        const char* limit;
        std::string parameters;
        long position;
    } rows[] = {
        {std::string(39, 'a') + "bcdefgh#$#", "10", "0x35d924f0(50, 40, \"cdefgh#$#\")", 50},
        {"abc#$#x", "6", "0x35d924f0(7, 1, \"bc#$#\")", 7},
        {"abc#$#x", "7", "0x35df687a(7, \"abc#$#\")", 7},
        {"abc#$#x", "1", "0x35d924f0(7, 6, \"\")", 7},
        {"abc#$#x", "-1", "0x35df687a(7, \"abc#$#\")", 7},
        {"abc#$#x", "0", "0x35df687a(7, \"abc#$#\")", 7},
        {"\xc3\xa4\xe2\x82\xac#$#", "5", "0x35d924f0(6, 1, \"\xef\xbf\xbd\xe2\x82\xac#$#\")", 6},
        {"\xc3\xa4\xe2\x82\xac#$#", "4", "0x35d924f0(6, 2, \"\xe2\x82\xac#$#\")", 6},
        {"\xc3\xa4\xe2\x82\xac#$#", "2", "0x35d924f0(6, 4, \"\xef\xbf\xbd#$#\")", 6},
    };
    for (const auto& [text, limit, parameters, position] : rows) {
        brindle_platform::overrideOption("General Options", "ExprDisplayLimit", limit);
        EXPECT_EQ(Refusal(text),
                  "QEExceptionExtended 901 " + parameters + " @" + std::to_string(position) + " macro" + kSyntax)
            << text << " " << limit;
    }
    brindle_platform::clearOverrides();
}

TEST(MacroFailure, TextsWithoutMeasureAreRefusedOrExpanded) {
    constexpr std::size_t kMany = 1'000'000, kToken = std::size_t{1} << 20;
    const auto repeated = [](const std::string& piece, std::size_t count) {
        std::string text;
        text.reserve(piece.size() * count);
        for (; count > 0; --count)
            text += piece;
        return text;
    };
    const std::string tooComplex = "QEException 901 0x35d5e2f1(\"text too complex\") Source/QUYyError:76";
    EXPECT_EQ(Refusal("#" + repeated("$m{", kMany) + "'k'" + repeated("}", kMany) + "#"), tooComplex);
    EXPECT_EQ(Refusal("#" + repeated("f(", kMany) + repeated(")", kMany) + "#"), tooComplex);

    const std::string token(kToken, 'n');
    EXPECT_TRUE(Refusal("#$" + token + "!") == At(kToken + 4, "#$" + token + "!", " macro") + kIllegal);
    EXPECT_TRUE(Refusal("#'" + token + "'b#") == At(kToken + 5, "#'" + token + "'b", " macro") + kSyntax);
    EXPECT_TRUE(Refusal(token + "'#") == At(kToken + 3, token + "'#", "") + kIllegal);

    const Parameters parameters{{"x", "X"}, {"y", "\xc3\xa4"}};
    AQM_I_MacroExpander expander;
    const std::string terms = "#$x" + repeated("+$y", kMany - 1);
    EXPECT_TRUE(expander.Expand((terms + "#").c_str(), parameters.Get()) ==
                ("X" + repeated("\xc3\xa4", kMany - 1)).c_str());
    EXPECT_EQ(FailureOf([&] { expander.Expand((terms + "+@x#").c_str(), parameters.Get()); }),
              "QEException 202 0x35dc6529() Source/QMMacroEvaluator:84");
    EXPECT_EQ(expander.Expand((repeated("##", kMany) + "x").c_str(), nullptr), "x");
    EXPECT_EQ(expander.GetReplacementCount(), static_cast<int>(kMany));
}

// Throws what its first argument names, or answers null.
struct Thrower : AQM_I_MacroFunction {
    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override {
        if (auto* const kind = dynamic_cast<AQM_MacroValueArray&>(*arguments).Get(0)) {
            const I18NString& what = dynamic_cast<AQM_MacroValueString&>(*kind).GetValue();
            if (what == "memory") throw std::bad_alloc();
            if (what == "standard") throw std::runtime_error("mine");
            throw "a text";
        }
        return nullptr;
    }
    void GetParameterTypes(std::vector<int>&) override {}
    I18NString GetName() override { return "t\xc3\xa4"; }
    int GetReturnType() override { return 0; }
};

// A map that fails for one key.
struct FailingMap : AQU_ParameterMapApp {
    using AQU_ParameterMapApp::AQU_ParameterMapApp, AQU_ParameterMapApp::Get;
    int Get(const I18NString& map, const I18NString& key, I18NString& value) override {
        if (key == "bad") throw std::runtime_error("map");
        return AQU_ParameterMapApp::Get(map, key, value);
    }
};

// Failures of execution leave the object as the last success left it, and Analyze with the entries it has made.
TEST(MacroFailure, ExecutionPassesFailuresOut) {
    Parameters parameters{{"x", "X"}, {"syntax", "#$\xc3\xa4\xc3\xa4$#"}, {"text", "#'#"}, {"nul", "#no()#"}};
    FailingMap map("_env", 1);
    parameters.Get()->AddParameterMap(&map);
    Thrower thrower;
    AQM_I_MacroExpander expander;
    expander.AddFunction(&thrower);
    const std::string cannotJoin = "QEException 202 0x35dc6529() Source/QMMacroEvaluator:84";
    const std::pair<const char*, std::string> rows[] = {
        {"#$x##no($x)#", "QEException 1221 0x35ddd82c(\"no\") Source/QMMacroEvaluator:141"},
        {"#$x##$nul#", "QEException 1221 0x35ddd82c(\"no\") Source/QMMacroEvaluator:141"},
        {"#$x##@x+'a'#", cannotJoin},
        {"#$x##$x+@x+$x#", cannotJoin},
        {"#$x##'a'+myfunc()#", cannotJoin},
        {"#$x##t\xc3\xa4()#", "QEException 202 0x35ddd827(\"t\xc3\xa4\") Source/QMMacroEvaluator:184"},
        {"#$x##'a'+t\xc3\xa4('memory')#", "std: std::bad_alloc"},
        {"#$x##$m{t\xc3\xa4('standard')}#", "std: mine"},
        {"#$x##t\xc3\xa4('text')#", "text: a text"},
        {"#$x##$x+$bad#", "std: map"},
        {"#$x##$syntax#", At(6, "#$\xc3\xa4\xc3\xa4$", " macro") + kSyntax},
        {"#$x##$text#", At(4, "#'#", " macro") + kIllegal},
    };
    for (const auto& [text, expected] : rows) {
        I18NString result = "old";
        std::vector<AQM_I_MacroExpander::PositionInfo> analyzed;
        EXPECT_EQ(expander.Expand("#$x#-#$x#", parameters.Get()), "X-X") << text;
        EXPECT_EQ(FailureOf([&] { expander.Expand(text, parameters.Get(), result); }), expected) << text;
        EXPECT_EQ(expander.GetReplacementCount(), 2) << text;
        EXPECT_EQ(result, "old") << text;
        EXPECT_EQ(FailureOf([&] { expander.Analyze(text, parameters.Get(), analyzed); }), expected) << text;
        ASSERT_EQ(analyzed.size(), 1U) << text;
        EXPECT_EQ(analyzed[0].expansion, "X") << text;
    }
}

TEST(MacroFailure, TextAndResultAreDifferentObjects) {
    AQM_I_MacroExpander expander;
    I18NString text = "#$#";
    EXPECT_EQ(FailureOf([&] { expander.Expand(text, nullptr, text); }),
              "text: *DevErr: AQM_MacroExpander::Expand called with same 1st and 3rd arg");
    EXPECT_EQ(text, "#$#");
}

} // namespace
