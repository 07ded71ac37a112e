#include <climits>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "QERes.h"

namespace {

TEST(ConstantStrings, AnswerByNumber) {
    const std::map<long, const char*> rows = {
        // clang-format off
        {0, "("}, {19, "as \""}, {23, "\""}, {24, "\"\""}, {33, "\n"}, {34, "\n\n"}, {79, " --> "}, {100, "...."},
        {239, "_env"}, {258, "????"}, {314, ""}, {337, "mamsgs"}, {338, "qemsgs"}, {339, "rqpmsgs"}, {344, "INTERVAL '"},
        {420, "<function name=\""}, {424, "\"><![CDATA["}, {434, "QueryEngine"}, {435, "QE"}, {436, "\t"}, {498, " )"},
        {523, "nullable"}, {-1, ""}, {524, ""}, {LONG_MAX, ""}, {LONG_MIN, ""}
        // clang-format on
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(QERes::getString(number), expected) << number;
}

// Only the empty entry is empty: a row too few would leave another one.
TEST(ConstantStrings, EveryEntryIsFilledAndKeepsItsObjectOnAllThreads) {
    constexpr long kCount = 524;
    std::vector<std::vector<const I18NString*>> seen(4);
    std::vector<std::thread> threads;
    for (auto& addresses : seen) {
        threads.emplace_back([&addresses] {
            for (long i = 0; i < kCount; ++i) {
                addresses.push_back(&QERes::getString(i));
                EXPECT_EQ(addresses.back()->empty(), i == 314) << i;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& addresses : seen)
        EXPECT_EQ(addresses, seen[0]);
}

TEST(ResourceTexts, ComeFromTheNamedFile) {
    const std::filesystem::path root = testing::TempDir() + "brindle-resource-texts";
    std::filesystem::create_directories(root / "configuration" / "messages");
    std::ofstream(root / "configuration" / "messages" / "restest_en.txt") << "0x10\tsixteen %1\n";
    brindle_platform::setProgramDirectory((root / "bin").c_str());
    I18NString file("before");
    EXPECT_EQ(AQE_ResourceGetString(16, file, "restest"), "sixteen %1");
    EXPECT_EQ(file, (root / "configuration/messages/restest_en.txt").c_str());
    EXPECT_EQ(AQE_ResourceGetString(16, "restest"), "sixteen %1");
    EXPECT_EQ(AQE_ResourceGetString(17, "restest"), "restest 0x11");
    EXPECT_EQ(AQE_ResourceGetString(16, file, "resnone"), "resnone 0x10");
    EXPECT_EQ(file, "");
    brindle_platform::setProgramDirectory("");
    std::filesystem::remove_all(root);
}

TEST(DoubleFormat, FitsSixBytesAndKeepsFifteenDigits) {
    char buffer[8] = "#######";
    EXPECT_EQ(AQE_UtilityGetDoubleFormatString(buffer), buffer);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("%.15g\0#\0", 8));
}

} // namespace
