// Laws of I18NString, each against a naive model that holds a text as a vector of code points. Of the input, five bytes
// say where to cut and what to ask for; the rest is arbitrary bytes, taken for text in every encoding.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ZBLCore/I18NEncoding.h"
#include "ZBLCore/I18NString.h"

#include "FuzzCheck.h"
#include "TextModel.h"

namespace brindle_fuzz {
namespace {

using Index = I18NString::index;

// The text holds exactly the code points of the model, and all that it says of itself agrees with them.
void RequireText(const I18NString& text, const CodePoints& model, std::string_view law) {
    RequireSame(text.bytes(), EncodeUtf8(model), law);
    Require(IsWellFormed(text.bytes()), "a text is well-formed UTF-8");
    Require(text.size() == static_cast<Index>(model.size()), "size() is the number of code points");
    Require(text.isAscii() == (text.bytes().size() == model.size()), "isAscii() tells pure ASCII");
    Require(text.c_str()[text.bytes().size()] == '\0', "c_str() ends in a zero byte");
}

void RequireIteration(const I18NString& text, const CodePoints& model) {
    CodePoints forward;
    for (const I18NCodePoint codePoint : text)
        forward += codePoint;
    Require(forward == model, "iteration meets the code points in order");
    CodePoints backward;
    for (auto at = text.end(); !(at == text.begin());)
        backward += *--at;
    Require(CodePoints(backward.rbegin(), backward.rend()) == model, "iteration backwards meets them in reverse");
}

void RequirePositions(const I18NString& text, const CodePoints& model, Index position) {
    const Index size = text.size();
    Require(text.at(position) == (position < 0 || position >= size ? 0 : model[static_cast<std::size_t>(position)]),
            "at() answers the code point, 0 outside");
    const std::size_t offset = text.byteOffsetOf(position);
    const auto clamped = static_cast<std::size_t>(position < 0 ? 0 : position < size ? position : size);
    Require(offset == EncodeUtf8(model.substr(0, clamped)).size(), "byteOffsetOf() is the length of what is before");
    Require(text.positionOf(offset) == static_cast<Index>(clamped), "positionOf() undoes byteOffsetOf()");
    if (offset < text.bytes().size())
        Require(text.positionOf(offset + 1) == static_cast<Index>(clamped) + 1,
                "a code point that begins before an offset is counted");
    Require(text.positionOf(text.bytes().size() + 7) == size, "an offset beyond the end is the end");
}

void RequirePieces(const I18NString& text, const CodePoints& model, Index from, Index to) {
    RequireText(text.substring(from, to), Substring(model, from, to), "substring()");
    RequireText(text.substr(from, to), Substr(model, from, to), "substr()");
}

void RequireSearch(const I18NString& text, const CodePoints& model, const I18NString& part, const CodePoints& partModel,
                   Index from) {
    Require(text.find(part, from) == Find(model, partModel, from), "find() is the first occurrence from there on");
    Require(text.rfind(part) == FindLast(model, partModel), "rfind() is the last occurrence");
}

void RequireChanges(const I18NString& text, const CodePoints& model, const I18NString& other,
                    const CodePoints& otherModel, Index position, Index count) {
    RequireText(I18NString(text).append(other), model + otherModel, "append()");
    RequireText(text + other, model + otherModel, "operator +");
    RequireText(I18NString(text).insert(position, other), Replace(model, position, 0, otherModel), "insert()");
    RequireText(I18NString(text).replace(position, count, other), Replace(model, position, count, otherModel),
                "replace()");
    I18NString itself = text;
    RequireText(itself.replace(position, count, itself), Replace(model, position, count, model), "replace() by itself");
    itself = text;
    RequireText(itself.append(itself), model + model, "append() of itself");
    // Bytes of the string itself, cut anywhere.
    itself = text;
    const std::string_view piece =
        itself.bytes().substr(static_cast<std::size_t>(count & 63) % (itself.bytes().size() + 1));
    const CodePoints pieceModel = DecodeUtf8(piece);
    RequireText(itself.appendUtf8(piece), model + pieceModel, "appendUtf8() of its own bytes");
}

void RequireOrder(const I18NString& a, const CodePoints& aModel, const I18NString& b, const CodePoints& bModel) {
    Require((a == b) == (aModel == bModel), "texts are equal if their code points are");
    Require((a < b) == (aModel < bModel), "the order is that of the code points");
    Require((a == b.c_str()) == (a == I18NString(b.c_str())), "comparing with bytes is comparing with their text");
}

void RequireWideForms(std::string_view bytes, const I18NString& text, const CodePoints& model) {
    for (const auto& [encoding, unitBytes, isBigEndian] : kWideForms) {
        const I18NString decoded(bytes.data(), bytes.size(), encoding);
        RequireText(decoded, DecodeWide(bytes, unitBytes, isBigEndian), encoding);
        const std::string encoded = text.encode(encoding);
        RequireSame(encoded, EncodeWide(model, unitBytes, isBigEndian), encoding);
        Require(I18NString(encoded.data(), encoded.size(), encoding) == text, "a text comes back from a wide form");
    }
}

void RequireNarrowForm(std::string_view bytes, const I18NString& text, std::uint8_t choice) {
    static constexpr const char* kEncodings[] = {"iso-8859-1", "us-ascii", "windows-1252", "iso-8859-15",
                                                 "shift_jis",  "gb18030",  "euc-jp",       "iso-2022-jp",
                                                 "big5",       "koi8-r",   "utf-7",        "ibm-37"};
    const char* const encoding = kEncodings[choice % std::size(kEncodings)];
    const I18NString decoded(bytes.data(), bytes.size(), encoding);
    RequireText(decoded, DecodeUtf8(decoded.bytes()), encoding);
    const std::string encoded = text.encode(encoding);
    const I18NString again(encoded.data(), encoded.size(), encoding);
    RequireText(again, DecodeUtf8(again.bytes()), encoding);
}

// Small values lie around the start of a text of that size, large ones around its end.
Index ToPosition(std::uint8_t byte, Index size) { return byte < 128 ? Index{byte} - 3 : size + byte - 192; }

void Run(std::string_view head, std::string_view bytes) {
    const auto headByte = [head](std::size_t index) { return static_cast<std::uint8_t>(head[index]); };
    const std::string_view firstBytes = bytes.substr(0, bytes.size() * headByte(0) / 255);
    const std::string_view secondBytes = bytes.substr(firstBytes.size());
    const CodePoints model = DecodeUtf8(bytes);
    const CodePoints first = DecodeUtf8(firstBytes);
    const CodePoints second = DecodeUtf8(secondBytes);

    const I18NString text(bytes);
    const I18NString a(firstBytes);
    const I18NString b(secondBytes);
    RequireText(text, model, "decoding");
    RequireText(a, first, "decoding of the first part");
    RequireText(b, second, "decoding of the second part");
    RequireText(I18NString(text.bytes()), model, "decoding once more changes nothing");
    RequireText(I18NString::fromValidUtf8(std::string(text.bytes())), model, "fromValidUtf8()");
    RequireText(I18NString(a).appendValidUtf8(b.bytes()), first + second, "appendValidUtf8()");
    RequireText(I18NString(a).appendUtf8(secondBytes), first + second, "appendUtf8()");
    const std::string terminated(bytes);
    RequireText(I18NString(terminated.c_str()), DecodeUtf8(terminated.c_str()), "decoding up to a zero byte");

    const Index position = ToPosition(headByte(1), text.size());
    const Index end = ToPosition(headByte(2), text.size());
    RequireIteration(text, model);
    RequirePositions(text, model, position);
    RequirePieces(text, model, position, end);
    RequireSearch(text, model, b, second, position);
    const I18NString part = text.substring(end, end + 2);
    RequireSearch(text, model, part, DecodeUtf8(part.bytes()), position);
    RequireChanges(a, first, b, second, ToPosition(headByte(1), a.size()), ToPosition(headByte(3), a.size()));
    RequireOrder(a, first, b, second);
    RequireWideForms(bytes, text, model);
    RequireNarrowForm(bytes, text, headByte(4));
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kHeadBytes = 5;
    if (size < kHeadBytes) return -1;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    brindle_fuzz::Run(input.substr(0, kHeadBytes), input.substr(kHeadBytes));
    return 0;
}
