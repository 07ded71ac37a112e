// sort and unique order the texts by keys that lie side by side, and go to a text itself only where its key doesn't
// decide.
#include "QMListFunctions.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <utility>

#include "QMMacroPattern.h"

namespace {

using enum AQM_MacroValue::MacroValueType;

void AddString(AQM_MacroValueArray& array, I18NString text) {
    array.AddValue(new AQM_MacroValueString(std::move(text)));
}

// A text with what decides most comparisons beside it: the first eight bytes behind what all texts of the list begin
// with, as a number, and whether these are all it has. The texts lie scattered in memory, so a sort that went to each
// of them would wait for most.
struct SortKey {
    std::uint64_t head;
    const I18NString* text;
    std::uint32_t index;     // its place among the others
    std::uint32_t wholeSize; // bytes behind the common beginning if the head has them all, else more than it can hold

    friend std::strong_ordering CompareTexts(const SortKey& a, const SortKey& b) {
        if (a.head != b.head) return a.head <=> b.head;
        if (a.wholeSize <= sizeof a.head && b.wholeSize <= sizeof b.head) return a.wholeSize <=> b.wholeSize;
        return *a.text <=> *b.text;
    }
    friend bool operator<(const SortKey& a, const SortKey& b) {
        const auto order = CompareTexts(a, b);
        return order == 0 ? a.index < b.index : order < 0;
    }
};

std::size_t CommonBeginning(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

std::vector<SortKey> KeysOf(const AQM_MacroValueArray& array) {
    std::vector<SortKey> keys;
    keys.reserve(array.GetValues().size());
    std::string_view common;
    QMForEachString(array, [&](const I18NString& text) {
        common = keys.empty() ? text.bytes() : common.substr(0, CommonBeginning(common, text.bytes()));
        keys.push_back({0, &text, static_cast<std::uint32_t>(keys.size()), 0});
    });
    for (SortKey& key : keys) {
        const std::string_view rest = key.text->bytes().substr(common.size());
        const std::size_t size = std::min(rest.size(), sizeof key.head);
        for (const char byte : rest.substr(0, size))
            key.head = key.head << 8 | static_cast<unsigned char>(byte);
        if (size > 0) key.head <<= 8 * (sizeof key.head - size);
        key.wholeSize = static_cast<std::uint32_t>(std::min(rest.size(), sizeof key.head + 1));
    }
    return keys;
}

// Appends the keys' texts that `isWanted` takes, in order. Each text is asked for a few steps ahead, so that memory has
// it by then.
template <class IsWanted>
void AddTexts(AQM_MacroValueArray& array, const std::vector<SortKey>& keys, const IsWanted& isWanted) {
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i + kAhead < keys.size()) __builtin_prefetch(keys[i + kAhead].text);
        if (isWanted(keys[i])) array.AddValue(new AQM_MacroValueString(*keys[i].text));
    }
}

I18NString Piece(std::string_view bytes) {
    I18NString piece;
    piece.appendValidUtf8(bytes);
    return piece;
}

// An empty separator occurs nowhere, so the whole text is the one piece.
void Split(const I18NString& text, const I18NString& separator, AQM_MacroValueArray& pieces) {
    const std::string_view bytes = text.bytes();
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = I18NFindBytes(bytes, separator.bytes(), begin)) != std::string_view::npos;
         begin = end + separator.bytes().size())
        AddString(pieces, Piece(bytes.substr(begin, end - begin)));
    AddString(pieces, Piece(bytes.substr(begin)));
}

I18NString Substitute(const I18NString& text, const MF_Pattern& pattern, const I18NString& replacement) {
    const std::string_view bytes = text.bytes();
    const MF_Pattern::Match match = pattern.Find(bytes);
    if (!match) return text;
    I18NString result;
    result.appendValidUtf8(bytes.substr(0, static_cast<std::size_t>(match.begin)));
    result.append(replacement);
    result.appendValidUtf8(bytes.substr(static_cast<std::size_t>(match.end)));
    return result;
}

} // namespace

MF_Join::MF_Join() : MF_BuiltIn("join", {MVT_String, MVT_Array}, MVT_String) {}

std::unique_ptr<AQM_MacroValue> MF_Join::Call(const Arguments& arguments) const {
    if (arguments.Count() != 2) FailCount(3511);
    const I18NString& separator = RequireString(arguments, 0, 3512);
    if (const AQM_MacroValueString* const text = QMAsString(arguments[1])) return QMMakeString(text->GetValue());
    I18NString joined;
    if (const AQM_MacroValueArray* const array = QMAsArray(arguments[1])) {
        bool isFirst = true;
        for (const AQM_MacroValue* const element : array->GetValues()) {
            if (const AQM_MacroValueString* const text = QMAsString(element)) {
                if (!isFirst) joined += separator;
                joined += text->GetValue();
            }
            isFirst = false;
        }
    }
    return QMMakeString(std::move(joined));
}

MF_Split::MF_Split() : MF_BuiltIn("split", {MVT_String, MVT_Array}, MVT_Array) {}

std::unique_ptr<AQM_MacroValue> MF_Split::Call(const Arguments& arguments) const {
    if (arguments.Count() != 2) FailCount(3521);
    const I18NString& separator = RequireString(arguments, 0, 3522);
    auto pieces = std::make_unique<AQM_MacroValueArray>();
    if (const AQM_MacroValueString* const text = QMAsString(arguments[1])) Split(text->GetValue(), separator, *pieces);
    if (const AQM_MacroValueArray* const array = QMAsArray(arguments[1]))
        QMForEachString(*array, [&](const I18NString& text) { Split(text, separator, *pieces); });
    return pieces;
}

MF_Grep::MF_Grep() : MF_BuiltIn("grep", {MVT_String, MVT_Array}, MVT_Array) {}

std::unique_ptr<AQM_MacroValue> MF_Grep::Call(const Arguments& arguments) const {
    if (arguments.Count() < 2) FailTooFew(arguments, 2, 3531);
    if (arguments.Count() > 2) FailTooMany(arguments, 2, 3532);
    const MF_Pattern pattern(RequireString(arguments, 0, 3533), *this);
    const AQM_MacroValueArray& array = RequireArray(arguments, 1, 3534);
    auto found = std::make_unique<AQM_MacroValueArray>();
    QMForEachString(array, [&](const I18NString& text) {
        if (static_cast<bool>(pattern.Find(text.bytes())) != pattern.IsNegated()) AddString(*found, text);
    });
    return found;
}

MF_Sort::MF_Sort() : MF_BuiltIn("sort", {MVT_Array}, MVT_Array) {}

std::unique_ptr<AQM_MacroValue> MF_Sort::Call(const Arguments& arguments) const {
    if (arguments.Count() != 1) FailCount(3541);
    std::vector<SortKey> keys = KeysOf(RequireArray(arguments, 0, 3542));
    std::sort(keys.begin(), keys.end());
    auto sorted = std::make_unique<AQM_MacroValueArray>();
    AddTexts(*sorted, keys, [](const SortKey&) { return true; });
    return sorted;
}

MF_Unique::MF_Unique() : MF_BuiltIn("unique", {MVT_Array}, MVT_Array) {}

std::unique_ptr<AQM_MacroValue> MF_Unique::Call(const Arguments& arguments) const {
    if (arguments.Count() != 1) FailCount(3551);
    std::vector<SortKey> keys = KeysOf(RequireArray(arguments, 0, 3552));
    const std::vector<SortKey> inOrder = keys;
    std::sort(keys.begin(), keys.end());
    std::vector<bool> isRepeated(keys.size());
    for (std::size_t i = 1; i < keys.size(); ++i)
        isRepeated[keys[i].index] = CompareTexts(keys[i], keys[i - 1]) == 0;
    auto distinct = std::make_unique<AQM_MacroValueArray>();
    AddTexts(*distinct, inOrder, [&](const SortKey& key) { return !isRepeated[key.index]; });
    return distinct;
}

MF_Substitute::MF_Substitute() : MF_BuiltIn("substitute", {MVT_String, MVT_String, MVT_Array}, MVT_Array) {}

std::unique_ptr<AQM_MacroValue> MF_Substitute::Call(const Arguments& arguments) const {
    if (arguments.Count() != 3) FailCount(3561);
    const MF_Pattern pattern(RequireString(arguments, 0, 3562), *this);
    const I18NString& replacement = RequireString(arguments, 1, 3563);
    if (const AQM_MacroValueString* const text = QMAsString(arguments[2]))
        return QMMakeString(Substitute(text->GetValue(), pattern, replacement));
    if (const AQM_MacroValueArray* const array = QMAsArray(arguments[2]))
        return QMMapStrings(*array, [&](const I18NString& text) { return Substitute(text, pattern, replacement); });
    return nullptr;
}

MF_CSV::MF_CSV() : MF_BuiltIn("csv", {MVT_Array}, MVT_String) {}

std::unique_ptr<AQM_MacroValue> MF_CSV::Call(const Arguments& arguments) const {
    if (arguments.Count() < 1) FailTooFew(arguments, 1, 3571);
    if (arguments.Count() > 3) FailTooMany(arguments, 3, 3572);
    const AQM_MacroValueArray& array = RequireArray(arguments, 0, 3573);
    const I18NString separator = arguments.Count() > 1 ? RequireString(arguments, 1, 3574) : I18NString(",");
    const I18NString quote = arguments.Count() > 2 ? RequireString(arguments, 2, 3575) : I18NString("'");
    const I18NString between = quote + separator + quote;
    std::size_t room = quote.bytes().size();
    QMForEachString(array, [&](const I18NString& text) { room += between.bytes().size() + text.bytes().size(); });
    I18NString line;
    line.reserve(std::min(room, I18NString::kMaxBytes));
    QMForEachString(array, [&](const I18NString& text) {
        line += line.empty() ? quote : between;
        QMAppendDoubled(line, text, quote);
    });
    if (!line.empty()) line += quote;
    return QMMakeString(std::move(line));
}
