// What the expander makes of texts: values in the blocks' places, where the blocks lie, the document form, the report.
#include <iterator>
#include <random>
#include <set>

#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include "AQE_LogFile.h"
#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"
#include "Support/Rows.h"
#include "Support/ValueDump.h"

namespace {

using namespace brindle_test;
using Positions = std::vector<AQM_I_MacroExpander::PositionInfo>;

void SetOption(const char* name, const char* value) { brindle_platform::overrideOption("QueryEngine", name, value); }

std::string Text(const I18NString& text) { return std::string(text.bytes()); }

// Answers its frame as a text, or the first argument alone.
TestFunction Echo(const char* name, bool isFirstAlone = false) {
    return {name, [name = std::string(name), isFirstAlone](const AQM_MacroValueArray& frame) -> AQM_MacroValue* {
                if (!isFirstAlone) return new AQM_MacroValueString((name + DescribeValue(&frame)).c_str());
                const auto* const first = dynamic_cast<AQM_MacroValueString*>(frame.Get(frame.Size() - 1));
                return new AQM_MacroValueString(first->GetValue());
            }};
}

// An expander that knows the functions "echo" and "id", the identity.
struct Expander : AQM_I_MacroExpander {
    Expander() {
        AddFunction(&echo);
        AddFunction(&identity);
        AddFunction(nullptr);
    }
    TestFunction echo = Echo("echo"), identity = Echo("id", true);
};

// All text nodes below the node in order. The elements must know their place: that of a block's first "#", and of the
// first byte of a name or comment.
std::string TextOf(const ZBLIDOM_Node& node, const std::string& text) {
    std::string joined;
    const std::string position = Text(ZBLIDOM_Element(node).getAttribute("position"));
    for (ZBLIDOM_Node child = node.getFirstChild(); child; child = child.getNextSibling())
        joined += child.getNodeType() == ZBLIDOM_TEXT_NODE ? Text(child.getNodeValue()) : TextOf(child, text);
    EXPECT_TRUE(position.empty() || text.substr(std::stoul(position), joined.size()) == joined) << text;
    return joined;
}

std::string DocumentText(AQM_I_MacroExpander& expander, const std::string& text) {
    return TextOf(ZBLIDOM_Document(expander.GetAsXml(text.c_str())).getDocumentElement(), text);
}

// The expanded text, or the failure. What the operations answer must fit together: blocks and their values rebuild the
// expanded text, the document's text is the text, and what the scanner or parser refuses fails everywhere.
std::string Expanded(AQM_I_MacroExpander& expander, const std::string& text, const Parameters& parameters) {
    Positions found, analyzed;
    I18NString result = "old";
    bool hasReplaced = false;
    const std::string outcome =
        FailureOf([&] { hasReplaced = expander.Expand(text.c_str(), parameters.Get(), result); });
    const std::string syntax = FailureOf([&] { expander.GetMacroPositions(text.c_str(), found); });
    EXPECT_EQ(FailureOf([&] { EXPECT_EQ(DocumentText(expander, text), text); }), syntax) << text;
    EXPECT_TRUE(syntax == "nothing thrown" || syntax == outcome) << text << ": " << syntax << ", " << outcome;
    if (outcome != "nothing thrown") return outcome;

    expander.Analyze(text.c_str(), parameters.Get(), analyzed);
    EXPECT_TRUE(found.size() == analyzed.size() && hasReplaced == !found.empty()) << text;
    EXPECT_EQ(expander.GetReplacementCount(), static_cast<int>(found.size())) << text;
    std::string rebuilt = text;
    for (std::size_t i = found.size(); i-- > 0;) {
        const auto begin = static_cast<unsigned>(found[i].startPosition);
        const auto end = static_cast<unsigned>(found[i].endPosition);
        EXPECT_TRUE(text[begin] == '#' && text[end] == '#' && found[i].expansion.empty()) << text;
        EXPECT_EQ(analyzed[i].startPosition + analyzed[i].commentEnd, found[i].startPosition + found[i].commentEnd);
        rebuilt.replace(begin, end + 1 - begin, Text(analyzed[i].expansion));
    }
    EXPECT_EQ(rebuilt, Text(result)) << text;
    return Text(result);
}

// The report is switched on by the first expansion of a process, so this case stands in front of all others.
TEST(MacroReport, TellsEachStepOfAllExpansionsOfTheObject) {
    SetOption("GetMacroExpansionExecutionReport", "1");
    const I18NString entry = AQE_LogFile::GetConfigurationEntryName();
    std::string log;
    brindle_platform::setLogSink([&](const brindle_platform::LogRecord& record) {
        if (record.name == entry) log += std::to_string(record.level) + Text(record.text);
    });
    const Parameters parameters{{"a", " #$b# "},  {"b", "x"},       {"b", "<y>"},
                                {"m]n{k]}", "v"}, {"m]n{k]}", "w"}, {"p]q", "r"}};
    Expander expander, other;
    EXPECT_TRUE(expander.GetExecutionReport().isNull());
    brindle_platform::setLogLevel(entry, 6);
    expander.Expand("plain", nullptr);
    Positions analyzed;
    expander.Analyze("#$b#", parameters.Get(), analyzed);
    FailureOf([&] { expander.Expand("#'a'##no()#", nullptr); });
    brindle_platform::setLogLevel(entry, 7);
    expander.Expand("1 #echo($a,'l')#", parameters.Get());
    expander.Expand("#echo(@b, $[m]]n]{'k]'}, @[m]]n]{'k]'}, %[m]]n], id($[p]]q]))#", parameters.Get());
    EXPECT_EQ(log, "") << "only the call that makes the report logs it";
    const ZBLIDOM_Node report = expander.GetExecutionReport();
    EXPECT_EQ(
        Text(ZBLIDOM_Helper::serialize(report)),
        R"(<ExecutionReport><Expanding string="plain"><result expandedString="plain"/></Expanding>)"
        R"(<Expanding string="#'a'##no()#"><Literal string="a"/></Expanding>)"
        R"(<Expanding string="1 #echo($a,'l')#"><Literal string="l"/>)"
        R"(<ParameterLookup><name>a</name><value> #$b# </value></ParameterLookup>)"
        R"(<Expanding string=" #$b# "><ParameterLookup><name>b</name><value>&lt;y&gt;</value></ParameterLookup>)"
        R"(<result expandedString=" &lt;y&gt; "/></Expanding>)"
        R"(<Function functionName="echo" operandCount="2" result="echo['l', ' &lt;y&gt; ']"/>)"
        R"(<result expandedString="1 echo['l', ' &lt;y&gt; ']"/></Expanding>)"
        R"(<Expanding string="#echo(@b, $[m]]n]{'k]'}, @[m]]n]{'k]'}, %[m]]n], id($[p]]q]))#">)"
        R"(<ParameterLookup><name>p]q</name><value>r</value></ParameterLookup>)"
        R"(<Function functionName="id" operandCount="1" result="r"/>)"
        R"(<ParameterMapRef><name>m]n</name></ParameterMapRef><Literal string="k]"/><ParameterMapLookupArray>)"
        R"(<name>m]n</name><key>k]</key><value>v</value><value>w</value></ParameterMapLookupArray>)"
        R"(<Literal string="k]"/><ParameterMapLookup><name>m]n</name><key>k]</key><value>w</value></ParameterMapLookup>)"
        R"(<ParameterLookupArray><name>b</name><value>x</value><value>&lt;y&gt;</value></ParameterLookupArray><Function)"
        R"( functionName="echo" operandCount="5" result="echo['r', 'm]n', ['v', 'w'], 'w', ['x', '&lt;y&gt;']]"/>)"
        R"(<result expandedString="echo['r', 'm]n', ['v', 'w'], 'w', ['x', '&lt;y&gt;']]"/></Expanding>)"
        R"(</ExecutionReport>)");
    SetOption("GetMacroExpansionExecutionReport", "0"); // comes too late
    other.Expand("#$a#", parameters.Get());
    brindle_platform::setLogSink(nullptr);
    const ZBLIDOM_Node root = other.GetExecutionReport().getParentNode();
    EXPECT_EQ(root.getNodeName(), "MacroExpander");
    EXPECT_EQ(log, "7" + Text(ZBLIDOM_Helper::serialize(root)) + "\n");
}

TEST(MacroExpansion, PutsValuesInTheBlocksPlaces) {
    Parameters parameters{{"a", "A"}, {"b", "B1"}, {"b", "B2"}, {"e", ""}, {"\u00e4", "\u20ac"}, {"a b", "blank"}};
    for (const char* name : {"a]b", "a]]b", "a.b", "_x", "m{A}", "m{}", "m{array_tbd}", "m]n{k}", "m{l}", "m{l}"})
        parameters.Set(name, (std::string("<") + name + ">").c_str());
    Expander expander;
    const auto expanded = [&](const std::string& text) { return Expanded(expander, text, parameters); };
    for (const std::string text : {"", "no block", "'#$a#' [#] \"#\" ?#? /* # */ -- #", "--#$a#\n", "[#$a#]"})
        EXPECT_EQ(expanded(text), text);
    CheckRows(expanded, "a##b## -> ab", "#### -> ", "#$a# and #$b# -> A and B2", "#$a + '-' + $b# -> A-B2",
              "\u00e9#$\u00e4#\u00e9#$e#\u00e9 -> \u00e9\u20ac\u00e9\u00e9", "#$a#--#$a#\n#$a# -> A--#$a#\nA",
              "#'it''s'#|#\"a'b\"#|#'a\"b'#|#'#'#|#''''#|#'''a'# -> it's|a'b|a\"b|#|'|'a",
              "#$ a#|#$[a]#|#$A#|#$unknown#|#$[a ]# -> A|A|||",
              "#$[a b]#|#$[a]]b]#|#$a.b#|#$[_x]#|#$[a]]]]b]# -> blank|<a]b>|<a.b>|<_x>|<a]]b>",
              "#@a#|#@no#|#%m#|#%[m]]n]#|#%no# -> array_tbd|array_tbd|m|m]n|no", "#/*c*/$a//d\n#|#//e\r\n$a# -> A|A",
              "#$m{$a}#|#$m{'x'}#|#$m{''}#|#$m{@a}#|#$[m]]n]{'k'}#|#$no{''}# -> <m{A}>||<m{}>|<m{array_tbd}>|<m]n{k}>|",
              "#$m{myfunc()}#|#$m{'a'+$m{'x'}}#|#$m{'l'}# -> <m{}>||<m{l}>",
              "#echo('1','2';'3')# -> echo['3', '2', '1']",
              "#echo(@b,@m{'l'},@no)# -> echo[[], ['<m{l}>', '<m{l}>'], ['B1', 'B2']]",
              "#echo(%m+$a,echo())# -> echo['echo[]', 'mA']", "#myfunc()#|#myfunc(@b)#|#myfunc('x','y')# -> ||",
              "#myfunc('x')# -> UH: don''t know what to do with:<x>");
    EXPECT_EQ(expander.Expand("#$a#|#@a#|#$m{'k'}#|#'x'#|#%[m]]n]#", nullptr), "|array_tbd||x|m]n");
}

TEST(MacroExpansion, ValuesThatAreMacrosAreExpanded) {
    const Parameters parameters{{"x", "X"},       {"v", "#$x#"},      {"w", "\t#$v# \n"},  {"part", "x #$x# y"},
                                {"key", "#'k'#"}, {"fn", "#id($x)#"}, {"m{k}", "#$x+'m'#"}};
    AQU_ParameterMapApp fallback("n", 0);
    fallback.SetDefault("n", "#$x#");
    parameters.Get()->AddParameterMap(&fallback);
    Expander expander;
    CheckRows([&](const std::string& text) { return Expanded(expander, text, parameters); }, "#$v#|#$w# -> X|\tX \n",
              "#$part# -> x #$x# y", "#'#$x#'#|#echo('#$x#')# -> #$x#|echo['#$x#']", "#id('#$x#')#|#$fn# -> X|X",
              "#$m{$key}#|#$v+$v#|#echo(@v)# -> Xm|XX|echo[['#$x#']]", "#$n{''}#|#echo(@n{''})# -> X|echo[['#$x#']]");
}

// A block that is one parameter takes a way of its own through the parser; a blank in it brings it back to the usual.
TEST(MacroExpansion, BlockOfOneParameterIsLikeAnyOther) {
    for (const char* const value : {"", "x", "#", "##", "#$b#", " #$b# ", "#$a#", "#$#", "#f()#", "é#$b#",
                                    "a long value of more than a few bytes", "#$b# and #$b#"}) {
        const Parameters parameters{{"a", value}, {"b", "\xC3\xBC"}};
        const auto outcome = [&parameters](const char* text) {
            AQM_I_MacroExpander expander;
            std::string result;
            const std::string failure = FailureOf([&] { result = Text(expander.Expand(text, parameters.Get())); });
            return result + failure;
        };
        EXPECT_EQ(outcome("é#$a#-#$a#"), outcome("é#$a #-# $a#")) << value;
    }
}

// Values may nest as deep as the option says; it is read at each value.
TEST(MacroNesting, EndsAtTheLimit) {
    Parameters parameters{{"a1", "#'x'#"}, {"self", "#$self#"}};
    for (int depth = 2; depth <= 9; ++depth)
        parameters.Set("a" + std::to_string(depth), ("#$a" + std::to_string(depth - 1) + "#").c_str());
    AQM_I_MacroExpander expander;
    for (const int limit : {5, 0, 1, 8, -1}) {
        if (limit != 5) SetOption("MacroNesting", std::to_string(limit).c_str());
        const std::string refused =
            "QEExceptionExtended 0 0x35d64ee1(" + std::to_string(limit) + ") @-1 Source/QMMacroExprExecute:296";
        for (int depth = 1; depth <= 9; ++depth) {
            const std::string text = "#$a" + std::to_string(depth) + "#";
            EXPECT_EQ(Expanded(expander, text, parameters), depth > limit ? refused : "x") << depth << " " << limit;
        }
        EXPECT_EQ(Expanded(expander, "#$self#", parameters), refused);
        EXPECT_EQ(Expanded(expander, "#'x'#", parameters), "x") << limit;
    }
    brindle_platform::clearOverrides();
}

TEST(MacroFunctions, LaterOneOfANameReplacesTheEarlierAlsoInNestedTexts) {
    const Parameters parameters{{"nested", "#myfunc($x)#"}, {"x", "#f()#"}};
    TestFunction first = Echo("f"), second = Echo("f", true), hook = Echo("myfunc");
    AQM_I_MacroExpander expander, other;
    expander.AddFunction(&first);
    expander.AddFunction(&hook);
    EXPECT_EQ(Expanded(expander, "#f('a')#|#$nested#", parameters), "f['a']|myfunc['f[]']");
    expander.AddFunction(&second);
    EXPECT_EQ(Expanded(expander, "#f('a','b')#", parameters), "a");
    EXPECT_EQ(Expanded(other, "#f()#", parameters), "QEException 1221 0x35ddd82c(\"f\") Source/QMMacroEvaluator:141");

    TestFunction adding("adding", [&](const AQM_MacroValueArray&) {
        other.AddFunction(&first);
        return new AQM_MacroValueString("k");
    });
    other.AddFunction(&adding);
    EXPECT_EQ(Expanded(other, "#f(adding())#", parameters), "f['k']") << "added in the middle of a run";
}

// Start and end of block and comment, -1 for what isn't there.
TEST(MacroPositions, TellBlocksAndTheirLeadingComments) {
    AQM_I_MacroExpander expander;
    const auto positions = [&expander](const std::string& text) {
        Positions found(1); // entries are appended
        expander.GetMacroPositions(text.c_str(), found);
        std::string line;
        for (const auto& block : found)
            for (const int offset : {block.startPosition, block.endPosition, block.commentStart, block.commentEnd})
                line += std::to_string(offset) + " ";
        EXPECT_EQ(DocumentText(expander, text), text);
        return line.substr(12);
    };
    CheckRows(positions, "a #$x# b -> 2 5 -1 -1 ", "##\u00e4## -> 0 1 -1 -1 4 5 -1 -1 ", "#/* c */ $x# -> 0 11 1 7 ",
              "#$x/* c */# -> 0 10 -1 -1 ", "# \n/**/ /*d*/$x/*e*/# -> 0 20 3 6 ", "#// \u00e4\r\n$x# -> 0 10 1 5 ",
              "#//\r//\n# -> 0 7 1 2 ", "#/***/#/**/#//\n# -> 0 6 1 5 11 15 12 13 ", "#/*'#'*/'#'# -> 0 11 1 7 ");

    Positions collected;
    std::set<std::size_t> capacities;
    for (int i = 0; i < 1000; ++i, capacities.insert(collected.capacity()))
        expander.GetMacroPositions("#$x#", collected);
    EXPECT_LT(capacities.size(), 30U) << "the list of a caller who collects is moved anew for each text";
}

TEST(MacroDocument, HasAnElementForEachPieceOfABlock) {
    AQM_I_MacroExpander expander;
    CheckRows([&](const std::string& text) { return Text(ZBLIDOM_Helper::serialize(expander.GetAsXml(text.c_str()))); },
              " -> <str/>", "\u00e9 '#' -> <str>\u00e9 '#'</str>",
              "a##b -> <str>a<macro position=\"1\">##</macro>b</str>",
              "#/*c*/ $ x#-#f()# -> <str><macro position=\"0\">#<comment position=\"1\">/*c*/</comment> $ "
              "<parameter position=\"9\">x</parameter>#</macro>-<macro position=\"12\">#"
              "<function position=\"13\">f</function>()#</macro></str>",
              "#%m+@[l]]i]# -> <str><macro position=\"0\">#%<parameterMap position=\"2\">m</parameterMap>+@["
              "<parameterArray position=\"6\">l]]i</parameterArray>]#</macro></str>",
              "#$m{@[n]{'k'}+f('a',$b)}+'c'# -> <str><macro position=\"0\">#$<mapLookUp><parameterMap position=\"2\">m"
              "</parameterMap>{@[<mapLookUp><parameterMapArray position=\"6\">n</parameterMapArray>]{'k'}</mapLookUp>+"
              "<function position=\"14\">f</function>('a',$<parameter position=\"21\">b</parameter>)}</mapLookUp>+'c'#"
              "</macro></str>");
}

// Random texts of the language's own pieces, for the laws that Expanded checks.
TEST(MacroExpansion, OperationsAgreeOnRandomTexts) {
    const char* const pieces[] = {"#",  "#",  "$a",     "@b", "%m",    "$[c]", "{",     "}",      "'s'",
                                  "'",  "\"", "+",      ",",  "echo(", ")",    "/*c*/", "//d\n",  "--",
                                  "\n", " ",  "\u00e4", "?",  "[",     "]",    "#$a#",  "$a{'k'}"};
    const Parameters parameters{{"a", "A"}, {"b", "B"}};
    int expansions = 0;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        std::mt19937 random(seed);
        std::string text;
        for (auto count = random() % 12; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        SCOPED_TRACE(seed);
        Expander expander;
        Expanded(expander, text, parameters);
        expansions += expander.GetReplacementCount() > 0;
    }
    EXPECT_GT(expansions, 500);
}

TEST(MacroIdentifier, IsBracketedWhereItIsNoPlainName) {
    AQM_I_MacroExpander expander;
    const auto made = [&expander](const std::string& name) {
        const std::string identifier = Text(expander.MakeValidMacroIdentifier(name.c_str()));
        EXPECT_EQ(expander.IsValidMacroIdentifier(name.c_str()), identifier == name) << name;
        Parameters parameters;
        parameters.Set(name, "found");
        const bool isReadBack = Expanded(expander, "#$" + identifier + "#", parameters) == "found";
        return identifier + (isReadBack ? "" : " can't be read back");
    };
    CheckRows(made, "a -> a", "a.b_1 -> a.b_1", "1a -> [1a]", "_a -> [_a]", "a b] -> [a b]]]", ". -> [.]",
              "a-b -> [a-b]", "z\u00e4 -> [z\u00e4]", "#' -> [#']", "a]]b -> [a]]]]b]", "\na -> [\na]", "@ -> [@]",
              "Z` -> [Z`]", "z{ -> [z{]", " -> [] can't be read back", "]b -> []]b] can't be read back",
              "a\nb-c -> a\nb-c can't be read back");
}

} // namespace
