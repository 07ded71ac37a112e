// The user's settings: what a file's values answer, which files count, overrides in front of the file, the order of the
// places where a file is sought, readers on several threads.
#include <atomic>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "PlatformHooks.h"

namespace {

class UserConfiguration : public testing::Test {
protected:
    ~UserConfiguration() override {
        brindle_platform::setLogSink(nullptr);
        brindle_platform::clearOverrides();
        brindle_platform::setUserConfigurationFile("");
        std::filesystem::remove_all(m_directory);
    }

    std::string Write(const std::string& content, const std::string& name = "settings.toml") const {
        const std::string path = m_directory + name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    void Use(const std::string& content) const { brindle_platform::setUserConfigurationFile(Write(content).c_str()); }

    const std::string m_directory = testing::TempDir() + "brindle-settings-" + std::to_string(::getpid()) + "/";
};

int limit() { return AUT_I_UserConfiguration::Create(1)->GetInteger("QueryEngine", "MacroNesting", 5); }

std::string withLimit(int value) { return "[QueryEngine]\nMacroNesting = " + std::to_string(value) + "\n"; }

TEST_F(UserConfiguration, ValuesAnswerByTheirType) {
    Use("\xEF\xBB\xBFouter = 1\n['s t']\n'n.x' = 30000\n\"quo\\\"te\\u0000\" = 'é'\n[s]\n"
        "max = 2147483647\nover = 2147483648\nmin = -2147483648\nunder = -2147483649\n"
        "umax = 4294967295\nuover = 4294967296\nplus = '+12'\nzeros = '-0000000000000000000000012'\n"
        "t1 = '+-12'\nt2 = '--12'\nt3 = '1 '\nt4 = ''\nt5 = '12x'\nt6 = '+'\nt7 = '99999999999999999999'\n"
        "real = 1.5\nyes = true\nlist = [1]\ndate = 2025-11-21\ninner = {n = 1}\nd.e = 4\n");
    const auto expect = [](const I18NString& section, const I18NString& name, int number, unsigned natural,
                           const char* text) {
        for (const int rootKey : {1, 0, 2}) {
            const auto settings = AUT_I_UserConfiguration::Create(rootKey);
            const bool isUser = rootKey == 1;
            EXPECT_EQ(settings->GetInteger(section, name, 7), isUser ? number : 7) << name;
            EXPECT_EQ(settings->GetUnsigned(section, name, 8), isUser ? natural : 8u) << name;
            EXPECT_EQ(settings->GetString(section, name, "none"), isUser ? text : "none") << name;
        }
    };
    expect("s", "max", INT_MAX, INT_MAX, "2147483647");
    expect("s", "over", 7, 2147483648u, "2147483648");
    expect("s", "min", INT_MIN, 8, "-2147483648");
    expect("s", "under", 7, 8, "-2147483649");
    expect("s", "umax", 7, UINT_MAX, "4294967295");
    expect("s", "uover", 7, 8, "4294967296");
    expect("s", "plus", 12, 12, "+12");
    expect("s", "zeros", -12, 8, "-0000000000000000000000012");
    int last = 0;
    for (const char* text : {"+-12", "--12", "1 ", "", "12x", "+", "99999999999999999999"})
        expect("s", ("t" + std::to_string(++last)).c_str(), 7, 8, text);
    for (const char* name : {"real", "yes", "list", "date", "inner", "d.e", "Max"})
        expect("s", name, 7, 8, "none");
    expect("S", "max", 7, 8, "none");
    expect("", "outer", 7, 8, "none");
    expect("s t", "n.x", 30000, 30000, "30000");
    expect("s t", I18NString("quo\"te\0", 7), 7, 8, "é");
    expect("s t", "quo\"te", 7, 8, "none");
}

TEST_F(UserConfiguration, AFileCountsAsAWholeOrNotAtAll) {
    std::vector<std::string> records;
    brindle_platform::setLogSink([&records](const brindle_platform::LogRecord& record) {
        EXPECT_EQ(record.level, 3);
        records.emplace_back(record.text.bytes());
    });
    // `fault` is what follows the file's path in the record; empty for no record.
    const auto expect = [&](int expected, const std::string& content, const std::string& fault = "") {
        records.clear();
        Use(content);
        EXPECT_EQ(limit(), expected) << content.substr(0, 80);
        EXPECT_EQ(limit(), expected) << "the record comes once";
        EXPECT_EQ(records.size(), fault.empty() ? 0u : 1u) << content.substr(0, 80);
        const std::string head = "settings file ignored: " + m_directory + "settings.toml" + fault;
        for (const std::string& record : records)
            EXPECT_TRUE(record.starts_with(head)) << record;
    };
    const std::string good = withLimit(9);
    const std::string filler(1048576 - good.size() - 1, '#');
    std::string keys = "a";
    for (int i = 0; i < 1000; ++i)
        keys += ".a";
    expect(9, good);
    expect(5, good + "x =\n", ":3:4: ");
    expect(5, good + "MacroNesting = 9\n", ":3:");
    expect(5, good + "x = '\xFF'\n", ":3:");
    expect(9, good + filler + "\n");
    expect(5, good + filler + "#\n");
    expect(9, good + keys + " = 1\n");
    expect(5, good + "t = {x = '\\', " + keys + ".a = 1}\n", ": more than 1000 dots outside of texts");
    expect(5, good + "x = " + std::string(500000, '['), ":3:");
    const std::string dots(1001, '.');
    expect(9, good + "a = \"" + dots + "\\\"" + dots + "\"\nb = '" + dots + "'\nc = \"\"\"\n\"\n" + dots + "\"\"\"\n" +
                  "d = '''\n'\n" + dots + "''' #" + dots + "\n");
    for (const std::string& other : {m_directory, m_directory + "missing", std::string("/dev/zero")}) {
        brindle_platform::setUserConfigurationFile(other.c_str());
        EXPECT_EQ(limit(), 5) << other;
    }
}

TEST_F(UserConfiguration, FileAndOverridesChangeOnRequestOnly) {
    Use(withLimit(1));
    const auto settings = AUT_I_UserConfiguration::Create(1);
    EXPECT_EQ(limit(), 1);
    Write(withLimit(2));
    brindle_platform::overrideOption("QueryEngine", "other", "x");
    EXPECT_EQ(limit(), 1) << "an override doesn't read the file again";
    brindle_platform::reloadUserConfiguration();
    EXPECT_EQ(settings->GetInteger("QueryEngine", "MacroNesting", 5), 2) << "objects follow";
    brindle_platform::overrideOption("QueryEngine", "MacroNesting", "10");
    brindle_platform::overrideOption("QueryEngine", "MacroNesting", "11");
    brindle_platform::reloadUserConfiguration();
    EXPECT_EQ(limit(), 11) << "an override outlives a reload";
    brindle_platform::overrideOption("QueryEngine", "MacroNesting", "many");
    EXPECT_EQ(limit(), 5) << "an unfit override hides the file's value";
    brindle_platform::clearOverrides();
    EXPECT_EQ(limit(), 2);
}

TEST_F(UserConfiguration, TheFirstOfThreePlacesCounts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Write(withLimit(21), "chosen.toml");
    Write(withLimit(22), "xdg/brindle/settings.toml");
    Write(withLimit(23), "home/.config/brindle/settings.toml");
    const auto find = [this](const char* settings, const std::string& configuration, const std::string& home) {
        std::filesystem::current_path(m_directory);
        ::setenv("BRINDLE_SETTINGS", settings, 1);
        ::setenv("XDG_CONFIG_HOME", configuration.c_str(), 1);
        ::setenv("HOME", home.c_str(), 1);
        const int found = limit();
        std::filesystem::remove_all(m_directory);
        std::_Exit(found);
    };
    EXPECT_EXIT(find("chosen.toml", m_directory + "xdg", m_directory + "home"), testing::ExitedWithCode(21), "");
    EXPECT_EXIT(find("", m_directory + "xdg", m_directory + "home"), testing::ExitedWithCode(22), "");
    EXPECT_EXIT(find("", "xdg", m_directory + "home"), testing::ExitedWithCode(23), "");
    EXPECT_EXIT(find("missing", m_directory + "xdg", m_directory + "home"), testing::ExitedWithCode(5), "");
    EXPECT_EXIT(find("", "", "home"), testing::ExitedWithCode(5), "");
}

TEST_F(UserConfiguration, ReadersNeverSeeAnOlderValueAgain) {
    brindle_platform::overrideOption("QueryEngine", "MacroNesting", "100");
    std::atomic<bool> done{false};
    std::atomic<int> strays{0};
    const auto read = [&] {
        for (int last = 100; !done;) {
            const int seen = limit();
            if (seen < last || seen > 200) ++strays;
            last = seen;
        }
    };
    std::thread first(read);
    std::thread second(read);
    for (int value = 100; value <= 200; ++value) {
        brindle_platform::overrideOption("QueryEngine", "MacroNesting", std::to_string(value).c_str());
        if (value % 10 == 0) brindle_platform::reloadUserConfiguration();
    }
    done = true;
    first.join();
    second.join();
    EXPECT_EQ(strays, 0);
    EXPECT_EQ(limit(), 200);
}

} // namespace
