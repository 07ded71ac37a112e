// The built-in functions as a text sees them: what each accepts, its fixed answers, what it refuses and how. A row is
// the inside of a block and what becomes of it. Three functions of an application help: show(x) makes any value a text,
// map() is a value of the third type, odd() an array of such a value, "it's", null, an array of 'x', and 'a'.
#include <array>
#include <random>
#include <set>
#include <sstream>

#include "AQE_UrlEncoding.h"
#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"
#include "Support/Rows.h"
#include "Support/ValueDump.h"

namespace {

using namespace brindle_test;

struct MapValue : AQM_MacroValue {
    MapValue() : AQM_MacroValue(MVT_Map) {}
};

AQM_MacroValue* MakeOddArray() {
    auto array = std::make_unique<AQM_MacroValueArray>();
    array->AddValue(new MapValue);
    array->AddValue(new AQM_MacroValueString("it's"));
    array->AddValue(nullptr);
    auto* const inner = new AQM_MacroValueArray;
    array->AddValue(inner);
    inner->AddValue(new AQM_MacroValueString("x"));
    array->AddValue(new AQM_MacroValueString("a"));
    return array.release();
}

// The block's value, or the failure in which it ends: "number(parameters) :line" for one of code 202 at the functions'
// site. `p` and `q` are parameters; `l` is the list b, a, b.
std::string ValueWith(const std::string& p, const std::string& q, const std::string& block) {
    TestFunction show("show", [](const AQM_MacroValueArray& arguments) {
        return new AQM_MacroValueString(DescribeValue(arguments.Get(0)).c_str());
    });
    TestFunction map("map", [](const AQM_MacroValueArray&) { return new MapValue; });
    TestFunction odd("odd", [](const AQM_MacroValueArray&) { return MakeOddArray(); });
    AQM_I_MacroExpander expander;
    for (TestFunction* const function : {&show, &map, &odd})
        expander.AddFunction(function);
    const Parameters parameters{{"l", "b"}, {"l", "a"}, {"l", "b"}, {"p", p.c_str()}, {"q", q.c_str()}};
    std::string value;
    std::string failure =
        FailureOf([&] { value = expander.Expand(("#" + block + "#").c_str(), parameters.Get()).bytes(); });
    if (failure == "nothing thrown") return value;
    const std::string kind = "QEException 202 ", site = "Source/QMMacroExpander:";
    const std::size_t at = failure.find(site);
    if (!failure.starts_with(kind) || at == std::string::npos) return failure;
    return failure.erase(at, site.size() - 1).erase(0, kind.size());
}

std::string Value(const std::string& block) { return ValueWith("", "", block); }

// The functions that have nothing to say about such an argument.
void CheckAnswersNull(std::initializer_list<const char*> blocks) {
    for (const std::string block : blocks)
        EXPECT_EQ(Value(block), "QEException 202 0x35ddd827(\"" + block.substr(0, block.find('(')) +
                                    "\") Source/QMMacroEvaluator:184")
            << "#" << block << "#";
}

TEST(MacroBuiltIns, QuoteTexts) {
    CheckRows(Value, R"(sq("it's") -> 'it''s')", R"(sq("''") -> '''''')", R"(sq('a\"é') -> 'a\"é')", "sq('') -> ''",
              "sq() -> ''", "sq(@l, 'b') -> ''", "show(sq(@l)) -> [''b'', ''a'', ''b'']",
              "show(sq(odd())) -> [''it''s'', ''a'']", R"(dq('') -> "")", R"(dq('a', 'b') -> "")",
              R"(dq('a"""b') -> "a""""""b")", R"(dq("it's]") -> "it's]")", "sb('a]b') -> [a]]b]", "sb(']]') -> []]]]]",
              "sb('[a[') -> [[a[]", "sb('') -> []", "sb('a', @l) -> []");
    CheckAnswersNull({"sq(map())", "sq(myfunc())", "dq(@l)", "dq(map())", "dq(myfunc())", "sb(@l)", "sb(map())",
                      "sb(myfunc())", "urlencode(map())", "urlencode(myfunc())", "substitute('a', 'b', map())",
                      "substitute('a', 'b', myfunc())"});
}

TEST(MacroBuiltIns, EncodeForUrls) {
    CheckRows(Value, "urlencode('a b&c') -> a+b%26c", "urlencode('é€\U0001F600') -> %c3%a9%e2%82%ac%f0%9f%98%80",
              "urlencode() -> ''", "urlencode('a', 'b') -> ''",
              "urlencode('/09:@AZ[`az{\x7f\x1f') -> %2f09%3a%40AZ%5b%60az%7b%7f%1f",
              "urlencode('~!*()-._%+=,^') -> %7e%21%2a%28%29-._%25%2b%3d%2c%5e",
              "show(urlencode(odd())) -> ['it%27s', 'a']");
    CheckRows([](const std::string& text) { return std::string(AQE_UrlDecode(text.c_str()).bytes()); }, " -> ",
              "a+b%26c -> a b&c", "%41 -> A", "%4 -> %4", "% -> %", "%%41+ -> %A ", "%+41 -> % 41", "%C3%a9%2B -> é+",
              "é% -> é%", "%c3+ -> \uFFFD ", "a%4g%g4%4G%/0%:0%@0%`0 -> a%4g%g4%4G%/0%:0%@0%`0");
}

TEST(MacroBuiltIns, BuildJoinSplitSortAndListArrays) {
    CheckRows(Value, "show(array()) -> []", "show(array('a', array('b', 'c'), '', 'd')) -> ['a', 'b', 'c', '', 'd']",
              "show(array(map(), myfunc(), array(), odd(), @l)) -> ['it's', 'a', 'b', 'a', 'b']",
              "join(', ', array('a', 'b', '')) -> a, b, ", "join('', @l) -> bab", "join(',', array('', '')) -> ,",
              "join(',', map()) -> ", "join(',', myfunc()) -> ", "join(',', odd()) -> ,it's,a",
              "show(split(',', 'a,,b')) -> ['a', '', 'b']", "show(split(',', '')) -> ['']",
              "show(split('aa', 'aaabaa')) -> ['', 'ab', '']", "show(split('abc', 'ab')) -> ['ab']",
              "show(split('', 'ab')) -> ['ab']", "show(split('é', 'aéèéé€')) -> ['a', 'è', '', '€']",
              "show(split(',', array('a,b', 'c', ''))) -> ['a', 'b', 'c', '']",
              R"(show(split("'", odd())) -> ['it', 's', 'a'])", "show(split(',', myfunc())) -> []",
              R"(join(',') -> 0x35dc6529("join") :3511)", R"(join(@l, 'a', 'b') -> 0x35dc6529("join") :3511)",
              R"(join(@l, 'a') -> 0x35d7cf2c("join", "1", "array", "string") :3512)",
              R"(split(@l) -> 0x35dc6529("split") :3521)", R"(split(',', 'a', 'b') -> 0x35dc6529("split") :3521)",
              R"(split(myfunc(), 'a') -> 0x35d7cf2c("split", "1", "unknown", "string") :3522)",
              "show(sort(@l)) -> ['a', 'b', 'b']",
              "show(sort(split(' ', 'é zz  z B a 10 9 \U0001F600 \uFFFD'))) -> ['', '10', '9', 'B', 'a', 'z', 'zz', "
              "'é', '\uFFFD', '\U0001F600']",
              "show(sort(odd())) -> ['a', 'it's']", "show(unique(split(' ', 'b  A a  b '))) -> ['b', '', 'A', 'a']",
              "show(unique(odd())) -> ['it's', 'a']",

              R"(sort(@l, @l) -> 0x35dc6529("sort") :3541)",
              R"(sort('a') -> 0x35d7cf2c("sort", "1", "string", "array") :3542)",
              R"(unique(@l, 'a') -> 0x35dc6529("unique") :3551)",
              R"(unique(map()) -> 0x35d7cf2c("unique", "1", "map", "array") :3552)",
              R"(csv(array("it's", '')) -> 'it''s','')", R"(csv(array('a', 'b"'), ';', '"') -> "a";"b""")",
              "csv(@l, '') -> 'b''a''b'", "csv(array('a<>b<', 'aaa'), '|', '<>') -> <>a<><>b<<>|<>aaa<>",
              "csv(array('aaa'), ',', 'aa') -> aaaaaaaaa", "csv(odd()) -> 'it''s','a'", "csv(array()) -> ",
              "csv(array('', 'a', '', 'b'), ',', '') -> a,,b", R"(csv() -> 0x35d02632("csv", "0", "1") :3571)",
              R"(csv(@l, ',', '', '') -> 0x35d21983("csv", "4", "3") :3572)",
              R"(csv('a', @l) -> 0x35d7cf2c("csv", "1", "string", "array") :3573)",
              R"(csv(@l, @l, map()) -> 0x35d7cf2c("csv", "2", "array", "string") :3574)",
              R"(csv(@l, ',', map()) -> 0x35d7cf2c("csv", "3", "map", "string") :3575)");
}

// Each word stands behind + if the pattern keeps it, else behind -; the negated pattern keeps the others.
void CheckKept(std::initializer_list<std::pair<const char*, const char*>> rows) {
    for (const auto& [pattern, words] : rows) {
        std::string all, expected[2];
        std::istringstream in(words);
        for (std::string word; in >> word;) {
            all += " " + word.substr(1);
            std::string& kept = expected[word[0] == '-'];
            kept += (kept.empty() ? "'" : ", '") + word.substr(1) + "'";
        }
        const std::string block = "show(grep($p, split(' ', $q)))";
        EXPECT_EQ(ValueWith(pattern, all.substr(1), block), "[" + expected[0] + "]") << pattern;
        EXPECT_EQ(ValueWith(std::string("!") + pattern, all.substr(1), block), "[" + expected[1] + "]") << pattern;
    }
}

TEST(MacroPatterns, KeepWhatMatches) {
    CheckKept({{"", "+ +a +abc"}, {"^", "+ +a"}, {"$", "+ +a"}, {"^$", "+ -a -^$"}});
    CheckKept({{"ab", "+ab +xabx +xab -a -aXb -AB -"}, {"^ab", "+ab +abc +abab -xab -xabab -a -"}});
    CheckKept({{"ab$", "+ab +xab +abxab -abx -b -"}, {"^ab$", "+ab -abab -xab -abx -a -"}});
    CheckKept({{R"(a\.b)", "+a.b +xa.bx -axb -ab"}});
    CheckKept({{R"(\|\(\)\[\{\^\$\*\+\.\?\!\\)", R"(+|()[{^$*+.?!\ +x|()[{^$*+.?!\y -|()[{^$*+.?! -\|\()"}});
    CheckKept({{R"(]}-,;"_)", R"(+a]}-,;"_b -]})"}, {R"(\]\-\"\€)", R"(+]-"€ -\]\-)"}, {R"(^\^)", "+^a -a^ -a"}});
    CheckKept({{R"(\$$)", "+a$ +$ -$a -a"}, {R"(^\!)", "+!a -a!"}, {R"(a\!b)", "+a!b -ab"}});
    CheckKept({{"^é", "+éa +é -aé -e\u0301"}, {"é$", "+aé +éaé -éa -\u0301"}, {"^é€$", "+é€ -é€€ -éé€"}});
    CheckRows(Value, "show(grep('b', @l)) -> ['b', 'b']", R"(show(grep("t'", odd())) -> ['it's'])",
              "show(grep('!a', odd())) -> ['it's']", "show(grep('', array())) -> []");
}

TEST(MacroPatterns, ReplaceOneMatch) {
    CheckRows(Value, "substitute('', 'X', 'abc') -> Xabc", "substitute('$', 'X', 'abc') -> abcX",
              "substitute('b', 'X', 'abcabc') -> aXcabc", "substitute('b', 'bb', 'bb') -> bbb",
              "substitute('bc', '', 'abcbc') -> abc", "substitute('^ab', 'X', 'abab') -> Xab",
              "substitute('^b', 'X', 'abb') -> abb", "substitute('ab$', 'X', 'abxab') -> abxX",
              "substitute('^ab$', 'X', 'abab') -> abab", "substitute('!b', 'X', 'abc') -> aXc",
              "substitute('!b', 'X', 'ac') -> ac", R"(substitute('é', '\1$&^', 'aéè') -> a\1$&^è)",
              "substitute('€$', 'è', 'é€€') -> é€è", "show(substitute('b', 'X', @l)) -> ['X', 'a', 'X']",
              "show(substitute('a', 'X', odd())) -> ['it's', 'X']");
}

TEST(MacroPatterns, RefuseWhatTheyDontKnow) {
    std::istringstream patterns(R"(!! a! a!b ^! \!! ^^ a^ !a^ !^^ \^^ $a $$ a$b $\$ !$a \ a\ \\\ ^\ \d \Z \0 a\9b \é \٣
                                   | a|b ( \() a) [ [] a{ * a* + é+ . a.b \.. ? a?)");
    for (std::string pattern; patterns >> pattern;)
        for (const std::string name : {"grep", "substitute"})
            EXPECT_EQ(ValueWith(pattern, "", name == "grep" ? "grep($p, 'no array')" : "substitute($p, @l, map())"),
                      "0x35d7b2b8(\"" + pattern + "\", \"" + name + "\") :3601");
    CheckRows(Value, R"(grep('.') -> 0x35d02632("grep", "1", "2") :3531)",
              R"(grep('.', @l, 'a') -> 0x35d21983("grep", "3", "2") :3532)",
              R"(grep(@l, 'a') -> 0x35d7cf2c("grep", "1", "array", "string") :3533)",
              R"(grep('a', 'a') -> 0x35d7cf2c("grep", "2", "string", "array") :3534)",
              R"(substitute('.', 'a') -> 0x35dc6529("substitute") :3561)",
              R"(substitute('.', 'a', 'b', 'c') -> 0x35dc6529("substitute") :3561)",
              R"(substitute(map(), @l, 'a') -> 0x35d7cf2c("substitute", "1", "map", "string") :3562)",
              R"(substitute('a', @l, map()) -> 0x35d7cf2c("substitute", "2", "array", "string") :3563)");
}

// With quadratic work these texts would take many minutes.
TEST(MacroPatterns, AndSeparatorsAreFoundInLinearTime) {
    const std::string text(8'000'000, 'a');
    const std::string nearly(4'000'000, 'a');
    EXPECT_TRUE(ValueWith(text, nearly + "b", "join('', split($q, $p))") == text);
    EXPECT_TRUE(ValueWith(text, nearly + "b", "substitute($q, '', $p)") == text);
}

TEST(MacroBuiltIns, SortAndUniqueDoAsOrderedContainersDo) {
    for (const std::string beginning : {"", "\xC3\xA9 common to all"}) {
        Parameters parameters;
        std::minstd_rand random(7);
        std::multiset<std::string> sorted;
        std::string unique, inOrder;
        for (int i = 0; i < 600; ++i) {
            std::string text = beginning;
            for (auto left = random() % 11; left > 0; --left)
                text += std::array{"a", "b", "\x01", "\xC3\xA9"}[random() % (i % 3 ? 4 : 1)];
            parameters.Set("l", text.c_str());
            if (!sorted.contains(text)) unique += "|" + text;
            sorted.insert(text);
        }
        for (const std::string& text : sorted)
            inOrder += "|" + text;
        AQM_I_MacroExpander expander;
        EXPECT_EQ("|" + expander.Expand("#join('|',sort(@l))#", parameters.Get()), inOrder.c_str());
        EXPECT_EQ("|" + expander.Expand("#join('|',unique(@l))#", parameters.Get()), unique.c_str());
    }
}

} // namespace
