// A node as one client sees it: a view of a description, or, without a description, a client's own. It belongs to its
// definition, and is one thread's at a time as that is.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionNode.h"

#include "QFFunctionDescription.h"

class AQF_FunctionDefinition;

class AQF_FunctionNode : public AQF_I_FunctionNode {
public:
    AQF_FunctionNode(AQF_FunctionDefinition& owner, AQF_FunctionDescription& itsDescription);
    AQF_FunctionNode(AQF_FunctionDefinition& owner, const I18NString& id, const I18NString& name);

    bool GetIsGroup() override;
    void GetChildren(std::vector<AQF_I_FunctionNode*>& children) override;
    const I18NString& GetCanonical() override;
    const I18NString& GetCanonicalExpression() override;
    AQF_I_FunctionDLL* GetDLL() override;
    const I18NString& GetId() override;
    const I18NString& GetName() override;
    const I18NString& GetReturnType() override;
    const I18NString& GetFormatType() override;
    I18NString GetTip() override;
    int GetType() override;
    const I18NString& GetSyntax() override;
    const std::vector<I18NString>& GetParameterTypes() override;
    void GetParameters(std::vector<AQF_I_FunctionParameter*>& parameters) override;
    EQoSLevel GetQosLevel() override;
    const I18NString& GetProperty(const I18NString& key) override;
    bool GetIsSupportedByInterface(const I18NString& interfaceCode) override;
    AQF_I_FunctionNode* AddFolder(const I18NString& id, const I18NString& name) override;
    int AddFunction(const I18NString& id, const I18NString& name, AQF_I_FunctionNode* node) override;

private:
    void BuildChildren();

    AQF_FunctionDescription* m_description = nullptr;
    std::vector<AQF_I_FunctionNode*> m_children;
    AQF_FunctionDefinition* m_definition;
    I18NString m_clientId;
    I18NString m_clientName;
    bool m_childrenBuilt = false;
};
