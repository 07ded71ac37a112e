// How a number and its parameters become a sentence: place holders, catalogue files and where and in which order they
// are sought, and the catalogues that ship.
#include <limits>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

#include "ZBLCore/ZBLMessage.h"

#include "Support/Directory.h"

namespace {

using namespace std::string_literals;

constexpr unsigned long kMaxNumber = std::numeric_limits<unsigned long>::max();

// An installation of its own.
struct Message : testing::Test, brindle_test::Directory {
    Message() { brindle_platform::setProgramDirectory(Path("bin")); }
    void write(const std::string& name, const std::string& content) const {
        Write("configuration/messages/" + name + ".txt", content);
    }
};

std::string formatted(const std::string& file, unsigned long number, const std::vector<ZBLMessageParm>& parameters = {},
                      const char* locale = "en-us") {
    ZBLMessage message(file.c_str(), number);
    for (const ZBLMessageParm& parameter : parameters)
        message << parameter;
    return std::string(message.format(locale).bytes());
}

TEST_F(Message, Parameters) {
    std::vector<ZBLMessageParm> many;
    for (const char letter : std::string("123456789abcdefgh"))
        many.emplace_back(I18NString(&letter, 1));
    const std::tuple<const char*, std::vector<ZBLMessageParm>, std::string> rows[] = {
        {"%2 before %1, %1 again", {"a", "b"}, "b before a, a again"},
        {"%3 stays", {"a", "", 3, 4}, "3 stays [a] [] [4]"},
        {"%1%2", {"%2%1", "x"}, "%2%1x"},
        {"%16|%15|%1", many, "g|f|1 [2] [3] [4] [5] [6] [7] [8] [9] [a] [b] [c] [d] [e] [h]"},
        {"%0 %01 % %%1 %17 %160 %2 100%", {"a"}, "%0 %01 % %a a7 %160 %2 100%"},
        {"\u00E4%1\u20AC%2\U0001F600", {"\u00F6", "%"}, "\u00E4\u00F6\u20AC%\U0001F600"},
        {"%1 %2", {std::numeric_limits<long>::min(), kMaxNumber}, "-9223372036854775808 18446744073709551615"},
        {"%1 %2 %3 %4", {1e300, -1.0 / 3, 0.1, 123456789012345.0}, "1e+300 -0.333333333333333 0.1 123456789012345"},
        {"<%1%2>", {I18NString("a\0b", 3), static_cast<const char*>(nullptr)}, std::string("<a\0b>", 5)},
        {"<%1>", {std::string(1 << 20, '%').c_str()}, "<" + std::string(1 << 20, '%') + ">"}};
    for (const auto& row : rows) {
        const auto& [pattern, parameters, expected] = row;
        const std::string file = "file" + std::to_string(&row - rows);
        write(file + "_en", std::string("1\t") + pattern);
        const std::string text = formatted(file, 1, parameters);
        EXPECT_TRUE(text == expected) << pattern << " gave " << text.substr(0, 200);
    }
    EXPECT_EQ(formatted("qemsgs", 0x35DF687A, {4, "#$#"}), "qemsgs 0x35df687a (4, \"#$#\")");
}

TEST_F(Message, LinesOfACatalogue) {
    write("lines_en", "\xEF\xBB\xBF"
                      "1\tfirst line\r\n# 2\tcomment\n\n0x3\ta\\tb\\nc\\\\nd\\q\\\r\n4\tearlier\n"
                      " 5\tblank\n-5\tsign\n5x\trest\n0x\tnone\n\tempty\n5 no tab\n"
                      "18446744073709551616\ttoo great\n0XfFfFfFfFfFfFfFfF\tgreatest\n"
                      "4\tlater\n7\t\n8\tb\xFF\n9\tlast line");
    const std::pair<unsigned long, const char*> rows[] = {
        {1, "first line"}, {2, "lines 0x2"}, {3, "a\tb\nc\\nd\\q\\"}, {4, "later"},     {5, "lines 0x5"},
        {7, ""},           {0, "lines 0x0"}, {8, "b\xEF\xBF\xBD"},    {9, "last line"}, {kMaxNumber, "greatest"}};
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(formatted("lines", number), expected) << number;
}

TEST_F(Message, LocaleThenLanguageThenEnglish) {
    for (const auto& [name, content] : {std::pair("loc_en", "1\ten\n2\ten\n3\ten\n"),
                                        {"loc_de", "1\tde\n2\tde\n"},
                                        {"loc_de-at", "1\tde-at\n"},
                                        {"only_fr", "1\tfr\n"},
                                        {"x_en", "1\toutside\n"},
                                        {"loc_pt.txt/", "a directory"},
                                        {"loc_../", "a directory"}})
        write(name, content);
    const std::tuple<const char*, unsigned long, const char*> rows[] = {
        {"de-at", 1, "de-at"}, {"de-at", 2, "de"}, {"de-at", 3, "en"}, {"de-at", 4, "loc 0x4"}, {"de_CH", 2, "de"},
        {"sv", 1, "en"},       {"", 1, "en"},      {"pt", 1, "en"},    {"/../x_en", 1, "en"},   {"-", 1, "en"}};
    for (const auto& [locale, number, expected] : rows)
        EXPECT_EQ(formatted("loc", number, {}, locale), expected) << locale << ' ' << number;
    EXPECT_EQ(formatted("only", 1, {}, "fr-ca"), "fr");
}

TEST_F(Message, FilesThatAreNotReadAndOneBehindThem) {
    const std::string longest(64, 'a');
    write("huge_en", "1\thuge\n" + std::string(std::size_t{16} << 20, '\n'));
    EXPECT_EQ(formatted("huge", 1), "huge 0x1");
    for (const std::string& name : {std::string("../outside"), longest + "a", std::string("a.b"), std::string()}) {
        write(name + "_en", "1\topened\n");
        EXPECT_EQ(formatted(name, 1), name + " 0x1");
    }
    for (int number = 0; number < 300; ++number)
        formatted("none" + std::to_string(number), 1);
    write(longest + "_en", "1\tfound\n");
    const auto check = [&longest] { EXPECT_EQ(formatted(longest, 1), "found"); };
    const std::jthread other(check);
    check();
}

std::string placeFor(std::string_view directory) {
    brindle_platform::setProgramDirectory(I18NString(directory));
    return formatted("place", 1);
}

TEST_F(Message, ProgramDirectoryIsTheHooksThenTheEnvironmentsResolvedInTheText) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the statement runs in a process that has read nothing yet
    write("place_en", "1\tit\n");
    const auto check = [&] {
        ::setenv("BRINDLE_HOME", m_directory.c_str(), 1);
        const bool passed = placeFor("") == "it" && placeFor("/none") == "place 0x1";
        std::filesystem::remove_all(m_directory);
        std::_Exit(passed ? 0 : 1);
    };
    EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");

    const std::string base = m_directory;
    const std::pair<std::string, const char*> rows[] = {
        {base + "//none/./../bin//", "it"},
        {"../" + std::filesystem::path(base).filename().string() + "/x", "it"},
        {base + "/configuration/messages/place_en.txt\0/bin"s, "place 0x1"},
        {"bin", "it"}};
    for (const auto& [directory, expected] : rows)
        EXPECT_EQ(placeFor(directory), expected) << directory;
    std::filesystem::current_path("/"); // what was set stays where it was
    EXPECT_EQ(formatted("place", 1), "it");
}

// Each number with as many parameters as the library gives it: nothing may be left over, and no place be left open.
TEST(ShippedMessages, ParametersFitTheTexts) {
    const std::tuple<const char*, unsigned long, std::size_t> rows[] = {
        {"qemsgs", 0x35D3FE99, 1}, {"qemsgs", 0x35DF687A, 2}, {"qemsgs", 0x35D924F0, 3}, {"qemsgs", 0x35DED7D3, 0},
        {"qemsgs", 0x35D8E2D6, 0}, {"qemsgs", 0x35DA12BE, 1}, {"qemsgs", 0x35D5E2F1, 1}, {"qemsgs", 0x35D64EE1, 1},
        {"qemsgs", 0x35DDD82C, 1}, {"qemsgs", 0x35DDD827, 1}, {"qemsgs", 0x35DC6529, 0}, {"qemsgs", 902833714, 3},
        {"qemsgs", 902961539, 3},  {"qemsgs", 903335724, 4},  {"qemsgs", 903328440, 2},  {"qemsgs", 902933051, 1},
        {"qemsgs", 903867903, 2},  {"qemsgs", 903218748, 1},  {"qemsgs", 903316479, 1},  {"qemsgs", 903119692, 1},
        {"QE", 903627734, 0},      {"QE", 903587129, 0},      {"QE", 903693797, 2},      {"QE", 903858276, 4},
        {"QE", 903020510, 2},      {"QE", 902875986, 6},      {"QE", 903557887, 3},      {"QE", 902929403, 6},
        {"QE", 903768823, 3},      {"QE", 903416620, 1},      {"QE", 902971622, 1}};
    for (const auto& [file, number, count] : rows) {
        const std::string text = formatted(file, number, std::vector<ZBLMessageParm>(count, "p"));
        EXPECT_EQ(text.find_first_of("[%"), std::string::npos) << text;
        EXPECT_FALSE(text.starts_with(file) || text.ends_with('.')) << text;
    }
}

} // namespace
