#include <list>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQE_AuditAPI.h"
#include "AQE_LogFile.h"

namespace {

using Log = AUT_I_LogFile;
using Lines = std::vector<std::string>;

// Collects the log as lines "name level text"; audit records as "name level ENTER tag1/tag2 text". No file has texts
// for the component "part", so a text by number shows the file and number that were asked.
class LogFile : public testing::Test {
protected:
    LogFile() {
        brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
            I18NString line = record.name + " " + std::to_string(record.level).c_str() + " ";
            if (record.audit) line += (record.entry ? "ENTER " : "EXIT ") + record.tag1 + "/" + record.tag2 + " ";
            m_lines.emplace_back((line + record.text).bytes());
        });
    }
    ~LogFile() override {
        brindle_platform::setLogSink(nullptr);
        brindle_platform::clearLogLevels();
    }

    Lines Take() { return std::exchange(m_lines, {}); }

    // The prefix with no, one, two, three, four and sixteen parameters behind it.
    static Lines WithParameters(const std::string& prefix) {
        Lines lines;
        std::string line = prefix;
        for (char parameter = 'a'; parameter <= 'p'; ++parameter) {
            if (parameter <= 'e') lines.push_back(line);
            line += std::string(" [") + parameter + "]";
        }
        lines.push_back(line);
        return lines;
    }

    Lines m_lines;
    I18NString m_entry{"Entry"};
};

using AuditGuard = LogFile;

TEST_F(LogFile, EachFormPassesItsParametersOn) {
    AQE_LogFile log("part");
    log.Log(Log::ELL_NotFound, "plain %1");
    log.Log(Log::ELL_Failure, 0);
    EXPECT_EQ(Take(), (Lines{"QueryEngine 3 plain %1", "QueryEngine 1 part 0x0"}));
    log.Log(Log::ELL_Failure, 1);
    log.Log(Log::ELL_Failure, 1, "a");
    log.Log(Log::ELL_Failure, 1, "a", "b");
    log.Log(Log::ELL_Failure, 1, "a", "b", "c");
    log.Log(Log::ELL_Failure, 1, "a", "b", "c", "d");
    log.Log(Log::ELL_Failure, 1, "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o", "p");
    EXPECT_EQ(Take(), WithParameters("QueryEngine 1 part 0x1"));
}

TEST_F(LogFile, FirstAndLastTextFrameTheLifeOfAllCopies) {
    const auto level = Log::ELL_Failure;
    std::list<AQE_LogFile> logs;
    logs.emplace_back("part", level, 1, 2);
    logs.emplace_back("part", level, 1, 2, "a");
    logs.emplace_back("part", level, 1, 2, "a", "b");
    logs.emplace_back("part", level, 1, 2, "a", "b", "c");
    logs.emplace_back("part", level, 1, 2, "a", "b", "c", "d");
    logs.emplace_back("part", level, 1, 2, "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o",
                      "p");
    EXPECT_EQ(Take(), WithParameters("QueryEngine 1 part 0x1"));
    std::list<AQE_LogFile> copies = logs;
    logs.clear();
    EXPECT_EQ(Take(), Lines{});
    copies.clear();
    EXPECT_EQ(Take(), WithParameters("QueryEngine 1 part 0x2"));
    logs.emplace_back("part", level, 0, 0, "a");
    logs.emplace_back("part", level, 0, 8);
    logs.clear();
    EXPECT_EQ(Take(), Lines{"QueryEngine 1 part 0x8"}) << "0 is no text";
}

TEST_F(LogFile, TheEntryNameDecidesTheLevel) {
    brindle_platform::setLogLevel(m_entry, 7);
    AQE_LogFile byDefault("part"), byName("part", m_entry), typed(m_entry, Log::ELT_Audit);
    for (AQE_LogFile* log : {&byDefault, &byName, &typed})
        log->Log(Log::ELL_Diagnostic, 9);
    typed.AuditLog(Log::ELL_Diagnostic, false, "t", "u", "text");
    EXPECT_EQ(Take(), (Lines{"Entry 7 part 0x9", "Entry 7 Entry 0x9", "Entry 7 EXIT t/u text"}));
    EXPECT_EQ(byName.GetLogLevel(), 7);
}

TEST_F(AuditGuard, WritesTheCallAndItsOutcome) {
    const std::string entered = "Entry 17 ENTER t/u <function name=\"f\"><parameters><item name=\"a\"><![CDATA[b]]>"
                                "</item></parameters></function>";
    const auto left = [](const char* start, const char* outcome) {
        return std::string("Entry 17 EXIT ") + start + "\"><returnvalue><![CDATA[" + outcome +
               "]]></returnvalue></function>";
    };
    brindle_platform::setLogLevel(m_entry, 17);
    for (const bool success : {false, true}) {
        AQE_AuditAPI guard(m_entry);
        guard.AuditFunction("f", guard.FunctionParm("a", "b"), "t", "u");
        guard.m_success = success;
    }
    { AQE_AuditAPI uncalled(m_entry); }
    EXPECT_EQ(Take(), (Lines{entered, left("t/u <function name=\"f", "Failure"), entered,
                             left("t/u <function name=\"f", "Success"), left("/ <function name=\"", "Failure")}));
}

TEST_F(AuditGuard, BelowTheAuditLevelOnlyTheParametersAreMade) {
    brindle_platform::setLogLevel(m_entry, 16);
    {
        AQE_AuditAPI guard(m_entry);
        guard.AuditFunction("f", "", "t", "u");
        EXPECT_EQ(guard.FunctionParm("", "<&"), "<item name=\"\"><![CDATA[<&]]></item>");
    }
    EXPECT_EQ(Take(), Lines{});
    EXPECT_EQ(&AQE_AuditAPI::GetDefaultComponent(), &AQE_AuditAPI::GetDefaultComponent());
}

} // namespace
