// "params": the maps in force in their order, what each answers, where it comes from; and that expansion agrees.
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, ParamsListsTheMapsByPriorityEachWithItsSource) {
    const std::string file = std::filesystem::current_path() / "site/configuration/VKEConfig.xml";
    const auto run = [](std::vector<std::string> arguments, const std::string& input = "") {
        ProcessRequest request = Request(std::move(arguments), input);
        request.settings.push_back("BRINDLE_HOME=site");
        const ProcessResult result = RunProcess(request);
        return result.status == 0 ? result.output + result.errors : "refused: " + result.errors;
    };
    const std::string strong = "priority 90, ", given = "priority 0, map ", weak = "priority -90, ",
                      from = "from " + file + "\n";
    std::filesystem::create_directories("site/bin"), std::filesystem::create_directories("site/configuration");
    EXPECT_EQ(run({"params", "-p", "a=1"}), strong + "no map, no file VKEConfig.xml\n" + given +
                                                "_env, from -p/-m\n    a = \"1\"\n" + weak +
                                                "no map, no file VKEConfig.xml\n");
    EXPECT_EQ(run({"params", "--json", "-p", "a=1"}),
              R"([{"priority":90,"map":null,"source":null,"entries":[]},{"priority":0,"map":"_env","source":"-p/-m",)"
              R"("entries":[{"key":"a","values":["1"]}]},{"priority":-90,"map":null,"source":null,"entries":[]}])");
    Write(file, Read(BRINDLE_TEST_SOURCE_DIR "/Configuration/VKEConfig.xml"));
    EXPECT_EQ(run({"params"}), strong + "map _env, " + from + weak + "map _env, " + from) << "the sample sets nothing";

    Write(file,
          "<c><section name='ParameterMaps'><map name='m' priority='-90'><entry name='k' value='weak'/></map><map "
          "name='_env' priority='90'><entry name='b' value='&quot;&#10;é'/><entry name='a' "
          "value=''/></map></section></c>");
    Write("1.json", R"({"b":"file", "c":["x"], "list":["y","z"], "m":{"k":"1"}})");
    Write("2.json", R"({"c":"later"})");
    std::vector<std::string> call = {"params",   "-p",       "b=1",    "-p",       "b=2",   "-m",
                                     "o:k=#$a#", "--params", "1.json", "--params", "2.json"};
    EXPECT_EQ(run(call), strong + "map _env, " + from + "    a = \"\"\n    b = \"\\\"\\né\"\n" + given +
                             "_env, from -p/-m\n    b = [\"1\",\"2\"]\n" + given +
                             "_env, from 1.json\n    list = [\"y\",\"z\"]\n" + given +
                             "_env, from 2.json\n    c = \"later\"\n" + given + "m, from 1.json\n    k = \"1\"\n" +
                             given + "o, from -p/-m\n    k = \"#$a#\"\n" + weak + "map m, " + from +
                             "    k = \"weak\"\n");
    call[0] = "expand"; // a list comes from the command line, whatever the file has
    EXPECT_EQ(run(call, "#$b#|#csv(@b)#|#$m{'k'}#|#$o{'k'}#"), "\"\né|'1','2'|1|");
}

} // namespace
