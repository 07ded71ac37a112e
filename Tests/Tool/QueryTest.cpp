// "brindle query": the three formats to the byte, statements and databases that are refused, the example database.
#include <set>

#include <nlohmann/json.hpp>

#include "Tool/ToolFixture.h"

namespace {

using namespace std::string_literals;

struct QueryTest : ToolTest {
    QueryTest() {
        MakeDatabase("d.db", "create table t(a, b text); insert into t values (1, 'x'), (null, 'it''s'), (-20, 'ÅÉ')");
    }

    static ToolCase Row(const std::string& text, const std::string& output, const std::string& format = "table") {
        return {{"query", "--database", "d.db", "--format", format}, text, {0, output, ""}};
    }
    static ToolCase Refused(const std::string& text, const std::string& errors) {
        return {
            {"query", "--database", "d.db", "-p", "e='é'\nfrom", "-p", "x=1"}, text, {1, "", "-: " + errors + "\n"}};
    }
};

TEST_F(QueryTest, TableAlignsByCharacters) {
    Check({Row("select b as Bé, a from t", "Bé       a\n----  ----\nx        1\nit's  NULL\nÅÉ     -20\n"),
           Row("select 1 as mixed, '' as e, null as n, '' as z union all select 'ab', 'é', null, '' order by 1",
               "mixed  e  n     z\n-----  -  ----  -\n    1     NULL\nab     é  NULL\n"),
           Row("select '' as \"\", 1.0 as r, 0.1 + 0.2, 1e300, -9e999, x'' as b, x'00Ff' as c",
               "    r  0.1 + 0.2   1e300  -9e999  b    c\n"
               "  ---  ---------  ------  ------  ---  -------\n"
               "  1.0        0.3  1e+300    -Inf  x''  x'00ff'\n"),
           Row("select 'a\nb' || char(9, 27, 127, 0, 133, 8238) || cast(x'FF41' as text) as \"\t\" -- ?#$x#?",
               "␉\n-----------\na␊b␉␛␡␀\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
               "A\n")});
}

TEST_F(QueryTest, CsvAndJsonLoseNothing) {
    const std::string all =
        "select 9007199254740993 as i, 0.1 + 0.2 as r, 3.0 as w, 9e999 as f, 'a\nb' as t, null as n, "
        "'' as e, '\",' as \"q\"\"\", x'0aff' as b";
    Check({Row(all,
               "i,r,w,f,t,n,e,\"q\"\"\",b\r\n"
               "9007199254740993,0.30000000000000004,3.0,Inf,\"a\nb\",,\"\",\"\"\",\",x'0aff'\r\n",
               "csv"),
           Row(all,
               R"([{"i":9007199254740993,"r":0.30000000000000004,"w":3.0,"f":"Inf","t":"a\nb","n":null,"e":"",)"
               R"("q\"":"\",","b":"x'0aff'"}])"
               "\n",
               "json"),
           Row("select b from t where a is not null", "[{\"b\":\"x\"},\n{\"b\":\"ÅÉ\"}]\n", "json"),
           Row("select 1 as a, 2 as a, 3 as a_2, 4 as a", "[{\"a\":1,\"a_3\":2,\"a_2\":3,\"a_4\":4}]\n", "json"),
           Row("select 'a\r' as \"\" where 0", "\"\"\r\n", "csv"), Row("begin", "[]\n", "json")});
}

TEST_F(QueryTest, TextIsExpandedAndHoldsOneStatement) {
    Write("q.sql", "; ; select #csv(@v)# as #dq($n)# ; -- ;\n/* ; */;");
    Write("p.json", R"({"v": ["it's"], "n": "\"x\""})");
    Check(
        {{{"query", "q.sql", "--params", "p.json", "--database", "d.db"}, "", {0, "\"x\"\n----\nit's\n", ""}},
         {{"query", "-v", "-p", "v=##", "--database", "d.db", "--format", "csv"},
          "select #csv(@v)# as v",
          {0, "v\r\n##\r\n", "brindle: note: the value of 'v' is itself a macro block\n"}},
         Refused("select 1;\n ;\r\n\tjunk", "in the expanded text at 3:2: expected one statement, found a second one\n"
                                            "        junk\n        ^"),
         Refused(" -- select 1\n;", "the expanded text holds no statement"),
         Refused("select 1\0;"s, "in the expanded text at 1:9: a statement cannot hold the character U+0000\n"
                                 "select 1\xEF\xBF\xBD;\n        ^"),
         {{"query", "--database", "no.db"}, "#$#", {1, "", "-:1:3: unexpected '#' in a macro block\n#$#\n  ^\n"}}});
}

TEST_F(QueryTest, FailuresOfTheStatementHaveOneLineAndTheirPlace) {
    Check({Refused("select #$e# t where c", "in the expanded text at 2:14: no such column: c\n"
                                            "from t where c\n             ^"),
           Refused("selec #$x#", "in the expanded text at 1:1: near \"selec\": syntax error\nselec 1\n^"),
           Refused("select :x, $y", "expected a statement without parameters of its own, found ':x'"),
           Refused("select abs(a) from (select 1 as a union all select -9223372036854775807 - 1)",
                   "the statement failed: integer overflow")});
}

TEST_F(QueryTest, DatabaseIsOnlyRead) {
    const std::string before = Bytes("d.db");
    for (const char* const statement :
         {"delete from t", "create table u(a)", "create temp table u(a)", "vacuum into 'new.db'",
          "pragma user_version = 5", "pragma journal_mode = wal", "insert into t values (1, 2) returning a"})
        Check({Refused(statement, "expected a statement that only reads the database")});
    Check({Refused("attach 'new.db' as n", "the statement failed: unable to open database: new.db")});

    Write("text.db", "this is no database, only some text");
    const auto refused = [&](const std::string& database, const std::string& reason) {
        Check({{{"query", "--database", database},
                "select 1",
                {1, "", database + ": cannot open the database: " + reason + "\n"}}});
    };
    for (const char* const name : {"new.db", "file:d.db", "file:new.db?mode=rwc", ":memory:"})
        refused(name, "No such file or directory");
    refused("text.db", "file is not a database");
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator("."))
        files.insert(entry.path().filename());
    EXPECT_EQ(files, (std::set<std::string>{"d.db", "text.db"}));
    EXPECT_EQ(Bytes("d.db"), before);
}

// The blocks of each query with their values rebuild the text beside it, too.
TEST_F(QueryTest, ExamplesExpandToTheTextsBesideThemAndRun) {
    const std::filesystem::path folder = BRINDLE_TEST_SOURCE_DIR "/Examples/sales";
    MakeDatabase("sales.db", Bytes(folder / "schema.sql") + Bytes(folder / "seed.sql"));
    std::string output;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".json") continue;
        const std::string stem = folder / entry.path().stem(), file = stem + ".sql", parameters = stem + ".json";
        const std::string text = Bytes(file), expected = Bytes(stem + ".expected.sql");
        EXPECT_NE(expected, text) << stem;
        Check({{{"expand", file, "--params", parameters}, "", {0, expected, ""}}});

        const auto blocks = RunProcess(Request({"blocks", "--values", "--json", "--params", parameters, file}));
        std::string rebuilt;
        std::size_t copied = 0;
        for (const auto& block : nlohmann::json::parse(blocks.output)) {
            const auto start = block["start"].get<std::size_t>();
            rebuilt += text.substr(copied, start - copied) + block["value"].get<std::string>();
            copied = block["end"].get<std::size_t>() + 1;
        }
        EXPECT_EQ(rebuilt + text.substr(copied), expected) << stem;

        const auto result =
            RunProcess(Request({"query", file, "--params", parameters, "--database", "sales.db", "--format", "json"}));
        EXPECT_TRUE(result.status == 0 && nlohmann::json::parse(result.output).size() >= 2) << stem << "\n" << result;
        output += result.output, ++count;
    }
    EXPECT_GE(count, 7);
    EXPECT_NE(output.find(R"([{"region":"North","orders":97,"pieces":2955,"revenue in €":20194},)"), output.npos);
}

} // namespace
