// Where log records go: to the test hook's function, else to the file or standard error that BRINDLE_LOG names.
//
// Form of a record in the file: time, process, thread, entry, level, for an audit record also ENTER or EXIT and two
// tags, then the text, with tabs between and a line feed at the end. A line feed within the text is followed by a tab,
// every other control character is written as \xNN, so that no text can pass for a record or for a field.
#pragma once

#include "PlatformHooks.h"

namespace brindle_platform {

// Whether anyone takes records. One load, so that callers ask before they format.
bool logSinkPresent() noexcept;

// Hands the record on, whatever its level. A failing sink is ignored. Any thread; records are handed on one at a time.
void writeLogRecord(const LogRecord& record) noexcept;

} // namespace brindle_platform
