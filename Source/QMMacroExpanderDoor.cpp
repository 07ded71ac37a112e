// The exported class forwards each call, so that its header shows nothing of how an expansion works.
#include "AQM_I_MacroExpander.h"

#include "QMMacroExpander.h"

AQM_I_MacroExpander::AQM_I_MacroExpander() : m_expander(new AQM_MacroExpander) {}

AQM_I_MacroExpander::~AQM_I_MacroExpander() { delete m_expander; }

void AQM_I_MacroExpander::AddFunction(AQM_I_MacroFunction* function) { m_expander->AddFunction(function); }

I18NString AQM_I_MacroExpander::Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator) {
    return m_expander->Expand(text, coordinator);
}

bool AQM_I_MacroExpander::Expand(const I18NString& text, AQU_I_ParameterAccessCoordinator* coordinator,
                                 I18NString& result) {
    return m_expander->Expand(text, coordinator, result);
}

void AQM_I_MacroExpander::Analyze(const I18NString& text, const AQU_I_ParameterAccessCoordinator* coordinator,
                                  std::vector<PositionInfo>& out) {
    m_expander->Analyze(text, coordinator, out);
}

void AQM_I_MacroExpander::GetMacroPositions(const I18NString& text, std::vector<PositionInfo>& out) {
    m_expander->GetMacroPositions(text, out);
}

ZBLIDOM_Node AQM_I_MacroExpander::GetAsXml(const I18NString& text) { return m_expander->GetAsXml(text); }

void AQM_I_MacroExpander::GetExpansionReport(ZBLIDOM_Node&) {}

int AQM_I_MacroExpander::GetReplacementCount() { return m_expander->GetReplacementCount(); }

ZBLIDOM_Node AQM_I_MacroExpander::GetExecutionReport() { return m_expander->GetExecutionReport(); }

bool AQM_I_MacroExpander::IsValidMacroIdentifier(const I18NString& name) {
    return m_expander->IsValidMacroIdentifier(name);
}

I18NString AQM_I_MacroExpander::MakeValidMacroIdentifier(const I18NString& name) {
    return m_expander->MakeValidMacroIdentifier(name);
}
