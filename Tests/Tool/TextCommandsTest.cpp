// "check", "blocks", "document" and "name": what they print for texts of all kinds.
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, CheckShowsWhereAndWhat) {
    const auto check = [](const std::string& text, std::size_t column, const std::string& message) {
        const std::string excerpt = text + "\n" + std::string(column - 1, ' ') + "^\n";
        Check({{{"check"}, text, {1, "", "-:1:" + std::to_string(column) + ": " + message + "\n" + excerpt}}});
    };
    check("#$a b1.\xC3\xA9_ c#", 9, "unexpected 'b1.\xC3\xA9_' in a macro block");
    check("#$a \"'b\"#", 8, "unexpected string in a macro block");
    check("\xE2\x82\xAC #$#", 5, "unexpected '#' in a macro block");
    const std::string marked = "-:1:4: unexpected '#' in a macro block\n\xEF\xBF\xBD#$#\n   ^\n"; // not without width
    Check({{{"check"}, "\xEF\xBB\xBF#$#", {1, "", marked}}});
}

TEST_F(ToolTest, CheckTellsWhereAnOpenFormBegins) {
    const auto open = [](const std::string& text, const std::string& place, const std::string& what,
                         const std::string& excerpt) {
        return ToolCase{{"check", "-"}, text, {1, "", "-:" + place + ": the " + what + " does not end\n" + excerpt}};
    };
    Check({open("''\r\"\n\" #'x'#\r\n\"\" \"a\"\"\r\n", "4:9", "quoted name that begins at 4:4",
                "\"\" \"a\"\"\n       ^\n"),
           open("#$a#[a]]", "1:8", "bracketed name that begins at 1:5", "#$a#[a]]\n       ^\n"),
           open("\xC3\xA9/*/", "1:4", "comment that begins at 1:2", "\xC3\xA9/*/\n   ^\n")});
}

TEST_F(ToolTest, CheckClipsLongLinesAroundTheCaret) {
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

TEST_F(ToolTest, BlocksLieAtByteOffsets) {
    const std::string text = "\xC3\xA9#/*c*/$x##'\"\t\xE2\x82\xAC'##$y/*d*/#";
    Check({{{"blocks", "--json"}, "a ## b", {0, R"([{"start":2,"end":3,"commentStart":null,"commentEnd":null}])", ""}},
           {{"blocks", "--values", "-p", "x=#$y#", "-p", "y=1"},
            text,
            {0, "2\t10\t3\t7\t\"1\"\n11\t19\t-\t-\t\"\\\"\\t\xE2\x82\xAC\"\n20\t28\t-\t-\t\"1\"\n", ""}},
           {{"blocks", "--values"}, "#$a##$#", {1, "", "-:1:7: unexpected '#' in a macro block\n#$a##$#\n      ^\n"}}});
}

TEST_F(ToolTest, DocumentHoldsTheWholeText) {
    Check({{{"document"},
            "a<\n #/*c*/$m{@k}#",
            {0,
             "<str>a&lt;\n <macro position=\"4\">#<comment position=\"5\">/*c*/</comment>$<mapLookUp>"
             "<parameterMap position=\"11\">m</parameterMap>{@<parameterArray position=\"14\">k</parameterArray>}"
             "</mapLookUp>#</macro></str>",
             ""}},
           {{"document"}, "#$", {1, "", "-:1:2: the text ends inside a macro block\n#$\n ^\n"}}});
}

TEST_F(ToolTest, NameAppliesTheRules) {
    const std::string refused = "brindle: expected an object name such as [a].[b], found '";
    Check({{{"name", "physical", "select", "abc", "a b", "1a"}, "", {0, "\"select\"\nabc\n\"a b\"\n\"1a\"\n", ""}},
           {{"name", "physical", "[a,b]", "{}", "", "--", "--x"}, "", {0, "\"[a,b]\"\n\"{}\"\n\n\"--x\"\n", ""}},
           {{"name", "object", "a", "b]", "c", "d"}, "", {0, "[a].[b]]].[c].[d]\n", ""}},
           {{"name", "split", "[a,b].[c]]]", "[d]."}, "", {0, "a,b\nc]\nd\n\n", ""}},
           {{"name", "split", "[a]", "[b"}, "", {1, "", refused + "[b'\n"}},
           {{"name", "identifier", "1a", "a-b", "\xC3\xA9"}, "", {0, "C_1a\na_b\n\xC3\xA9\n", ""}}});
}

} // namespace
