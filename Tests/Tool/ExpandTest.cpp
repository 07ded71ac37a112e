// "brindle expand": values from the command line and from files, the report, and what is refused.
#include "Tool/ToolFixture.h"

namespace {

using namespace std::string_literals;

class ExpandTest : public ToolTest {};

TEST_F(ExpandTest, OutputIsTheTextWithItsBlocksReplaced) {
    Write("p.json", R"({"k": "one", "a b": "2", "m": {"one": "1"}})");
    Write("-x.sql", "#$a#\r\n");
    Check({
        {{"expand", "-p", "a=x"}, "select #$a# and '#$a#' -- #$a#", {0, "select x and '#$a#' -- #$a#", ""}},
        {{"expand", "--params", "p.json", "-"}, "#$m{$k}+$[a b]#", {0, "12", ""}},
        {{"expand", "-p", "a=#$b#", "-pb=deep"}, "#$a#", {0, "deep", ""}},
        {{"expand", "-p", "a==y=", "-m", "m:k:1=v=w"}, "#$a#,#$m{'k:1'}#", {0, "=y=,v=w", ""}},
        {{"expand", "-p", "[a]=[b,c]", "-m", "{}:+={}"}, "#$[[a]]]##$[{}]{'+'}#", {0, "[b,c]{}", ""}},
        {{"expand", "-p", "a=x", "--", "-x.sql"}, "", {0, "x\r\n", ""}},
        {{"expand"}, "", {0, "", ""}},
        {{"expand", "-p", "a=\xFF"},
         "\xEF\xBB\xBF\xC3#$a#\0\r\xED\xA0\x80"s,
         {0, "\xEF\xBB\xBF\xEF\xBF\xBD\xEF\xBF\xBD\0\r\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"s, ""}},
        {{"expand", "-v", "-p", "a= #$b# ", "-p", "b=#", "-m", "m:k=##"},
         "#$a#",
         {0, " # ",
          "brindle: note: the value of 'a' is itself a macro block\n"
          "brindle: note: the value of 'm{k}' is itself a macro block\n"}},
    });
}

TEST_F(ExpandTest, StrongerSourcesReplaceTheValuesOfAName) {
    Write("1.json", R"({"a": ["1", "2"], "b": ["3"], "c": "4", "m": {"a": "5"}, "d": []})");
    Write("2.json", R"({"_env": {"b": ["6", "7"]}, "m": {"b": "8"}})");
    Check({{{"expand", "-p", "a=x", "--params", "1.json", "-p", "a=y", "--params", "2.json", "--report", "r"},
            "#@a##@b##@c##@d##$a#,#$m{'a'+''}#,#$m{'b'}#",
            {0, "array_tbdarray_tbdarray_tbdarray_tbdy,5,8", ""}}});
    const auto list = [](const std::string& name, const std::string& values) {
        return "<ParameterLookupArray><name>" + name + "</name>" + values + "</ParameterLookupArray>";
    };
    EXPECT_NE(Read("r").find(list("a", "<value>x</value><value>y</value>") +
                             list("b", "<value>6</value><value>7</value>") + list("c", "<value>4</value>") +
                             list("d", "")),
              std::string::npos)
        << Read("r");
    EXPECT_EQ(Read("r").substr(0, 28), "<ExecutionReport><Expanding ");
}

TEST_F(ExpandTest, FailuresNameTheirPlace) {
    Write("q.sql", "a\nb #f()#");
    const std::string inB = "-: in the value of 'b' at 1:5: unexpected 'b' in a macro block\n#'a'b#\n    ^\n";
    Check({
        {{"expand", "-p", "a=#$a#"},
         "#$a#",
         {1, "", "-: macro values that are macros again are nested beyond the limit of 5\n"}},
        {{"expand", "q.sql"}, "", {1, "", "q.sql: the macro function 'f' is not known\n"}},
        {{"expand"},
         "#" + std::string(1 << 20, 'f') + "()#",
         {1, "", "-: the macro function '" + std::string(380, 'f') + "...\n"}},
        {{"expand", "-p", "a=#$b#", "-p", "b=#'a'b#", "-m", "A:b=#'a'c#"}, "#$a#", {1, "", inB}},
        {{"expand", "--report", "r"},
         "x\r\n\t#$a 'b'# z",
         {1, "",
          "-:2:8: unexpected string in a macro block\n"
          "        #$a 'b'# z\n              ^\n"}},
    });
    EXPECT_FALSE(std::filesystem::exists("r"));
}

TEST_F(ExpandTest, ParameterFilesOfAnotherFormAreRefused) {
    const auto at = [](const std::string& content, const std::string& message) {
        Write("p.json", content);
        Check({{{"expand", "--params", "p.json"}, "x", {1, "", "p.json" + message + "\n"}}});
    };
    const std::string top = ": expected a text, a list of texts or an object at '/a', found ";
    at(R"({"a": 5})", top + "the number 5");
    at(R"({"a": -1.50})", top + "the number -1.50");
    at(R"({"a": null})", top + "null");
    at(R"({"m": {"b/~c": true}})", ": expected a text or a list of texts at '/m/b~1~0c', found true");
    at(R"({"m": {"k": {}}})", ": expected a text or a list of texts at '/m/k', found an object");
    at(R"({"a": ["x", 1]})", ": expected a text at '/a/1', found the number 1");
    at(R"({"a": ["x", {}]})", ": expected a text at '/a/1', found an object");
    at(R"({"a": [["x"]]})", ": expected a text at '/a/0', found a list");
    at("[" + std::string(100000, '['), ": expected an object, found a list");
    at(R"("x")", ": expected an object, found a text");
    at(R"({"a": "x", "_env": {"a": "y"}})", ": the value at '/_env/a' is given twice");
    at("", ":1:1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal");
    at("{\"\xC3\xA9\": \"\",\n\t\"b\" \"c\"}",
       ":2:8: syntax error while parsing object separator - unexpected string literal; "
       "expected ':'\n        \"b\" \"c\"}\n              ^");
    at(R"({"a": 1e999})", ":1:11: number overflow parsing '1e999'\n{\"a\": 1e999}\n          ^");
}

} // namespace
