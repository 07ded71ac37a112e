// What the macro scanner hands to the parser, and the symbols that name texts in it.
#pragma once

#include <deque>
#include <string_view>

#include "ZBLCore/I18NString.h"

// A token's or a rule's number and one word of value: a text (of the symbol table), a count, or nothing.
struct QMX_TokenValue {
    int number;
    union {
        I18NString* symbol;
        long count;
    };
};

// What a run of scanner and parser produces.
enum class EMacroRunMode : int { positions = 0, document = 1, expansion = 2 };

// The texts of one run's names and strings, at stable addresses. One thread at a time.
class QMX_SymbolTable {
public:
    // The text stays until Clear. The bytes are well-formed UTF-8.
    I18NString* Enter(std::string_view bytes) {
        m_texts.emplace_back().appendValidUtf8(bytes);
        return &m_texts.back();
    }
    void Clear() { m_texts.clear(); }

private:
    std::deque<I18NString> m_texts;
};
