// The macro language's error object: every complaint of the scanner or the parser leaves as an exception at once.
#pragma once

#include <cstdint>
#include <ostream>

#include "QEException.h"

#include "QUYyRuntime.h"

// Borrows the stream and the location object for its life. One thread at a time.
class AQU_YYError : public yy_err_obj {
public:
    explicit AQU_YYError(std::ostream& stream);

    // Who tells the place of an error; null for nobody.
    void SetLocation(yy_loc_obj* location) { m_location = location; }

    // Throws QEExceptionExtended, code 901, with the location message, the position and the macro flag, for the two
    // codes of the scanner and the parser; any other code goes to ReportParserError.
    void yy_err_vreport(int code, va_list arguments) override;
    // Throws QEExceptionExtended, code 901, message 0x35da12be with the code: an error inside the runtime.
    [[noreturn]] void ReportParserError(int code);
    // Throws QEException, code 901, message 0x35d5e2f1, "text too complex".
    [[noreturn]] void yy_err_exit() override;
    // Writes the formatted text to the stream, cut to 4095 bytes; an empty one writes nothing.
    void yy_err_vprintf(const char* format, va_list arguments) override;

    void SetIsMacro(int newIsMacro) override { isMacro = newIsMacro; }
    int GetIsMacro() const { return isMacro; }
    int GetErrorCount() const { return errorCount; }
    std::int32_t GetPosition() const { return position; }
    void SetPosition(std::int32_t newPosition) { position = newPosition; }
    void SetLocationMessage(const QEMessage& message) { locationMessage = message; }

    // Back to the state of a new object.
    void Reset();

private:
    void FindLocation();

    int errorCount = 0;
    std::int32_t position = -1;
    QEMessage locationMessage;
    int isMacro = 0;

    std::ostream& m_stream;
    yy_loc_obj* m_location = nullptr;
};
