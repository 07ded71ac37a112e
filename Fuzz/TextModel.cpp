#include "TextModel.h"

#include <cstdint>

namespace brindle_fuzz {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// A row of the table of well-formed byte sequences: leads, the range of the second byte, the length. All bytes behind
// the second are 0x80 to 0xBF.
struct SequenceForm {
    std::uint8_t firstLead, lastLead, lowSecond, highSecond;
    std::size_t length;
};

constexpr SequenceForm kForms[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

struct Sequence {
    char32_t codePoint;
    std::size_t length; // of the sequence, or of the ill-formed subpart
    bool isWellFormed;
};

Sequence ReadSequence(std::string_view bytes) {
    const auto byteAt = [bytes](std::size_t index) { return static_cast<std::uint8_t>(bytes[index]); };
    const std::uint8_t lead = byteAt(0);
    for (const SequenceForm& form : kForms) {
        if (lead < form.firstLead || lead > form.lastLead) continue;
        char32_t codePoint = form.length == 1 ? lead : lead & (0x7Fu >> form.length);
        for (std::size_t index = 1; index < form.length; ++index) {
            const std::uint8_t low = index == 1 ? form.lowSecond : 0x80;
            const std::uint8_t high = index == 1 ? form.highSecond : 0xBF;
            if (index == bytes.size() || byteAt(index) < low || byteAt(index) > high)
                return {kReplacement, index, false};
            codePoint = codePoint << 6 | (byteAt(index) & 0x3Fu);
        }
        return {codePoint, form.length, true};
    }
    return {kReplacement, 1, false};
}

std::size_t Clamp(std::ptrdiff_t position, std::size_t size) {
    if (position < 0) return 0;
    return static_cast<std::size_t>(position) < size ? static_cast<std::size_t>(position) : size;
}

// Where a stretch of `count` code points from `begin` on ends.
std::size_t StretchEnd(std::size_t begin, std::ptrdiff_t count, std::size_t size) {
    if (count == -1) return size;
    return begin + Clamp(count, size - begin);
}

bool IsSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

void AppendUnit(std::string& bytes, char32_t unit, std::size_t unitBytes, bool isBigEndian) {
    for (std::size_t index = 0; index < unitBytes; ++index) {
        const std::size_t place = isBigEndian ? unitBytes - 1 - index : index;
        bytes += static_cast<char>(unit >> (8 * place) & 0xFF);
    }
}

CodePoints ReadUnits(std::string_view bytes, std::size_t unitBytes, bool isBigEndian) {
    CodePoints units;
    for (; bytes.size() >= unitBytes; bytes.remove_prefix(unitBytes)) {
        char32_t unit = 0;
        for (std::size_t index = 0; index < unitBytes; ++index)
            unit = unit << 8 | static_cast<std::uint8_t>(bytes[isBigEndian ? index : unitBytes - 1 - index]);
        units += unit;
    }
    return units;
}

} // namespace

CodePoints DecodeUtf8(std::string_view bytes) {
    CodePoints text;
    while (!bytes.empty()) {
        const Sequence sequence = ReadSequence(bytes);
        text += sequence.codePoint;
        bytes.remove_prefix(sequence.length);
    }
    return text;
}

std::string EncodeUtf8(const CodePoints& text) {
    std::string bytes;
    for (const char32_t codePoint : text) {
        if (codePoint < 0x80) {
            bytes += static_cast<char>(codePoint);
            continue;
        }
        const int tails = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
        bytes += static_cast<char>((0xFF00u >> (tails + 1) & 0xFF) | codePoint >> (6 * tails));
        for (int tail = tails - 1; tail >= 0; --tail)
            bytes += static_cast<char>(0x80 | (codePoint >> (6 * tail) & 0x3F));
    }
    return bytes;
}

bool IsWellFormed(std::string_view bytes) {
    while (!bytes.empty()) {
        const Sequence sequence = ReadSequence(bytes);
        if (!sequence.isWellFormed) return false;
        bytes.remove_prefix(sequence.length);
    }
    return true;
}

CodePoints DecodeWide(std::string_view bytes, std::size_t unitBytes, bool isBigEndian) {
    const CodePoints units = ReadUnits(bytes, unitBytes, isBigEndian);
    CodePoints text;
    for (std::size_t index = 0; index < units.size(); ++index) {
        const char32_t unit = units[index];
        const char32_t next = index + 1 < units.size() ? units[index + 1] : 0;
        if (unitBytes == 2 && unit >= 0xD800 && unit <= 0xDBFF && next >= 0xDC00 && next <= 0xDFFF) {
            text += 0x10000 + (unit - 0xD800) * 0x400 + (next - 0xDC00);
            ++index;
        } else {
            text += IsSurrogate(unit) || unit > 0x10FFFF ? kReplacement : unit;
        }
    }
    if (bytes.size() % unitBytes != 0) text += kReplacement;
    return text;
}

std::string EncodeWide(const CodePoints& text, std::size_t unitBytes, bool isBigEndian) {
    std::string bytes;
    for (const char32_t codePoint : text) {
        if (unitBytes == 2 && codePoint > 0xFFFF) {
            AppendUnit(bytes, 0xD800 + (codePoint - 0x10000) / 0x400, unitBytes, isBigEndian);
            AppendUnit(bytes, 0xDC00 + (codePoint - 0x10000) % 0x400, unitBytes, isBigEndian);
        } else {
            AppendUnit(bytes, codePoint, unitBytes, isBigEndian);
        }
    }
    return bytes;
}

CodePoints Substring(const CodePoints& text, std::ptrdiff_t begin, std::ptrdiff_t end) {
    const std::size_t first = Clamp(begin, text.size());
    const std::size_t last = end == -1 ? text.size() : Clamp(end, text.size());
    return first < last ? text.substr(first, last - first) : CodePoints();
}

CodePoints Substr(const CodePoints& text, std::ptrdiff_t position, std::ptrdiff_t count) {
    const std::size_t begin = Clamp(position, text.size());
    return text.substr(begin, StretchEnd(begin, count, text.size()) - begin);
}

CodePoints Replace(const CodePoints& text, std::ptrdiff_t position, std::ptrdiff_t count, const CodePoints& by) {
    const std::size_t begin = Clamp(position, text.size());
    return text.substr(0, begin) + by + text.substr(StretchEnd(begin, count, text.size()));
}

std::ptrdiff_t Find(const CodePoints& text, const CodePoints& part, std::ptrdiff_t from) {
    if (part.empty()) return -1;
    for (std::size_t at = Clamp(from, text.size()); at + part.size() <= text.size(); ++at)
        if (text.substr(at, part.size()) == part) return static_cast<std::ptrdiff_t>(at);
    return -1;
}

std::ptrdiff_t FindLast(const CodePoints& text, const CodePoints& part) {
    std::ptrdiff_t last = -1;
    for (std::ptrdiff_t at = Find(text, part, 0); at != -1; at = Find(text, part, at + 1))
        last = at;
    return last;
}

} // namespace brindle_fuzz
