// The definition behind AQF_I_FunctionDefinition: a client's filters, levels and nodes over the pool.
//
// Nodes are made on first need and one for each description, so that a node's address stands for its function as long
// as the definition lives.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionDefinition.h"

#include "QFFunctionDescription.h"
#include "QFFunctionPool.h"

class AQF_FunctionDLL;
class AQF_FunctionNode;

// One thread at a time, its nodes included.
class AQF_FunctionDefinition : public AQF_I_FunctionDefinition {
public:
    AQF_FunctionDefinition();
    explicit AQF_FunctionDefinition(const I18NLocale& wanted);
    ~AQF_FunctionDefinition() override;

    void AddContext(const I18NString& context) override;
    void AddDefaultContexts() override;
    void AddInterface(const I18NString& interfaceCode) override;
    void AddQueryType(const I18NString& queryType) override;
    void AddFunctionType(const I18NString& word) override;
    void AddVendor(const I18NString& vendor) override;
    AQF_I_FunctionNode* GetFunctionById(const I18NString& id) override;
    void GetFunctionsByName(const I18NString& name, std::vector<AQF_I_FunctionNode*>& functions) override;
    AQF_I_FunctionNode* GetFunctionByName(const I18NString& name) override;
    void GetDLLs(std::vector<AQF_I_FunctionDLL*>& libraries) override;
    const I18NLocale& GetLocale() override;
    void GetLocales(std::vector<I18NString>& locales) override;
    void GetVendors(std::vector<I18NString>& vendors, std::vector<I18NString>& names) override;
    I18NString GetVendorName(const I18NString& vendor) override;
    void GetInterfaces(std::vector<I18NString>& interfaces) override;
    AQF_I_FunctionNode* GetRootNode() override;
    void AddFunction(const I18NString& id, AQF_I_FunctionNode* node) override;
    void SetQosLevel(const I18NString& id, AQF_I_FunctionNode::EQoSLevel level, const I18NString& note) override;
    void MergeQosLevel(const I18NString& id, AQF_I_FunctionNode::EQoSLevel level, const I18NString& note) override;
    void ShowHiddenFunctions() override;
    void ShowDimensionalFunctionsOnly() override;
    void AddNamedFunction(const I18NString& id, const I18NString& name, AQF_I_FunctionNode* node) override;

    // What the nodes ask for.

    // The node of a description, null for null.
    AQF_FunctionNode* NodeOf(AQF_FunctionDescription* description);
    AQF_FunctionDLL* LibraryOf(const AQF_LibraryDescription& library);
    bool IsVisible(const AQF_FunctionDescription& description) const;
    // The text of a key in the definition's locale.
    const I18NString& Text(const I18NString& key) const { return AQF_FindText(m_texts, key); }
    // What the client said of the id, merged statements first; null if it said nothing.
    const AQF_I_FunctionNode::EQoSLevel* FindQosLevel(const I18NString& id) const;
    const I18NString* FindQosNote(const I18NString& id) const;
    const std::set<I18NString>& QueryTypes() const { return m_queryTypes; }
    const std::set<I18NString>& Interfaces() const { return m_interfaces; }

private:
    using Levels = std::map<I18NString, AQF_I_FunctionNode::EQoSLevel>;
    using Notes = std::map<I18NString, I18NString>;

    bool PassesKinds(const AQF_FunctionDescription& description) const;
    bool PassesContexts(const AQF_FunctionDescription& description) const;
    bool PassesVendors(const AQF_FunctionDescription& description) const;
    void BuildLibraries();

    I18NLocale m_locale{"en-us"};
    AQF_FunctionNode* m_rootNode = nullptr;
    bool m_librariesBuilt = false;
    std::map<I18NString, std::unique_ptr<AQF_FunctionDLL>> m_libraries;
    bool m_showHidden = false;
    bool m_dimensionalOnly = false;
    std::map<I18NString, AQF_I_FunctionNode*> m_clientFunctionsById;
    std::map<I18NString, AQF_I_FunctionNode*> m_clientFunctionsByName;
    std::vector<I18NString> m_contexts;
    std::set<I18NString> m_interfaces;
    std::set<I18NString> m_queryTypes;
    std::vector<I18NString> m_vendors;
    std::vector<EFunctionType> m_functionKinds;
    Levels m_qosLevels;
    Levels m_mergedQosLevels;
    Notes m_qosNotes;
    Notes m_mergedQosNotes;
    std::unordered_map<const AQF_FunctionDescription*, std::unique_ptr<AQF_FunctionNode>> m_nodes;

    AQF_FunctionPool* m_pool;
    // The locale's table in the pool, null if it has none. Tables don't change any more.
    const AQF_StringTable* m_texts = nullptr;
};
