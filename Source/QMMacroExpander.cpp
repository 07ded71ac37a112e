// One expansion: the text's bytes go through a parser set taken from the pool; each block's tree is executed, and its
// value takes the block's place. Plain text is copied from the text by position, one piece between two blocks.
#include "QMMacroExpander.h"

#include <memory>
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

bool IsLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }
bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

} // namespace

AQM_MacroExpander::AQM_MacroExpander() {
    for (AQM_I_MacroFunction* const function : QMGetBuiltInFunctions())
        AddFunction(function);
}

AQM_MacroExpander::AQM_MacroExpander(AQM_MacroExprExecute* visitor, const ZBLIDOM_Document& document,
                                     const ZBLIDOM_Node& node)
    : parentVisitor(visitor), reportDocument(document), reportNode(node) {}

void AQM_MacroExpander::AddFunction(AQM_I_MacroFunction* function) {
    if (function) functions[function->GetName()] = function;
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
    const QMX_ParserSetLease set;
    const bool isOutermost = isReporting && reportNode.isNull();
    ZBLIDOM_Node report;
    if (isReporting) report = StartReport(text);

    Parse(*set, text, EMacroRunMode::expansion, 2610);
    const std::size_t blocks = set->parser.GetExpressions().size();
    if (blocks > 0 && blocks == set->lexer.GetPositions().size())
        result = ReplaceBlocks(text, coordinator, *set, report);
    else
        result = text;
    replacementCount = static_cast<int>(blocks);

    if (isReporting) {
        const ZBLIDOM_Element element = reportDocument.createElement("result");
        element.setAttribute("expandedString", result);
        report.appendChild(element);
    }
    if (isOutermost) LogReport();
    return replacementCount > 0;
}

I18NString AQM_MacroExpander::ReplaceBlocks(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator,
                                            QMX_ParserSet& set, const ZBLIDOM_Node& report) {
    const std::string_view bytes = text.bytes();
    I18NString expanded;
    std::size_t copied = 0;
    auto position = set.lexer.GetPositions().begin();
    for (const auto& expression : set.parser.GetExpressions()) {
        const auto start = static_cast<std::size_t>(position->startPosition);
        if (copied < start) expanded.appendValidUtf8(bytes.substr(copied, start - copied));
        expanded.append(AQM_ExecuteExpression(expression.get(), this, coordinator, &functions, reportDocument, report));
        copied = static_cast<std::size_t>(position->endPosition) + 1;
        ++position;
    }
    expanded.appendValidUtf8(bytes.substr(copied));
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
    auto position = set->lexer.GetPositions().begin();
    for (const auto& expression : set->parser.GetExpressions()) {
        if (position == set->lexer.GetPositions().end()) break;
        I18NString expansion = AQM_ExecuteExpression(expression.get(), this, parameters, &functions);
        out.push_back(std::move(*position++));
        out.back().expansion = std::move(expansion);
    }
}

void AQM_MacroExpander::GetMacroPositions(const I18NString& text, std::vector<PositionInfo>& out) {
    const QMX_ParserSetLease set;
    Parse(*set, text, EMacroRunMode::positions, 2817);
    out.insert(out.end(), set->lexer.GetPositions().begin(), set->lexer.GetPositions().end());
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
