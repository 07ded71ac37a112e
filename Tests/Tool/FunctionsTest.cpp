// "functions": what it prints of a small catalogue, and what it refuses.
#include <sstream>

#include "Support/Rows.h"
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, FunctionsShowWhatPassesTheFiltersAndWhatIsWrong) {
    const std::string folder = std::filesystem::absolute("home/configuration/functions").string();
    std::filesystem::create_directories(folder);
    Write(folder + "/FileList.xml", "<l><definition>f</definition><description><language>en-us</language>"
                                    "<file>en</file></description></l>");
    Write(folder + "/f", R"(<functionsRoot><group><id>math</id><function><id>abs</id><name>Abs</name><dll>lib</dll>
        <extra>more</extra><vendor>A</vendor><qosLevel><rule><value>limited</value><interface>OR</interface></rule>
        </qosLevel><parameter><type>a</type><type>set</type><optional>true</optional></parameter></function><summary>
        <id>sum</id><vendor>C</vendor></summary><function><id>ln</id><hidden/></function></group></functionsRoot>)");
    Write(folder + "/en", R"(<t><component><section><string id="sum">To&#9;tal</string>
        <string id="abs.tip">Absolute&#10;value</string></section></component></t>)");
    const auto run = [](const std::string& arguments) { // answers the exit status and all that is printed
        std::istringstream words("functions " + arguments);
        ProcessRequest request = Request({std::istream_iterator<std::string>(words), {}});
        request.settings.push_back("BRINDLE_HOME=home");
        const ProcessResult result = RunProcess(request);
        return std::to_string(result.status) + " " + result.output + result.errors;
    };
    brindle_test::CheckRows(
        run, " -> 0 abs\tfunction\tlimited\tAbs\nsum\tsummary\tok\tTo tal\n",
        "list --interface SS --hidden --type function -> 0 ln\tfunction\tok\t\nabs\tfunction\tok\tAbs\n"
        "brindle: note: the catalogue has nothing on the interface 'SS'; known are OR\n",
        "tree --vendor A -> 0 math/\n  abs  Abs\n",
        R"(tree --json --type summary -> 0 [{"id":"math","type":"group","name":null,"level":"ok","folder":null,)"
        R"("depth":0},{"id":"sum","type":"summary","name":"To\ttal","level":"ok","folder":"math","depth":1}])",
        "show abs --property extra -> 0 id\tabs\ntype\tfunction\nname\tAbs\nsyntax\t-\ntip\tAbsolute value\n"
        "canonical\t-\ncanonicalExpression\t-\nreturnType\t-\nformatType\t-\nlibrary\tlib\nlevel\tlimited\n"
        "parameter\t{\"types\":[\"a\",\"set\"],\"optional\":true,\"minOccurs\":0,\"maxOccurs\":1,\"nullable\":false}\n"
        "interfaces\t[\"OR\"]\nchildren\t[]\nproperty extra\tmore\n",
        "--vendor D -> 1 brindle: unknown vendor 'D'; known are A, C\n",
        "--locale EN_gb --interface or --type=literal -> 0 ",
        "show no -> 1 brindle: no function or folder has the id 'no'\n",
        "show -> 2 brindle: ID: show needs one ID, list and tree take none; see 'brindle functions --help'\n",
        "--locale fr_FR --type=format -> 0 brindle: note: no texts in the locale 'fr_FR'; "
        "shown are those in 'en-us'\n");
    EXPECT_NE(run("show math --json").find(R"(,"interfaces":["OR"],"children":["abs","sum"],)"), std::string::npos);
    Write(folder + "/f", "<r>\n<\xC3\xA9></r>");
    EXPECT_EQ(run(""), "1 " + folder + "/f:2:6: mismatched tag\n<\xC3\xA9></r>\n     ^\n");
    Write(folder + "/f", "<r/>");
    EXPECT_EQ(run(""), "0 brindle: note: the function catalogue in '" + folder + "' is empty\n");
}

} // namespace
