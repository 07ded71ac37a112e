// A rule takes the nodes of its operands from the stack of nodes and puts the node that it makes of them there. All
// trees of a run lie in one memory, which is given back at the end of the run.
#include "QMMacroExpanderParser.h"

#include <memory>
#include <new>

#include "QMMacroGrammar.h"

// Defined beside the tables: brings a parser state back to its beginning, also after a run that was left in the middle.
void QmxClearParserState(qmxpstate* state);

namespace {

// What the stack of nodes is made for; it grows beyond.
constexpr std::size_t kNodeStack = 256;
// Lists longer than this give their memory back between two runs.
constexpr std::size_t kKeptEntries = 1024;

template <class T>
void ClearAndShrink(std::vector<T>& list) {
    list.clear();
    if (list.capacity() > kKeptEntries) list.shrink_to_fit();
}

constexpr QMX_TokenValue kNoValue{nullptr};

QMX_TokenValue Count(long count) {
    QMX_TokenValue value = kNoValue;
    value.count = count;
    return value;
}

QMX_TokenValue Symbol(I18NString& text) {
    QMX_TokenValue value = kNoValue;
    value.symbol = &text;
    return value;
}

} // namespace

QMX_MacroExpanderParser::QMX_MacroExpanderParser(QMX_MacroExpanderLexer& lexer, QMX_SymbolTable& symbols,
                                                 yy_err_obj& error)
    : m_lexer(lexer), m_symbols(symbols), m_error(error), m_state(nullptr) {
    m_nodes.reserve(kNodeStack);
    m_state = qmxpstate_new();
    if (!m_state) throw std::bad_alloc();
}

QMX_MacroExpanderParser::~QMX_MacroExpanderParser() {
    Reset();
    qmxpstate_delete(m_state);
}

// Two kinds of piece never reach the tables in a run that makes no document: plain text, which is a statement of its
// own between two others and means nothing there, and a block that is one parameter.
void QMX_MacroExpanderParser::Run() {
    m_mode = m_lexer.GetMode();
    const bool isReporting = m_mode == EMacroRunMode::document;
    int status = YYPUSH_MORE;
    while (status == YYPUSH_MORE) {
        std::string_view parameter;
        if (IsBuilding() && m_lexer.TakeParameterBlock(parameter)) {
            m_blocks.push_back({nullptr, parameter});
            continue;
        }
        QMX_TokenValue value = kNoValue;
        const int token = m_lexer.NextToken(value);
        if (token == AnyChar && !isReporting) continue;
        status = qmxpush_parse(m_state, token, &value, *this);
    }
    m_failed = status != 0;
}

void QMX_MacroExpanderParser::Reset() {
    QmxClearParserState(m_state);
    m_failed = false;
    m_mode = EMacroRunMode::positions;
    for (const QMX_ParsedBlock& block : m_blocks)
        if (block.expression) std::destroy_at(block.expression);
    ClearAndShrink(m_blocks);
    ClearAndShrink(m_nodes);
    ClearAndShrink(m_arguments);
    m_memory.release();
}

void QMX_MacroExpanderParser::ReportSyntaxError() {
    const std::size_t begin = m_lexer.GetTokenBegin();
    m_error.yy_err_report(kYySyntaxError, static_cast<int>(begin), static_cast<int>(m_lexer.GetTokenEnd() - begin));
}

void QMX_MacroExpanderParser::GiveUp() { m_error.yy_err_exit(); }

void QMX_MacroExpanderParser::PlainText() {
    if (m_mode == EMacroRunMode::document)
        m_lexer.GetDocument().PlainText(m_lexer.GetTokenBegin(), m_lexer.GetTokenEnd());
}

void QMX_MacroExpanderParser::OpenBlock() {
    if (!IsBuilding()) return;
    m_symbols.Clear(); // the trees before have copies of theirs
    m_blocks.push_back({nullptr, {}});
    void* const place = m_memory.allocate(sizeof(AQM_MacroExpr), alignof(AQM_MacroExpr));
    m_blocks.back().expression = ::new (place) AQM_MacroExpr(m_memory);
}

void QMX_MacroExpanderParser::CloseBlock() {
    if (IsBuilding()) Current().AddChild(PopNode());
}

AQM_MacroExprNode* QMX_MacroExpanderParser::PopNode() {
    AQM_MacroExprNode* const node = m_nodes.back();
    m_nodes.pop_back();
    return node;
}

void QMX_MacroExpanderParser::BuildString(const QMX_TokenValue& text) {
    if (IsBuilding()) m_nodes.push_back(Current().CreateUnaryOp(*text.symbol, AQM_MacroExprNode::MOC_Literal));
}

void QMX_MacroExpanderParser::BuildParameter(const QMX_TokenValue& name) {
    if (IsBuilding())
        m_nodes.push_back(Current().CreateParameterLookup(AQM_MacroExprNode::MOC_ParameterLookup, *name.symbol));
}

void QMX_MacroExpanderParser::BuildParameterArray(const QMX_TokenValue& name) {
    if (IsBuilding())
        m_nodes.push_back(Current().CreateParameterLookup(AQM_MacroExprNode::MOC_ParameterLookupArray, *name.symbol));
}

void QMX_MacroExpanderParser::BuildMapReference(const QMX_TokenValue& name) {
    if (IsBuilding()) m_nodes.push_back(Current().CreateUnaryOp(*name.symbol, AQM_MacroExprNode::MOC_ParameterMapRef));
}

void QMX_MacroExpanderParser::BuildConcat() {
    if (!IsBuilding()) return;
    AQM_MacroExprNode* const right = PopNode();
    AQM_MacroExprNode* const left = PopNode();
    m_nodes.push_back(Current().CreateBinaryOp(left, right, AQM_MacroExprNode::MOC_Concat));
}

void QMX_MacroExpanderParser::BuildFunction(const QMX_TokenValue& name, long argumentCount) {
    if (!IsBuilding()) return;
    m_arguments.assign(m_nodes.rbegin(), m_nodes.rbegin() + argumentCount);
    m_nodes.erase(m_nodes.end() - argumentCount, m_nodes.end());
    m_nodes.push_back(Current().CreateFn(*name.symbol, m_arguments, AQM_MacroExprNode::MOC_Function));
}

QMX_TokenValue QMX_MacroExpanderParser::ReportName(const char* element, const QMX_TokenValue& name) {
    if (m_mode == EMacroRunMode::document)
        m_lexer.GetDocument().Piece(element, m_lexer.GetNameBegin(), m_lexer.GetNameEnd());
    return name;
}

void QMX_MacroExpanderParser::OpenKey(const char* element) {
    if (m_mode != EMacroRunMode::document) return;
    m_lexer.GetDocument().OpenKey(m_lexer.GetNameBegin());
    m_lexer.GetDocument().Piece(element, m_lexer.GetNameBegin(), m_lexer.GetNameEnd());
}

void QMX_MacroExpanderParser::CloseKey(const QMX_TokenValue& mapName, AQM_MacroExprNode::EMacroOpCode op) {
    if (m_mode == EMacroRunMode::document) m_lexer.GetDocument().CloseKey(m_lexer.GetTokenEnd());
    if (!IsBuilding()) return;
    AQM_MacroExprNode* const key = PopNode();
    m_nodes.push_back(Current().CreateParameterMapLookup(op, *mapName.symbol, key));
}

void QMX_MacroExpanderParser::CloseMapEntry(const QMX_TokenValue& mapName) {
    CloseKey(mapName, AQM_MacroExprNode::MOC_ParameterMapLookup);
}

void QMX_MacroExpanderParser::CloseMapEntryArray(const QMX_TokenValue& mapName) {
    CloseKey(mapName, AQM_MacroExprNode::MOC_ParameterMapLookupArray);
}

void QMX_MacroExpanderParser::OpenBracketedName() { m_lexer.SetCondition(QMX_MacroExpanderLexer::ECondition::bracket); }

QMX_TokenValue QMX_MacroExpanderParser::CloseBracketedName(const QMX_TokenValue& name) {
    m_lexer.SetCondition(QMX_MacroExpanderLexer::ECondition::macro);
    return name;
}

QMX_TokenValue QMX_MacroExpanderParser::FirstArgument() { return Count(1); }

QMX_TokenValue QMX_MacroExpanderParser::NextArgument(const QMX_TokenValue& before) { return Count(before.count + 1); }

QMX_TokenValue QMX_MacroExpanderParser::MapEntryText() {
    static I18NString text("mmm--mmm");
    return Symbol(text);
}

QMX_TokenValue QMX_MacroExpanderParser::MapEntryArrayText() {
    static I18NString text("aaa--aaa");
    return Symbol(text);
}
