// The pattern of the macro functions "grep" and "substitute": a literal text with at most a negation and two anchors.
#pragma once

#include <cstddef>
#include <string_view>

#include "QMMacroFunction.h"

// Lives for one call. "!" at the start negates, "^" anchors at the start (behind the "!"), "$" at the end. A backslash
// takes the next character as it is, unless that is a letter or a digit. The characters \ | ( ) [ { ^ $ * + . ? ! stand
// for themselves only behind a backslash; anywhere else they make the pattern invalid.
class MF_Pattern {
public:
    // Reads the pattern. An invalid one is the failure FailPattern of the function for which it is read.
    MF_Pattern(const I18NString& pattern, const MF_BuiltIn& function);

    // Byte offsets into the text, half-open; -1 where nothing matches.
    struct Match {
        std::ptrdiff_t begin = -1;
        std::ptrdiff_t end = -1;
        explicit operator bool() const { return begin >= 0; }
    };

    // The match in the text, the negation aside. The text's first occurrence of the literal decides, except that a
    // pattern with an end anchor alone looks at the text's end.
    Match Find(std::string_view text) const;
    bool IsNegated() const { return negate; }

private:
    bool Read(const I18NString& pattern);

    bool negate = false;
    bool anchorStart = false;
    bool anchorEnd = false;
    I18NString literal;
    const MF_BuiltIn* owner;
};
