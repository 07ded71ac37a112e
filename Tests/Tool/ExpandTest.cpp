// "brindle expand": values from the command line and from files, the report, and what is refused.
#include "Tool/ToolFixture.h"

namespace {

using namespace std::string_literals;

TEST_F(ToolTest, OutputIsTheTextWithItsBlocksReplaced) {
    Write("p.json", R"({"k": "one", "a b": "2", "m": {"one": "1"}})");
    Write("-x.sql", "#$a#\r\n"), Write("x.sql", "");
    Check({{{"expand", "--params", "p.json", "-", "--report", "r"}, "#$m{$k}+$[a b]#", {0, "12", ""}},
           {{"expand", "-p", "a==y=", "-m", "m:k:1=v=w"}, "#$a#,#$m{'k:1'}#", {0, "=y=,v=w", ""}},
           {{"expand", "x.sql", "--report", "./x.sql"},
            "",
            {1, "", "./x.sql: expected another file than the one that is read\n"}},
           {{"expand", "-p", "--a="}, "#$[--a]#.", {0, ".", ""}},
           {{"expand", "-p", "[a]=[b,c]", "-m", "{}:+={}"}, "#$[[a]]]##$[{}]{'+'}#", {0, "[b,c]{}", ""}},
           {{"expand", "-p", "a=x", "--", "-x.sql"}, "", {0, "x\r\n", ""}},
           {{"expand", "-p", "a=\xFF"},
            "\xEF\xBB\xBF\xC3#$a#\0\r\xED\xA0\x80"s,
            {0, "\xEF\xBB\xBF\xEF\xBF\xBD\xEF\xBF\xBD\0\r\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"s, ""}},
           {{"expand", "-v", "-p", "a= #$b# ", "-p", "b=#", "-m", "m:k=##"},
            "#$a#",
            {0, " # ",
             "brindle: note: the value of 'a' is itself a macro block\n"
             "brindle: note: the value of 'm{k}' is itself a macro block\n"}}});
    EXPECT_NE(Bytes("r").find("<result expandedString=\"12\"/></Expanding></ExecutionReport>"), std::string::npos);
    std::filesystem::remove("r");
}

TEST_F(ToolTest, FailuresNameTheirPlace) {
    const std::string inB = "-: in the value of 'b' at 1:5: unexpected 'b' in a macro block\n#'a'b#\n    ^\n";
    Check({{{"expand"},
            "#" + std::string(1 << 20, 'f') + "()#",
            {1, "", "-: the macro function '" + std::string(380, 'f') + "...\n"}},
           {{"expand", "-p", "a=#$b#", "-p", "b=#'a'b#", "-m", "A:b=#'a'c#"}, "#$a#", {1, "", inB}},
           {{"expand", "--report", "r"},
            "x\r\n\t#$a 'b'# z",
            {1, "",
             "-:2:8: unexpected string in a macro block\n"
             "        #$a 'b'# z\n              ^\n"}}});
    EXPECT_FALSE(std::filesystem::exists("r"));
}

TEST_F(ToolTest, ParameterFilesOfAnotherFormAreRefused) {
    const auto at = [this](const std::string& content, const std::string& message) {
        Write("p.json", content);
        Check({{{"expand", "--params", "p.json"}, "x", {1, "", "p.json" + message + "\n"}}});
    };
    at(R"({"a": -1.50})", ": expected a text, a list of texts or an object at '/a', found the number -1.50");
    at(R"({"m": {"b/~c": true}})", ": expected a text or a list of texts at '/m/b~1~0c', found true");
    at("[" + std::string(100000, '['), ": expected an object, found a list");
    at(R"({"a": "x", "_env": {"a": "y"}})", ": the value at '/_env/a' is given twice");
    at("{\"\xC3\xA9\": \"\",\n\t\"b\" \"c\"}",
       ":2:8: syntax error while parsing object separator - unexpected string literal; "
       "expected ':'\n        \"b\" \"c\"}\n              ^");
}

} // namespace
