// "check", "blocks", "document" and "name": what they print for texts of all kinds.
#include "Tool/ToolFixture.h"

namespace {

using namespace std::string_literals;

class TextCommandsTest : public ToolTest {};

TEST_F(TextCommandsTest, CheckShowsWhereAndWhat) {
    const auto block = [](const std::string& text, const std::string& place, const std::string& found) {
        return ToolCase{{"check"}, text, {1, "", "-:" + place + ": " + found + " in a macro block\n"}};
    };
    std::vector<ToolCase> cases = {
        block("#$#", "1:3", "unexpected '#'"),
        block("#$1#", "1:3", "unexpected '1'"),
        block("#$a-b#", "1:4", "unexpected '-'"),
        block("#$a b1.\xC3\xA9_ c#", "1:9", "unexpected 'b1.\xC3\xA9_'"),
        block("#'a'1#", "1:5", "unexpected '1'"),
        block("#$[]#", "1:4", "unexpected ']'"),
        block("#$a \"'b\"#", "1:8", "unexpected string"),
        block("#/ #", "1:3", "unexpected control character or blank"),
        block("#", "1:1", "the text ends inside a macro block"),
        block("#$a // c #", "1:10", "the text ends inside a macro block"),
        block("#'a #", "1:5", "the text ends inside a macro block"),
        block("\xE2\x82\xAC #$#", "1:5", "unexpected '#'"),
    };
    for (ToolCase& row : cases) {
        std::string& errors = row.expected.errors;
        const std::size_t end = errors.find("a macro block in a macro block");
        if (end != std::string::npos) errors.replace(end, errors.npos, "a macro block\n");
        const int column = std::stoi(errors.substr(4));
        errors += row.input + "\n" + std::string(static_cast<std::size_t>(column - 1), ' ') + "^\n";
    }
    Check(cases);
}

TEST_F(TextCommandsTest, CheckTellsWhereAnOpenFormBegins) {
    const auto open = [](const std::string& text, const std::string& place, const std::string& what,
                         const std::string& excerpt) {
        return ToolCase{{"check", "-"}, text, {1, "", "-:" + place + ": the " + what + " does not end\n" + excerpt}};
    };
    Check({
        open("it's #$x#", "1:9", "string that begins at 1:3", "it's #$x#\n        ^\n"),
        open("''\r\"\n\" #'x'#\r\n\"\" \"a\"\"\r\n", "4:9", "quoted name that begins at 4:4",
             "\"\" \"a\"\"\n       ^\n"),
        open("#$a#[a]]", "1:8", "bracketed name that begins at 1:5", "#$a#[a]]\n       ^\n"),
        open("-- it's\n??", "2:2", "prompt that begins at 2:1", "??\n ^\n"),
        open("\xC3\xA9/*/", "1:4", "comment that begins at 1:2", "\xC3\xA9/*/\n   ^\n"),
    });
}

TEST_F(TextCommandsTest, CheckClipsLongLinesAroundTheCaret) {
    Write("good.sql", "#$a# -- '");
    Write("long.sql", std::string(70, 'a') + "\t#$\xC3\xA9" + std::string(50, 'b') + " c#" + std::string(50, 'd'));
    Write("bad.sql", "ok\r#$# \x1b[2J\xC2\x9B\xE2\x80\xAE\t|");
    Check({{{"check", "good.sql", "long.sql", "good.sql", "bad.sql"},
            "",
            {1, "",
             "long.sql:1:126: unexpected 'c' in a macro block\n..." + std::string(5, 'a') + "        #$\xC3\xA9" +
                 std::string(50, 'b') + " c#" + std::string(39, 'd') + "...\n" + std::string(70, ' ') +
                 "^\n"
                 "bad.sql:2:3: unexpected '#' in a macro block\n"
                 "#$# \xEF\xBF\xBD[2J\xEF\xBF\xBD\xEF\xBF\xBD      |\n  ^\n"}},
           {{"check", "good.sql"}, "", {0, "", ""}}});
}

TEST_F(TextCommandsTest, BlocksLieAtByteOffsets) {
    const std::string text = "\xC3\xA9#/*c*/$x##'\"\t\xE2\x82\xAC'##$y/*d*/#";
    Check({
        {{"blocks", "--json", "-"},
         "a #$x# b",
         {0, R"([{"start":2,"end":5,"commentStart":null,"commentEnd":null}])", ""}},
        {{"blocks"}, text, {0, "2\t10\t3\t7\n11\t19\t-\t-\n20\t28\t-\t-\n", ""}},
        {{"blocks", "--values", "-p", "x=#$y#", "-p", "y=1"},
         text,
         {0, "2\t10\t3\t7\t\"1\"\n11\t19\t-\t-\t\"\\\"\\t\xE2\x82\xAC\"\n20\t28\t-\t-\t\"1\"\n", ""}},
        {{"blocks", "--json", "--values"},
         "##",
         {0,
          "[{\"start\":0,\"end\":1,\"commentStart\":null,"
          "\"commentEnd\":null,\"value\":\"\"}]",
          ""}},
        {{"blocks", "--json"}, "'#'", {0, "[]", ""}},
        {{"blocks", "--values"}, "#$a##$#", {1, "", "-:1:7: unexpected '#' in a macro block\n#$a##$#\n      ^\n"}},
    });
}

TEST_F(TextCommandsTest, DocumentHoldsTheWholeText) {
    Check({{{"document"},
            "a<\n #/*c*/$m{@k}#",
            {0,
             "<str>a&lt;\n <macro position=\"4\">#<comment position=\"5\">/*c*/</comment>$<mapLookUp>"
             "<parameterMap position=\"11\">m</parameterMap>{@<parameterArray position=\"14\">k</parameterArray>}"
             "</mapLookUp>#</macro></str>",
             ""}},
           {{"document"}, "#$", {1, "", "-:1:2: the text ends inside a macro block\n#$\n ^\n"}}});
}

TEST_F(TextCommandsTest, NameAppliesTheRules) {
    const std::string refused = "brindle: expected an object name such as [a].[b], found '";
    Check({
        {{"name", "physical", "select", "abc", "a b", "1a"}, "", {0, "\"select\"\nabc\n\"a b\"\n\"1a\"\n", ""}},
        {{"name", "physical", "check", "[a,b]", "{}", "", "--", "--x"},
         "",
         {0, "\"check\"\n\"[a,b]\"\n\"{}\"\n\n\"--x\"\n", ""}},
        {{"name", "object", "{}"}, "", {0, "[{}]\n", ""}},
        {{"name", "object", "a", "b]", "c", "d"}, "", {0, "[a].[b]]].[c].[d]\n", ""}},
        {{"name", "split", "[a,b].[c]]]", "[d]."}, "", {0, "a,b\nc]\nd\n\n", ""}},
        {{"name", "split", "[a]", "[b"}, "", {1, "", refused + "[b'\n"}},
        {{"name", "identifier", "1a", "a-b", "\xC3\xA9"}, "", {0, "C_1a\na_b\n\xC3\xA9\n", ""}},
    });
}

} // namespace
