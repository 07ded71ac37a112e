// The execution of one macro block: a visitor that walks the block's tree and computes its value against a parameter
// coordinator and a table of functions.
#pragma once

#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQM_I_MacroFunction.h"
#include "AQM_MacroEvaluator.h"
#include "AQM_MacroExpr.h"
#include "AQU_I_ParameterAccessCoordinator.h"

class AQM_MacroExpander;

using AQM_FunctionTable = std::map<I18NString, AQM_I_MacroFunction*>;

// Lives for the walks of one text's blocks, one after the other, and borrows all it is given. A value of a parameter or
// a function that is as a whole a macro block is expanded in its turn, by a nested expander, as deep as the user option
// "MacroNesting" of section "QueryEngine" allows. One thread.
class AQM_MacroExprExecute : public AQM_I_MacroExprVisitor {
public:
    // The coordinator and the table may be null; the function table is read where `functionTable` points at the time
    // of each call, so that functions can be added in the middle of a run. With a report node every step leaves an
    // element below it.
    AQM_MacroExprExecute(AQM_MacroExpander* macroExpander, AQU_I_ParameterAccessCoordinator* parameters,
                         const AQM_FunctionTable* const* functionTable, const ZBLIDOM_Document& document,
                         const ZBLIDOM_Node& node);
    ~AQM_MacroExprExecute() override;

    void PreVisit(AQM_MacroExprNode* node) override;
    // Hands the node's value to the frame of its parent. Macro text above the nesting limit throws QEExceptionExtended,
    // code 0, message 0x35d64ee1 with the limit.
    void PostVisit(AQM_MacroExprNode* node) override;
    void VisitOpExpression(AQM_MacroExprNode* node) override;
    void VisitOpLiteral(EMacroOpCode op, const I18NString& text) override;
    void Binary(EMacroOpCode op) override;
    void VisitOpFunction(AQM_MacroExprNode* node, int argumentCount, const I18NString& name) override;
    void VisitOpParameterLookup(EMacroOpCode op, const I18NString& name) override;
    void VisitOpParameterLookupArray(EMacroOpCode op, const I18NString& name) override;
    void VisitOpParameterMapLookup(EMacroOpCode op, const I18NString& mapName) override;
    void VisitOpParameterMapLookupArray(EMacroOpCode op, const I18NString& mapName) override;
    void VisitOpParameterMapRef(EMacroOpCode op, const I18NString& name) override;

    AQM_MacroExpander* GetExpander() const { return expander; }

    // Does and answers what a walk of a tree with this one parameter lookup would, without the tree; the value is
    // appended.
    void AppendParameter(std::string_view name, I18NString& out);
    // The value of the node visited last, as text: a string's own, "array" for an array, nothing for no value.
    const I18NString& GetResultText() const;

private:
    I18NString PopKey();
    I18NString ExpandNested(const I18NString& text);
    I18NString LookUpParameter(const I18NString& name);
    ZBLIDOM_Element Report(const char* element) const;
    void ReportChild(const ZBLIDOM_Element& parent, const char* element, const I18NString& text) const;
    void ReportLookup(const char* element, const I18NString& name, const I18NString* key,
                      const std::vector<I18NString>& values) const;

    AQM_MacroEvaluator evaluator;
    std::unique_ptr<AQM_MacroValue> result;
    AQU_I_ParameterAccessCoordinator* coordinator;
    const AQM_FunctionTable* const* functions;
    AQM_MacroExpander* expander;
    ZBLIDOM_Document reportDocument;
    ZBLIDOM_Node reportNode;

    I18NString m_name; // of the parameter at hand
};

// Executes the expression and answers its value as text. All arguments stay the caller's; the coordinator and the
// functions may be null. What the walk throws passes out.
I18NString AQM_ExecuteExpression(AQM_MacroExpr* expression, AQM_MacroExpander* expander,
                                 AQU_I_ParameterAccessCoordinator* coordinator, const AQM_FunctionTable* functions);
// The same with a report of each step below the node.
I18NString AQM_ExecuteExpression(AQM_MacroExpr* expression, AQM_MacroExpander* expander,
                                 AQU_I_ParameterAccessCoordinator* coordinator, const AQM_FunctionTable* functions,
                                 ZBLIDOM_Document document, ZBLIDOM_Node node);
