#include <list>

#include <gtest/gtest.h>

#include "AQE_AuditAPI.h"
#include "AQE_LogFile.h"

#include "Support/Directory.h"
#include "Support/LogLines.h"

namespace {

using Log = AUT_I_LogFile;
using brindle_test::Lines;

// No file has texts for the component "part", so a text by number shows the file and number that were asked.
struct LogFile : testing::Test, brindle_test::Directory, brindle_test::LogLines {
    // Calls it with no, one, two, three, four and sixteen parameters; then the prefix with those behind it.
    static void CallEachForm(const auto& call) {
        call(), call("a"), call("a", "b"), call("a", "b", "c"), call("a", "b", "c", "d");
        call("a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o", "p");
    }
    static Lines OfEachForm(std::string line) {
        Lines lines;
        for (char parameter = 'a'; parameter <= 'p'; line += std::string(" [") + parameter++ + "]")
            if (parameter <= 'e') lines.push_back(line);
        lines.push_back(line);
        return lines;
    }

    I18NString m_entry{"Entry"};
};

TEST_F(LogFile, EachFormPassesItsParametersOn) {
    AQE_LogFile log("part");
    CallEachForm([&log](auto... parameters) { log.Log(Log::ELL_Failure, 0, parameters...); });
    EXPECT_EQ(Take(), OfEachForm("QueryEngine 1 part 0x0"));
    log.Log(Log::ELL_NotFound, "plain %1");
    EXPECT_EQ(Take(), Lines{"QueryEngine 3 plain %1"});
}

TEST_F(LogFile, FirstAndLastTextFrameTheLifeOfAllCopies) {
    std::list<AQE_LogFile> logs;
    CallEachForm([&logs](auto... parameters) { logs.emplace_back("part", Log::ELL_Failure, 1, 2, parameters...); });
    std::list<AQE_LogFile> copies = logs;
    logs.clear();
    EXPECT_EQ(Take(), OfEachForm("QueryEngine 1 part 0x1"));
    copies.clear();
    EXPECT_EQ(Take(), OfEachForm("QueryEngine 1 part 0x2"));
    logs.emplace_back("part", Log::ELL_Failure, 0, 8, "a");
    logs.clear();
    EXPECT_EQ(Take(), Lines{"QueryEngine 1 part 0x8 [a]"}) << "0 is no text";
}

TEST_F(LogFile, TheEntryNameDecidesTheLevel) {
    brindle_platform::setLogLevel(m_entry, 7);
    AQE_LogFile byDefault("part"), byName("part", m_entry), typed(m_entry, Log::ELT_Audit);
    for (AQE_LogFile* log : {&byDefault, &byName, &typed})
        log->Log(Log::ELL_Diagnostic, 9);
    EXPECT_EQ(Take(), (Lines{"Entry 7 part 0x9", "Entry 7 Entry 0x9"}));
}

TEST_F(LogFile, AuditGuardWritesTheCallAndItsOutcome) {
    const std::string entered = "Entry 17 ENTER t/u <function name=\"f\"><parameters><item name=\"a\"><![CDATA[<&]]>"
                                "]]></item></parameters></function>";
    const auto left = [](const std::string& outcome) {
        return "Entry 17 EXIT t/u <function name=\"f\"><returnvalue><![CDATA[" + outcome +
               "]]></returnvalue></function>";
    };
    for (const bool success : {false, true}) {
        brindle_platform::setLogLevel(m_entry, success ? 18 : 17);
        AQE_AuditAPI guard(m_entry);
        guard.AuditFunction("f", guard.FunctionParm("a", "<&]]>"), "t", "u");
        guard.m_success = success;
    }
    EXPECT_EQ(Take(), (Lines{entered, left("Failure"), entered, left("Success")}));
}

} // namespace
