// The log: levels, parameters in texts, both ends of a scope, failing and re-entered sinks, the form of the file.
#include <new>

#include <gmock/gmock.h>

#include "Mortise/AUT_I_LogFile.h"
#include "Mortise/AUT_LogException.h"
#include "ZBLCore/ZBLException.h"

#include "Support/Directory.h"
#include "Support/LogLines.h"

namespace {

using brindle_platform::LogRecord;
using testing::ElementsAre;

struct LogFile : testing::Test, brindle_test::Directory, brindle_test::LogLines {
    LogFile() { brindle_platform::setUserConfigurationFile("/dev/null"); }
};

AUT_I_LogFile::ELogLevel level(int value) { return static_cast<AUT_I_LogFile::ELogLevel>(value); }

TEST_F(LogFile, RecordsUpToTheLevelOfTheirEntryAreWritten) {
    const auto levelOf = [](const char* name) { return AUT_I_LogFile::Create(name)->GetLogLevel(); };
    EXPECT_EQ(levelOf("A"), 3);
    for (const auto& [name, value] : {std::pair("Default", "5"), std::pair("A", "17"), std::pair("B", "much")})
        brindle_platform::overrideOption("Log", name, value);
    EXPECT_EQ(levelOf("a") + levelOf("B"), 10);
    const auto log = AUT_I_LogFile::Create("A", AUT_I_LogFile::ELT_Audit);
    brindle_platform::setLogLevel("A", -2);
    EXPECT_EQ(levelOf("A"), -2);
    for (const int value : {-1, 17, 18}) { // an object keeps the level it was made with
        log->Log(level(value), "t");
        log->AuditLog(level(value), value > 0, "x", "y", "%1");
    }
    EXPECT_THAT(m_lines, ElementsAre("A -1 t", "A -1 EXIT x/y %1", "A 17 t", "A 17 ENTER x/y %1"));
}

TEST_F(LogFile, EachFormPutsItsParametersInAndAScopeLogsAtBothEnds) {
    const auto log = AUT_I_LogFile::Create("E");
    const auto one = level(1);
    log->Log(one, "%2%1 %3", "a", "b");
    log->Log(one, "%3", "%3", "", "c");
    log->Log(one, "%16 %10 %2", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15", "16");
    {
        const auto outer = AUT_I_LogFile::Create("E", level(3), "in %1", "out %1 %2", "a", "b");
        const auto copy = outer;
        AUT_I_LogFile::Create("E", level(4), "too", "detailed");
        AUT_I_LogFile::Create("E", one, "%4", "%5", "1", "2", "3", "4")->Log(level(2), "%1");
    }
    EXPECT_THAT(m_lines,
                ElementsAre("E 1 ba %3", "E 1 c [%3]",
                            "E 1 16 10 2 [1] [3] [4] [5] [6] [7] [8] [9] [11] [12] [13] [14] [15]", "E 3 in a [b]",
                            "E 1 4 [1] [2] [3]", "E 2 %1", "E 1 %5 [1] [2] [3] [4]", "E 3 out a b"));
}

TEST_F(LogFile, ASinkMayFailLogAndReplaceItself) {
    const auto log = AUT_I_LogFile::Create("E");
    std::vector<std::string> seen;
    const std::string captured(100, 'c');
    brindle_platform::setLogSink([&, captured](const LogRecord& record) {
        log->Log(level(1), "from within");
        brindle_platform::setLogSink([&seen](const LogRecord& later) { seen.push_back(later.text.c_str()); });
        seen.push_back(record.text.c_str() + captured);
        throw std::bad_alloc();
    });
    for (const char* text : {"first ", "second"})
        EXPECT_NO_THROW(log->Log(level(1), text));
    EXPECT_THAT(seen, ElementsAre("first " + captured, "second"));
}

// Counts how often its message is asked for, and can't give it.
struct CountingFailure : ZBLException {
    CountingFailure() : ZBLException(202L) {}
    I18NString getMessage() const override { return ++m_asked > 0 ? throw std::bad_alloc() : ""; }

    mutable int m_asked = 0;
};

// The tests below run in processes of their own, since BRINDLE_LOG is read once.

TEST_F(LogFile, TheFileGrowsByLinesThatNoTextCanForge) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The process of the statement inherits the name that this one has chosen.
    ::setenv("BRINDLE_TEST_LOG", Path("log").c_str(), 0);
    const char* const path = std::getenv("BRINDLE_TEST_LOG");
    Write(path, "old\n");
    EXPECT_EXIT(
        {
            ::setenv("BRINDLE_LOG", path, 1);
            const auto log = AUT_I_LogFile::Create("E\n\t\x7F");
            log->Log(level(2), "not here");
            brindle_platform::setLogSink(nullptr);
            log->Log(level(-1), "a\nb\r\t\x01%1", "\u0080\u009F\u00A0é\U0001F600");
            log->AuditLog(level(3), true, "g\nh", "i\tj", "k\n\nl");
            log->AuditLog(level(3), false, "", "", I18NString("\0", 1));
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "^$");
    const std::string head =
        "[0-9]{4}(-[0-9]{2}){2}T[0-9]{2}(:[0-9]{2}){2}[.][0-9]{3}Z\t[1-9][0-9]*\t[1-9][0-9]*\tE\\\\x0a\\\\x09\\\\x7f\t";
    const std::string lines[] = {"-1\ta\n\tb\\\\x0d\\\\x09\\\\x01\\\\x80\\\\x9f\u00A0é\U0001F600\n",
                                 "3\tENTER\tg\\\\x0ah\ti\\\\x09j\tk\n\t\n\tl\n", "3\tEXIT\t\t\t\\\\x00\n"};
    EXPECT_THAT(Bytes(path), testing::MatchesRegex("old\n" + head + lines[0] + head + lines[1] + head + lines[2]));
}

TEST_F(LogFile, TheTargetMayBeStandardErrorOrFailAndWithoutOneNothingIsFormatted) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto log = [](const char* target) {
        ::setenv("BRINDLE_LOG", target, 1);
        brindle_platform::setLogSink(nullptr);
        CountingFailure failure;
        AUT_LogException(failure, nullptr, -1);
        AUT_I_LogFile::Create("E")->Log(level(1), "shown");
        std::_Exit(failure.m_asked);
    };
    EXPECT_EXIT(log("-"), testing::ExitedWithCode(1), "\t1\tshown\n$");
    EXPECT_EXIT(log(""), testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(log("/dev/full"), testing::ExitedWithCode(1), "^$");
}

} // namespace
