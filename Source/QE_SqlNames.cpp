// Object names in brackets and physical SQL names in double quotes.
#include "AQE_SqlNames.h"

#include <atomic>
#include <string_view>

#include "Mortise/AUT_I_UserConfiguration.h"

#include "AQE_TextUtilities.h"
#include "AQU_SQLKeyword.h"

namespace {

// Read once in a process. Threads that race for the first read store the same answer, so no lock is needed.
bool QuotesAreForced() {
    enum : int { kNotRead = -1, kOff = 0, kOn = 1 };
    static std::atomic<int> setting{kNotRead};
    int known = setting.load(std::memory_order_relaxed);
    if (known == kNotRead) {
        known = AUT_I_UserConfiguration::Create(1)->GetInteger("Transformations", "DoubleQuotes", 0) != 0 ? kOn : kOff;
        setting.store(known, std::memory_order_relaxed);
    }
    return known == kOn;
}

// Whether the character at `at`, which isn't the end, comes twice in a row; what is read at the end is no character.
bool IsDoubled(I18NStringIterator at) {
    const I18NCodePoint character = *at;
    return *++at == character;
}

} // namespace

I18NString AQE_MakeObjectName(const I18NString& a) { return "[" + AQE_ConvertNamepartToString(a) + "]"; }

I18NString AQE_MakeObjectName(const I18NString& a, const I18NString& b) {
    return AQE_MakeObjectName(a) + "." + AQE_MakeObjectName(b);
}

I18NString AQE_MakeObjectName(const I18NString& a, const I18NString& b, const I18NString& c) {
    return AQE_MakeObjectName(a, b) + "." + AQE_MakeObjectName(c);
}

I18NString AQE_ConvertNamepartToString(const I18NString& part) { return AQE_SearchAndReplace(part, "]", "]]"); }

I18NString AQE_ConvertNamepartToString(const std::vector<I18NString>& parts) {
    I18NString name;
    for (const I18NString& part : parts) {
        if (!name.empty()) name += ".";
        name += AQE_MakeObjectName(part);
    }
    return name;
}

bool AQE_ExtractNamePartsFromString(I18NString text, std::vector<I18NString>& parts) {
    enum class State { ExpectPart, InPart, AfterPart };
    State state = State::ExpectPart;
    for (I18NStringIterator at = text.begin(); at != text.end(); ++at) {
        const I18NCodePoint character = *at;
        switch (state) {
        case State::ExpectPart:
            if (character != '[' && character != '.') return false;
            parts.emplace_back();
            if (character == '[') state = State::InPart;
            break;
        case State::InPart:
            if (character == ']' && !IsDoubled(at)) {
                state = State::AfterPart;
                break;
            }
            parts.back().append(character);
            if (character == ']') ++at;
            break;
        case State::AfterPart:
            if (character != '.') return false;
            state = State::ExpectPart;
            break;
        }
    }
    if (state == State::ExpectPart) parts.emplace_back();
    return state != State::InPart;
}

I18NString AQE_ReplaceGroupQueryObject(const I18NString& oldGroup, const I18NString& oldObject,
                                       const I18NString& newGroup, const I18NString& newObject,
                                       const I18NString& text) {
    return AQE_SearchAndReplace(text, "[" + oldGroup + "].[" + oldObject + "]",
                                "[" + newGroup + "].[" + newObject + "]");
}

I18NString AQE_ConvertNamepartToLiteral(const I18NString& part) { return AQE_SearchAndReplace(part, "'", "''"); }

I18NString AQE_MakeValidSqlIdentifier(const I18NString& name) {
    if (name.empty()) return name;
    I18NString identifier;
    identifier.reserve(name.bytes().size() + 2);
    if (!I18NCodePointIsLetter(*name.begin())) identifier += "C_";
    for (const I18NCodePoint character : name)
        identifier.append(I18NCodePointIsAlphanumeric(character) ? character : I18NCodePoint('_'));
    return identifier;
}

I18NString AQE_RemoveDoubleQuotes(const I18NString& name) {
    const std::string_view bytes = name.bytes();
    if (name.size() < 2) return name;
    const bool quoted = bytes.front() == '"' && bytes.back() == '"';
    I18NString inner = quoted ? I18NString(bytes.substr(1, bytes.size() - 2)) : name;
    AQE_SearchAndReplace(inner, "\"\"", "\"", inner);
    return inner;
}

I18NString AQE_MakePhysicalSqlName(const I18NString& name) {
    const bool forced = QuotesAreForced();
    I18NString plain = AQE_RemoveDoubleQuotes(name);
    if (plain.empty()) return plain;
    if (!forced && plain == AQE_MakeValidSqlIdentifier(plain) && !AQU_SQLKeyword::IsKeyword(plain)) return plain;
    return "\"" + AQE_SearchAndReplace(plain, "\"", "\"\"") + "\"";
}
