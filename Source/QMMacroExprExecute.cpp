// A node whose children are its operands gets an argument frame before they are walked. Its own visit turns the frame
// into `result`, and PostVisit hands `result` to the parent's frame.
#include "QMMacroExprExecute.h"

#include <algorithm>
#include <utility>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "Mortise/AUT_Text.h"

#include "AQE_TextUtilities.h"
#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"
#include "QMMacroExpander.h"
#include "QMMacroValueAccess.h"

namespace {

constexpr int kDefaultNesting = 5;
// Each level is a nested call on the machine stack, so the option can't ask for more.
constexpr long kDeepestNesting = 1000;

// A name as it is looked up: the "]]" of a bracketed name is one "]". Few names hold one, so only those are copied.
class LookupName {
public:
    explicit LookupName(const I18NString& written) : m_name(&written) {
        if (written.bytes().find("]]") == std::string_view::npos) return;
        AQE_SearchAndReplace(written, "]]", "]", m_reduced);
        m_name = &m_reduced;
    }
    LookupName(const LookupName&) = delete;
    LookupName& operator=(const LookupName&) = delete;
    operator const I18NString&() const { return *m_name; }

private:
    I18NString m_reduced;
    const I18NString* m_name;
};

std::unique_ptr<AQM_MacroValue> MakeArray(std::vector<I18NString>&& texts) {
    auto array = std::make_unique<AQM_MacroValueArray>();
    for (I18NString& text : texts)
        array->AddValue(new AQM_MacroValueString(std::move(text)));
    return array;
}

} // namespace

AQM_MacroExprExecute::AQM_MacroExprExecute(AQM_MacroExpander* macroExpander,
                                           AQU_I_ParameterAccessCoordinator* parameters,
                                           const AQM_FunctionTable* const* functionTable,
                                           const ZBLIDOM_Document& document, const ZBLIDOM_Node& node)
    : coordinator(parameters), functions(functionTable), expander(macroExpander), reportDocument(document),
      reportNode(node) {}

AQM_MacroExprExecute::~AQM_MacroExprExecute() = default;

void AQM_MacroExprExecute::PreVisit(AQM_MacroExprNode* node) {
    if (node->GetOpCode() >= AQM_MacroExprNode::MOC_Expression) evaluator.StartCall();
}

void AQM_MacroExprExecute::PostVisit(AQM_MacroExprNode* node) {
    if (!node->GetParent()) return;
    // The value of these is in the parent's frame already, or there is none; no parser makes 101 and 102.
    switch (static_cast<int>(node->GetOpCode())) {
    case 100:
    case 101:
    case 102:
    case 104:
    case 200:
        return;
    case AQM_MacroExprNode::MOC_ParameterLookup:
    case AQM_MacroExprNode::MOC_ParameterMapLookup:
    case AQM_MacroExprNode::MOC_Function:
        if (const AQM_MacroValueString* const text = QMAsString(result.get()); text && AQE_IsMacro(text->GetValue())) {
            evaluator.PushArgument(ExpandNested(text->GetValue()));
            return;
        }
        break;
    default:
        break;
    }
    evaluator.PushValue(result.release());
}

I18NString AQM_MacroExprExecute::ExpandNested(const I18NString& text) {
    int depth = 1;
    for (const AQM_MacroExpander* outer = expander; outer && outer->GetParentVisitor();
         outer = outer->GetParentVisitor()->GetExpander())
        ++depth;
    const long limit =
        std::min<long>(AUT_I_UserConfiguration::Create(1)->GetInteger("QueryEngine", "MacroNesting", kDefaultNesting),
                       kDeepestNesting);
    if (depth > limit) {
        QEExceptionExtended failure(ZBLSeverity::error, 0L);
        QEMessage message(kQEMsgMacroNestingTooDeep);
        message << ZBLMessageParm(limit);
        failure << message;
        QELogAndThrow(failure, "Source/QMMacroExprExecute", 296);
    }
    AQM_MacroExpander nested(this, *functions, reportDocument, reportNode);
    return nested.Expand(text, coordinator);
}

void AQM_MacroExprExecute::VisitOpExpression(AQM_MacroExprNode*) {
    evaluator.DoCall(QMConversionToString());
    result.reset(evaluator.PopValue());
}

void AQM_MacroExprExecute::VisitOpLiteral(EMacroOpCode, const I18NString& text) {
    evaluator.PushArgument(text);
    if (reportNode) Report("Literal").setAttribute("string", text);
}

void AQM_MacroExprExecute::Binary(EMacroOpCode) {
    evaluator.DoCall(QMConcatenation());
    result.reset(evaluator.PopValue());
}

void AQM_MacroExprExecute::VisitOpFunction(AQM_MacroExprNode*, int argumentCount, const I18NString& name) {
    AQM_I_MacroFunction* function = nullptr;
    if (const AQM_FunctionTable* const table = *functions)
        if (const auto found = table->find(name); found != table->end()) function = found->second;
    if (function)
        evaluator.DoCallAppFunction(function);
    else
        evaluator.DoCall(name);
    result.reset(evaluator.PopValue());

    if (!reportNode) return;
    const ZBLIDOM_Element element = Report("Function");
    element.setAttribute("functionName", name);
    element.setAttribute("operandCount", AUT_ToString(argumentCount));
    element.setAttribute("result", GetResultText());
}

// A parameter that nobody knows is the empty text: what the coordinator answers beside the value doesn't matter.
I18NString AQM_MacroExprExecute::LookUpParameter(const I18NString& name) {
    const LookupName lookup(name);
    I18NString value;
    if (coordinator) coordinator->Get(lookup, value);
    if (reportNode) ReportLookup("ParameterLookup", lookup, nullptr, {value});
    return value;
}

void AQM_MacroExprExecute::VisitOpParameterLookup(EMacroOpCode, const I18NString& name) {
    result = std::make_unique<AQM_MacroValueString>(LookUpParameter(name));
}

void AQM_MacroExprExecute::AppendParameter(std::string_view name, I18NString& out) {
    m_name.clear();
    m_name.appendValidUtf8(name);
    const I18NString value = LookUpParameter(m_name);
    if (AQE_IsMacro(value))
        out.append(ExpandNested(value));
    else
        out.append(value);
}

void AQM_MacroExprExecute::VisitOpParameterLookupArray(EMacroOpCode, const I18NString& name) {
    const LookupName lookup(name);
    std::vector<I18NString> values;
    if (coordinator) coordinator->Get(lookup, values);
    if (reportNode) ReportLookup("ParameterLookupArray", lookup, nullptr, values);
    result = MakeArray(std::move(values));
}

// The key has been computed into the frame that was opened before the walk of the key's node.
I18NString AQM_MacroExprExecute::PopKey() {
    evaluator.DoCall(QMConversionToString());
    const std::unique_ptr<AQM_MacroValue> value(evaluator.PopValue());
    const AQM_MacroValueString* const key = QMAsString(value.get());
    return key ? key->GetValue() : I18NString();
}

void AQM_MacroExprExecute::VisitOpParameterMapLookup(EMacroOpCode, const I18NString& mapName) {
    const I18NString key = PopKey();
    const LookupName lookup(mapName);
    I18NString value;
    if (coordinator) coordinator->Get(lookup, key, value);
    if (reportNode) ReportLookup("ParameterMapLookup", lookup, &key, {value});
    result = std::make_unique<AQM_MacroValueString>(std::move(value));
}

void AQM_MacroExprExecute::VisitOpParameterMapLookupArray(EMacroOpCode, const I18NString& mapName) {
    const I18NString key = PopKey();
    const LookupName lookup(mapName);
    std::vector<I18NString> values;
    if (coordinator) coordinator->Get(lookup, key, values);
    if (reportNode) ReportLookup("ParameterMapLookupArray", lookup, &key, values);
    result = MakeArray(std::move(values));
}

// The value of a map reference is the map's name, for functions that take a map by name.
void AQM_MacroExprExecute::VisitOpParameterMapRef(EMacroOpCode, const I18NString& name) {
    const LookupName lookup(name);
    evaluator.PushArgument(lookup);
    if (reportNode) ReportChild(Report("ParameterMapRef"), "name", lookup);
}

const I18NString& AQM_MacroExprExecute::GetResultText() const {
    static const I18NString& array = *new I18NString("array");
    static const I18NString& nothing = *new I18NString();
    if (const AQM_MacroValueString* const text = QMAsString(result.get())) return text->GetValue();
    return QMAsArray(result.get()) ? array : nothing;
}

ZBLIDOM_Element AQM_MacroExprExecute::Report(const char* element) const {
    const ZBLIDOM_Element entry = reportDocument.createElement(element);
    reportNode.appendChild(entry);
    return entry;
}

void AQM_MacroExprExecute::ReportChild(const ZBLIDOM_Element& parent, const char* element,
                                       const I18NString& text) const {
    parent.appendChild(reportDocument.createElement(element)).appendChild(reportDocument.createTextNode(text));
}

void AQM_MacroExprExecute::ReportLookup(const char* element, const I18NString& name, const I18NString* key,
                                        const std::vector<I18NString>& values) const {
    const ZBLIDOM_Element entry = Report(element);
    ReportChild(entry, "name", name);
    if (key) ReportChild(entry, "key", *key);
    for (const I18NString& value : values)
        ReportChild(entry, "value", value);
}

I18NString AQM_ExecuteExpression(AQM_MacroExpr* expression, AQM_MacroExpander* expander,
                                 AQU_I_ParameterAccessCoordinator* coordinator, const AQM_FunctionTable* functions) {
    return AQM_ExecuteExpression(expression, expander, coordinator, functions, ZBLIDOM_Document(), ZBLIDOM_Node());
}

I18NString AQM_ExecuteExpression(AQM_MacroExpr* expression, AQM_MacroExpander* expander,
                                 AQU_I_ParameterAccessCoordinator* coordinator, const AQM_FunctionTable* functions,
                                 ZBLIDOM_Document document, ZBLIDOM_Node node) {
    AQM_MacroExprExecute visitor(expander, coordinator, &functions, document, node);
    expression->Accept(visitor);
    return visitor.GetResultText();
}
