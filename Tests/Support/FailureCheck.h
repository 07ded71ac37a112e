// A failure as one line that holds all a caller can see of it, so that a row of a table pins the whole:
//
//     EXPECT_EQ(FailureOf([&] { expander.Expand("#$#", nullptr); }),
//               R"(QEExceptionExtended 901 0x35df687a(4, "#$#") @4 macro Source/QUYyError:251)");
//
// "@4 macro" is position and macro flag, which only QEExceptionExtended has; the last word is the place of the throw.
// What every failure of the library has in common is left out, and shown in brackets where it is otherwise: severity
// error, messages of "qemsgs", one entry in the back-trace by ZBL_THROW of "QE", no end position.
#pragma once

#include <cstdio>
#include <exception>
#include <string>

#include "ZBLCore/ZBLException.h"

#include "QEException.h"

namespace brindle_test {

// Texts in quotes, numbers as they are.
inline std::string DescribeParameter(const ZBLMessageParm& parameter) {
    const std::string text(parameter.asText().bytes());
    return parameter.getKind() == ZBLMessageParm::String ? '"' + text + '"' : text;
}

inline std::string DescribeMessage(const ZBLMessageBase& message) {
    const auto* const components = dynamic_cast<const ZBLMessageComponents*>(&message);
    if (!components) return "[text]" + std::string(message.format().bytes());
    char number[24];
    std::snprintf(number, sizeof number, "0x%lx(", components->getNumber());
    std::string line = number;
    for (const ZBLMessageParm& parameter : components->getParameters())
        line += (line.back() == '(' ? "" : ", ") + DescribeParameter(parameter);
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

// The failure that the call ends in, a thrown text or the text of another standard exception behind its kind, or
// "nothing thrown".
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
