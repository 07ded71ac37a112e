#include <gtest/gtest.h>

#include "QEThrow.h"
#include "Support/Directory.h"
#include "Support/FailureCheck.h"
#include "Support/LogLines.h"

namespace {

TEST(Throw, LogsOnceAtTheSiteAndNotesThePlaceInWhatIsThrown) {
    const brindle_test::Directory directory;
    const brindle_test::LogLines log;
    QEException exception(ZBLSeverity::error, 901L);
    QEAddMessages(exception, "no %1", 1, "luck");
    EXPECT_EQ(brindle_test::FailureOf([&] { QELogAndThrow(exception, "Source/Somewhere", 76); }),
              "QEException 901 [text]no luck Source/Somewhere:76");
    ASSERT_EQ(log.m_lines.size(), 1u);
    for (const char* part : {"Exception ", "QEException", "901", "no luck", "Source/Somewhere", "76"})
        EXPECT_NE(log.m_lines[0].find(part), std::string::npos) << part << " in " << log.m_lines[0];
}

} // namespace
