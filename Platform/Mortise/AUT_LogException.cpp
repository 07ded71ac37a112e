#include "Mortise/AUT_LogException.h"

#include "Mortise/AUT_I_LogFile.h"
#include "Mortise/AUT_Text.h"
#include "Mortise/LogLevel.h"
#include "Mortise/LogSink.h"

namespace {

// "QEException 202: message (Source/QMStringFunctions:123)"
I18NString describe(const ZBLThrowable& failure, const char* sourcePath, long line) {
    I18NString text(failure.getThrowableName());
    if (const auto* exception = dynamic_cast<const ZBLException*>(&failure)) {
        text += " " + AUT_ToString(exception->getCode());
    }
    text += ": " + failure.getMessage();
    return text + " (" + sourcePath + ":" + AUT_ToString(line) + ")";
}

} // namespace

void AUT_LogException(const ZBLThrowable& failure, const char* sourcePath, long line) noexcept {
    if (!brindle_platform::logSinkPresent()) return;
    try {
        if (brindle_platform::logLevelOf("Exception") < AUT_I_LogFile::ELL_Failure) return;
        brindle_platform::writeLogRecord({.level = AUT_I_LogFile::ELL_Failure,
                                          .audit = false,
                                          .entry = false,
                                          .name = "Exception",
                                          .tag1 = {},
                                          .tag2 = {},
                                          .text = describe(failure, sourcePath, line)});
    } catch (...) {
        // The failure itself is about to be thrown and matters more than its record.
    }
}
