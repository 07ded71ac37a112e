#include <climits>

#include <gtest/gtest.h>

#include "QERes.h"

#include "Support/Directory.h"

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
    const brindle_test::Directory directory;
    const I18NString texts = directory.Write("configuration/messages/restest_en.txt", "0x10\tsixteen %1\n");
    brindle_platform::setProgramDirectory(directory.Path("bin"));
    I18NString file("before");
    EXPECT_EQ(AQE_ResourceGetString(16, file, "restest"), "sixteen %1");
    EXPECT_EQ(file, texts);
    EXPECT_EQ(AQE_ResourceGetString(16, file, "resnone"), "resnone 0x10");
    EXPECT_EQ(file, "");
}

} // namespace
