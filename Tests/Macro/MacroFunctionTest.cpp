// The built-in functions as a text sees them: what each accepts, its fixed answers, what it refuses and how. A row is
// the inside of a block. Three functions of an application help: show(x) makes any value a text, map() is a value of
// the third type, odd() an array of such a value, "it's", null, an array of 'x', and 'a'.
#include <cctype>
#include <cstring>
#include <functional>
#include <memory>
#include <random>

#include <gtest/gtest.h>

#include "AQE_UrlEncoding.h"
#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"
#include "Support/ValueDump.h"

namespace {

using brindle_test::FailureOf;

struct MapValue : AQM_MacroValue {
    MapValue() : AQM_MacroValue(MVT_Map) {}
};

AQM_MacroValue* MakeOddArray() {
    auto array = std::make_unique<AQM_MacroValueArray>();
    auto* const inner = new AQM_MacroValueArray;
    inner->AddValue(new AQM_MacroValueString("x"));
    for (AQM_MacroValue* const value :
         {static_cast<AQM_MacroValue*>(new MapValue), static_cast<AQM_MacroValue*>(new AQM_MacroValueString("it's")),
          static_cast<AQM_MacroValue*>(nullptr), static_cast<AQM_MacroValue*>(inner),
          static_cast<AQM_MacroValue*>(new AQM_MacroValueString("a"))})
        array->AddValue(value);
    return array.release();
}

class TestFunction : public AQM_I_MacroFunction {
public:
    TestFunction(const char* name, std::function<AQM_MacroValue*(const AQM_MacroValueArray&)> run)
        : m_name(name), m_run(std::move(run)) {}
    AQM_MacroValue* Execute(AQM_MacroValue* arguments) override {
        return m_run(dynamic_cast<const AQM_MacroValueArray&>(*arguments));
    }
    void GetParameterTypes(std::vector<int>&) override {}
    I18NString GetName() override { return m_name; }
    int GetReturnType() override { return AQM_MacroValue::MVT_None; }

private:
    const char* m_name;
    std::function<AQM_MacroValue*(const AQM_MacroValueArray&)> m_run;
};

// The block's value, or the failure in which it ends. `p` and `q` are parameters; `l` is the list b, a, b.
std::string Value(const std::string& block, const char* p = "", const char* q = "") {
    TestFunction show("show", [](const AQM_MacroValueArray& arguments) {
        return new AQM_MacroValueString(brindle_test::DescribeValue(arguments.Get(0)).c_str());
    });
    TestFunction map("map", [](const AQM_MacroValueArray&) { return new MapValue; });
    TestFunction odd("odd", [](const AQM_MacroValueArray&) { return MakeOddArray(); });
    AQM_I_MacroExpander expander;
    for (TestFunction* const function : {&show, &map, &odd})
        expander.AddFunction(function);
    const brindle_test::Parameters parameters{{"l", "b"}, {"l", "a"}, {"l", "b"}, {"p", p}, {"q", q}};
    std::string value;
    const std::string failure =
        FailureOf([&] { value = expander.Expand(("#" + block + "#").c_str(), parameters.Get()).bytes(); });
    return failure == "nothing thrown" ? value : failure;
}

struct Row {
    const char *block, *expected;
};

void Check(std::initializer_list<Row> rows) {
    for (const auto& [block, expected] : rows)
        EXPECT_EQ(Value(block), expected) << "#" << block << "#";
}

// Each block fails with the one message, at that line of the functions' site.
struct Refusal {
    const char *block, *message;
    int line;
};

void CheckRefused(std::initializer_list<Refusal> rows) {
    for (const auto& [block, message, line] : rows)
        EXPECT_EQ(Value(block),
                  std::string("QEException 202 ") + message + " Source/QMMacroExpander:" + std::to_string(line))
            << "#" << block << "#";
}

// The functions that have nothing to say about such an argument.
void CheckAnswersNull(std::initializer_list<const char*> blocks) {
    for (const std::string block : blocks)
        EXPECT_EQ(Value(block), "QEException 202 0x35ddd827(\"" + block.substr(0, block.find('(')) +
                                    "\") Source/QMMacroEvaluator:184")
            << "#" << block << "#";
}

TEST(MacroFunctions, QuoteTexts) {
    Check({{R"(sq("it's"))", "'it''s'"},
           {R"(sq("''"))", "''''''"},
           {R"(sq('a\"é'))", R"('a\"é')"},
           {"sq('')", "''"},
           {"sq()", "''"},
           {"sq('a', 'b')", "''"},
           {"sq(@l, 'b', 'c')", "''"},
           {"show(sq(@l))", "[''b'', ''a'', ''b'']"},
           {"show(sq(array()))", "[]"},
           {"show(sq(odd()))", "[''it''s'', ''a'']"},
           {"dq('')", R"("")"},
           {"dq()", R"("")"},
           {"dq('a', 'b')", R"("")"},
           {R"(dq('a"""b'))", R"("a""""""b")"},
           {R"(dq("it's]"))", R"("it's]")"},
           {"sb('a]b')", "[a]]b]"},
           {"sb(']]')", "[]]]]]"},
           {"sb('[a[')", "[[a[]"},
           {"sb('')", "[]"},
           {"sb()", "[]"},
           {"sb('a', @l, 'c')", "[]"}});
    CheckAnswersNull({"sq(map())", "sq(myfunc())", "dq(@l)", "dq(map())", "dq(myfunc())", "sb(@l)", "sb(map())",
                      "sb(myfunc())", "urlencode(map())", "urlencode(myfunc())"});
}

TEST(MacroFunctions, EncodeForUrls) {
    Check({{"urlencode('a b&c')", "a+b%26c"},
           {"urlencode('é€😀')", "%c3%a9%e2%82%ac%f0%9f%98%80"},
           {"urlencode('')", ""},
           {"urlencode()", "''"},
           {"urlencode('a', 'b')", "''"},
           {"show(urlencode(odd()))", "['it%27s', 'a']"}});
    for (int byte = 0; byte < 128; ++byte) {
        char expected[] = "%00";
        std::snprintf(expected, sizeof expected, std::isalnum(byte) ? "%c" : "%%%02x", byte);
        const bool isOwn = byte && std::strchr(" -._", byte);
        EXPECT_EQ(AQE_UrlEncode(I18NString(static_cast<I18NCodePoint>(byte))),
                  isOwn ? std::string(1, byte == ' ' ? '+' : static_cast<char>(byte)).c_str() : expected);
    }
    constexpr std::pair<const char*, const char*> decoded[] = {
        {"", ""},         {"a+b%26c", "a b&c"}, {"%41", "A"},
        {"%4", "%4"},     {"%", "%"},           {"a%4g%g4", "a%4g%g4"},
        {"%%41+", "%A "}, {"%+41", "% 41"},     {"%C3%a9%2B", "é+"},
        {"é%", "é%"},     {"%c3+", "\uFFFD "}};
    for (const auto& [text, expected] : decoded)
        EXPECT_EQ(AQE_UrlDecode(text), expected) << text;
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        I18NString text;
        for (int i = 0; i < 20; ++i)
            text.append(static_cast<I18NCodePoint>(random() % (i % 2 ? 0x80 : 0x10FFFF)));
        EXPECT_EQ(AQE_UrlDecode(AQE_UrlEncode(text)), text) << "seed " << seed;
    }
}

TEST(MacroFunctions, BuildArrays) {
    Check({{"show(array())", "[]"},
           {"show(array('a', array('b', 'c'), '', 'd'))", "['a', 'b', 'c', '', 'd']"},
           {"show(array(map(), myfunc(), array(), odd(), @l))", "['it's', 'a', 'b', 'a', 'b']"}});
}

TEST(MacroFunctions, JoinAndSplit) {
    Check({{"join(', ', array('a', 'b', ''))", "a, b, "},
           {"join('', @l)", "bab"},
           {"join(',', 'a,b')", "a,b"},
           {"join(',', array())", ""},
           {"join(',', array('', ''))", ","},
           {"join(',', map())", ""},
           {"join(',', myfunc())", ""},
           {"join(',', odd())", ",it's,a"},
           {"show(split(',', 'a,,b'))", "['a', '', 'b']"},
           {"show(split(',', ''))", "['']"},
           {"show(split(',', 'a'))", "['a']"},
           {"show(split(',', ',a,'))", "['', 'a', '']"},
           {"show(split('aa', 'aaabaa'))", "['', 'ab', '']"},
           {"show(split('abc', 'ab'))", "['ab']"},
           {"show(split('', 'ab'))", "['ab']"},
           {"show(split('é', 'aéèéé€'))", "['a', 'è', '', '€']"},
           {"show(split(',', array('a,b', 'c', '')))", "['a', 'b', 'c', '']"},
           {"show(split(\"'\", odd()))", "['it', 's', 'a']"},
           {"show(split(',', map()))", "[]"},
           {"show(split(',', myfunc()))", "[]"}});
    CheckRefused({{"join()", R"(0x35dc6529("join"))", 3511},
                  {"join(',')", R"(0x35dc6529("join"))", 3511},
                  {"join(@l, 'a', 'b')", R"(0x35dc6529("join"))", 3511},
                  {"join(@l, 'a')", R"(0x35d7cf2c("join", "1", "array", "string"))", 3512},
                  {"join(map(), map())", R"(0x35d7cf2c("join", "1", "map", "string"))", 3512},
                  {"split()", R"(0x35dc6529("split"))", 3521},
                  {"split(@l)", R"(0x35dc6529("split"))", 3521},
                  {"split(',', 'a', 'b')", R"(0x35dc6529("split"))", 3521},
                  {"split(myfunc(), 'a')", R"(0x35d7cf2c("split", "1", "unknown", "string"))", 3522}});
}

TEST(MacroFunctions, SortAndUnique) {
    Check({{"show(sort(@l))", "['a', 'b', 'b']"},
           {"show(sort(split(' ', 'é zz  z B a 10 9 \U0001F600 \uFFFD')))",
            "['', '10', '9', 'B', 'a', 'z', 'zz', 'é', '\uFFFD', '\U0001F600']"},
           {"show(sort(odd()))", "['a', 'it's']"},
           {"show(sort(array()))", "[]"},
           {"show(unique(@l))", "['b', 'a']"},
           {"show(unique(split(' ', 'b  A a  b ')))", "['b', '', 'A', 'a']"},
           {"show(unique(odd()))", "['it's', 'a']"},
           {"show(unique(array()))", "[]"}});
    CheckRefused({{"sort()", R"(0x35dc6529("sort"))", 3541},
                  {"sort(@l, @l)", R"(0x35dc6529("sort"))", 3541},
                  {"sort('a')", R"(0x35d7cf2c("sort", "1", "string", "array"))", 3542},
                  {"unique()", R"(0x35dc6529("unique"))", 3551},
                  {"unique(@l, 'a')", R"(0x35dc6529("unique"))", 3551},
                  {"unique(map())", R"(0x35d7cf2c("unique", "1", "map", "array"))", 3552}});
}

TEST(MacroFunctions, WriteSeparatedLists) {
    Check({{R"(csv(array("it's", '')))", "'it''s',''"},
           {R"(csv(array('a', 'b"'), ';', '"'))", R"("a";"b""")"},
           {"csv(@l, '')", "'b''a''b'"},
           {"csv(array('a<>b<', 'aaa'), '|', '<>')", "<>a<><>b<<>|<>aaa<>"},
           {"csv(array('aaa'), ',', 'aa')", "aaaaaaaaa"},
           {"csv(odd())", "'it''s','a'"},
           {"csv(array())", ""},
           {"csv(array('', 'a', '', 'b'), ',', '')", "a,,b"}});
    CheckRefused({{"csv()", R"(0x35d02632("csv", "0", "1"))", 3571},
                  {"csv(@l, ',', '', '')", R"(0x35d21983("csv", "4", "3"))", 3572},
                  {"csv('a', @l)", R"(0x35d7cf2c("csv", "1", "string", "array"))", 3573},
                  {"csv(@l, @l, map())", R"(0x35d7cf2c("csv", "2", "array", "string"))", 3574},
                  {"csv(@l, ',', map())", R"(0x35d7cf2c("csv", "3", "map", "string"))", 3575}});
}

// Each word stands behind + if the pattern keeps it, else behind -; the negated pattern keeps the others.
TEST(MacroPatterns, KeepWhatMatches) {
    constexpr std::pair<const char*, const char*> rows[] = {
        {"", "+ +a +abc"},
        {"^", "+ +a"},
        {"$", "+ +a"},
        {"^$", "+ -a -^$"},
        {"ab", "+ab +xabx +xab -a -aXb -AB -"},
        {"^ab", "+ab +abc +abab -xab -xabab -a -"},
        {"ab$", "+ab +xab +abxab -abx -b -"},
        {"^ab$", "+ab -abab -xab -abx -a -"},
        {R"(a\.b)", "+a.b +xa.bx -axb -ab"},
        {R"(\|\(\)\[\{\^\$\*\+\.\?\!\\)", R"(+|()[{^$*+.?!\ +x|()[{^$*+.?!\y -|()[{^$*+.?! -\|\()"},
        {R"(]}-,;"_)", R"(+a]}-,;"_b -]})"},
        {R"(\]\-\"\€)", R"(+]-"€ -\]\-)"},
        {R"(^\^)", "+^a -a^ -a"},
        {R"(\$$)", "+a$ +$ -$a -a"},
        {R"(^\!)", "+!a -a!"},
        {R"(a\!b)", "+a!b -ab"},
        {"^é", "+éa +é -aé -e\u0301"},
        {"é$", "+aé +éaé -éa -\u0301"},
        {"^é€$", "+é€ -é€€ -éé€"},
    };
    for (const auto& [pattern, words] : rows) {
        std::string all;
        std::string expected[2];
        const std::string marked = std::string(words) + " ";
        for (std::size_t at = 0, end; at < marked.size(); at = end + 1) {
            end = marked.find(' ', at);
            const std::string word = marked.substr(at + 1, end - at - 1);
            all += (at ? " " : "") + word;
            std::string& kept = expected[marked[at] == '-'];
            kept += (kept.empty() ? "'" : ", '") + word + "'";
        }
        const std::string block = "show(grep($p, split(' ', $q)))";
        EXPECT_EQ(Value(block, pattern, all.c_str()), "[" + expected[0] + "]") << pattern;
        EXPECT_EQ(Value(block, ("!" + std::string(pattern)).c_str(), all.c_str()), "[" + expected[1] + "]") << pattern;
    }
    Check({{"show(grep('b', @l))", "['b', 'b']"},
           {"show(grep(\"t'\", odd()))", "['it's']"},
           {"show(grep('!a', odd()))", "['it's']"},
           {"show(grep('', array()))", "[]"}});
}

TEST(MacroPatterns, ReplaceOneMatch) {
    Check({{"substitute('', 'X', 'abc')", "Xabc"},
           {"substitute('$', 'X', 'abc')", "abcX"},
           {"substitute('^', 'X', '')", "X"},
           {"substitute('^$', 'X', 'a')", "a"},
           {"substitute('b', 'X', 'abcabc')", "aXcabc"},
           {"substitute('b', 'bb', 'bb')", "bbb"},
           {"substitute('bc', '', 'abcbc')", "abc"},
           {"substitute('^ab', 'X', 'abab')", "Xab"},
           {"substitute('^b', 'X', 'abb')", "abb"},
           {"substitute('ab$', 'X', 'abxab')", "abxX"},
           {"substitute('^ab$', 'X', 'ab')", "X"},
           {"substitute('^ab$', 'X', 'abab')", "abab"},
           {"substitute('!b', 'X', 'abc')", "aXc"},
           {"substitute('!b', 'X', 'ac')", "ac"},
           {R"(substitute('é', '\1$&^', 'aéè'))", R"(a\1$&^è)"},
           {"substitute('€$', 'è', 'é€€')", "é€è"},
           {"show(substitute('b', 'X', @l))", "['X', 'a', 'X']"},
           {"show(substitute('a', 'X', odd()))", "['it's', 'X']"}});
    CheckAnswersNull({"substitute('a', 'b', map())", "substitute('a', 'b', myfunc())"});
}

TEST(MacroPatterns, RefuseWhatTheyDontKnow) {
    const char* const patterns[] = {
        "!!",   "a!", "a!b", "^!",     "\\!!", "^^",  "a^",  "!a^", "!^^",   "\\^^", "$a",       "$$",   "a$b", "$\\$",
        "!$a",  "\\", "a\\", "\\\\\\", "^\\",  "\\d", "\\Z", "\\0", "a\\9b", "\\é",  "\\\u0663", "|",    "a|b", "(",
        "\\()", "a)", "[",   "[]",     "a{",   "*",   "a*",  "+",   "é+",    ".",    "a.b",      "\\..", "?",   "a?"};
    for (const char* const pattern : patterns)
        for (const std::string block : {"grep($p, 'no array')", "substitute($p, @l, map())"})
            EXPECT_EQ(Value(block, pattern), "QEException 202 0x35d7b2b8(\"" + std::string(pattern) + "\", \"" +
                                                 block.substr(0, block.find('(')) + "\") Source/QMMacroExpander:3601");
    CheckRefused({{"grep()", R"(0x35d02632("grep", "0", "2"))", 3531},
                  {"grep('.')", R"(0x35d02632("grep", "1", "2"))", 3531},
                  {"grep('.', @l, 'a')", R"(0x35d21983("grep", "3", "2"))", 3532},
                  {"grep(@l, 'a')", R"(0x35d7cf2c("grep", "1", "array", "string"))", 3533},
                  {"grep('a', 'a')", R"(0x35d7cf2c("grep", "2", "string", "array"))", 3534},
                  {"substitute('.', 'a')", R"(0x35dc6529("substitute"))", 3561},
                  {"substitute('.', 'a', 'b', 'c')", R"(0x35dc6529("substitute"))", 3561},
                  {"substitute(map(), @l, 'a')", R"(0x35d7cf2c("substitute", "1", "map", "string"))", 3562},
                  {"substitute('a', @l, map())", R"(0x35d7cf2c("substitute", "2", "array", "string"))", 3563}});
}

} // namespace
