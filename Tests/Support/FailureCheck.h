// A failure as one line that holds all a caller can see of it:
//
//     EXPECT_EQ(FailureOf([&] { expander.Expand("#$#", nullptr); }),
//               R"(QEExceptionExtended 901 0x35df687a(4, "#$#") @4 macro Source/QUYyError:251)");
//
// "@4 macro" is the position and macro flag of a QEExceptionExtended, the last word the place of the throw. What is
// otherwise than usual stands in brackets: not severity error, "qemsgs", no end position, thrown by "QE"'s ZBL_THROW.
#pragma once

#include <cstdio>
#include <exception>
#include <string>

#include "ZBLCore/ZBLException.h"

#include "QEException.h"

namespace brindle_test {

inline std::string DescribeMessage(const ZBLMessageBase& message) {
    const auto* const components = dynamic_cast<const ZBLMessageComponents*>(&message);
    if (!components) return "[text]" + std::string(message.format().bytes());
    char number[24];
    std::snprintf(number, sizeof number, "0x%lx(", components->getNumber());
    std::string line = number;
    for (const ZBLMessageParm& parameter : components->getParameters()) {
        const char* const quote = parameter.getKind() == ZBLMessageParm::String ? "\"" : "";
        line += (line.back() == '(' ? "" : ", ") + (quote + std::string(parameter.asText().bytes())) + quote;
    }
    if (!(components->getFile() == "qemsgs")) line = "[" + std::string(components->getFile().bytes()) + "]" + line;
    return line + ")";
}

inline std::string DescribeFailure(const ZBLException& failure) {
    std::string line = failure.getThrowableName() + (" " + std::to_string(failure.getCode()));
    if (failure.getSeverity() != ZBLSeverity::error)
        line += " [severity " + std::to_string(static_cast<int>(failure.getSeverity())) + "]";
    for (std::size_t i = 0; i < failure.getMessageSet().size(); ++i)
        line += " " + DescribeMessage(failure.getMessageSet()[i]);
    if (const auto* const extended = dynamic_cast<const QEExceptionExtended*>(&failure)) {
        line += " @" + std::to_string(extended->GetPosition());
        line += extended->GetIsMacro() == 1 ? " macro" : extended->GetIsMacro() == 0 ? "" : " [macro flag]";
        if (extended->GetToPosition() != -1) line += " [to " + std::to_string(extended->GetToPosition()) + "]";
    }
    for (const ZBLException::BackTraceEntry& place : failure.getBackTrace()) {
        line += " " + place.path + ":" + std::to_string(place.line);
        if (place.component != "QE" || place.macroName != "ZBL_THROW")
            line += "[" + place.component + " " + place.macroName + "]";
    }
    return line;
}

// The failure that the call ends in, with a kind in front of any that is not the library's; or "nothing thrown".
template <class Call>
std::string FailureOf(Call&& call) {
    try {
        call();
    } catch (const ZBLException& failure) {
        return DescribeFailure(failure);
    } catch (const std::exception& failure) {
        return std::string("std: ") + failure.what();
    } catch (const char* text) {
        return std::string("text: ") + text;
    }
    return "nothing thrown";
}

} // namespace brindle_test
