#include "Mortise/AUT_Text.h"

#include <charconv>
#include <climits>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>

#include "ZBLCore/ZBLTextSubstitution.h"

namespace {

constexpr char asciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
constexpr char asciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

// Turkish and Azerbaijani pair "i" and "I" with letters of their own; every other language maps ASCII text alike.
bool hasOwnRulesForAscii(const I18NLocale& locale) {
    const std::string_view name = locale.getName().bytes();
    std::string language;
    for (const char c : name.substr(0, name.find_first_of("-_@.")))
        language += asciiLower(c);
    return language == "tr" || language == "tur" || language == "az" || language == "aze";
}

template <char (*mapCharacter)(char)>
I18NString mapAscii(const I18NString& text) {
    std::string bytes(text.bytes());
    for (char& c : bytes)
        c = mapCharacter(c);
    return I18NString::fromValidUtf8(std::move(bytes), text.size());
}

using CaseMapping = void (*)(const char*, std::uint32_t, icu::StringPiece, icu::ByteSink&, icu::Edits*, UErrorCode&);

I18NString mapByUnicode(CaseMapping mapping, const I18NString& text, const I18NLocale& locale) {
    const std::string_view bytes = text.bytes();
    std::string mapped;
    icu::StringByteSink<std::string> sink(&mapped, static_cast<std::int32_t>(bytes.size()));
    UErrorCode status = U_ZERO_ERROR;
    mapping(locale.getName().c_str(), 0, icu::StringPiece(bytes.data(), static_cast<std::int32_t>(bytes.size())), sink,
            nullptr, status);
    // Text of this type is well-formed and of a length that ICU takes, so that only memory can be wanting.
    if (U_FAILURE(status)) throw std::bad_alloc();
    return I18NString(std::string_view(mapped));
}

char32_t foldCodePoint(I18NCodePoint c) {
    if (c < 0x80) return static_cast<char32_t>(asciiLower(static_cast<char>(c)));
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
}

} // namespace

const I18NString& AUT_GetEmptyString() {
    static const I18NString& empty = *new I18NString();
    return empty;
}

const I18NLocale& AUT_DefaultLocale() {
    static const I18NLocale& locale = *new I18NLocale("en-us");
    return locale;
}

I18NString AUT_ToLower(const I18NString& text, const I18NLocale& locale) {
    if (text.isAscii() && !hasOwnRulesForAscii(locale)) return mapAscii<asciiLower>(text);
    return mapByUnicode(&icu::CaseMap::utf8ToLower, text, locale);
}

I18NString AUT_ToUpper(const I18NString& text, const I18NLocale& locale) {
    if (text.isAscii() && !hasOwnRulesForAscii(locale)) return mapAscii<asciiUpper>(text);
    return mapByUnicode(&icu::CaseMap::utf8ToUpper, text, locale);
}

int AUT_CaseInsensitiveCompare(const I18NString& left, const I18NString& right) {
    auto l = left.begin();
    auto r = right.begin();
    const auto leftEnd = left.end();
    const auto rightEnd = right.end();
    for (; l != leftEnd && r != rightEnd; ++l, ++r) {
        const char32_t a = foldCodePoint(*l);
        const char32_t b = foldCodePoint(*r);
        if (a != b) return a < b ? -1 : 1;
    }
    if (l != leftEnd) return 1;
    return r == rightEnd ? 0 : -1;
}

I18NString AUT_ToString(std::int64_t value, int radix) {
    char digits[1 + 64];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, radix < 2 || radix > 36 ? 10 : radix).ptr;
    return I18NString(digits, static_cast<std::size_t>(end - digits));
}

int AUT_ToInt(const I18NString& text) {
    std::string_view digits = text.bytes();
    const std::size_t blanks = digits.find_first_not_of(" \t\n\v\f\r");
    if (blanks == std::string_view::npos) return 0;
    digits.remove_prefix(blanks);
    const bool negative = digits.front() == '-';
    if (negative || digits.front() == '+') digits.remove_prefix(1);

    unsigned magnitude = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
    const unsigned bound = negative ? static_cast<unsigned>(INT_MAX) + 1 : static_cast<unsigned>(INT_MAX);
    if (result.ec == std::errc::result_out_of_range || magnitude > bound) magnitude = bound;
    return static_cast<int>(negative ? 0 - magnitude : magnitude);
}

I18NString AUT_I18NLatin1Literal(const char* bytes) {
    return bytes == nullptr ? I18NString() : I18NString(bytes, std::strlen(bytes), "iso-8859-1");
}

void AUT_SimpleSubstituteText(I18NString& text, const I18NString& p1, const I18NString& p2, const I18NString& p3,
                              const I18NString& p4, const I18NString& p5, const I18NString& p6, const I18NString& p7,
                              const I18NString& p8, const I18NString& p9, const I18NString& p10, const I18NString& p11,
                              const I18NString& p12, const I18NString& p13, const I18NString& p14,
                              const I18NString& p15, const I18NString& p16) {
    const I18NString* const parameters[] = {&p1, &p2,  &p3,  &p4,  &p5,  &p6,  &p7,  &p8,
                                            &p9, &p10, &p11, &p12, &p13, &p14, &p15, &p16};
    text = ZBLSubstituteText(text, parameters);
}
