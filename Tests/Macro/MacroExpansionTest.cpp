// What the expander makes of texts: values in the blocks' places, where the blocks lie, the document form, the report.
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PlatformHooks.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include "AQE_LogFile.h"
#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"
#include "Support/ValueDump.h"

namespace {

using brindle_test::FailureOf;
using brindle_test::Parameters;
using Positions = std::vector<AQM_I_MacroExpander::PositionInfo>;

void SetOption(const char* name, const char* value) { brindle_platform::overrideOption("QueryEngine", name, value); }

std::string Text(const I18NString& text) { return std::string(text.bytes()); }

// The expanded text, or the failure.
std::string Expanded(AQM_I_MacroExpander& expander, const std::string& text, const Parameters& parameters = {}) {
    I18NString result;
    const std::string failure =
        FailureOf([&] { expander.Expand(I18NString(std::string_view(text)), parameters.Get(), result); });
    return failure == "nothing thrown" ? Text(result) : failure;
}

// Answers its frame as a text, or the first argument alone.
class Echo : public AQM_I_MacroFunction {
public:
    explicit Echo(const char* name, bool isFirstAlone = false) : m_name(name), m_isFirstAlone(isFirstAlone) {}
    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override {
        const auto& frame = dynamic_cast<AQM_MacroValueArray&>(*arguments);
        if (!m_isFirstAlone) return new AQM_MacroValueString((m_name + brindle_test::DescribeValue(&frame)).c_str());
        const auto& first = dynamic_cast<AQM_MacroValueString&>(*frame.Get(frame.Size() - 1));
        return new AQM_MacroValueString(first.GetValue());
    }
    void GetParameterTypes(std::vector<int>&) override {}
    I18NString GetName() override { return m_name.c_str(); }
    int GetReturnType() override { return AQM_MacroValue::MVT_String; }

private:
    std::string m_name;
    bool m_isFirstAlone;
};

// The report is switched on by the first expansion of a process, so this case stands in front of all others.
TEST(MacroReport, TellsEachStepOfAllExpansionsOfTheObject) {
    SetOption("GetMacroExpansionExecutionReport", "1");
    const I18NString entry = AQE_LogFile::GetConfigurationEntryName();
    std::string log;
    brindle_platform::setLogSink([&](const brindle_platform::LogRecord& record) {
        if (record.name == entry) log += std::to_string(record.level) + Text(record.text);
    });
    Parameters parameters{{"a", " #$b# "}, {"b", "x"}, {"b", "<y>"}, {"m{k]}", "v"}, {"m{k]}", "w"}, {"p]q", "r"}};
    Echo echo("echo"), first("first", true);
    AQM_I_MacroExpander expander;
    expander.AddFunction(&echo);
    expander.AddFunction(&first);
    EXPECT_TRUE(expander.GetExecutionReport().isNull());
    brindle_platform::setLogLevel(entry, 6);
    expander.Expand("plain", parameters.Get());
    Positions analyzed;
    expander.Analyze("#$b#", parameters.Get(), analyzed);
    FailureOf([&] { expander.Expand("#'a'##no()#", nullptr); });
    EXPECT_EQ(log, "");
    brindle_platform::setLogLevel(entry, 7);
    expander.Expand("1 #echo($a,'l')#", parameters.Get());
    expander.Expand("#echo(@b, $m{'k]'}, @m{'k]'}, %[m]]n], first($[p]]q]))#", parameters.Get());
    brindle_platform::setLogSink(nullptr);

    const std::string plain = R"(<Expanding string="plain"><result expandedString="plain"/></Expanding>)"
                              R"(<Expanding string="#'a'##no()#"><Literal string="a"/></Expanding>)";
    const std::string nested =
        R"(<Expanding string="1 #echo($a,'l')#"><Literal string="l"/>)"
        R"(<ParameterLookup><name>a</name><value> #$b# </value></ParameterLookup>)"
        R"(<Expanding string=" #$b# "><ParameterLookup><name>b</name><value>&lt;y&gt;</value></ParameterLookup>)"
        R"(<result expandedString=" &lt;y&gt; "/></Expanding>)"
        R"(<Function functionName="echo" operandCount="2" result="echo['l', ' &lt;y&gt; ']"/>)"
        R"(<result expandedString="1 echo['l', ' &lt;y&gt; ']"/></Expanding>)";
    const std::string lookups =
        R"(<Expanding string="#echo(@b, $m{'k]'}, @m{'k]'}, %[m]]n], first($[p]]q]))#">)"
        R"(<ParameterLookup><name>p]q</name><value>r</value></ParameterLookup>)"
        R"(<Function functionName="first" operandCount="1" result="r"/>)"
        R"(<ParameterMapRef><name>m]n</name></ParameterMapRef><Literal string="k]"/>)"
        R"(<ParameterMapLookupArray><name>m</name><key>k]</key><value>v</value><value>w</value></ParameterMapLookupArray>)"
        R"(<Literal string="k]"/><ParameterMapLookup><name>m</name><key>k]</key><value>w</value></ParameterMapLookup>)"
        R"(<ParameterLookupArray><name>b</name><value>x</value><value>&lt;y&gt;</value></ParameterLookupArray>)"
        R"(<Function functionName="echo" operandCount="5" result="echo['r', 'm]n', ['v', 'w'], 'w', ['x', '&lt;y&gt;']]"/>)"
        R"(<result expandedString="echo['r', 'm]n', ['v', 'w'], 'w', ['x', '&lt;y&gt;']]"/></Expanding>)";
    const ZBLIDOM_Node report = expander.GetExecutionReport();
    EXPECT_EQ(ZBLIDOM_Helper::serialize(report),
              ("<ExecutionReport>" + plain + nested + lookups + "</ExecutionReport>").c_str());
    EXPECT_EQ(report.getParentNode().getNodeName(), "MacroExpander");
    EXPECT_EQ(log, "") << "only the call that made the report logs it";
    AQM_I_MacroExpander other;
    brindle_platform::setLogSink([&](const brindle_platform::LogRecord& record) {
        log += std::to_string(record.level) + Text(record.name) + ' ' + Text(record.text);
    });
    other.Expand("#$a#", parameters.Get());
    brindle_platform::setLogSink(nullptr);
    EXPECT_EQ(log, "7" + Text(entry) + " " +
                       Text(ZBLIDOM_Helper::serialize(other.GetExecutionReport().getParentNode())) + "\n");
    SetOption("GetMacroExpansionExecutionReport", "0");
    other.Expand("again", nullptr);
    EXPECT_NE(Text(ZBLIDOM_Helper::serialize(other.GetExecutionReport())).find("again"), std::string::npos);
}

struct Row {
    const char *text, *expanded;
    int blocks;
};

// All text nodes below the node in order, and on the way whether the elements know their place: the first "#" of a
// block, and the text of a name or comment.
std::string TextOf(const ZBLIDOM_Node& node, std::string_view text) {
    std::string joined;
    const std::string position = Text(ZBLIDOM_Element(node).getAttribute("position"));
    for (ZBLIDOM_Node child = node.getFirstChild(); child; child = child.getNextSibling())
        joined += child.getNodeType() == ZBLIDOM_TEXT_NODE ? Text(child.getNodeValue()) : TextOf(child, text);
    if (!position.empty()) {
        EXPECT_EQ(text.substr(std::stoul(position), joined.size()), joined) << text;
    }
    return joined;
}

std::string RootText(AQM_I_MacroExpander& expander, const std::string& text) {
    return TextOf(ZBLIDOM_Document(expander.GetAsXml(text.c_str())).getDocumentElement(), text);
}

// Blocks and what Analyze says of them rebuild what Expand answers; the document's text is the text.
void CheckLaws(AQM_I_MacroExpander& expander, const std::string& text, const std::string& expanded,
               const Parameters& parameters) {
    Positions found, analyzed;
    expander.GetMacroPositions(text.c_str(), found);
    expander.Analyze(text.c_str(), parameters.Get(), analyzed);
    ASSERT_EQ(found.size(), analyzed.size()) << text;
    std::string rebuilt = text;
    for (std::size_t i = found.size(); i-- > 0;) {
        const auto begin = static_cast<std::size_t>(found[i].startPosition);
        const auto end = static_cast<std::size_t>(found[i].endPosition);
        EXPECT_EQ(text[begin], '#');
        EXPECT_EQ(text[end], '#');
        EXPECT_EQ(analyzed[i].startPosition, found[i].startPosition);
        EXPECT_EQ(analyzed[i].commentEnd, found[i].commentEnd);
        EXPECT_TRUE(found[i].expansion.empty() && found[i].tokens.empty());
        rebuilt.replace(begin, end + 1 - begin, Text(analyzed[i].expansion));
    }
    EXPECT_EQ(rebuilt, expanded) << text;
    EXPECT_EQ(RootText(expander, text), text);
}

TEST(MacroExpansion, PutsValuesInTheBlocksPlaces) {
    const Parameters parameters{{"a", "A"},
                                {"b", "B1"},
                                {"b", "B2"},
                                {"e", ""},
                                {"\xc3\xa4", "\xe2\x82\xac"},
                                {"a b", "blank"},
                                {"a]b", "bracket"},
                                {"a]]b", "two"},
                                {"a.b", "point"},
                                {"_x", "underscore"},
                                {"]]", "closing"},
                                {"m{A}", "by A"},
                                {"m{}", "by none"},
                                {"m{array_tbd}", "by array"},
                                {"m]n{k}", "odd map"},
                                {"m{l}", "1"},
                                {"m{l}", "2"}};
    Echo echo("echo");
    AQM_I_MacroExpander expander;
    expander.AddFunction(&echo);
    expander.AddFunction(nullptr);
    const Row rows[] = {
        {"", "", 0},
        {"no block", "no block", 0},
        {"'#$x#' [#] \"#\" ?#? /* # */ -- #", "'#$x#' [#] \"#\" ?#? /* # */ -- #", 0},
        {"##", "", 1},
        {"a##b##", "ab", 2},
        {"####", "", 2},
        {"#$a# and #$b#", "A and B2", 2},
        {"\xc3\xa9#$\xc3\xa4#\xc3\xa9#$e#\xc3\xa9", "\xc3\xa9\xe2\x82\xac\xc3\xa9\xc3\xa9", 2},
        {"#'it''s'#|#\"a'b\"#|#'a\"b'#|#'#'#", "it's|a'b|a\"b|#", 4},
        {"#$a + '-' + $b#", "A-B2", 1},
        {"#$ a#|#$[a]#|#$A#|#$unknown#|#$[a ]#", "A|A|||", 5},
        {"#$[a b]#|#$[a]]b]#|#$a.b#|#$[_x]#", "blank|bracket|point|underscore", 4},
        {"#$[a]]]]b]#", "two", 1},
        {"#@a#|#@unknown#|#%m#|#%[m]]n]#|#%unknown#", "array_tbd|array_tbd|m|m]n|unknown", 5},
        {"#$m{$a}#|#$m{'x'}#|#$m{''}#|#$m{@a}#|#$[m]]n]{'k'}#|#$no{''}#", "by A||by none|by array|odd map|", 6},
        {"#$m{myfunc()}#", "by none", 1},
        {"#$m{'a'+$m{'l'}}#|#$m{'l'}#", "|2", 2},
        {"#echo('1','2';'3')#", "echo['3', '2', '1']", 1},
        {"#echo(@b,@m{'l'},@no)#", "echo[[], ['1', '2'], ['B1', 'B2']]", 1},
        {"#echo(%m+$a,echo())#", "echo['echo[]', 'mA']", 1},
        {"#myfunc('x')#|#myfunc()#|#myfunc(@b)#|#myfunc('x','y')#", "UH: don''t know what to do with:<x>|||", 4},
        {"#/*c*/$a//d\n#\n#//e\r\n$a#", "A\nA", 2},
        {"--#$a#\n#$a#", "--#$a#\nA", 1},
    };
    for (const auto& [text, expanded, blocks] : rows) {
        I18NString result = "old";
        EXPECT_EQ(expander.Expand(text, parameters.Get(), result), blocks > 0) << text;
        EXPECT_EQ(result, expanded) << text;
        EXPECT_EQ(expander.GetReplacementCount(), blocks) << text;
        CheckLaws(expander, text, expanded, parameters);
    }
    EXPECT_EQ(expander.Expand("#$a#|#@a#|#$m{'k'}#|#'x'#|#%[m]]n]#", nullptr), "|array_tbd||x|m]n");
}

TEST(MacroExpansion, ValuesThatAreMacrosAreExpanded) {
    Parameters parameters{{"x", "X"},      {"1", "#$x#"},    {"2", "\t#$[1]# \n"},     {"3", "#$[2]#"},
                          {"4", "#$[3]#"}, {"5", "#$[4]#"},  {"two", "#$x# and #$x#"}, {"part", "x #$x# y"},
                          {"empty", "##"}, {"key", "#'k'#"}, {"m{k}", "#$x+'m'#"},     {"fn", "#id($x)#"}};
    Echo echo("echo"), identity("id", true);
    AQM_I_MacroExpander expander;
    expander.AddFunction(&echo);
    expander.AddFunction(&identity);
    const Row rows[] = {
        {"#$[1]#|#$[2]#|#$[5]#", "X|\tX \n|\tX \n", 3},
        {"#$two#|#$part#|#$empty#|", "X and X|x #$x# y||", 3},
        {"#'#$x#'#|#echo('#$x#')#", "#$x#|echo['#$x#']", 2},
        {"#id('#$x#')#|#$fn#", "X|X", 2},
        {"#$m{$key}#|#$[1]+$[1]#|#echo(@[1])#", "Xm|XX|echo[['#$x#']]", 3},
    };
    for (const auto& [text, expanded, blocks] : rows) {
        EXPECT_EQ(Expanded(expander, text, parameters), expanded) << text;
        EXPECT_EQ(expander.GetReplacementCount(), blocks) << text;
    }
}

// Values may nest as deep as the option says; it is read at each value.
TEST(MacroNesting, EndsAtTheLimit) {
    Parameters parameters{{"a1", "#'x'#"}};
    for (int depth = 2; depth <= 9; ++depth)
        parameters.Set("a" + std::to_string(depth), ("#$a" + std::to_string(depth - 1) + "#").c_str());
    parameters.Set("self", "#$self#");
    AQM_I_MacroExpander expander;
    for (const int limit : {5, 0, 1, 8, -1}) {
        if (limit != 5) SetOption("MacroNesting", std::to_string(limit).c_str());
        const std::string refused =
            "QEExceptionExtended 0 0x35d64ee1(" + std::to_string(limit) + ") @-1 Source/QMMacroExprExecute:296";
        for (int depth = 1; depth <= 9; ++depth)
            EXPECT_EQ(Expanded(expander, "#$a" + std::to_string(depth) + "#", parameters),
                      depth > limit ? refused : "x")
                << depth << " under " << limit;
        EXPECT_EQ(Expanded(expander, "#$self#", parameters), refused);
        EXPECT_EQ(Expanded(expander, "#'x'#", parameters), "x") << limit;
    }
    brindle_platform::clearOverrides();
}

TEST(MacroFunctions, LaterOneOfANameReplacesTheEarlierAlsoInNestedTexts) {
    const Parameters parameters{{"nested", "#myfunc($x)#"}, {"x", "#f()#"}};
    Echo first("f"), second("f", true), hook("myfunc");
    AQM_I_MacroExpander expander, other;
    expander.AddFunction(&first);
    expander.AddFunction(&hook);
    EXPECT_EQ(Expanded(expander, "#f('a')#|#$nested#", parameters), "f['a']|myfunc['f[]']");
    expander.AddFunction(&second);
    EXPECT_EQ(Expanded(expander, "#f('a','b')#"), "a");
    EXPECT_EQ(Expanded(other, "#f()#"), "QEException 1221 0x35ddd82c(\"f\") Source/QMMacroEvaluator:141");
}

// Block and comment as "start-end" pairs, -1 for what isn't there.
TEST(MacroPositions, TellBlocksAndTheirLeadingComments) {
    const char* const rows[][2] = {
        {"a #$x# b", "2-5 -1--1"},
        {"##\xc3\xa4##", "0-1 -1--1, 4-5 -1--1"},
        {"#/* c */ $x#", "0-11 1-7"},
        {"#$x/* c */#", "0-10 -1--1"},
        {"# \n/**/ /*d*/$x/*e*/#", "0-20 3-6"},
        {"#// \xc3\xa4\r\n$x#", "0-10 1-5"},
        {"#//\r//\n#", "0-7 1-2"},
        {"#/***/#/**/#//\n#", "0-6 1-5, 11-15 12-13"},
        {"#/*'#'*/'#'#", "0-11 1-7"},
    };
    AQM_I_MacroExpander expander;
    for (const auto& [text, expected] : rows) {
        Positions found(1);
        found[0].startPosition = -7;
        expander.GetMacroPositions(text, found);
        EXPECT_EQ(found[0].startPosition, -7) << "entries are appended";
        std::string line;
        for (std::size_t i = 1; i < found.size(); ++i) {
            const auto& block = found[i];
            line += (i > 1 ? ", " : "") + std::to_string(block.startPosition) + "-";
            line += std::to_string(block.endPosition) + " " + std::to_string(block.commentStart) + "-";
            line += std::to_string(block.commentEnd);
        }
        EXPECT_EQ(line, expected) << text;
        EXPECT_EQ(RootText(expander, text), text);
    }
}

TEST(MacroDocument, HasAnElementForEachPieceOfABlock) {
    const char* const rows[][2] = {
        {"", ""},
        {"\xc3\xa4 '#' ", "\xc3\xa4 '#' "},
        {"a##b", "a<macro position=\"1\">##</macro>b"},
        {"#/*c*/ $ x#-#f()#", "<macro position=\"0\">#<comment position=\"1\">/*c*/</comment> $ "
                              "<parameter position=\"9\">x</parameter>#</macro>-<macro position=\"12\">#"
                              "<function position=\"13\">f</function>()#</macro>"},
        {"#%m+@[l]]i]#", "<macro position=\"0\">#%<parameterMap position=\"2\">m</parameterMap>+@["
                         "<parameterArray position=\"6\">l]]i</parameterArray>]#</macro>"},
        {"#$m{@[n]{'k'}+f('a',$b)}+'c'#",
         "<macro position=\"0\">#$<mapLookUp><parameterMap position=\"2\">m</parameterMap>{@["
         "<mapLookUp><parameterMapArray position=\"6\">n</parameterMapArray>]{'k'}</mapLookUp>+"
         "<function position=\"14\">f</function>('a',$<parameter "
         "position=\"21\">b</parameter>)}</mapLookUp>+'c'#</macro>"},
    };
    AQM_I_MacroExpander expander;
    for (const auto& [text, content] : rows) {
        I18NString written = ZBLIDOM_Helper::serialize(expander.GetAsXml(text));
        EXPECT_EQ(written, *content ? ("<str>" + std::string(content) + "</str>").c_str() : "<str/>") << text;
    }
}

// Random texts of the language's own pieces. All three operations agree on what the language refuses, and where.
TEST(MacroExpansion, OperationsAgreeOnRandomTexts) {
    const char* const pieces[] = {"#",  "#",  "$a",       "@b", "%m", "$[c]", "{",     "}",      "'s'",
                                  "'",  "\"", "+",        ",",  "f(", ")",    "/*c*/", "//d\n",  "--",
                                  "\n", " ",  "\xc3\xa4", "?",  "[",  "]",    "#$a#",  "$a{'k'}"};
    const Parameters parameters{{"a", "A"}, {"b", "B"}};
    Echo echo("f");
    AQM_I_MacroExpander expander;
    expander.AddFunction(&echo);
    int accepted = 0;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        std::mt19937 random(seed);
        std::string text;
        for (auto count = random() % 12; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        Positions positions;
        const std::string failure = FailureOf([&] { expander.GetMacroPositions(text.c_str(), positions); });
        EXPECT_EQ(FailureOf([&] { expander.GetAsXml(text.c_str()); }), failure) << seed << ": " << text;
        I18NString expanded;
        const std::string outcome = FailureOf([&] { expander.Expand(text.c_str(), parameters.Get(), expanded); });
        if (failure != "nothing thrown") {
            EXPECT_EQ(outcome, failure) << seed << ": " << text;
        } else if (outcome == failure) {
            accepted += !positions.empty();
            CheckLaws(expander, text, Text(expanded), parameters);
        } else {
            EXPECT_NE(outcome.find(" 202 0x35dc6529()"), std::string::npos) << outcome; // an array and a "+"
        }
    }
    EXPECT_GT(accepted, 500);
}

TEST(MacroIdentifier, IsBracketedWhereItIsNoPlainName) {
    const struct {
        const char *name, *made;
        bool isReadable;
    } rows[] = {
        {"a", "a", true},
        {"a.b_1", "a.b_1", true},
        {"1a", "[1a]", true},
        {"_a", "[_a]", true},
        {"a b]", "[a b]]]", true},
        {".", "[.]", true},
        {"a-b", "[a-b]", true},
        {"z\xc3\xa4", "[z\xc3\xa4]", true},
        {"#'", "[#']", true},
        {"a]]b", "[a]]]]b]", true},
        {"", "[]", false},
        {"]b", "[]]b]", false},
        {"a\nb-c", "a\nb-c", false},
        {"\na", "[\na]", true},
        {"@", "[@]", true},
        {"Z`", "[Z`]", true},
    };
    AQM_I_MacroExpander expander;
    for (const auto& [name, made, isReadable] : rows) {
        EXPECT_EQ(expander.IsValidMacroIdentifier(name), std::string(made) == name) << name;
        EXPECT_EQ(expander.MakeValidMacroIdentifier(name), made) << name;
        Parameters parameters;
        parameters.Set(name, "found");
        I18NString result;
        FailureOf([&] { expander.Expand("#$" + I18NString(made) + "#", parameters.Get(), result); });
        EXPECT_EQ(result == "found", isReadable) << name;
    }
}

} // namespace
