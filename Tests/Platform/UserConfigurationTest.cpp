// The user's settings: what a file's values answer, which files count, overrides, where a file is sought.
#include <thread>

#include <gtest/gtest.h>

#include "Mortise/AUT_I_UserConfiguration.h"

#include "Support/Directory.h"
#include "Support/LogLines.h"

namespace {

struct UserConfiguration : testing::Test, brindle_test::Directory {
    void Use(const std::string& content) const {
        brindle_platform::setUserConfigurationFile(Write("settings.toml", content));
    }
};

int limit() { return AUT_I_UserConfiguration::Create(1)->GetInteger("QueryEngine", "MacroNesting", 5); }

std::string withLimit(int value) { return "[QueryEngine]\nMacroNesting = " + std::to_string(value) + "\n"; }

TEST_F(UserConfiguration, ValuesAnswerByTheirType) {
    Use("\xEF\xBB\xBFmax = 1\n['s t']\n'n.x' = 30000\n\"quo\\\"te\\u0000\" = 'é'\n[s]\n"
        "max = 2147483647\nover = 2147483648\nmin = -2147483648\nunder = -2147483649\n"
        "umax = 4294967295\nuover = 4294967296\nplus = '+12'\nzeros = '-000000000012'\n"
        "t1 = '+-12'\nt2 = '1 '\nt3 = ''\nt4 = '12x'\nt5 = '+'\nt6 = '99999999999999999999'\n"
        "real = 1.5\nyes = true\nlist = [1]\ndate = 2025-11-21\ninner = {n = 1}\nd.e = 4\n");
    const auto answer = [](const I18NString& section, const I18NString& name, int rootKey = 1) {
        const auto settings = AUT_I_UserConfiguration::Create(rootKey);
        return std::to_string(settings->GetInteger(section, name, 7)) + " " +
               std::to_string(settings->GetUnsigned(section, name, 8)) + " " +
               settings->GetString(section, name, "none").c_str();
    };
    std::string answers;
    for (const char* name :
         {"max", "over", "min", "under", "umax", "uover", "plus", "zeros", "t1", "t2", "t3", "t4", "t5", "t6"})
        answers += answer("s", name) + ";";
    EXPECT_EQ(answers, "2147483647 2147483647 2147483647;7 2147483648 2147483648;-2147483648 8 -2147483648;"
                       "7 8 -2147483649;7 4294967295 4294967295;7 8 4294967296;12 12 +12;-12 8 -000000000012;"
                       "7 8 +-12;7 8 1 ;7 8 ;7 8 12x;7 8 +;7 8 99999999999999999999;");
    for (const char* name : {"real", "yes", "list", "date", "inner", "d.e", "Max"})
        EXPECT_EQ(answer("s", name), "7 8 none") << name;
    EXPECT_EQ(answer("S", "max") + answer("", "max") + answer("s", "max", 0), "7 8 none7 8 none7 8 none");
    EXPECT_EQ(answer("s t", "n.x") + answer("s t", "quo\"te"), "30000 30000 300007 8 none");
    EXPECT_EQ(answer("s t", I18NString("quo\"te\0", 7)), "7 8 é");
}

TEST_F(UserConfiguration, AFileCountsAsAWholeOrNotAtAll) {
    brindle_test::LogLines log;
    // `fault` is what follows the file's path in the record, which comes once; empty for no record.
    const auto expect = [&](int expected, const std::string& content, const std::string& fault = "") {
        log.Take();
        Use(content);
        EXPECT_TRUE(limit() == expected && limit() == expected) << content.substr(0, 80);
        const std::string head = "UserConfiguration 3 settings file ignored: " + m_directory + "/settings.toml" + fault;
        EXPECT_EQ(log.m_lines.size(), fault.empty() ? 0u : 1u) << content.substr(0, 80);
        EXPECT_TRUE(fault.empty() || log.m_lines.at(0).starts_with(head)) << log.m_lines[0];
    };
    const std::string good = withLimit(9);
    const std::string filler(1048576 - good.size() - 1, '#');
    std::string keys = "a";
    for (int i = 0; i < 1000; ++i)
        keys += ".a";
    expect(5, good + "x =\n", ":3:4: ");
    expect(5, good + "MacroNesting = 9\n", ":3:");
    for (const char* key : {"=", "é"})
        expect(5, good + "[" + key + "]\n", ":3:2: ");
    expect(9, good + filler + "\n");
    expect(5, good + filler + "#\n");
    expect(9, good + keys + " = 1\n");
    expect(5, good + "t = {x = '\\', " + keys + ".a = 1}\n", ": more than 1000 dots outside of texts");
    expect(5, good + "x = " + std::string(500000, '['), ":3:");
    const std::string dots(1001, '.');
    expect(9, good + "a = \"" + dots + "\\\"" + dots + "\"\nb = '" + dots + "'\nc = \"\"\"\n\"\n" + dots + "\"\"\"\n" +
                  "d = '''\n'\n" + dots + "''' #" + dots + "\n");
    brindle_platform::setUserConfigurationFile("/dev/zero");
    EXPECT_EQ(limit(), 5);
}

TEST_F(UserConfiguration, FileAndOverridesChangeOnRequestOnly) {
    Use(withLimit(1));
    const auto settings = AUT_I_UserConfiguration::Create(1);
    EXPECT_EQ(limit(), 1);
    Write("settings.toml", withLimit(2));
    brindle_platform::overrideOption("QueryEngine", "other", "x");
    EXPECT_EQ(limit(), 1) << "an override doesn't read the file again";
    brindle_platform::reloadUserConfiguration();
    EXPECT_EQ(settings->GetInteger("QueryEngine", "MacroNesting", 5), 2) << "objects follow";
    for (const auto& [value, expected] : {std::pair("10", 10), std::pair("11", 11), std::pair("many", 5)}) {
        brindle_platform::overrideOption("QueryEngine", "MacroNesting", value);
        brindle_platform::reloadUserConfiguration();
        EXPECT_EQ(limit(), expected) << "an override, though unfit, hides the file's value and outlives a reload";
    }
}

TEST_F(UserConfiguration, TheFirstOfThreePlacesCounts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Write("chosen.toml", withLimit(21)), Write("xdg/brindle/settings.toml", withLimit(22));
    Write("home/.config/brindle/settings.toml", withLimit(23));
    const auto find = [this](const char* settings, const char* configuration) {
        ::setenv("BRINDLE_SETTINGS", settings, 1);
        ::setenv("XDG_CONFIG_HOME", configuration, 1);
        ::setenv("HOME", Path("home").c_str(), 1);
        const int found = limit();
        std::filesystem::remove_all(m_directory);
        std::_Exit(found);
    };
    const std::string xdg = m_directory + "/xdg";
    EXPECT_EXIT(find("chosen.toml", xdg.c_str()), testing::ExitedWithCode(21), "");
    EXPECT_EXIT(find("", xdg.c_str()), testing::ExitedWithCode(22), "");
    EXPECT_EXIT(find("", "xdg"), testing::ExitedWithCode(23), "");
    EXPECT_EXIT(find("missing", xdg.c_str()), testing::ExitedWithCode(5), "");
}

TEST_F(UserConfiguration, ReadersNeverSeeAnOlderValueAgain) {
    brindle_platform::overrideOption("QueryEngine", "MacroNesting", "100");
    const auto read = [] {
        for (int last = 100, seen = 0; last < 200; last = seen)
            EXPECT_TRUE((seen = limit()) >= last && seen <= 200) << seen << " behind " << last;
    };
    const std::jthread first(read), second(read);
    for (int value = 100; value <= 200; ++value) {
        brindle_platform::overrideOption("QueryEngine", "MacroNesting", std::to_string(value).c_str());
        if (value % 10 == 0) brindle_platform::reloadUserConfiguration();
    }
}

} // namespace
