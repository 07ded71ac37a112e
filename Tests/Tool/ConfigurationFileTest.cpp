// How "params" lists the maps in force, and what a broken configuration file does to the commands.
#include "Tool/ToolFixture.h"

namespace {

// The working directory is the installation.
struct ConfigurationFileTest : ToolTest {
    ConfigurationFileTest() {
        std::filesystem::create_directory("bin"), setenv("BRINDLE_HOME", m_directory.c_str(), 1);
    }
    const std::string m_file = m_directory + "/configuration/VKEConfig.xml";
};

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
    Write(m_file, Bytes(BRINDLE_TEST_SOURCE_DIR "/Configuration/VKEConfig.xml"));
    EXPECT_EQ(list({"params"}), strong + "priority -90, map _env, from " + m_file + "\n") << "the sample sets nothing";
    Write(m_file, R"(<c><section name="ParameterMaps"><map name="_env" priority="90"><entry name="b"
 value="&quot;&#10;é"/><entry name="a" value=""/></map></section></c>)");
    Write("1.json", R"({"b":"file", "list":["y","z"], "c":["4"], "m":{"k":"1"}})");
    Write("2.json", R"({"_env":{"b":"file", "c":["5","6"]}})");
    EXPECT_EQ(list({"params", "-p", "b=1", "--params", "1.json", "-p", "b=2", "-m", "o:k=#$a#", "--params", "2.json"}),
              strong + "    a = \"\"\n    b = \"\\\"\\né\"\n" + given + "_env, from -p/-m\n    b = [\"1\",\"2\"]\n" +
                  given + "_env, from 1.json\n    list = [\"y\",\"z\"]\n" + given +
                  "_env, from 2.json\n    c = [\"5\",\"6\"]\n" + given + "m, from 1.json\n    k = \"1\"\n" + given +
                  "o, from -p/-m\n    k = \"#$a#\"\npriority -90, no map, from " + m_file + "\n");
}

} // namespace
