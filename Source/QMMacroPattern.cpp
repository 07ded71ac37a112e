// A pattern is read once, into a literal and three flags; to match is then to look for the literal's bytes.
#include "QMMacroPattern.h"

#include "ZBLCore/I18NCodePoint.h"

MF_Pattern::MF_Pattern(const I18NString& pattern, const MF_BuiltIn& function) : owner(&function) {
    if (!Read(pattern)) owner->FailPattern(pattern, 3601);
}

// Answers false at the first character that can't stand where it does.
bool MF_Pattern::Read(const I18NString& pattern) {
    const I18NString::index length = pattern.length();
    literal.reserve(pattern.bytes().size());
    I18NString::index position = 0;
    for (I18NStringIterator at = pattern.begin(); at != pattern.end(); ++at, ++position) {
        const I18NCodePoint character = *at;
        switch (character) {
        case U'!':
            if (position != 0) return false;
            negate = true;
            break;
        case U'^':
            if (position != (negate ? 1 : 0)) return false;
            anchorStart = true;
            break;
        case U'$':
            if (position != length - 1) return false;
            anchorEnd = true;
            break;
        case U'\\':
            if (position == length - 1) return false;
            ++at;
            ++position;
            if (I18NCodePointIsAlphanumeric(*at)) return false;
            literal.append(*at);
            break;
        case U'|':
        case U'(':
        case U')':
        case U'[':
        case U'{':
        case U'*':
        case U'+':
        case U'.':
        case U'?':
            return false;
        default:
            literal.append(character);
            break;
        }
    }
    return true;
}

MF_Pattern::Match MF_Pattern::Find(std::string_view text) const {
    const std::string_view wanted = literal.bytes();
    const auto size = static_cast<std::ptrdiff_t>(wanted.size());
    const auto textSize = static_cast<std::ptrdiff_t>(text.size());
    if (anchorEnd) {
        const bool matches = anchorStart ? text == wanted : text.ends_with(wanted);
        return matches ? Match{textSize - size, textSize} : Match{};
    }
    if (anchorStart) return text.starts_with(wanted) ? Match{0, size} : Match{};
    const std::size_t begin = wanted.empty() ? 0 : I18NFindBytes(text, wanted);
    if (begin == std::string_view::npos) return {};
    return {static_cast<std::ptrdiff_t>(begin), static_cast<std::ptrdiff_t>(begin) + size};
}
