// How a number and its parameters become a sentence: place holders, catalogue files, their order by locale, what stands
// in for a missing text, the directory that the files are sought beside, and the catalogues that ship.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Mortise/AUT_Resource.h"
#include "PlatformHooks.h"
#include "ZBLCore/ZBLMessage.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned long kMaxNumber = std::numeric_limits<unsigned long>::max();

// An installation of its own in a temporary directory, in force as long as the object lives.
class Installation {
public:
    Installation() {
        std::string pattern = (fs::temp_directory_path() / "brindle-message-XXXXXX").string();
        m_root = ::mkdtemp(pattern.data());
        fs::create_directories(m_root / "configuration/messages");
        brindle_platform::setProgramDirectory(I18NString((m_root / "bin").c_str()));
    }
    ~Installation() {
        brindle_platform::setProgramDirectory(I18NString());
        fs::remove_all(m_root);
    }

    const fs::path& root() const { return m_root; }
    fs::path path(const std::string& name) const { return m_root / "configuration/messages" / name; }
    void write(const std::string& name, const std::string& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
    }

private:
    fs::path m_root;
};

std::string formatted(const std::string& file, unsigned long number, const std::vector<ZBLMessageParm>& parameters = {},
                      const char* locale = "en-us") {
    ZBLMessage message(file.c_str(), number);
    for (const ZBLMessageParm& parameter : parameters)
        message << parameter;
    return std::string(message.format(locale).bytes());
}

TEST(Message, Parameters) {
    const Installation installation;
    std::vector<ZBLMessageParm> many;
    for (const char letter : std::string("123456789abcdefgh"))
        many.emplace_back(I18NString(&letter, 1));
    std::string left;
    for (int number = 2; number <= 33; ++number)
        left += " [p]";
    const struct {
        const char* text;
        std::vector<ZBLMessageParm> parameters;
        std::string expected;
    } rows[] = {
        {"%2 before %1, %1 again", {"a", "b"}, "b before a, a again"},
        {"no place", {"a", "", 3}, "no place [a] [] [3]"},
        {"%3 stays", {"a"}, "%3 stays [a]"},
        {"%1%2", {"%2%1", "x"}, "%2%1x"},
        {"%16|%15|%1", many, "g|f|1 [2] [3] [4] [5] [6] [7] [8] [9] [a] [b] [c] [d] [e] [h]"},
        {"%1", std::vector<ZBLMessageParm>(33, "p"), "p" + left},
        {"%17 %160", {"a"}, "a7 %160"},
        {"%0 %01 % %%1 100%", {"a"}, "%0 %01 % %a 100%"},
        {"\xC3\xA4%1\xE2\x82\xAC%2\xF0\x9F\x98\x80",
         {"\xC3\xB6", "%"},
         "\xC3\xA4\xC3\xB6\xE2\x82\xAC%\xF0\x9F\x98\x80"},
        {"%1 %2 %3", {-5, 7U, std::numeric_limits<long>::min()}, "-5 7 -9223372036854775808"},
        {"%1 %2", {kMaxNumber, static_cast<const char*>(nullptr)}, "18446744073709551615 "},
        {"%1 %2 %3 %4", {1e300, -1.0 / 3, 0.1, 123456789012345.0}, "1e+300 -0.333333333333333 0.1 123456789012345"},
        {"<%1>", {I18NString("a\0b", 3)}, std::string("<a\0b>", 5)},
        {"<%1>", {std::string(1 << 20, '%').c_str()}, "<" + std::string(1 << 20, '%') + ">"},
    };
    std::string catalogue;
    for (const auto& row : rows)
        catalogue += std::to_string(&row - rows) + "\t" + row.text + "\n";
    installation.write("rows_en.txt", catalogue);
    for (const auto& row : rows) {
        const std::string text = formatted("rows", static_cast<unsigned long>(&row - rows), row.parameters);
        EXPECT_TRUE(text == row.expected) << row.text << " gave " << text.substr(0, 200);
    }
    EXPECT_EQ(formatted("qemsgs", 0x35DF687A, {4, "#$#"}), "qemsgs 0x35df687a (4, \"#$#\")");
}

TEST(Message, LinesOfACatalogue) {
    const Installation installation;
    installation.write("lines_en.txt", "\xEF\xBB\xBF"
                                       "1\tfirst line\r\n# 2\tcomment\n\n0x3\ta\\tb\\nc\\\\nd\\q\\\r\n4\tearlier\n"
                                       " 5\tblank\n-5\tsign\n5x\trest\n0x\tnone\n\tempty\n5 no tab\n"
                                       "18446744073709551616\ttoo great\n0XfFfFfFfFfFfFfFfF\tgreatest\n"
                                       "4\tlater\n7\t\n8\tb\xFF\n9\tlast line");
    const std::pair<unsigned long, const char*> rows[] = {
        {1, "first line"}, {2, "lines 0x2"}, {3, "a\tb\nc\\nd\\q\\"}, {4, "later"},     {5, "lines 0x5"},
        {7, ""},           {0, "lines 0x0"}, {8, "b\xEF\xBF\xBD"},    {9, "last line"}, {kMaxNumber, "greatest"},
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(formatted("lines", number), expected) << number;
}

TEST(Message, LocaleThenLanguageThenEnglish) {
    const Installation installation;
    installation.write("loc_en.txt", "1\ten\n2\ten\n3\ten\n");
    installation.write("loc_de.txt", "1\tde\n2\tde\n");
    installation.write("loc_de-at.txt", "1\tde-at\n");
    installation.write("only_fr.txt", "1\tfr\n");
    installation.write("x_en.txt", "1\toutside\n");
    fs::create_directories(installation.path("loc_pt.txt"));
    fs::create_directories(installation.path("loc_.."));
    const struct {
        const char* locale;
        unsigned long number;
        const char* expected;
    } rows[] = {
        {"de-at", 1, "de-at"}, {"de-at", 2, "de"}, {"de-at", 3, "en"}, {"de-at", 4, "loc 0x4"}, {"de_CH", 2, "de"},
        {"sv", 1, "en"},       {"", 1, "en"},      {"pt", 1, "en"},    {"/../x_en", 1, "en"},   {"-", 1, "en"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(formatted("loc", row.number, {}, row.locale), row.expected) << row.locale << ' ' << row.number;
    }
    EXPECT_EQ(formatted("only", 1, {}, "fr-ca"), "fr");

    I18NString path("left over");
    I18NString text;
    EXPECT_TRUE(AUT_ResourceLoadString("loc", path, 3, text));
    EXPECT_EQ(path, installation.path("loc_en.txt").c_str());
    EXPECT_FALSE(AUT_ResourceLoadString("loc", path, 4, text));
    EXPECT_EQ(path, installation.path("loc_en.txt").c_str());
    EXPECT_FALSE(AUT_ResourceLoadString("only", path, 1, text));
    EXPECT_EQ(path, "");
}

TEST(Message, NamesThatAreNoFileNamesOpenNothing) {
    const Installation installation;
    const std::string longest(64, 'a');
    installation.write(longest + "_en.txt", "1\tlongest\n");
    EXPECT_EQ(formatted(longest, 1), "longest");
    for (const std::string& name : {std::string("../outside"), longest + "a", std::string("a.b"), std::string()}) {
        installation.write(name + "_en.txt", "1\topened\n");
        EXPECT_EQ(formatted(name, 1), name + " 0x1");
    }
    installation.write("huge_en.txt", "1\thuge\n" + std::string(std::size_t{16} << 20, '\n'));
    EXPECT_EQ(formatted("huge", 1), "huge 0x1");
}

TEST(Message, KnownFileBehindManyUnknownOnes) {
    const Installation installation;
    for (int number = 0; number < 300; ++number)
        formatted("none" + std::to_string(number), 1);
    installation.write("late_en.txt", "1\tfound\n");
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([] { ASSERT_EQ(formatted("late", 1), "found"); });
    }
    for (std::thread& thread : threads)
        thread.join();
}

std::string placeFor(std::string_view directory) {
    brindle_platform::setProgramDirectory(I18NString(directory));
    return formatted("place", 1);
}

TEST(ProgramDirectory, HookThenEnvironment) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the statement runs in a process that has read nothing yet
    const Installation installation;
    installation.write("place_en.txt", "1\thome\n");
    const auto check = [&] {
        ::setenv("BRINDLE_HOME", installation.root().c_str(), 1);
        const bool first = placeFor("") == "home";
        ::setenv("BRINDLE_HOME", "/", 1);
        const bool readOnce = placeFor("") == "home";
        const bool hook = placeFor("/none") == "place 0x1";
        fs::remove_all(installation.root());
        std::_Exit(first && readOnce && hook ? 0 : 1);
    };
    EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
}

TEST(ProgramDirectory, PathsAreResolvedInTheText) {
    using namespace std::string_literals;
    const Installation installation;
    installation.write("place_en.txt", "1\tit\n");
    const std::string base = installation.root().string();
    const fs::path before = fs::current_path();
    fs::current_path(base);
    const std::pair<std::string, const char*> rows[] = {
        {base + "/bin", "it"},
        {base + "//none/./../bin//", "it"},
        {"./bin/", "it"},
        {"../" + installation.root().filename().string() + "/x", "it"},
        {"/../../..", "place 0x1"},
        {base, "place 0x1"},
        {base + "/configuration/messages/place_en.txt\0/bin"s, "place 0x1"},
        {"bin", "it"},
    };
    for (const auto& [directory, expected] : rows)
        EXPECT_EQ(placeFor(directory), expected) << directory;
    fs::current_path(before); // what was set stays where it was
    EXPECT_EQ(formatted("place", 1), "it");
}

// Each number with as many parameters as the library gives it: nothing may be left over, and no place be left open.
TEST(ShippedMessages, ParametersFitTheTexts) {
    const struct {
        const char* file;
        unsigned long number;
        int parameterCount;
    } rows[] = {
        {"qemsgs", 0x35D3FE99, 1}, {"qemsgs", 0x35DF687A, 2}, {"qemsgs", 0x35D924F0, 3}, {"qemsgs", 0x35DED7D3, 0},
        {"qemsgs", 0x35D8E2D6, 0}, {"qemsgs", 0x35DA12BE, 1}, {"qemsgs", 0x35D5E2F1, 1}, {"qemsgs", 0x35D64EE1, 1},
        {"qemsgs", 0x35DDD82C, 1}, {"qemsgs", 0x35DDD827, 1}, {"qemsgs", 0x35DC6529, 0}, {"qemsgs", 902833714, 3},
        {"qemsgs", 902961539, 3},  {"qemsgs", 903335724, 4},  {"qemsgs", 903328440, 2},  {"qemsgs", 902933051, 1},
        {"qemsgs", 903867903, 2},  {"qemsgs", 903218748, 1},  {"qemsgs", 903316479, 1},  {"qemsgs", 903119692, 1},
        {"QE", 903627734, 0},      {"QE", 903587129, 0},      {"QE", 903693797, 2},      {"QE", 903858276, 4},
        {"QE", 903020510, 2},      {"QE", 902875986, 6},      {"QE", 903557887, 3},      {"QE", 902929403, 6},
        {"QE", 903768823, 3},      {"QE", 903416620, 1},      {"QE", 902971622, 1},
    };
    for (const auto& row : rows) {
        const std::vector<ZBLMessageParm> parameters(static_cast<std::size_t>(row.parameterCount), "p");
        const std::string text = formatted(row.file, row.number, parameters);
        EXPECT_EQ(text.find_first_of("[%"), std::string::npos) << text;
        EXPECT_FALSE(text.starts_with(row.file) || text.ends_with('.')) << text;
    }
}

TEST(ShippedMessages, Sentences) {
    EXPECT_EQ(formatted("qemsgs", 0x35DF687A, {4, "#$#"}),
              "the text is faulty just before character 4, at the end of '#$#'");
    EXPECT_EQ(
        formatted("qemsgs", 0x35D924F0, {50L, 40L, "tail"}),
        "the text is faulty just before character 50, at the end of 'tail' (its first 40 characters are left out)");
    EXPECT_EQ(formatted("qemsgs", 903636265, {"join"}),
              "the arguments are not of the number or type that the operation takes [join]");
}

} // namespace
