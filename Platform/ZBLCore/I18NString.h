// The Unicode string that crosses every interface: a value type that always holds well-formed UTF-8 and knows how many
// code points it has.
//
// Positions and counts are code points, from 0; bytes() gives the UTF-8 form for work in bytes. The count is kept up to
// date by every change, never computed late, so that constant operations are safe on several threads. A text whose
// count equals its byte length is pure ASCII, and then a position is a byte offset; in any other text finding a
// position costs a walk from the nearer end, so loops go by iterator or over bytes().

#pragma once

#include <compare>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

#include "PlatformApi.h"
#include "ZBLCore/I18NCodePoint.h"
#include "ZBLCore/I18NStringIterator.h"

// Ill-formed bytes never get in: each maximal subpart of an ill-formed sequence becomes one U+FFFD, as Unicode
// recommends, and so does a code point that is a surrogate or above U+10FFFF. U+0000 is a character like any other.
//
// No position is an error: below 0 it acts as 0, beyond the end as the end. Every changing operation takes the string
// itself, or bytes of it, as argument. One that would make the string longer than kMaxBytes throws std::length_error;
// after that, as after std::bad_alloc, the string is unchanged. A moved-from string is empty.
//
// One thread at a time for changes; constant operations may run on several threads at once.
class BRINDLE_PLATFORM_API I18NString {
public:
    // Signed, so that -1 can mean "none" as an answer and "the rest" as an argument.
    using index = std::ptrdiff_t;

    // The longest UTF-8 form: offsets into it fit 32 signed bits.
    static constexpr std::size_t kMaxBytes = 0x7FFFFFFF;

    I18NString() noexcept = default;

    // UTF-8 up to the terminating zero. Null gives the empty string.
    I18NString(const char* utf8);

    // `count` bytes of UTF-8, zero bytes among them too.
    I18NString(const char* bytes, std::size_t count);
    explicit I18NString(std::string_view utf8);

    // `count` bytes in the named encoding, see I18NEncoding.h. An unknown name throws ZBLException.
    I18NString(const char* bytes, std::size_t count, const char* encoding);

    // `count` times the same code point; none if `count` is below 1.
    explicit I18NString(I18NCodePoint codePoint, index count = 1);

    // The text from `from` up to, without, `to`. Empty if `to` lies before `from` or in another string.
    I18NString(const I18NStringIterator& from, const I18NStringIterator& to);

    I18NString(std::nullptr_t) = delete;

    I18NString(const I18NString&) = default;
    I18NString(I18NString&& other) noexcept : m_bytes(std::move(other.m_bytes)), m_size(other.m_size) { other.clear(); }
    I18NString& operator=(const I18NString&) = default;
    I18NString& operator=(I18NString&& other) noexcept;
    ~I18NString() = default;

    // A string of bytes that are known to be well-formed UTF-8 of at most kMaxBytes, as pieces of another I18NString
    // cut between characters are. Nothing is checked: ill-formed bytes here break the promise that all else rests on.
    // `codePoints` is their number, for a caller that knows it.
    static I18NString fromValidUtf8(std::string bytes);
    static I18NString fromValidUtf8(std::string bytes, index codePoints) noexcept;

    void swap(I18NString& other) noexcept {
        m_bytes.swap(other.m_bytes);
        std::swap(m_size, other.m_size);
    }

    bool empty() const noexcept { return m_bytes.empty(); }

    // The number of code points.
    index size() const noexcept { return m_size; }
    index length() const noexcept { return m_size; }

    // Whether every code point is below U+0080, so that positions are byte offsets.
    bool isAscii() const noexcept { return static_cast<std::size_t>(m_size) == m_bytes.size(); }

    // UTF-8, ended by a zero byte. Holds until the next change, as does what bytes() answers.
    const char* c_str() const noexcept { return m_bytes.c_str(); }

    // UTF-8 with its true length.
    std::string_view bytes() const noexcept { return m_bytes; }

    // Empties the string and keeps its memory for what is appended next.
    void clear() noexcept {
        m_bytes.clear();
        m_size = 0;
    }

    // Makes room for a UTF-8 form of `byteCount` bytes in all.
    void reserve(std::size_t byteCount);

    I18NString& append(const I18NString& text) {
        requireRoom(text.m_bytes.size());
        m_bytes.append(text.m_bytes);
        m_size += text.m_size;
        return *this;
    }
    I18NString& append(I18NCodePoint codePoint) {
        if (codePoint >= 0x80 || m_bytes.size() == kMaxBytes) return appendWide(codePoint);
        m_bytes.push_back(static_cast<char>(codePoint));
        ++m_size;
        return *this;
    }
    I18NString& operator+=(const I18NString& text) { return append(text); }

    // Appends UTF-8 without making a string of it first. Ill-formed bytes are replaced as in a constructor: a piece
    // must not be cut inside a character.
    I18NString& appendUtf8(std::string_view utf8);

    // The same for bytes that are known to be well-formed, as in fromValidUtf8: they are counted, not checked.
    I18NString& appendValidUtf8(std::string_view utf8);

    // The same for bytes below 0x80: they are not even counted.
    I18NString& appendAscii(std::string_view ascii) {
        requireRoom(ascii.size());
        m_bytes.append(ascii);
        m_size += static_cast<index>(ascii.size());
        return *this;
    }

    // Puts `text` in front of the code point at `position`.
    I18NString& insert(index position, const I18NString& text);

    // Puts `text` in the place of `count` code points from `position` on; -1 takes all the rest, below that none.
    I18NString& replace(index position, index count, const I18NString& text);

    // The code points from `begin` up to, without, `end`; -1 is the end of the text. Empty if `end` lies before
    // `begin`.
    I18NString substring(index begin, index end = -1) const;

    // At most `count` code points from `position` on; -1 is all the rest, below that none.
    I18NString substr(index position, index count = -1) const;

    // The position of the first occurrence that begins at `from` or behind it; -1 if there is none. The empty text
    // occurs nowhere, so that loops which search for it end at once.
    index find(const I18NString& text, index from = 0) const noexcept;

    // The position of the last occurrence; -1 if there is none, or `text` is empty.
    index rfind(const I18NString& text) const noexcept;

    // The code point at `position`; 0 before the start and behind the end.
    I18NCodePoint at(index position) const noexcept;

    // Where the code point at `position` begins in bytes(), and how many code points begin before the byte at
    // `byteOffset`. For an offset between two characters the one undoes the other; an offset beyond the end acts as the
    // end.
    std::size_t byteOffsetOf(index position) const noexcept;
    index positionOf(std::size_t byteOffset) const noexcept;

    I18NStringIterator begin() const noexcept;
    I18NStringIterator end() const noexcept;

    // The text in the named encoding, see I18NEncoding.h; what the encoding lacks becomes "?". No byte-order mark and
    // no terminator is added. An unknown name throws ZBLException.
    std::string encode(const char* encoding) const;

    // Equality of the bytes: composed and decomposed forms of a character differ.
    friend bool operator==(const I18NString& a, const I18NString& b) noexcept { return a.m_bytes == b.m_bytes; }

    // The same as comparing with I18NString(utf8), but without making one when `utf8` is well-formed.
    friend bool operator==(const I18NString& a, const char* utf8) { return a.equals(utf8); }
    friend bool operator==(const I18NString&, std::nullptr_t) = delete;

    // Code-point order, whatever the locale; it is the order of the unsigned bytes, too.
    friend std::strong_ordering operator<=>(const I18NString& a, const I18NString& b) noexcept {
        return a.m_bytes.compare(b.m_bytes) <=> 0;
    }

    friend void swap(I18NString& a, I18NString& b) noexcept { a.swap(b); }

private:
    bool equals(const char* utf8) const;
    I18NString& appendWide(I18NCodePoint codePoint);
    void requireRoom(std::size_t byteCount) const {
        if (byteCount > kMaxBytes - m_bytes.size()) throwTooLong();
    }
    [[noreturn]] static void throwTooLong();
    index clamped(index position) const noexcept { return position < 0 ? 0 : position < m_size ? position : m_size; }
    index clampedCount(index position, index count) const noexcept;
    std::size_t byteOffsetBehind(std::size_t beginByte, index begin, index end) const noexcept;

    std::string m_bytes;
    index m_size = 0;
};

// The offset of the first occurrence of `pattern` in `text` that begins at the byte `from` or behind it, else
// std::string_view::npos; the empty pattern occurs nowhere. Time is linear in both, whatever they hold. In well-formed
// UTF-8 an occurrence of a whole text begins and ends between characters.
BRINDLE_PLATFORM_API std::size_t I18NFindBytes(std::string_view text, std::string_view pattern,
                                               std::size_t from = 0) noexcept;

BRINDLE_PLATFORM_API I18NString operator+(const I18NString& a, const I18NString& b);

// Appends to a text that nobody else needs, so that a chain of `+` copies its left part once.
inline I18NString operator+(I18NString&& a, const I18NString& b) {
    a.append(b);
    return std::move(a);
}

// Writes the UTF-8 bytes as they are. The stream's width is not applied, and is 0 afterwards as behind any insertion.
BRINDLE_PLATFORM_API std::ostream& operator<<(std::ostream& out, const I18NString& text);

inline I18NString& I18NString::operator=(I18NString&& other) noexcept {
    if (this != &other) {
        m_bytes = std::move(other.m_bytes);
        m_size = other.m_size;
        other.clear();
    }
    return *this;
}

inline I18NStringIterator I18NString::begin() const noexcept {
    return {m_bytes.data(), m_bytes.data() + m_bytes.size(), m_bytes.data()};
}

inline I18NStringIterator I18NString::end() const noexcept {
    const char* end = m_bytes.data() + m_bytes.size();
    return {m_bytes.data(), end, end};
}
