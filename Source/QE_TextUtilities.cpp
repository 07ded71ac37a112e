// The text routines work over UTF-8 bytes or by iterator, never by position, so that they stay linear in texts outside
// ASCII too. A piece between two matches of well-formed text, or two ASCII characters, is well-formed itself. Results
// are built aside and assigned at the end: an output may be the same object as an argument.
#include "AQE_TextUtilities.h"

#include <cctype>
#include <string_view>
#include <utility>

I18NString& AQE_SearchAndReplace(const I18NString& source, const I18NString& search, const I18NString& replace,
                                 I18NString& out) {
    const std::string_view text = source.bytes();
    const std::string_view pattern = search.bytes();
    std::size_t found = I18NFindBytes(text, pattern);
    if (found == std::string_view::npos) return out = source;

    I18NString result;
    result.reserve(text.size());
    std::size_t begin = 0;
    for (; found != std::string_view::npos; found = I18NFindBytes(text, pattern, begin)) {
        result.appendValidUtf8(text.substr(begin, found - begin));
        result.append(replace);
        begin = found + pattern.size();
    }
    result.appendValidUtf8(text.substr(begin));
    return out = std::move(result);
}

I18NString AQE_SearchAndReplace(const I18NString& source, const I18NString& search, const I18NString& replace) {
    I18NString result;
    AQE_SearchAndReplace(source, search, replace, result);
    return result;
}

char* AQE_StrToLower(char* text) {
    for (char* at = text; *at != '\0'; ++at)
        *at = static_cast<char>(std::tolower(static_cast<unsigned char>(*at)));
    return text;
}

void AQE_Trim(I18NString& text, int mode) {
    constexpr int kLeading = 1;
    constexpr int kTrailing = 2;
    if (text.empty() || mode < kLeading || mode > (kLeading | kTrailing)) return;

    I18NStringIterator first = text.begin();
    I18NStringIterator end = text.end();
    if (mode & kLeading)
        while (first != end && I18NCodePointIsWhitespace(*first))
            ++first;
    if ((mode & kTrailing) && first != end) {
        I18NStringIterator last = end;
        --last;
        while (last != first && I18NCodePointIsWhitespace(*last))
            --last;
        end = ++last;
    }
    if (first != text.begin() || end != text.end()) text = I18NString(first, end);
}

bool AQE_IsMacro(const I18NString& text) {
    I18NStringIterator first = text.begin();
    const I18NStringIterator end = text.end();
    while (first != end && I18NCodePointIsWhitespace(*first))
        ++first;
    if (first == end || *first != '#') return false;

    I18NStringIterator last = end;
    --last;
    while (last != first && I18NCodePointIsWhitespace(*last))
        --last;
    return last != first && *last == '#';
}

void AQE_SubstituteText(I18NString& text, const std::vector<I18NString>& args) {
    const std::string_view bytes = text.bytes();
    I18NString result;
    std::size_t begin = 0;
    for (std::size_t at = bytes.find('%'); at != std::string_view::npos; at = bytes.find('%', at + 1)) {
        if (at + 1 == bytes.size()) break;
        const char digit = bytes[at + 1];
        if (digit < '1' || digit > '4') continue;
        const auto arg = static_cast<std::size_t>(digit - '1');
        if (arg >= args.size()) continue;
        result.appendValidUtf8(bytes.substr(begin, at - begin));
        result.append(args[arg]);
        begin = at + 2;
    }
    if (begin == 0) return;
    result.appendValidUtf8(bytes.substr(begin));
    text = std::move(result);
}

void AQE_SubstituteText(I18NString& text, const I18NString& a) { AQE_SubstituteText(text, std::vector<I18NString>{a}); }

void AQE_SubstituteText(I18NString& text, const I18NString& a, const I18NString& b) {
    AQE_SubstituteText(text, std::vector<I18NString>{a, b});
}

void AQE_SubstituteText(I18NString& text, const I18NString& a, const I18NString& b, const I18NString& c) {
    AQE_SubstituteText(text, std::vector<I18NString>{a, b, c});
}

void AQE_SubstituteText(I18NString& text, const I18NString& a, const I18NString& b, const I18NString& c,
                        const I18NString& d) {
    AQE_SubstituteText(text, std::vector<I18NString>{a, b, c, d});
}
