// The iterator of I18NString: it steps by code point over the UTF-8 bytes. It knows both ends of its text and never
// leaves them, and relies on the bytes being well-formed, which I18NString guarantees.

#pragma once

#include <cstddef>
#include <functional>
#include <iterator>

#include "ZBLCore/I18NCodePoint.h"

// A constant bidirectional iterator. It borrows the bytes of its string: any change of the string, a move too, makes it
// invalid. Default construction gives an iterator over nothing, at its end.
class I18NStringIterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = I18NCodePoint;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = I18NCodePoint;

    I18NStringIterator() noexcept = default;

    // The code point here; 0 at the end.
    I18NCodePoint operator*() const noexcept;

    // One code point on; nothing at the end.
    I18NStringIterator& operator++() noexcept;
    I18NStringIterator operator++(int) noexcept;

    // One code point back; nothing at the start.
    I18NStringIterator& operator--() noexcept;
    I18NStringIterator operator--(int) noexcept;

    // The first byte of the code point here; at the end, the place behind the last byte. Null if default-constructed.
    const char* base() const noexcept { return m_at; }

    // Both sides must belong to the same string.
    friend bool operator==(const I18NStringIterator& a, const I18NStringIterator& b) noexcept {
        return a.m_at == b.m_at;
    }
    friend bool operator<(const I18NStringIterator& a, const I18NStringIterator& b) noexcept {
        return std::less<const char*>()(a.m_at, b.m_at);
    }

private:
    friend class I18NString;
    I18NStringIterator(const char* begin, const char* end, const char* at) noexcept
        : m_at(at), m_begin(begin), m_end(end) {}

    const char* m_at = nullptr;
    const char* m_begin = nullptr;
    const char* m_end = nullptr;
};

inline I18NCodePoint I18NStringIterator::operator*() const noexcept {
    if (m_at == m_end) return 0;
    const auto byte = [this](int offset) { return static_cast<unsigned char>(m_at[offset]); };
    const I18NCodePoint lead = byte(0);
    if (lead < 0x80) return lead;
    const auto tail = [&byte](int offset) { return static_cast<I18NCodePoint>(byte(offset) & 0x3F); };
    if (lead < 0xE0) return (lead & 0x1F) << 6 | tail(1);
    if (lead < 0xF0) return (lead & 0x0F) << 12 | tail(1) << 6 | tail(2);
    return (lead & 0x07) << 18 | tail(1) << 12 | tail(2) << 6 | tail(3);
}

inline I18NStringIterator& I18NStringIterator::operator++() noexcept {
    if (m_at != m_end) {
        const auto lead = static_cast<unsigned char>(*m_at);
        m_at += lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    }
    return *this;
}

inline I18NStringIterator& I18NStringIterator::operator--() noexcept {
    if (m_at != m_begin) do
            --m_at;
        while ((static_cast<unsigned char>(*m_at) & 0xC0) == 0x80);
    return *this;
}

inline I18NStringIterator I18NStringIterator::operator++(int) noexcept {
    const I18NStringIterator before = *this;
    ++*this;
    return before;
}

inline I18NStringIterator I18NStringIterator::operator--(int) noexcept {
    const I18NStringIterator before = *this;
    --*this;
    return before;
}
