// Switches by which tests and tools steer the platform layer: where it looks for files, what the user's settings
// answer, where log records go. Every operation may be called on any thread at any time and takes effect for the next
// operation.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

class LogPerfIndication;

namespace brindle_platform {

// Directory that stands for "." and completes relative paths. A relative one counts from the working directory of this
// moment. The empty text goes back to the default.
BRINDLE_PLATFORM_API void setProgramDirectory(const I18NString& path);

// File that holds the user's settings from now on; it is read at the next use. The empty path goes back to the
// default place.
BRINDLE_PLATFORM_API void setUserConfigurationFile(const I18NString& path);

// The settings file is read again at the next use.
BRINDLE_PLATFORM_API void reloadUserConfiguration();

// Sets an option for this process, in front of the settings file. A later call for the same option replaces the value.
BRINDLE_PLATFORM_API void overrideOption(const I18NString& section, const I18NString& name, const I18NString& value);
BRINDLE_PLATFORM_API void clearOverrides();

// One record of the log as a sink sees it. `text` has its parameters put in and its control characters as they came.
// `entry`, `tag1` and `tag2` have a meaning in audit records only; `entry` tells ENTER from EXIT.
struct LogRecord {
    int level;
    bool audit;
    bool entry;
    I18NString name;
    I18NString tag1;
    I18NString tag2;
    I18NString text;
};

// Takes every record instead of the file that BRINDLE_LOG names; null goes back to the file. Calls come one at a time,
// under the log's lock, so a sink must wait for no other thread, which may be about to log. What the sink throws is
// dropped, and so is a record that is logged from within the sink.
BRINDLE_PLATFORM_API void setLogSink(std::function<void(const LogRecord&)> sink);

// Level of the log entry `name`, in front of the settings; it holds for log objects made from now on.
BRINDLE_PLATFORM_API void setLogLevel(const I18NString& name, int level);
BRINDLE_PLATFORM_API void clearLogLevels();

// Name of the platform's default encoding. Null, an unknown name and the utf-16 and utf-32 family go back to
// BRINDLE_DEFAULT_ENCODING, or to utf-8 where that names none.
BRINDLE_PLATFORM_API void setDefaultEncoding(const char* name);

// What the next call of AUT_Initialize answers, once.
BRINDLE_PLATFORM_API void setNextInitializeResult(long result);

// Whether the machine has a performance counter, to be said before the library starts.
BRINDLE_PLATFORM_API void setPerformanceCounterPresent(bool present);

// What the performance counter (ticks of a nanosecond) and the millisecond clock show; null for the real ones.
BRINDLE_PLATFORM_API void setPerformanceCounter(std::function<std::int64_t()> ticks);
BRINDLE_PLATFORM_API void setMillisClock(std::function<std::int64_t()> milliseconds);

// What the time zone answers (local time + minutes = UTC), the time stamps of either form, and the process number; none
// for the real ones.
BRINDLE_PLATFORM_API void setTimeZoneBias(std::optional<int> minutes);
BRINDLE_PLATFORM_API void setTimeStamp(std::function<I18NString(int form)> stamp);
BRINDLE_PLATFORM_API void setProcessId(std::optional<unsigned long> number);

// Takes what performance loggers are handed in place of the log; null goes back to the log. It is called on the
// logging thread, by several threads at once; what it throws is dropped.
BRINDLE_PLATFORM_API void setIndicationSink(std::function<void(const LogPerfIndication&)> sink);

// Lowest level at which the logger `name` is enabled, in front of the settings.
BRINDLE_PLATFORM_API void setLoggerThreshold(const I18NString& name, int threshold);
BRINDLE_PLATFORM_API void clearLoggerThresholds();

} // namespace brindle_platform
