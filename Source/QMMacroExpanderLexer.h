// The macro language's scanner. It reads the UTF-8 bytes of a text under three start conditions: plain text, the inside
// of a macro block, and a name in brackets.
//
// Plain text is one token up to the next '#' that opens a block. A '#' in a quoted text, a quoted or bracketed name, a
// prompt or a comment is plain, and a form that begins must also end: an unpaired quote in plain text is an illegal
// input, since nobody could tell where the text goes on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "QMMacroDocument.h"
#include "QMMacroToken.h"
#include "QUYyRuntime.h"

// Where one macro block lies, as AQM_I_MacroExpander::PositionInfo tells it.
struct QMX_BlockPosition {
    std::int32_t start;
    std::int32_t end = -1;
    std::int32_t commentStart = -1;
    std::int32_t commentEnd = -1;
};

// Borrows input, symbol table and error object for its life. Between two runs Reset is called. One thread at a time.
class QMX_MacroExpanderLexer {
public:
    enum class ECondition { text, macro, bracket };

    QMX_MacroExpanderLexer(yy_inp_obj& input, QMX_SymbolTable& symbols, yy_err_obj& error);

    // Before a run, with the input's text in place.
    void Start(EMacroRunMode mode);
    EMacroRunMode GetMode() const { return m_mode; }

    // The number of the next token. In expansion mode `value` gets the text of a name or of a string; in the other
    // modes, and of all other tokens, nobody needs one, and plain text is taken by position. An illegal byte is
    // reported to the error object, with the input's token end behind that byte.
    int NextToken(QMX_TokenValue& value);

    // Takes a whole block that is one parameter and nothing else, "#$name#", if the text goes on with one, and answers
    // its name, a piece of the text. Most blocks are of this form, and the grammar has nothing to add to it.
    bool TakeParameterBlock(std::string_view& name) {
        return m_condition == ECondition::text && TakeParameterBlockInText(name);
    }

    // The parser switches to the name in brackets and back.
    void SetCondition(ECondition condition) { m_condition = condition; }

    // Byte offsets of the current token and of the last name, half-open.
    std::size_t GetTokenBegin() const { return m_tokenBegin; }
    std::size_t GetTokenEnd() const { return m_tokenEnd; }
    std::size_t GetNameBegin() const { return m_nameBegin; }
    std::size_t GetNameEnd() const { return m_nameEnd; }
    // The line in which the reader stands, from 1, as far as blanks and comments tell.
    int GetLine() const { return m_line; }

    // One entry for each block that was opened, in every mode.
    const std::vector<QMX_BlockPosition>& GetPositions() const { return m_positions; }
    QMX_MacroDocument& GetDocument() { return m_document; }

    void Reset();

private:
    bool TakeParameterBlockInText(std::string_view& name);
    int NextInText();
    int NextInMacro(QMX_TokenValue& value);
    int NextInBracket(QMX_TokenValue& value);

    std::size_t SkipQuoted(std::size_t at, char quote);
    std::size_t SkipBlockComment(std::size_t at);
    std::size_t EndOfPlainText(std::size_t at);
    std::size_t EndOfLine(std::size_t at) const;
    std::size_t SkipTextLineComment(std::size_t at);
    std::size_t SkipMacroLineComment(std::size_t at);
    std::size_t SkipBlanksAndComments(std::size_t at);
    void NoteComment(std::size_t beginByte, std::size_t endByte);
    int OpenBlock();
    int CloseBlock();
    int ScanName(QMX_TokenValue& value);
    int ScanString(QMX_TokenValue& value, char quote);

    std::size_t Size() const { return m_text.size(); }
    unsigned char ByteAt(std::size_t at) const { return static_cast<unsigned char>(m_text[at]); }
    // What may follow a token: the end of the input, or a byte that can stand at a token boundary.
    bool IsBoundary(std::size_t at) const;
    std::size_t EndOfName(std::size_t at) const;
    void EndToken(std::size_t endByte);
    [[noreturn]] void Illegal(std::size_t at);

    yy_inp_obj& m_input;
    QMX_SymbolTable& m_symbols;
    yy_err_obj& m_error;
    std::string_view m_text;
    EMacroRunMode m_mode = EMacroRunMode::positions;
    ECondition m_condition = ECondition::text;
    int m_line = 1;
    std::size_t m_tokenBegin = 0;
    std::size_t m_tokenEnd = 0;
    bool m_atMacroStart = false; // no token of the block has come yet
    std::size_t m_nameBegin = 0;
    std::size_t m_nameEnd = 0;
    std::vector<QMX_BlockPosition> m_positions;
    QMX_MacroDocument m_document;
};
