// A report asks the location object for the place of the error and throws.
#include "QUYyError.h"

#include <cstdio>

#include "QEMessageNumbers.h"
#include "QEThrow.h"

namespace {

constexpr long kCodeMacro = 901;
constexpr std::size_t kPrintBuffer = 4096;

} // namespace

AQU_YYError::AQU_YYError(std::ostream& stream) : locationMessage(0), m_stream(stream) {}

void AQU_YYError::FindLocation() {
    ++errorCount;
    position = -1;
    if (m_location) m_location->yy_loc_print_self(this);
}

void AQU_YYError::yy_err_vreport(int code, va_list) {
    if (code != kYySyntaxError && code != kYyIllegalCharacter) ReportParserError(code);
    FindLocation();
    QEExceptionExtended failure(ZBLSeverity::error, kCodeMacro);
    failure.SetPosition(position);
    failure.SetIsMacro(isMacro);
    failure << locationMessage;
    QELogAndThrow(failure, "Source/QUYyError", code == kYySyntaxError ? 251 : 256);
}

void AQU_YYError::ReportParserError(int code) {
    FindLocation();
    QEExceptionExtended failure(ZBLSeverity::error, kCodeMacro);
    QEMessage message(kQEMsgMacroParserInternal);
    message << ZBLMessageParm(static_cast<long>(code));
    failure << message;
    failure.SetPosition(position);
    QELogAndThrow(failure, "Source/QUYyError", 293);
}

void AQU_YYError::yy_err_exit() {
    QEException failure(ZBLSeverity::error, kCodeMacro);
    QEAddMessages(failure, kQEMsgMacroParseFailed, 1, I18NString("text too complex"));
    QELogAndThrow(failure, "Source/QUYyError", 76);
}

void AQU_YYError::yy_err_vprintf(const char* format, va_list arguments) {
    char buffer[kPrintBuffer];
    if (std::vsnprintf(buffer, sizeof buffer, format, arguments) > 0) m_stream << buffer;
}

// Without an error there is no message to forget, and most runs have none.
void AQU_YYError::Reset() {
    if (errorCount != 0) locationMessage = QEMessage(0);
    errorCount = 0;
    position = -1;
    isMacro = 0;
}
