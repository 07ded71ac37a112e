// There is one function for each start condition. It reads one token, leaves the token's bounds in m_tokenBegin and
// m_tokenEnd, and tells bytes apart by a table of classes.
#include "QMMacroExpanderLexer.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "QMMacroGrammar.h"
#include "QMTextScan.h"

namespace {

// What a byte can be, as bits. A table answers in one load what would else be a chain of comparisons for each byte.
enum EByteClass : unsigned char {
    kBoundary = 1,  // may stand at a token boundary of a macro block
    kNameStart = 2, // begins a name
    kName = 4,      // goes on with a name
    kBlank = 8      // white space of a macro block
};

constexpr std::array<unsigned char, 256> MakeByteClasses() {
    std::array<unsigned char, 256> classes{};
    const auto add = [&classes](std::string_view bytes, unsigned bits) {
        for (const char byte : bytes) {
            unsigned char& entry = classes[static_cast<unsigned char>(byte)];
            entry = static_cast<unsigned char>(entry | bits);
        }
    };
    add("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ", kBoundary | kNameStart | kName);
    for (std::size_t byte = 128; byte <= 254; ++byte)
        classes[byte] = kBoundary | kNameStart | kName;
    add("0123456789_.", kName);
    add("\t\n\r ", kBoundary | kBlank);
    add("\"#$%'()+,/;@[]{}", kBoundary);
    return classes;
}

// How many positions a scanner keeps memory for between two runs.
constexpr std::size_t kKeptPositions = 1024;

constexpr std::array<unsigned char, 256> kByteClasses = MakeByteClasses();

bool Is(unsigned char byte, EByteClass byteClass) { return (kByteClasses[byte] & byteClass) != 0; }

} // namespace

QMX_MacroExpanderLexer::QMX_MacroExpanderLexer(yy_inp_obj& input, QMX_SymbolTable& symbols, yy_err_obj& error)
    : m_input(input), m_symbols(symbols), m_error(error) {}

void QMX_MacroExpanderLexer::Start(EMacroRunMode mode) {
    m_text = m_input.GetText();
    m_mode = mode;
    if (mode == EMacroRunMode::document) m_document.Start(m_text);
}

void QMX_MacroExpanderLexer::Reset() {
    m_text = {};
    m_mode = EMacroRunMode::positions;
    m_condition = ECondition::text;
    m_line = 1;
    m_tokenBegin = m_tokenEnd = m_nameBegin = m_nameEnd = 0;
    m_atMacroStart = false;
    m_positions.clear();
    if (m_positions.capacity() > kKeptPositions) m_positions.shrink_to_fit();
    m_document.Reset();
}

int QMX_MacroExpanderLexer::NextToken(QMX_TokenValue& value) {
    switch (m_condition) {
    case ECondition::macro:
        return NextInMacro(value);
    case ECondition::bracket:
        return NextInBracket(value);
    case ECondition::text:
        break;
    }
    return NextInText();
}

void QMX_MacroExpanderLexer::EndToken(std::size_t endByte) {
    m_tokenEnd = endByte;
    m_input.SetTokenEnd(endByte);
}

bool QMX_MacroExpanderLexer::IsBoundary(std::size_t at) const { return at >= Size() || Is(ByteAt(at), kBoundary); }

void QMX_MacroExpanderLexer::Illegal(std::size_t at) {
    const bool atEnd = at >= Size();
    const std::size_t tokenEnd = atEnd ? Size() : at;
    EndToken(atEnd ? Size() : at + 1);
    m_error.yy_err_report(kYyIllegalCharacter, atEnd ? -1 : static_cast<int>(ByteAt(at)),
                          static_cast<int>(tokenEnd - m_tokenBegin), m_text.data() + m_tokenBegin);
    m_error.yy_err_exit();
    std::abort(); // never reached: the compiler doesn't take a virtual function's word for not returning
}

// Plain text.

// What follows the closing '#' is outside of the block only from here on: an error at that '#' itself still lies
// inside.
int QMX_MacroExpanderLexer::NextInText() {
    m_error.SetIsMacro(0);
    if (m_mode == EMacroRunMode::document) m_document.CloseBlock(m_tokenEnd);
    m_tokenBegin = m_tokenEnd;
    if (m_tokenBegin == Size()) {
        EndToken(Size());
        return yy_eof;
    }
    if (m_text[m_tokenBegin] == '#') return OpenBlock();
    EndToken(EndOfPlainText(m_tokenBegin));
    return AnyChar;
}

int QMX_MacroExpanderLexer::OpenBlock() {
    m_positions.push_back({static_cast<std::int32_t>(m_tokenBegin)});
    if (m_mode == EMacroRunMode::document) m_document.OpenBlock(m_tokenBegin);
    m_error.SetIsMacro(1);
    m_condition = ECondition::macro;
    m_atMacroStart = true;
    EndToken(m_tokenBegin + 1);
    return Hash;
}

std::size_t QMX_MacroExpanderLexer::EndOfPlainText(std::size_t at) {
    const char* const text = m_text.data();
    const auto next = [this](std::size_t place) { return place + 1 < Size() ? m_text[place + 1] : '\0'; };
    for (;;) {
        at = static_cast<std::size_t>(QMFindTextStop(text + at, text + Size()) - text);
        if (at == Size()) return at;
        const unsigned char byte = ByteAt(at);
        switch (byte) {
        case '#':
            return at;
        case '\'':
        case '"':
            at = SkipQuoted(at + 1, static_cast<char>(byte));
            break;
        case '[':
            at = SkipQuoted(at + 1, ']');
            break;
        case '?': {
            // The byte behind the opening '?' is taken unread, another '?' too.
            const std::size_t end = at + 2 < Size() ? m_text.find('?', at + 2) : std::string_view::npos;
            if (end == std::string_view::npos) Illegal(Size());
            at = end + 1;
            break;
        }
        case '/':
            at = next(at) == '*' ? SkipBlockComment(at) : at + 1;
            break;
        default:
            at = next(at) == '-' ? SkipTextLineComment(at) : at + 1;
            break;
        }
    }
}

// From the byte behind the opening mark to the place behind the closing one; a doubled closing mark goes on.
std::size_t QMX_MacroExpanderLexer::SkipQuoted(std::size_t at, char quote) {
    for (;;) {
        const std::size_t end = m_text.find(quote, at);
        if (end == std::string_view::npos) Illegal(Size());
        if (end + 1 == Size() || m_text[end + 1] != quote) return end + 1;
        at = end + 2;
    }
}

std::size_t QMX_MacroExpanderLexer::SkipBlockComment(std::size_t at) {
    const std::size_t end = m_text.find("*/", at + 2);
    if (end == std::string_view::npos) Illegal(Size());
    m_line += static_cast<int>(std::count(m_text.begin() + static_cast<std::ptrdiff_t>(at),
                                          m_text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
    return end + 2;
}

std::size_t QMX_MacroExpanderLexer::EndOfLine(std::size_t at) const {
    const char* const text = m_text.data();
    return static_cast<std::size_t>(QMFindLineEnd(text + at, text + Size()) - text);
}

std::size_t QMX_MacroExpanderLexer::SkipTextLineComment(std::size_t at) {
    const std::size_t end = EndOfLine(at + 2);
    if (end == Size()) return end;
    ++m_line;
    return m_text.compare(end, 2, "\r\n") == 0 ? end + 2 : end + 1;
}

// Macro blocks.

bool QMX_MacroExpanderLexer::TakeParameterBlockInText(std::string_view& name) {
    const std::size_t begin = m_tokenEnd;
    if (Size() - begin < 4 || m_text[begin] != '#' || m_text[begin + 1] != '$' || !Is(ByteAt(begin + 2), kNameStart))
        return false;
    const std::size_t end = EndOfName(begin + 3);
    if (end == Size() || m_text[end] != '#') return false;
    m_positions.push_back({static_cast<std::int32_t>(begin), static_cast<std::int32_t>(end)});
    name = m_text.substr(begin + 2, end - begin - 2);
    m_tokenBegin = begin;
    EndToken(end + 1);
    return true;
}

int QMX_MacroExpanderLexer::NextInMacro(QMX_TokenValue& value) {
    const std::size_t at = SkipBlanksAndComments(m_tokenEnd);
    m_tokenBegin = at;
    if (at >= Size()) {
        EndToken(Size());
        return yy_eof;
    }
    const unsigned char byte = ByteAt(at);
    if (!Is(byte, kBoundary)) Illegal(at);
    m_atMacroStart = false;
    if (Is(byte, kNameStart)) return ScanName(value);
    EndToken(at + 1);
    switch (byte) {
    case '#':
        return CloseBlock();
    case '$':
    case '%':
    case '@':
        if (m_mode == EMacroRunMode::document) m_document.Flush(at);
        return byte == '$' ? Dollar : byte == '%' ? Percent : AtSign;
    case ',':
    case ';':
        return Comma;
    case '(':
        return OpenParen;
    case ')':
        return CloseParen;
    case '[':
        return OpenBracket;
    case ']':
        return CloseBracket;
    case '{':
        return OpenCurly;
    case '}':
        return CloseCurly;
    case '+':
        return Plus;
    default:
        return ScanString(value, static_cast<char>(byte));
    }
}

int QMX_MacroExpanderLexer::CloseBlock() {
    m_positions.back().end = static_cast<std::int32_t>(m_tokenBegin);
    m_condition = ECondition::text;
    return Hash;
}

std::size_t QMX_MacroExpanderLexer::SkipBlanksAndComments(std::size_t at) {
    while (at < Size()) {
        const unsigned char byte = ByteAt(at);
        if (Is(byte, kBlank)) {
            m_line += byte == '\n';
            ++at;
            continue;
        }
        if (byte != '/') break;
        m_tokenBegin = at;
        if (at + 1 < Size() && m_text[at + 1] == '*') {
            const std::size_t end = SkipBlockComment(at);
            NoteComment(at, end);
            at = end;
        } else if (at + 1 < Size() && m_text[at + 1] == '/') {
            at = SkipMacroLineComment(at);
        } else {
            Illegal(at + 1);
        }
    }
    return at;
}

// A lone CR ends the comment only in front of a byte that may follow white space. At the end of the input it is a part
// of the comment, which doesn't end then; any other byte is refused when the next token looks at its first one.
std::size_t QMX_MacroExpanderLexer::SkipMacroLineComment(std::size_t at) {
    const std::size_t end = EndOfLine(at + 2);
    if (end == Size() || (m_text[end] == '\r' && end + 1 == Size())) Illegal(Size());
    NoteComment(at, end);
    ++m_line;
    return m_text.compare(end, 2, "\r\n") == 0 ? end + 2 : end + 1;
}

// Only the first comment in front of the block's first token counts; any other is a part of the block like its blanks.
void QMX_MacroExpanderLexer::NoteComment(std::size_t beginByte, std::size_t endByte) {
    QMX_BlockPosition& position = m_positions.back();
    if (!m_atMacroStart || position.commentStart != -1) return;
    position.commentStart = static_cast<std::int32_t>(beginByte);
    position.commentEnd = static_cast<std::int32_t>(endByte - 1);
    if (m_mode == EMacroRunMode::document) m_document.Piece("comment", beginByte, endByte);
}

std::size_t QMX_MacroExpanderLexer::EndOfName(std::size_t at) const {
    while (at < Size() && Is(ByteAt(at), kName))
        ++at;
    return at;
}

int QMX_MacroExpanderLexer::ScanName(QMX_TokenValue& value) {
    const std::size_t end = EndOfName(m_tokenBegin + 1);
    if (!IsBoundary(end)) Illegal(end);
    m_nameBegin = m_tokenBegin;
    m_nameEnd = end;
    EndToken(end);
    if (m_mode == EMacroRunMode::expansion)
        value.symbol = m_symbols.Enter(m_text.substr(m_nameBegin, m_nameEnd - m_nameBegin));
    return Identifier;
}

int QMX_MacroExpanderLexer::ScanString(QMX_TokenValue& value, char quote) {
    const std::size_t end = SkipQuoted(m_tokenBegin + 1, quote);
    if (!IsBoundary(end)) Illegal(end);
    EndToken(end);
    if (m_mode != EMacroRunMode::expansion) return String_;

    const std::string_view raw = m_text.substr(m_tokenBegin + 1, end - m_tokenBegin - 2);
    if (raw.find(quote) == std::string_view::npos) {
        value.symbol = m_symbols.Enter(raw);
        return String_;
    }
    std::string reduced;
    reduced.reserve(raw.size());
    for (std::size_t at = 0; at < raw.size();) {
        const std::size_t pair = std::min(raw.find(quote, at), raw.size() - 1);
        reduced.append(raw, at, pair + 1 - at);
        at = pair + (raw[pair] == quote ? 2 : 1);
    }
    value.symbol = m_symbols.Enter(reduced);
    return String_;
}

// The name in brackets. Its doubled ']' stay doubled: they are undone where the name is used.
int QMX_MacroExpanderLexer::NextInBracket(QMX_TokenValue& value) {
    m_tokenBegin = m_tokenEnd;
    if (m_tokenBegin == Size()) {
        EndToken(Size());
        return yy_eof;
    }
    if (m_text[m_tokenBegin] == ']') {
        EndToken(m_tokenBegin + 1);
        return RBRACKET;
    }
    const std::size_t end = SkipQuoted(m_tokenBegin, ']');
    m_nameBegin = m_tokenBegin;
    m_nameEnd = end - 1;
    EndToken(end);
    if (m_mode == EMacroRunMode::expansion)
        value.symbol = m_symbols.Enter(m_text.substr(m_nameBegin, m_nameEnd - m_nameBegin));
    return Identifier;
}
