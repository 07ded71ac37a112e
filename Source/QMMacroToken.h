// What the macro scanner hands to the parser, and the symbols that name texts in it.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "ZBLCore/I18NString.h"

// A token's or a rule's value is one word: a text (of the symbol table), a count, or nothing. It stays one word,
// because the parser copies it at every step.
union QMX_TokenValue {
    I18NString* symbol;
    long count;
};

// What a run of scanner and parser produces.
enum class EMacroRunMode : int { positions = 0, document = 1, expansion = 2 };

// The texts of names and strings that the parser has taken and no tree holds yet, at stable addresses. The objects are
// used again, so that a name costs no allocation once there are enough of them. One thread at a time.
class QMX_SymbolTable {
public:
    // The text stays until Clear. The bytes are well-formed UTF-8.
    I18NString* Enter(std::string_view bytes) {
        if (m_used == m_texts.size()) m_texts.push_back(std::make_unique<I18NString>());
        I18NString* const text = m_texts[m_used++].get();
        text->clear();
        text->appendValidUtf8(bytes);
        m_hasLong |= bytes.size() > kKeptBytes;
        return text;
    }
    // All texts are free for use again.
    void Clear() { m_used = 0; }
    // All texts are free; after a run with a long one, or with many, they give their memory back as well.
    void Shrink() {
        m_used = 0;
        if (!m_hasLong && m_texts.size() <= kKeptTexts) return;
        std::vector<std::unique_ptr<I18NString>>().swap(m_texts);
        m_hasLong = false;
    }

private:
    static constexpr std::size_t kKeptTexts = 256;
    static constexpr std::size_t kKeptBytes = 256;

    std::vector<std::unique_ptr<I18NString>> m_texts;
    std::size_t m_used = 0;
    bool m_hasLong = false;
};
