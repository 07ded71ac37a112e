#include "Diagnostic.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace brindle_tool {
namespace {

constexpr const char* kProgram = "brindle";
constexpr const char* kReplacement = "\xEF\xBF\xBD";
constexpr const char* kCut = "...";

// Of a clipped line, in characters.
constexpr std::int64_t kShownBeforeCaret = 60;
constexpr std::int64_t kShownBehindCaret = 40;
constexpr std::size_t kTabStop = 8;

bool IsBetween(std::string_view character, std::string_view first, std::string_view last) {
    return character.size() == first.size() && character >= first && character <= last;
}

// Whether a line ends behind the byte; the CR of CR LF doesn't end one.
bool EndsLine(std::string_view text, std::size_t byte) {
    if (text[byte] == '\n') return true;
    return text[byte] == '\r' && (byte + 1 == text.size() || text[byte + 1] != '\n');
}

// Steps to the next character; stays at the last one and answers false.
bool Advance(std::string_view text, Place& place) {
    if (place.byte >= text.size()) return false;
    const std::size_t next = place.byte + CharacterAt(text, place.byte).size();
    if (next >= text.size()) return false;
    if (EndsLine(text, place.byte)) {
        ++place.line;
        place.column = 1;
        place.lineBegin = next;
    } else {
        ++place.column;
    }
    place.byte = next;
    return true;
}

bool UseColour() {
    const char* const refused = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    if (refused != nullptr && *refused != '\0') return false;
    if (terminal == nullptr || std::string_view(terminal) == "dumb") return false;
    return isatty(STDERR_FILENO) != 0;
}

} // namespace

std::string_view CharacterAt(std::string_view text, std::size_t begin) {
    const auto lead = static_cast<unsigned char>(text[begin]);
    return text.substr(begin, lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4);
}

bool IsControl(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character.front());
    return lead < 0x20 || lead == 0x7F || IsBetween(character, "\xC2\x80", "\xC2\x9F") ||
           IsBetween(character, "\xE2\x80\xA8", "\xE2\x80\xAE") ||
           IsBetween(character, "\xE2\x81\xA6", "\xE2\x81\xA9") || character == "\xEF\xBB\xBF";
}

Failure::Failure(std::string what) : m_diagnostic{kProgram, std::move(what)} {}

void Show(const Diagnostic& diagnostic) {
    const bool colour = UseColour();
    const std::string where = diagnostic.where.empty() ? "''" : diagnostic.where; // a file without a name
    std::string text = colour ? "\x1b[1m" + where + ":\x1b[0m " : where + ": ";
    text += diagnostic.what + "\n";
    if (colour && !diagnostic.excerpt.empty()) {
        std::string excerpt = diagnostic.excerpt;
        excerpt.insert(excerpt.size() - 2, "\x1b[1;31m");
        excerpt.insert(excerpt.size() - 1, "\x1b[0m");
        text += excerpt;
    } else {
        text += diagnostic.excerpt;
    }
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void ShowNote(const std::string& what) { Show({kProgram, "note: " + what}); }

std::string Printable(std::string_view text, std::size_t limit) {
    const I18NString wellFormed(text);
    const std::string_view bytes = wellFormed.bytes();
    std::string shown;
    std::size_t count = 0;
    bool blank = false;
    for (std::size_t at = 0; at < bytes.size(); at += CharacterAt(bytes, at).size()) {
        const std::string_view character = CharacterAt(bytes, at);
        if (character.find_first_of(" \t\r\n") == 0) {
            blank = count > 0;
            continue;
        }
        count += blank ? 2 : 1;
        if (count > limit) return shown + kCut;
        if (blank) shown += ' ';
        blank = false;
        shown += IsControl(character) ? kReplacement : character;
    }
    return shown;
}

Place FindPlaceOfCharacter(const I18NString& text, std::int64_t character) {
    const std::string_view bytes = text.bytes();
    Place place;
    for (std::int64_t number = 1; number < character && Advance(bytes, place); ++number) {
    }
    return place;
}

Place FindPlaceOfByte(const I18NString& text, std::size_t byte) {
    const std::string_view bytes = text.bytes();
    Place place;
    Place next;
    while (Advance(bytes, next) && next.byte <= byte)
        place = next;
    return place;
}

std::string ToText(const Place& place) { return std::to_string(place.line) + ":" + std::to_string(place.column); }

std::string Excerpt(const I18NString& text, const Place& place) {
    const std::string_view bytes = text.bytes();
    if (bytes.empty()) return {};
    std::size_t at = place.lineBegin;
    std::int64_t column = 1;
    for (; place.column - column > kShownBeforeCaret; ++column)
        at += CharacterAt(bytes, at).size();
    std::string line = column > 1 ? kCut : "";
    std::size_t width = line.size();
    std::size_t caret = width;
    for (; at < bytes.size(); ++column) {
        const std::string_view character = CharacterAt(bytes, at);
        if (at <= place.byte) caret = width;
        if (character == "\n" || character == "\r") break;
        if (column > place.column + kShownBehindCaret) {
            line += kCut;
            break;
        }
        if (character == "\t") {
            const std::size_t blanks = kTabStop - width % kTabStop;
            line.append(blanks, ' ');
            width += blanks;
        } else {
            line += IsControl(character) ? kReplacement : character;
            ++width;
        }
        at += character.size();
    }
    return line + "\n" + std::string(caret, ' ') + "^\n";
}

} // namespace brindle_tool
