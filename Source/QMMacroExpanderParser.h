// The macro language's parser: it feeds the scanner's tokens to the tables made from Grammar/QMMacroGrammar, whose
// rules call the operations below, and builds one tree for each macro block.
#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "AQM_MacroExpr.h"

#include "QMMacroExpanderLexer.h"
#include "QMMacroToken.h"
#include "QUYyRuntime.h"

struct qmxpstate;

// The parser's stack. An expression nested deeper than this holds ends the run with yy_err_obj::yy_err_exit.
inline constexpr int kQmxParserStackDepth = 8192;

// One block of the text: its tree, or for a block that is one parameter and nothing else, which needs none, its name.
struct QMX_ParsedBlock {
    AQM_MacroExpr* expression;
    std::string_view parameter;
};

// Borrows the scanner, the symbol table and the error object for its life. Trees are built in expansion mode alone,
// reports to the document are made in document mode alone; the grammar is the same in all. One thread at a time.
class QMX_MacroExpanderParser {
public:
    QMX_MacroExpanderParser(QMX_MacroExpanderLexer& lexer, QMX_SymbolTable& symbols, yy_err_obj& error);
    QMX_MacroExpanderParser(const QMX_MacroExpanderParser&) = delete;
    QMX_MacroExpanderParser& operator=(const QMX_MacroExpanderParser&) = delete;
    ~QMX_MacroExpanderParser();

    // Reads the scanner's whole input. The first error leaves as the exception that the error object throws.
    void Run();
    // Whether a run ended in an error that nothing was thrown for.
    bool HasFailed() const { return m_failed; }
    // The blocks in order, in expansion mode; the trees stay the parser's.
    const std::vector<QMX_ParsedBlock>& GetBlocks() const { return m_blocks; }

    void Reset();

    // What the grammar calls.
    void ReportSyntaxError();
    void GiveUp();
    void PlainText();
    void OpenBlock();
    void CloseBlock();
    void BuildString(const QMX_TokenValue& text);
    void BuildParameter(const QMX_TokenValue& name);
    void BuildParameterArray(const QMX_TokenValue& name);
    void BuildMapReference(const QMX_TokenValue& name);
    void BuildConcat();
    void BuildFunction(const QMX_TokenValue& name, long argumentCount);
    QMX_TokenValue ReportName(const char* element, const QMX_TokenValue& name);
    void OpenKey(const char* element);
    void CloseMapEntry(const QMX_TokenValue& mapName);
    void CloseMapEntryArray(const QMX_TokenValue& mapName);
    void OpenBracketedName();
    QMX_TokenValue CloseBracketedName(const QMX_TokenValue& name);
    QMX_TokenValue FirstArgument();
    QMX_TokenValue NextArgument(const QMX_TokenValue& before);
    // The values of two rules, fixed texts that nobody reads.
    QMX_TokenValue MapEntryText();
    QMX_TokenValue MapEntryArrayText();

private:
    bool IsBuilding() const { return m_mode == EMacroRunMode::expansion; }
    AQM_MacroExpr& Current() { return *m_blocks.back().expression; }
    AQM_MacroExprNode* PopNode();
    void CloseKey(const QMX_TokenValue& mapName, AQM_MacroExprNode::EMacroOpCode op);

    QMX_MacroExpanderLexer& m_lexer;
    QMX_SymbolTable& m_symbols;
    yy_err_obj& m_error;
    EMacroRunMode m_mode = EMacroRunMode::positions;
    qmxpstate* m_state;
    bool m_failed = false;
    std::vector<AQM_MacroExprNode*> m_nodes;
    std::vector<AQM_MacroExprNode*> m_arguments; // of the function that is being built
    std::vector<QMX_ParsedBlock> m_blocks;
    // All trees of a run lie here; the first piece serves every run.
    std::array<std::byte, 16384> m_firstMemory;
    std::pmr::monotonic_buffer_resource m_memory{m_firstMemory.data(), m_firstMemory.size()};
};
