#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "QEException.h"

#include "QEThrow.h"

namespace {

TEST(Throw, LogsOnceAtTheSiteAndNotesThePlaceInWhatIsThrown) {
    std::string log;
    brindle_platform::setLogSink([&](const brindle_platform::LogRecord& record) {
        log += std::string(record.name.bytes()) + "|" + record.text.c_str() + "\n";
    });
    QEException exception(ZBLSeverity::error, 901L);
    QEAddMessages(exception, "no %1", 1, "luck");
    try {
        QELogAndThrow(exception, "Source/Somewhere", 76);
    } catch (const QEException& caught) {
        ASSERT_EQ(caught.getBackTrace().size(), 1U);
        const ZBLException::BackTraceEntry& place = caught.getBackTrace()[0];
        EXPECT_EQ(place.path + std::to_string(place.line) + place.macroName, "Source/Somewhere76ZBL_THROW");
    }
    brindle_platform::setLogSink(nullptr);
    EXPECT_EQ(log.find('\n'), log.size() - 1) << log;
    for (const char* part : {"Exception|", "QEException", "901", "no luck", "Source/Somewhere", "76"})
        EXPECT_NE(log.find(part), std::string::npos) << part << " in " << log;
}

} // namespace
