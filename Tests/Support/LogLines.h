// The log as lines "entry level text"; at the ends of an audited scope "entry level ENTER tag1/tag2 text", or EXIT.
#pragma once

#include <utility>
#include <vector>

#include "PlatformHooks.h"

namespace brindle_test {

using Lines = std::vector<std::string>;

struct LogLines {
    LogLines() {
        brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
            I18NString line = record.name + " " + std::to_string(record.level).c_str() + " ";
            if (record.audit) line += (record.entry ? "ENTER " : "EXIT ") + record.tag1 + "/" + record.tag2 + " ";
            m_lines.emplace_back((line + record.text).bytes());
        });
    }
    // Those since the last call.
    Lines Take() { return std::exchange(m_lines, {}); }

    Lines m_lines;
};

} // namespace brindle_test
