// The expander behind AQM_I_MacroExpander, and the nested one that expands a value which is itself a macro block.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQM_I_MacroExpander.h"

#include "QMMacroExprExecute.h"

struct QMX_ParserSet;

// AQM_I_MacroExpander tells what the operations do. Between calls only the count, the functions and the report stay.
// One thread at a time.
class AQM_MacroExpander {
public:
    using PositionInfo = AQM_I_MacroExpander::PositionInfo;

    // Outermost, with the built-in functions.
    AQM_MacroExpander();
    // Nested in the walk of that visitor, with the functions of the outer expander, which it borrows (null for none);
    // what it does goes into the report below the node.
    AQM_MacroExpander(AQM_MacroExprExecute* visitor, const AQM_FunctionTable* functionTable,
                      const ZBLIDOM_Document& document, const ZBLIDOM_Node& node);
    AQM_MacroExpander(const AQM_MacroExpander&) = delete;
    AQM_MacroExpander& operator=(const AQM_MacroExpander&) = delete;

    void AddFunction(AQM_I_MacroFunction* function);
    I18NString Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator);
    bool Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator, I18NString& result);
    void Analyze(const I18NString& text, const AQU_I_ParameterAccessCoordinator* coordinator,
                 std::vector<PositionInfo>& out);
    void GetMacroPositions(const I18NString& text, std::vector<PositionInfo>& out);
    ZBLIDOM_Node GetAsXml(const I18NString& text);
    int GetReplacementCount() const { return replacementCount; }
    ZBLIDOM_Node GetExecutionReport() const { return reportNode; }
    bool IsValidMacroIdentifier(const I18NString& name) const;
    I18NString MakeValidMacroIdentifier(const I18NString& name) const;

    // Null for an outermost expander.
    const AQM_MacroExprExecute* GetParentVisitor() const { return parentVisitor; }

private:
    I18NString ReplaceBlocks(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator, QMX_ParserSet& set,
                             const ZBLIDOM_Node& report);
    ZBLIDOM_Node StartReport(const I18NString& text);
    void LogReport() const;

    int replacementCount = 0;
    // Of this object's own, in use once a function has been added.
    AQM_FunctionTable functions;
    AQM_MacroExprExecute* parentVisitor = nullptr;
    ZBLIDOM_Document reportDocument;
    ZBLIDOM_Node reportNode;

    // The table above, or until a function is added one that is shared.
    const AQM_FunctionTable* m_functionsInUse;
};
