// Nearly every character that is classified is ASCII, so a table answers for those and only the rest is looked up in
// ICU.

#include "ZBLCore/I18NCodePoint.h"

#include <array>

#include <unicode/uchar.h>

namespace {

enum : unsigned char { kLetter = 1, kDigit = 2, kWhitespace = 4 };

constexpr I18NCodePoint kAsciiEnd = 0x80;
constexpr I18NCodePoint kCodePointEnd = 0x110000;

constexpr std::array<unsigned char, kAsciiEnd> kAsciiClasses = [] {
    std::array<unsigned char, kAsciiEnd> classes{};
    for (std::size_t byte = 'a'; byte <= 'z'; ++byte)
        classes[byte] = classes[byte - 'a' + 'A'] = kLetter;
    for (std::size_t byte = '0'; byte <= '9'; ++byte)
        classes[byte] = kDigit;
    for (std::size_t byte = '\t'; byte <= '\r'; ++byte)
        classes[byte] = kWhitespace;
    classes[' '] = kWhitespace;
    return classes;
}();

bool isInClass(I18NCodePoint codePoint, int asciiClasses, UBool (*lookUp)(UChar32)) {
    if (codePoint < kAsciiEnd) return (kAsciiClasses[codePoint] & asciiClasses) != 0;
    return codePoint < kCodePointEnd && lookUp(static_cast<UChar32>(codePoint));
}

} // namespace

bool I18NCodePointIsLetter(I18NCodePoint codePoint) noexcept { return isInClass(codePoint, kLetter, u_isalpha); }

bool I18NCodePointIsAlphanumeric(I18NCodePoint codePoint) noexcept {
    return isInClass(codePoint, kLetter | kDigit, u_isalnum);
}

bool I18NCodePointIsWhitespace(I18NCodePoint codePoint) noexcept {
    return isInClass(codePoint, kWhitespace, u_isUWhiteSpace);
}
