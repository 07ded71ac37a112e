// The log: levels by entry, parameters in texts, records at both ends of a scope, failing and re-entered sinks, records
// of exceptions, the form of the file.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Mortise/AUT_I_LogFile.h"
#include "Mortise/AUT_LogException.h"
#include "PlatformHooks.h"
#include "ZBLCore/ZBLException.h"

namespace {

using brindle_platform::LogRecord;
using testing::ElementsAre;

class LogFile : public testing::Test {
protected:
    LogFile() {
        brindle_platform::setUserConfigurationFile("/dev/null");
        brindle_platform::setLogSink([this](const LogRecord& record) {
            I18NString line = record.name + "|" + std::to_string(record.level).c_str() + "|";
            if (record.audit) line += (record.entry ? "ENTER|" : "EXIT|") + record.tag1 + "|" + record.tag2 + "|";
            m_lines.emplace_back((line + record.text).bytes());
        });
    }
    ~LogFile() override {
        brindle_platform::setLogSink(nullptr);
        brindle_platform::clearLogLevels();
        brindle_platform::clearOverrides();
        brindle_platform::setUserConfigurationFile("");
    }

    std::vector<std::string> TakeLines() { return std::exchange(m_lines, {}); }

    std::vector<std::string> m_lines;
};

AUT_I_LogFile::ELogLevel level(int value) { return static_cast<AUT_I_LogFile::ELogLevel>(value); }

TEST_F(LogFile, RecordsUpToTheLevelOfTheirEntryAreWritten) {
    const auto levelOf = [](const char* name) { return AUT_I_LogFile::Create(name)->GetLogLevel(); };
    EXPECT_EQ(levelOf("A"), 3);
    brindle_platform::overrideOption("Log", "Default", "5");
    brindle_platform::overrideOption("Log", "A", "17");
    brindle_platform::overrideOption("Log", "B", "much");
    EXPECT_EQ(levelOf("A"), 17);
    EXPECT_EQ(levelOf("a"), 5);
    EXPECT_EQ(levelOf("B"), 5);
    const auto before = AUT_I_LogFile::Create("A", AUT_I_LogFile::ELT_Audit);
    brindle_platform::setLogLevel("A", -2);
    brindle_platform::setLogLevel("C", 0);
    EXPECT_EQ(levelOf("A"), -2);
    EXPECT_EQ(levelOf("C"), 0);
    EXPECT_EQ(before->GetLogLevel(), 17) << "an object keeps the level it was made with";
    brindle_platform::clearLogLevels();
    EXPECT_EQ(levelOf("A"), 17);
    brindle_platform::setLogLevel("E", 7);
    const auto log = AUT_I_LogFile::Create("E");
    for (const int value : {-1, 7, 8}) {
        log->Log(level(value), "t");
        log->AuditLog(level(value), value > 0, "x", "y", "%1");
    }
    EXPECT_THAT(TakeLines(), ElementsAre("E|-1|t", "E|-1|EXIT|x|y|%1", "E|7|t", "E|7|ENTER|x|y|%1"));
}

TEST_F(LogFile, EachFormPutsItsParametersIn) {
    const auto log = AUT_I_LogFile::Create("E");
    const auto one = level(1);
    const I18NString e;
    log->Log(one, "%1%2 100%");
    log->Log(one, "%1%2", "a");
    log->Log(one, "%2%1", "a", "b");
    log->Log(one, "%3", "%3", "", "c");
    log->Log(one, "%1", "a", "b", "c", "d");
    log->Log(one, "%16 %10 %2", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15", "16");
    log->Log(one, "%1 %5.", "a", "b", e, e, e, e, e, e, e, e, e, e, e, e, e, e);
    EXPECT_THAT(TakeLines(),
                ElementsAre("E|1|%1%2 100%", "E|1|a%2", "E|1|ba", "E|1|c [%3]", "E|1|a [b] [c] [d]",
                            "E|1|16 10 2 [1] [3] [4] [5] [6] [7] [8] [9] [11] [12] [13] [14] [15]", "E|1|a . [b]"));
}

TEST_F(LogFile, AScopeLogsAtBothEnds) {
    {
        const auto outer = AUT_I_LogFile::Create("E", level(3), "in %1", "out %1 %2", "a", "b");
        const auto copy = outer;
        AUT_I_LogFile::Create("E", level(1), "", "only out");
        AUT_I_LogFile::Create("E", level(1), "only in", "", "p");
        AUT_I_LogFile::Create("E", level(4), "too", "detailed");
        AUT_I_LogFile::Create("E", level(1), "%3", "%4", "1", "2", "3");
        AUT_I_LogFile::Create("E", level(1), "%4", "%5", "1", "2", "3", "4")->Log(level(2), "%1");
        AUT_I_LogFile::Create("E", level(1), "%16", "", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12",
                              "13", "14", "15", "16");
    }
    EXPECT_THAT(TakeLines(), ElementsAre("E|3|in a [b]", "E|1|only out", "E|1|only in [p]", "E|1|3 [1] [2]",
                                         "E|1|%4 [1] [2] [3]", "E|1|4 [1] [2] [3]", "E|2|%1", "E|1|%5 [1] [2] [3] [4]",
                                         testing::StartsWith("E|1|16 [1]"), "E|3|out a b"));
}

TEST_F(LogFile, ASinkMayFailLogAndReplaceItself) {
    const auto log = AUT_I_LogFile::Create("E");
    std::vector<std::string> seen;
    const std::string captured(100, 'c');
    brindle_platform::setLogSink([&, captured](const LogRecord& record) {
        log->Log(level(1), "from within");
        brindle_platform::setLogSink([&seen](const LogRecord& later) {
            seen.push_back(later.text.c_str());
            throw std::bad_alloc();
        });
        seen.push_back(record.text.c_str() + captured);
        throw 7;
    });
    for (const char* text : {"first ", "second", "third"})
        EXPECT_NO_THROW(log->Log(level(1), text));
    EXPECT_THAT(seen, ElementsAre("first " + captured, "second", "third"));
}

TEST_F(LogFile, RecordsOfSeveralThreadsComeOneAtATime) {
    int count = 0;
    brindle_platform::setLogSink([&count](const LogRecord&) { ++count; });
    const auto write = [] {
        for (int record = 0; record < 250; ++record) {
            brindle_platform::setLogLevel("other", record);
            AUT_I_LogFile::Create("E")->Log(AUT_I_LogFile::ELL_Failure, "%1", "x");
        }
    };
    std::thread first(write);
    std::thread second(write);
    first.join();
    second.join();
    EXPECT_EQ(count, 500);
}

// Counts how often its message is asked for, and can't give it when it is told to fail.
class CountingFailure : public ZBLException {
public:
    CountingFailure() : ZBLException(202L) {}
    I18NString getMessage() const override {
        ++m_asked;
        if (m_fails) throw std::bad_alloc();
        return "mes%1sage";
    }

    mutable int m_asked = 0;
    bool m_fails = false;
};

TEST_F(LogFile, AnExceptionIsRecordedOnlyForATaker) {
    CountingFailure failure;
    brindle_platform::setLogLevel("Exception", 1);
    AUT_LogException(failure, "Source/X", 31);
    brindle_platform::setLogLevel("Exception", 0);
    AUT_LogException(failure, "Source/X", 31);
    EXPECT_EQ(failure.m_asked, 1) << "below the level nothing is formatted";
    brindle_platform::clearLogLevels();
    failure.m_fails = true;
    AUT_LogException(failure, nullptr, -1);
    EXPECT_EQ(failure.m_asked, 2);
    EXPECT_THAT(TakeLines(), ElementsAre("Exception|1|ZBLException 202: mes%1sage (Source/X:31)"));
}

// What follows runs in processes of its own, since BRINDLE_LOG is read once.

void logTo(const char* target) {
    target == nullptr ? ::unsetenv("BRINDLE_LOG") : ::setenv("BRINDLE_LOG", target, 1);
    brindle_platform::setUserConfigurationFile("/dev/null");
}

TEST(LogFileProcess, WithoutATakerNothingIsFormatted) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            logTo(nullptr);
            CountingFailure failure;
            AUT_LogException(failure, "Source/X", 31);
            AUT_I_LogFile::Create("E")->Log(AUT_I_LogFile::ELL_Failure, "lost");
            brindle_platform::setLogSink([](const LogRecord&) {});
            AUT_LogException(failure, "Source/X", 31);
            std::_Exit(10 + failure.m_asked);
        },
        testing::ExitedWithCode(11), "^$");
}

TEST(LogFileProcess, TheFileGrowsByLinesThatNoTextCanForge) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The process of the statement inherits the name that this one has chosen.
    ::setenv("BRINDLE_TEST_LOG", (testing::TempDir() + "brindle-log-" + std::to_string(::getpid())).c_str(), 0);
    const char* const path = std::getenv("BRINDLE_TEST_LOG");
    std::ofstream(path, std::ios::trunc) << "old\n";
    EXPECT_EXIT(
        {
            logTo(path);
            const auto log = AUT_I_LogFile::Create("E\n\t\x7F");
            log->Log(level(-1), "a\nb\r\t\x01%1", "\u0080\u009F\u00A0é\U0001F600");
            log->AuditLog(level(3), true, "g\nh", "i\tj", "k\n\nl");
            brindle_platform::setLogSink([](const LogRecord&) {});
            log->Log(level(1), "not here");
            brindle_platform::setLogSink(nullptr);
            log->AuditLog(level(3), false, "", "", I18NString("\0", 1));
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "^$");
    std::ifstream file(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    const std::string head = "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}[.][0-9]{3}Z"
                             "\t[1-9][0-9]*\t[1-9][0-9]*\tE\\\\x0a\\\\x09\\\\x7f\t";
    const std::string first = "-1\ta\n\tb\\\\x0d\\\\x09\\\\x01\\\\x80\\\\x9f\u00A0é\U0001F600\n";
    const std::string second = "3\tENTER\tg\\\\x0ah\ti\\\\x09j\tk\n\t\n\tl\n";
    EXPECT_THAT(content,
                testing::MatchesRegex("old\n" + head + first + head + second + head + "3\tEXIT\t\t\t\\\\x00\n"));
    std::filesystem::remove(path);
}

TEST(LogFileProcess, TheTargetMayBeStandardErrorOrFail) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::pair<const char*, const char*> rows[] = {
        {"-", "\t1\tshown\n$"}, {"/nowhere/at/all", "^$"}, {"/dev/full", "^$"}, {"", "^$"}};
    for (const auto& [target, output] : rows) {
        EXPECT_EXIT(
            {
                logTo(target);
                const auto log = AUT_I_LogFile::Create("E");
                log->Log(level(1), "first");
                log->Log(level(1), "shown");
                std::_Exit(0);
            },
            testing::ExitedWithCode(0), output);
    }
}

} // namespace
