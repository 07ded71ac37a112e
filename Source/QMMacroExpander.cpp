// One expansion: the text's bytes go through a parser set taken from the pool; each block's tree is executed, and its
// value takes the block's place. Plain text is copied from the text by position, one piece between two blocks.
#include "QMMacroExpander.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include "AQE_LogFile.h"
#include "AQE_TextUtilities.h"
#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"
#include "QMMacroBuiltIns.h"
#include "QMMacroParserPool.h"

namespace {

constexpr long kCodeMacro = 901;
constexpr auto kReportLogLevel = static_cast<AUT_I_LogFile::ELogLevel>(7);

// Read once: a process either reports its expansions or doesn't.
bool IsReportWanted() {
    static const bool wanted =
        AUT_I_UserConfiguration::Create(1)->GetInteger("QueryEngine", "GetMacroExpansionExecutionReport", 0) != 0;
    return wanted;
}

// Runs the set over the text. The error object throws, so a run that failed without an exception is one that the parser
// itself ended; the line tells which operation asked.
void Parse(QMX_ParserSet& set, const I18NString& text, EMacroRunMode mode, long line) {
    set.Run(text.bytes(), mode);
    if (!set.parser.HasFailed()) return;
    QEException failure(ZBLSeverity::error, kCodeMacro);
    QEAddMessages(failure, kQEMsgMacroParseFailed, 1, I18NString(set.errorBuffer.GetContent()));
    QELogAndThrow(failure, "Source/QMMacroExpander", line);
}

// The built-in functions by name, registered in their order, for all expanders that know no others.
const AQM_FunctionTable& BuiltInTable() {
    static const AQM_FunctionTable& table = *[] {
        auto registered = std::make_unique<AQM_FunctionTable>();
        for (AQM_I_MacroFunction* const function : QMGetBuiltInFunctions())
            (*registered)[function->GetName()] = function;
        return registered.release();
    }();
    return table;
}

// A value rarely is much longer than the block that it replaces.
constexpr std::size_t kRoomForValue = 32;

AQM_I_MacroExpander::PositionInfo MakePosition(const QMX_BlockPosition& block) {
    AQM_I_MacroExpander::PositionInfo position;
    position.startPosition = block.start;
    position.endPosition = block.end;
    position.commentStart = block.commentStart;
    position.commentEnd = block.commentEnd;
    return position;
}

void AppendBlock(const QMX_ParsedBlock& block, AQM_MacroExprExecute& visitor, I18NString& out) {
    if (!block.expression) return visitor.AppendParameter(block.parameter, out);
    block.expression->Accept(visitor);
    out.append(visitor.GetResultText());
}

bool IsLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }
bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

} // namespace

AQM_MacroExpander::AQM_MacroExpander() : m_functionsInUse(&BuiltInTable()) {}

AQM_MacroExpander::AQM_MacroExpander(AQM_MacroExprExecute* visitor, const AQM_FunctionTable* functionTable,
                                     const ZBLIDOM_Document& document, const ZBLIDOM_Node& node)
    : parentVisitor(visitor), reportDocument(document), reportNode(node),
      m_functionsInUse(functionTable ? functionTable : &functions) {}

void AQM_MacroExpander::AddFunction(AQM_I_MacroFunction* function) {
    if (!function) return;
    if (m_functionsInUse != &functions) {
        functions = *m_functionsInUse;
        m_functionsInUse = &functions;
    }
    functions[function->GetName()] = function;
}

I18NString AQM_MacroExpander::Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator) {
    I18NString result;
    Expand(text, coordinator, result);
    return result;
}

bool AQM_MacroExpander::Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator,
                               I18NString& result) {
    if (&text == &result) throw "*DevErr: AQM_MacroExpander::Expand called with same 1st and 3rd arg";
    const bool isReporting = IsReportWanted();
    std::optional<QMX_ParserSetLease> lease(std::in_place);
    QMX_ParserSet& set = **lease;
    const bool isOutermost = isReporting && reportNode.isNull();
    ZBLIDOM_Node report;
    if (isReporting) report = StartReport(text);

    Parse(set, text, EMacroRunMode::expansion, 2610);
    const std::size_t blocks = set.parser.GetBlocks().size();
    const bool isReplacing = blocks > 0 && blocks == set.lexer.GetPositions().size();
    I18NString expanded = isReplacing ? ReplaceBlocks(text, coordinator, set, report) : text;

    if (isReporting) {
        const ZBLIDOM_Element element = reportDocument.createElement("result");
        element.setAttribute("expandedString", expanded);
        report.appendChild(element);
    }
    lease.reset(); // whoever takes the record may expand texts, too
    if (isOutermost) LogReport();
    // Behind all that can fail.
    result = std::move(expanded);
    replacementCount = static_cast<int>(blocks);
    return replacementCount > 0;
}

I18NString AQM_MacroExpander::ReplaceBlocks(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator,
                                            QMX_ParserSet& set, const ZBLIDOM_Node& report) {
    const std::string_view bytes = text.bytes();
    const auto& blocks = set.parser.GetBlocks();
    AQM_MacroExprExecute visitor(this, coordinator, &m_functionsInUse, reportDocument, report);
    I18NString expanded;
    expanded.reserve(std::min(bytes.size() + blocks.size() * kRoomForValue, I18NString::kMaxBytes));
    std::size_t copied = 0;
    const auto copyUpTo = [&](std::size_t end) {
        const std::string_view piece = bytes.substr(copied, end - copied);
        if (text.isAscii())
            expanded.appendAscii(piece);
        else
            expanded.appendValidUtf8(piece);
    };
    auto position = set.lexer.GetPositions().begin();
    for (const QMX_ParsedBlock& block : blocks) {
        copyUpTo(static_cast<std::size_t>(position->start));
        AppendBlock(block, visitor, expanded);
        copied = static_cast<std::size_t>(position->end) + 1;
        ++position;
    }
    copyUpTo(bytes.size());
    return expanded;
}

// The report grows over all calls of the object; each call has an element of its own in it.
ZBLIDOM_Node AQM_MacroExpander::StartReport(const I18NString& text) {
    if (reportNode.isNull()) {
        reportDocument = ZBLIDOM_DOMImplementation::getInstance().createDocument(I18NString(), "MacroExpander",
                                                                                 ZBLIDOM_DocumentType());
        reportNode = reportDocument.getDocumentElement().appendChild(reportDocument.createElement("ExecutionReport"));
    }
    const ZBLIDOM_Element element = reportDocument.createElement("Expanding");
    element.setAttribute("string", text);
    return reportNode.appendChild(element);
}

void AQM_MacroExpander::LogReport() const {
    AQE_LogFile log("QE");
    if (log.GetLogLevel() < kReportLogLevel) return;
    log.Log(kReportLogLevel, ZBLIDOM_Helper::serialize(reportDocument) + "\n");
}

void AQM_MacroExpander::Analyze(const I18NString& text, const AQU_I_ParameterAccessCoordinator* coordinator,
                                std::vector<PositionInfo>& out) {
    const QMX_ParserSetLease set;
    Parse(*set, text, EMacroRunMode::expansion, 2484);
    // Lookups aren't const, though they change nothing that a caller could see.
    auto* const parameters = const_cast<AQU_I_ParameterAccessCoordinator*>(coordinator);
    AQM_MacroExprExecute visitor(this, parameters, &m_functionsInUse, ZBLIDOM_Document(), ZBLIDOM_Node());
    auto position = set->lexer.GetPositions().begin();
    for (const QMX_ParsedBlock& block : set->parser.GetBlocks()) {
        if (position == set->lexer.GetPositions().end()) break;
        PositionInfo entry = MakePosition(*position++);
        AppendBlock(block, visitor, entry.expansion);
        out.push_back(std::move(entry));
    }
}

void AQM_MacroExpander::GetMacroPositions(const I18NString& text, std::vector<PositionInfo>& out) {
    const QMX_ParserSetLease set;
    Parse(*set, text, EMacroRunMode::positions, 2817);
    // Only a new list: an exact room for each text would have the list of a caller who collects copied each time.
    if (out.empty()) out.reserve(set->lexer.GetPositions().size());
    for (const QMX_BlockPosition& block : set->lexer.GetPositions())
        out.push_back(MakePosition(block));
}

ZBLIDOM_Node AQM_MacroExpander::GetAsXml(const I18NString& text) {
    const QMX_ParserSetLease set;
    Parse(*set, text, EMacroRunMode::document, 2873);
    return set->lexer.GetDocument().GetDocument();
}

bool AQM_MacroExpander::IsValidMacroIdentifier(const I18NString& name) const {
    const std::string_view bytes = name.bytes();
    if (bytes.empty() || !IsLetter(bytes.front())) return false;
    for (const char byte : bytes.substr(1)) {
        if (byte == '\n') return true;
        if (!IsLetter(byte) && !IsDigit(byte) && byte != '_' && byte != '.') return false;
    }
    return true;
}

I18NString AQM_MacroExpander::MakeValidMacroIdentifier(const I18NString& name) const {
    if (IsValidMacroIdentifier(name)) return name;
    I18NString bracketed("[");
    bracketed += AQE_SearchAndReplace(name, "]", "]]");
    bracketed += "]";
    return bracketed;
}
