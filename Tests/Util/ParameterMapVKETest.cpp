// The parameter map of the configuration file: which file counts, both ways of reading it, files that are of no use.
#include <iomanip>
#include <sstream>

#include "AQU_ParameterMapVKE.h"

#include "Support/Rows.h"
#include "Util/InstallationFixture.h"

namespace {

struct ParameterMapVKE : InstallationTest {
    // Asked "map key priority", what memory and document answer, with "=" before a value written; then what was logged.
    std::string Ask(const std::string& question) {
        std::string map, key, answers;
        int priority = 0;
        std::istringstream(question) >> map >> std::quoted(key) >> priority;
        for (const bool inMemory : {true, false}) {
            AQU_ParameterMapVKE vke("VKEConfig.xml", 0, priority, inMemory);
            I18NString value("-");
            answers += std::to_string(vke.Get(map.c_str(), key.c_str(), value));
            answers += value == "-" ? " " : "=" + std::string(value.bytes()) + " ";
        }
        return answers + std::exchange(m_log, "");
    }
};

TEST_F(ParameterMapVKE, TheTwoWaysOfReadingDifferInThreePoints) {
    Write(m_file, R"(<section name="ParameterMaps"><map name="root" priority="90"/><a><section name="ParameterMaps">
<map name="_env" priority="90"><entry name="k" value="first"/><a><entry name="k" value="läst"/></a><entry name="empty"/>
<entry value="unnamed"/></map><map name="_env" priority="-90"><entry name="k" value="weak"/></map><a><map name="blank"
 priority=" 90"><entry name="k" value="b"/></map></a><map name="zeros" priority="090"><entry name="k" value="z"/></map>
<map name="text" priority="ninety"><entry name="k" value="t"/></map><map name="twice" priority="90"><entry name="k"
 value="1"/><entry name="gone" value="1"/></map><map name="twice" priority="90"><entry name="k" value="2"/></map>
</section></a><section name="ParameterMaps"/></section>)");
    brindle_test::CheckRows([this](const std::string& question) { return Ask(question); },
                            "_env k 90 -> 1=läst 1=first ", "twice k 90 -> 1=2 1=1 ", "twice gone 90 -> -1 1=1 ",
                            "blank k 90 -> 1=b -2 ", "zeros k 90 -> 1=z -2 ", "text k 0 -> 1=t -2 ",
                            "_env k -90 -> 1=weak 1=weak ", "_env empty 90 -> 1= 1= ", "root k 90 -> -2 -2 ",
                            "_env \"\" 90 -> 1=unnamed 1=unnamed ", "_env empty -90 -> -1 -1 ");
}

TEST_F(ParameterMapVKE, NamesAndEntriesComeFromMemoryAlone) {
    Write(m_file, R"(<c><section name='ParameterMaps'><map name='m' priority='90'><entry name='b' value='2'/><entry
 name='a' value='1'/></map><map name='_env' priority='90'/><map name='n' priority='-90'/></section></c>)");
    for (const bool inMemory : {true, false}) {
        AQU_ParameterMapVKE vke("VKEConfig.xml", -90, 90, inMemory);
        std::vector<I18NString> names{"kept"};
        std::vector<std::pair<I18NString, I18NString>> entries{{"kept", ""}};
        vke.GetMapNames(names), vke.SetDefault("m", "default");
        std::vector<int> results{vke.GetAllEntries("m", entries), vke.GetAllEntries("n", entries),
                                 vke.Get("m", "a", names), vke.GetDefault("m", names[0]), vke.Get("a", names[0])};
        vke.SetPriority(-90); // the document is searched for the priority that the object has now
        results.push_back(vke.Get("n", "a", names[0]));
        EXPECT_EQ(testing::PrintToString(std::tuple(results, names, entries)),
                  inMemory ? "({ 1, -2, 0, -1, -1, -2 }, { kept, _env, m }, { (kept, ), (a, 1), (b, 2) })"
                           : "({ -2, -2, 0, -1, -1, -1 }, { kept }, { (kept, ) })");
    }
}

TEST_F(ParameterMapVKE, OneOfTwoFilesCountsOrNone) {
    const std::string missing = "-4 -4 3QE 0x35dc43d6;3QE 0x35dc43d6;";
    EXPECT_EQ(Ask("_env k 90"), missing);
    Write("bin/VKEConfig.xml", "<c><section name='parameterMaps'/><Section name='ParameterMaps'/></c>");
    EXPECT_EQ(Ask("_env k 90"), "-2 -1 3QE 0x35dba539;");
    Write(m_file, "<c><section name='ParameterMaps'/></c>");
    EXPECT_EQ(Ask("_env k 90"), "-2 -2 ");
    EXPECT_EQ(AQU_ParameterMapVKE::FindFile(I18NString("VKEConfig.xml\0.bak", 18)), "");
    Write(m_file, "");
    EXPECT_EQ(Ask("_env k 90"), missing);
}

} // namespace
