// The parser runtime's view of its surroundings: where the bytes come from, who can tell a place in them, and who takes
// the errors. The scanner and the parser know these classes alone; the macro language's own input and error objects
// derive from them. All of them serve one thread at a time.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string_view>

// Codes of the errors that the runtime reports.
inline constexpr int kYySyntaxError = 100;      // the parser has no action for a token
inline constexpr int kYyIllegalCharacter = 110; // the scanner has no token that goes on with a byte

class yy_err_obj;

// Something that can tell the error object where the reader stands.
class yy_loc_obj {
public:
    virtual ~yy_loc_obj() = default;
    virtual void yy_loc_print_self(yy_err_obj* error) = 0;
};

// A text in memory, borrowed for one run, and how far its current token reaches. Offsets are bytes, from 0.
class yy_inp_obj {
public:
    std::string_view GetText() const { return m_text; }
    void SetText(const char* bytes, std::size_t length) {
        m_text = std::string_view(bytes, length);
        m_tokenEnd = 0;
    }
    // The place directly behind the current token, for a report that may follow.
    void SetTokenEnd(std::size_t offset) { m_tokenEnd = offset; }
    std::size_t GetTokenEnd() const { return m_tokenEnd; }

protected:
    ~yy_inp_obj() = default;

private:
    std::string_view m_text;
    std::size_t m_tokenEnd = 0;
};

// Takes what the scanner and the parser complain of. The implementation throws; nothing is ever resumed.
class yy_err_obj {
public:
    virtual ~yy_err_obj() = default;
    virtual void yy_err_vreport(int code, va_list arguments) = 0;
    virtual void yy_err_vprintf(const char* format, va_list arguments) = 0;
    // The runtime can't go on.
    [[noreturn]] virtual void yy_err_exit() = 0;
    // Whether the reader is inside a macro block; the scanner keeps it up to date.
    virtual void SetIsMacro(int isMacro) = 0;

    // kYySyntaxError takes the token's first byte and its length (both int, in bytes of the input); kYyIllegalCharacter
    // the byte (int, -1 for the end of the input), and length (int) and text (const char*) of the token so far.
    void yy_err_report(int code, ...) {
        va_list arguments;
        va_start(arguments, code);
        Guard guard{arguments};
        yy_err_vreport(code, arguments);
    }

private:
    struct Guard {
        va_list& arguments;
        ~Guard() { va_end(arguments); }
    };
};
