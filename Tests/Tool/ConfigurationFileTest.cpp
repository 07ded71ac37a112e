// What the configuration file does to the commands, and how "params" lists the maps in force.
#include "Tool/ToolFixture.h"

namespace {

// The working directory is the installation.
struct ConfigurationFileTest : ToolTest {
    ConfigurationFileTest() {
        std::filesystem::create_directory("bin"), std::filesystem::create_directory("configuration");
        setenv("BRINDLE_HOME", std::filesystem::current_path().c_str(), 1);
    }
    const std::string m_file = std::filesystem::current_path() / "configuration/VKEConfig.xml";
};

TEST_F(ConfigurationFileTest, ItsValuesStandInFrontOfGivenOnesOrBehindThem) {
    Write(m_file, R"(<c><section name="ParameterMaps"><map name="_env" priority="90"><entry name="s" value="strong"/>
</map><map name="_env" priority="-90"><entry name="w" value="weak"/><entry name="v" value="#$w#"/></map>
<map name="m" priority="90"><entry name="k" value="entry"/></map></section></c>)");
    const std::string text = "#$s# #$w# #$v# #$m{'k'}# #csv(@s)#";
    Check({{{"expand", "-p", "s=a", "-m", "m:k=a"}, text, {0, "strong weak weak entry 'a'", ""}},
           {{"expand", "-p", "w=a", "-p", "s=a", "-p", "s=b"}, text, {0, "strong a a entry 'a','b'", ""}}});
}

TEST_F(ConfigurationFileTest, AnIllFormedOneIsShownInPlaceOfAnyResult) {
    Write(m_file, "<c>\r\n  <map name='é'></mép>\n</c>");
    const std::string place = m_file + ":2:19: mismatched tag\n  <map name='é'></mép>\n                  ^\n";
    for (const char* const command : {"expand", "check", "blocks", "document", "params"})
        Check({{{command}, "#1#", {1, "", place}}});
    for (const char* const call : {"--version", "--help", "frob"})
        EXPECT_EQ(RunProcess(Request({call})).errors.find("VKEConfig"), std::string::npos) << call;
}

TEST_F(ConfigurationFileTest, ParamsListsTheMapsByPriorityEachWithItsSource) {
    const auto list = [](const std::vector<std::string>& call) { return RunProcess(Request(call)).output; };
    EXPECT_EQ(list({"params", "--json", "-p", "a=1"}),
              R"([{"priority":90,"map":null,"source":null,"entries":[]},{"priority":0,"map":"_env","source":"-p/-m",)"
              R"("entries":[{"key":"a","values":["1"]}]},{"priority":-90,"map":null,"source":null,"entries":[]}])");
    const std::string strong = "priority 90, map _env, from " + m_file + "\n", given = "priority 0, map ";
    Write(m_file, Read(BRINDLE_TEST_SOURCE_DIR "/Configuration/VKEConfig.xml"));
    EXPECT_EQ(list({"params"}), strong + "priority -90, map _env, from " + m_file + "\n") << "the sample sets nothing";
    Write(m_file, R"(<c><section name="ParameterMaps"><map name="_env" priority="90"><entry name="b"
 value="&quot;&#10;é"/><entry name="a" value=""/></map></section></c>)");
    Write("1.json", R"({"b":"file", "list":["y","z"], "m":{"k":"1"}})");
    EXPECT_EQ(list({"params", "-p", "b=1", "-p", "b=2", "-m", "o:k=#$a#", "--params", "1.json"}),
              strong + "    a = \"\"\n    b = \"\\\"\\né\"\n" + given + "_env, from -p/-m\n    b = [\"1\",\"2\"]\n" +
                  given + "_env, from 1.json\n    list = [\"y\",\"z\"]\n" + given + "m, from 1.json\n    k = \"1\"\n" +
                  given + "o, from -p/-m\n    k = \"#$a#\"\npriority -90, no map, from " + m_file + "\n");
}

} // namespace
