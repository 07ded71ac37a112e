// What a node answers: texts in the definition's locale, children in their order, levels and properties.
#include "QFFunctionNode.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "Mortise/AUT_Text.h"

#include "QFFunctionDLL.h"
#include "QFFunctionDefinition.h"
#include "QFFunctionParameter.h"
#include "QFFunctionPool.h"
#include "QFQosRules.h"

namespace {

// Whether a folder shows nodes of this kind in the order of the description, not by name.
bool KeepsItsPlace(EFunctionType kind) { return kind == FT_unknown || kind == FT_group || kind == FT_operation; }

} // namespace

AQF_I_FunctionNode::~AQF_I_FunctionNode() = default;

AQF_FunctionNode::AQF_FunctionNode(AQF_FunctionDefinition& owner, AQF_FunctionDescription& itsDescription)
    : m_description(&itsDescription), m_definition(&owner) {}

AQF_FunctionNode::AQF_FunctionNode(AQF_FunctionDefinition& owner, const I18NString& id, const I18NString& name)
    : m_definition(&owner), m_clientId(id), m_clientName(name) {}

bool AQF_FunctionNode::GetIsGroup() { return GetType() == FT_group; }

void AQF_FunctionNode::GetChildren(std::vector<AQF_I_FunctionNode*>& children) {
    if (m_description != nullptr && !m_childrenBuilt) {
        if (!m_description->children) {
            m_childrenBuilt = true;
            return;
        }
        BuildChildren();
    }
    children.insert(children.end(), m_children.begin(), m_children.end());
}

void AQF_FunctionNode::BuildChildren() {
    std::vector<AQF_I_FunctionNode*> built;
    std::vector<AQF_I_FunctionNode*> advanced;
    std::vector<std::pair<const I18NString*, AQF_I_FunctionNode*>> byName;
    for (const auto& child : *m_description->children) {
        if (!m_definition->IsVisible(*child)) continue;
        AQF_FunctionNode* const node = m_definition->NodeOf(child.get());
        if (!KeepsItsPlace(child->kind))
            byName.emplace_back(&node->GetName(), node);
        else
            (child->id.bytes().starts_with("advanced") ? advanced : built).push_back(node);
    }
    std::stable_sort(byName.begin(), byName.end(),
                     [](const auto& left, const auto& right) { return *left.first < *right.first; });
    built.reserve(built.size() + byName.size() + advanced.size() + m_children.size());
    for (const auto& [name, node] : byName)
        built.push_back(node);
    built.insert(built.end(), advanced.begin(), advanced.end());
    built.insert(built.end(), m_children.begin(), m_children.end());
    m_children = std::move(built);
    m_childrenBuilt = true;
}

const I18NString& AQF_FunctionNode::GetCanonical() {
    return m_description != nullptr ? m_description->canonical : AUT_GetEmptyString();
}

const I18NString& AQF_FunctionNode::GetCanonicalExpression() {
    return m_description != nullptr ? m_description->canonicalExpression : AUT_GetEmptyString();
}

AQF_I_FunctionDLL* AQF_FunctionNode::GetDLL() {
    if (m_description == nullptr || m_description->library == nullptr) return nullptr;
    return m_definition->LibraryOf(*m_description->library);
}

const I18NString& AQF_FunctionNode::GetId() { return m_description != nullptr ? m_description->id : m_clientId; }

const I18NString& AQF_FunctionNode::GetName() {
    return m_description != nullptr ? m_definition->Text(m_description->id) : m_clientName;
}

const I18NString& AQF_FunctionNode::GetReturnType() {
    return m_description != nullptr ? m_description->returnType : AUT_GetEmptyString();
}

const I18NString& AQF_FunctionNode::GetFormatType() {
    return m_description != nullptr ? m_description->formatType : AUT_GetEmptyString();
}

I18NString AQF_FunctionNode::GetTip() {
    if (m_description == nullptr) return I18NString();
    I18NString tip = m_definition->Text(m_description->id + ".tip");
    if (const I18NString* const note = m_definition->FindQosNote(m_description->id)) tip.append("\n").append(*note);
    return tip;
}

int AQF_FunctionNode::GetType() {
    if (m_description != nullptr) return m_description->kind;
    return m_clientName.empty() ? FT_unknown : FT_group;
}

const I18NString& AQF_FunctionNode::GetSyntax() {
    return m_description != nullptr ? m_definition->Text(m_description->id + ".syntax") : AUT_GetEmptyString();
}

const std::vector<I18NString>& AQF_FunctionNode::GetParameterTypes() {
    if (m_description == nullptr) return AQF_GetEmptyStringVector();
    static thread_local std::vector<I18NString> types;
    types.clear();
    for (const AQF_ParameterDescription& parameter : m_description->parameters)
        types.push_back(parameter.type);
    return types;
}

void AQF_FunctionNode::GetParameters(std::vector<AQF_I_FunctionParameter*>& parameters) {
    if (m_description == nullptr) return;
    parameters.reserve(parameters.size() + m_description->parameters.size());
    for (const AQF_ParameterDescription& parameter : m_description->parameters)
        parameters.push_back(new AQF_FunctionParameter(&parameter));
}

AQF_I_FunctionNode::EQoSLevel AQF_FunctionNode::GetQosLevel() {
    if (const EQoSLevel* const stated = m_definition->FindQosLevel(GetId())) return *stated;
    if (m_description == nullptr) return EQoSOk;
    return AQF_EvaluateQosRules(m_description->rules, m_definition->QueryTypes(), m_definition->Interfaces());
}

const I18NString& AQF_FunctionNode::GetProperty(const I18NString& key) {
    if (m_description == nullptr) return key.empty() ? m_clientName : AUT_GetEmptyString();
    if (key.empty()) return GetName();
    if (key.bytes().front() == '^') return m_definition->Text(m_description->id + "." + key.substring(1));
    if (key == "tip" || key == "syntax") return m_definition->Text(m_description->id + "." + key);
    if (key == "type") return AQF_WordOfFunctionType(m_description->kind);
    if (key == "qosLevel") return AQF_WordOfQosLevel(m_description->qosLevel);
    if (m_description->properties) {
        const auto found = m_description->properties->find(key);
        if (found != m_description->properties->end()) return found->second;
    }
    return AUT_GetEmptyString();
}

bool AQF_FunctionNode::GetIsSupportedByInterface(const I18NString& interfaceCode) {
    if (m_description == nullptr) return false;
    const I18NString upper = AUT_ToUpper(interfaceCode, AUT_DefaultLocale());
    for (const AQF_FunctionDescription* at = m_description; at != nullptr; at = at->parent)
        if (!at->interfaces.empty())
            return std::find(at->interfaces.begin(), at->interfaces.end(), upper) != at->interfaces.end();
    return m_description->pool->HasInterface(upper);
}

AQF_I_FunctionNode* AQF_FunctionNode::AddFolder(const I18NString& id, const I18NString& name) {
    if (AQF_I_FunctionNode* const known = m_definition->GetFunctionById(id)) return known;
    auto folder = std::make_unique<AQF_FunctionNode>(*m_definition, id, name);
    m_definition->AddFunction(id, folder.get());
    // What a client adds isn't the catalogue's: nobody deletes this node.
    AQF_I_FunctionNode* const added = folder.release();
    m_children.push_back(added);
    return added;
}

int AQF_FunctionNode::AddFunction(const I18NString& id, const I18NString& name, AQF_I_FunctionNode* node) {
    m_definition->AddNamedFunction(id, name, node);
    m_children.push_back(node);
    return 0;
}
