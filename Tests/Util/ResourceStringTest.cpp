#include <climits>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "QERes.h"

namespace {

TEST(ConstantStrings, AnswerByNumber) {
    const std::pair<long, const char*> rows[] = {
        // clang-format off
        {0, "("}, {24, "\"\""}, {34, "\n\n"}, {239, "_env"}, {314, ""}, {339, "rqpmsgs"}, {420, "<function name=\""},
        {498, " )"}, {523, "nullable"}, {-1, ""}, {524, ""}, {LONG_MAX, ""}, {LONG_MIN, ""}
        // clang-format on
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(QERes::getString(number), expected) << number;
    for (long number = 0; number < 524; ++number)
        EXPECT_TRUE(QERes::getString(number).empty() == (number == 314) &&
                    &QERes::getString(number) == &QERes::getString(number))
            << number;
}

TEST(ResourceTexts, ComeFromTheNamedFile) {
    const std::filesystem::path root = testing::TempDir() + "brindle-resource-texts";
    std::filesystem::create_directories(root / "configuration" / "messages");
    std::ofstream(root / "configuration" / "messages" / "restest_en.txt") << "0x10\tsixteen %1\n";
    brindle_platform::setProgramDirectory((root / "bin").c_str());
    I18NString file("before");
    EXPECT_EQ(AQE_ResourceGetString(16, file, "restest"), "sixteen %1");
    EXPECT_EQ(file, (root / "configuration/messages/restest_en.txt").c_str());
    EXPECT_EQ(AQE_ResourceGetString(16, file, "resnone"), "resnone 0x10");
    EXPECT_EQ(file, "");
    brindle_platform::setProgramDirectory("");
    std::filesystem::remove_all(root);
}

} // namespace
