// What the pieces of structured SQL are written with: line starts, and the element around a text in both mark-ups.
#pragma once

#include <algorithm>
#include <string_view>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

namespace brindle {

// Blanks come from here up to its length, so that a usual line start is one append.
inline constexpr std::string_view kLineStart =
    "\n                                                                                                ";

inline void AppendBlanks(I18NString& out, long count) {
    constexpr std::string_view blanks = kLineStart.substr(1);
    for (; count > 0; count -= static_cast<long>(blanks.size()))
        out.appendAscii(blanks.substr(0, static_cast<std::size_t>(count)));
}

// Wraps around, so that blanks taken away again always leave the indentation as it was.
inline int ShiftedIndent(int indent, int blanks) {
    return static_cast<int>(static_cast<unsigned>(indent) + static_cast<unsigned>(blanks));
}

// A count below zero is no blank.
inline void AppendNewLine(I18NString& out, long blanks) {
    const long first = std::clamp(blanks, 0L, static_cast<long>(kLineStart.size()) - 1);
    out.appendAscii(kLineStart.substr(0, static_cast<std::size_t>(first) + 1));
    AppendBlanks(out, blanks - first);
}

// `openingTag` is one as "<k>".
inline void AppendElement(I18NString& out, std::string_view openingTag, std::string_view text) {
    out.appendAscii(openingTag).appendValidUtf8(text).appendAscii("</").appendAscii(openingTag.substr(1));
}

inline void AppendElement(ZBLIDOM_Document& document, const ZBLIDOM_Element& parent, const char* tag,
                          const I18NString& text) {
    const ZBLIDOM_Element element = document.createElement(tag);
    parent.appendChild(element);
    element.appendChild(document.createTextNode(text));
}

} // namespace brindle
