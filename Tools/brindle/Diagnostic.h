// How the tool speaks on standard error: one line "where: what", and for a failure with a position the source line with
// a caret below. What comes from files and the command line is shown without control characters, so that it can't steer
// a terminal, and clipped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "ZBLCore/I18NString.h"

namespace brindle_tool {

struct Diagnostic {
    std::string where;        // "FILE", "FILE:line:column" or the program's name
    std::string what;         // lower case, no full stop
    std::string excerpt = {}; // two whole lines, or nothing
};

// What was refused, and ends the command with kRefused.
class Failure : public std::exception {
public:
    explicit Failure(Diagnostic shown) : m_diagnostic(std::move(shown)) {}
    // A failure that belongs to no file.
    explicit Failure(std::string what);
    const Diagnostic& diagnostic() const { return m_diagnostic; }
    const char* what() const noexcept override { return m_diagnostic.what.c_str(); }

private:
    Diagnostic m_diagnostic;
};

// In colour if standard error is a terminal and NO_COLOR isn't set.
void Show(const Diagnostic& diagnostic);

// One line from the program that doesn't change the exit status.
void ShowNote(const std::string& what);

// Text of any origin fit for a message: ill-formed UTF-8 and control characters become U+FFFD, white space one blank,
// and what exceeds `limit` characters is replaced by "...".
std::string Printable(std::string_view text, std::size_t limit = 400);

// The bytes of the character that begins at the offset of a well-formed text.
std::string_view CharacterAt(std::string_view text, std::size_t begin);

// Control characters, line separators, the marks that turn the direction of writing, and the byte-order mark.
bool IsControl(std::string_view character);

// Where a character lies in a text. Lines end with LF, CR LF or CR and count, as columns in characters do, from 1; a
// line end belongs to the line that it ends.
struct Place {
    std::int64_t line = 1;
    std::int64_t column = 1;
    std::size_t lineBegin = 0; // byte offsets
    std::size_t byte = 0;
};

// The character counted from 1, or the one that holds the byte at the offset. Both are brought into the text; a text
// without characters has the place 1:1.
Place FindPlaceOfCharacter(const I18NString& text, std::int64_t character);
Place FindPlaceOfByte(const I18NString& text, std::size_t byte);

// "line:column".
std::string ToText(const Place& place);

// The line with the caret below it, each with its line end. Tabs reach to the next multiple of eight columns; a long
// line is cut down to the neighbourhood of the caret.
std::string Excerpt(const I18NString& text, const Place& place);

} // namespace brindle_tool
