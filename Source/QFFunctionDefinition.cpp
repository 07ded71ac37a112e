// Selection: a client's filters over the pool, the lookups by id and name, and what the client says of levels.
#include "QFFunctionDefinition.h"

#include <algorithm>
#include <atomic>
#include <string_view>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "Mortise/AUT_Text.h"
#include "ZBLCore/ZBLThread.h"

#include "ABrindle.h"
#include "AQE_LogFile.h"
#include "QEException.h"

#include "QEMadeOnce.h"
#include "QEMessageNumbers.h"
#include "QEThrow.h"
#include "QFFunctionDLL.h"
#include "QFFunctionNode.h"
#include "QFInterfaceSets.h"

namespace {

constexpr const char* kSource = "Source/QFFunctionDefinition";
constexpr long kCodeUnknownFunction = 150;

// The codes that count as relational, joined by commas; null until a definition with a locale is made, then there as
// long as the process.
constinit ZBLThreadCriticalSection AQF_RelInterfacesGuard;
constinit std::atomic<const I18NString*> relInterfaces{nullptr};

void ReadRelInterfaces() {
    if (relInterfaces.load(std::memory_order_acquire) != nullptr) return;
    // Asked for before the guard is taken: it takes a guard of its own, and no two of these are held at once.
    const I18NString defaults = AQF_GetDefaultRelInterfaces();
    QEMadeOnce(relInterfaces, AQF_RelInterfacesGuard, [&defaults] {
        return std::make_unique<I18NString>(
            AUT_I_UserConfiguration::Create(1)->GetString("QueryEngine", "RelInterfaces", defaults));
    });
}

template <class Container, class Value>
bool Contains(const Container& container, const Value& value) {
    return std::find(container.begin(), container.end(), value) != container.end();
}

// Null if there is none.
AQF_I_FunctionNode* FindNode(const std::map<I18NString, AQF_I_FunctionNode*>& nodes, const I18NString& key) {
    const auto found = nodes.find(key);
    return found != nodes.end() ? found->second : nullptr;
}

// Null if neither has the key; the first map comes first.
template <class Map>
const typename Map::mapped_type* FindInEither(const Map& first, const Map& second, const I18NString& key) {
    for (const Map* const map : {&first, &second})
        if (const auto found = map->find(key); found != map->end()) return &found->second;
    return nullptr;
}

// The pool's entries of the name, whether a definition would show them or not; at least one.
auto FindEntries(const I18NString& name, long line) {
    const auto entries = AQF_FunctionPool::GetInstance()->FindByName(name);
    if (entries.first == entries.second) {
        QEException failure(ZBLSeverity::error, kCodeUnknownFunction);
        QEAddMessages(failure, kQEMsgUnknownFunction, 1, name);
        QELogAndThrow(failure, kSource, line);
    }
    return entries;
}

} // namespace

AQF_I_FunctionDefinition::~AQF_I_FunctionDefinition() = default;

AQF_I_FunctionDefinition* AQF_I_FunctionDefinition::Create(const I18NLocale& locale) {
    return new AQF_FunctionDefinition(locale);
}

AQF_I_FunctionDefinition* AQF_I_FunctionDefinition::Create() { return new AQF_FunctionDefinition; }

const I18NString& AQF_I_FunctionDefinition::GetFunctionReturnType(const I18NString& name) {
    const auto [begin, end] = FindEntries(name, 109);
    const auto found = std::find_if(begin, end, [](const auto& entry) {
        return entry.second->returnType.bytes().find("crx") == std::string_view::npos;
    });
    return (found != end ? found : begin)->second->returnType;
}

const I18NString& AQF_I_FunctionDefinition::GetFunctionFormatType(const I18NString& name) {
    const auto [begin, end] = FindEntries(name, 154);
    const auto found = std::find_if(begin, end, [](const auto& entry) { return !entry.second->formatType.empty(); });
    return found != end ? found->second->formatType : AUT_GetEmptyString();
}

const I18NString& AQF_I_FunctionDefinition::GetFormatForSpec(const I18NString& spec) {
    if (const AQF_FunctionDescription* const entry = AQF_FunctionPool::GetInstance()->FindById(spec))
        return entry->formatType;
    AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_NotFound, "** Cannot resolve the following formatSpec :" + spec);
    return AUT_GetEmptyString();
}

AQF_FunctionDefinition::AQF_FunctionDefinition() : m_pool(AQF_FunctionPool::GetInstance()) {
    m_rootNode = NodeOf(m_pool->root.get());
    m_texts = m_pool->FindTexts(m_locale);
}

AQF_FunctionDefinition::AQF_FunctionDefinition(const I18NLocale& wanted) : m_pool(AQF_FunctionPool::GetInstance()) {
    m_rootNode = NodeOf(m_pool->root.get());
    std::vector<I18NString> supported;
    AQF_FunctionDefinition::GetLocales(supported);
    I18NString chosen = wanted.getName();
    if (AQE_GetContentLocale(chosen, supported, "en-us")) m_locale = chosen;
    m_pool->LoadLocale(m_locale);
    m_texts = m_pool->FindTexts(m_locale);
    ReadRelInterfaces();
}

AQF_FunctionDefinition::~AQF_FunctionDefinition() = default;

void AQF_FunctionDefinition::AddContext(const I18NString& context) { m_contexts.push_back(context); }

void AQF_FunctionDefinition::AddDefaultContexts() {
    AddContext("tabular");
    AddContext("crosstab");
    AddContext("macro");
}

void AQF_FunctionDefinition::AddInterface(const I18NString& interfaceCode) {
    const I18NString upper = AUT_ToUpper(interfaceCode, AUT_DefaultLocale());
    m_interfaces.insert(upper);
    // The list isn't taken apart at its commas: "T" counts as relational, too.
    if (const I18NString* const list = relInterfaces.load(std::memory_order_acquire))
        AddQueryType(list->find(upper) >= 0 ? "relational" : "multidimensional");
}

void AQF_FunctionDefinition::AddQueryType(const I18NString& queryType) { m_queryTypes.insert(queryType); }

void AQF_FunctionDefinition::AddFunctionType(const I18NString& word) {
    const EFunctionType kind = AQF_FunctionTypeOfWord(word.bytes());
    if (kind != FT_unknown && kind != FT_group) m_functionKinds.push_back(kind);
}

void AQF_FunctionDefinition::AddVendor(const I18NString& vendor) {
    if (m_pool->HasVendor(vendor)) {
        m_vendors.push_back(vendor);
        return;
    }
    // Clients ask for this one as a matter of course, so that it isn't worth a notice.
    const auto level = vendor == "SQL99" ? AUT_I_LogFile::ELL_Diagnostic : AUT_I_LogFile::ELL_NotFound;
    AQE_LogFile("QE").Log(level, kQELogUnknownVendor, vendor);
}

AQF_I_FunctionNode* AQF_FunctionDefinition::GetFunctionById(const I18NString& id) {
    if (AQF_FunctionDescription* const entry = m_pool->FindById(id)) return NodeOf(entry);
    return FindNode(m_clientFunctionsById, id);
}

void AQF_FunctionDefinition::GetFunctionsByName(const I18NString& name, std::vector<AQF_I_FunctionNode*>& functions) {
    const auto [begin, end] = m_pool->FindByName(name);
    for (auto entry = begin; entry != end; ++entry)
        if (IsVisible(*entry->second)) functions.push_back(NodeOf(entry->second));
    if (AQF_I_FunctionNode* const client = FindNode(m_clientFunctionsByName, name)) functions.push_back(client);
}

AQF_I_FunctionNode* AQF_FunctionDefinition::GetFunctionByName(const I18NString& name) {
    const auto [begin, end] = m_pool->FindByName(name);
    for (auto entry = begin; entry != end; ++entry)
        if (IsVisible(*entry->second)) return NodeOf(entry->second);
    return FindNode(m_clientFunctionsByName, name);
}

void AQF_FunctionDefinition::GetDLLs(std::vector<AQF_I_FunctionDLL*>& libraries) {
    BuildLibraries();
    for (const auto& [name, library] : m_libraries)
        libraries.push_back(library.get());
}

const I18NLocale& AQF_FunctionDefinition::GetLocale() { return m_locale; }

void AQF_FunctionDefinition::GetLocales(std::vector<I18NString>& locales) {
    for (const auto& [locale, files] : m_pool->descriptionFiles)
        locales.push_back(locale);
}

void AQF_FunctionDefinition::GetVendors(std::vector<I18NString>& vendors, std::vector<I18NString>& names) {
    for (const I18NString& vendor : m_pool->vendors) {
        vendors.push_back(vendor);
        names.push_back(Text(vendor));
    }
}

I18NString AQF_FunctionDefinition::GetVendorName(const I18NString& vendor) {
    if (m_pool->HasVendor(vendor)) return Text(vendor);
    AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_NotFound, kQELogUnknownVendorKey, vendor);
    return I18NString();
}

void AQF_FunctionDefinition::GetInterfaces(std::vector<I18NString>& interfaces) {
    interfaces.insert(interfaces.end(), m_pool->interfaces.begin(), m_pool->interfaces.end());
}

AQF_I_FunctionNode* AQF_FunctionDefinition::GetRootNode() { return m_rootNode; }

void AQF_FunctionDefinition::AddFunction(const I18NString& id, AQF_I_FunctionNode* node) {
    m_clientFunctionsById.emplace(id, node);
}

void AQF_FunctionDefinition::AddNamedFunction(const I18NString& id, const I18NString& name, AQF_I_FunctionNode* node) {
    AddFunction(id, node);
    m_clientFunctionsByName.emplace(name, node);
}

void AQF_FunctionDefinition::SetQosLevel(const I18NString& id, AQF_I_FunctionNode::EQoSLevel level,
                                         const I18NString& note) {
    m_qosLevels[id] = level;
    if (!note.empty()) m_qosNotes[id] = note;
}

void AQF_FunctionDefinition::MergeQosLevel(const I18NString& id, AQF_I_FunctionNode::EQoSLevel level,
                                           const I18NString& note) {
    const auto [stored, isNew] = m_mergedQosLevels.emplace(id, level);
    if (!isNew) stored->second = ConsolidateQosLevels(stored->second, level);
    if (note.empty()) return;
    // A line break goes in front of every note but that of the first statement, even if that one had none.
    I18NString& notes = m_mergedQosNotes[id];
    if (!isNew) notes += "\n";
    notes += note;
}

void AQF_FunctionDefinition::ShowHiddenFunctions() { m_showHidden = true; }

void AQF_FunctionDefinition::ShowDimensionalFunctionsOnly() { m_dimensionalOnly = true; }

AQF_FunctionNode* AQF_FunctionDefinition::NodeOf(AQF_FunctionDescription* description) {
    if (description == nullptr) return nullptr;
    std::unique_ptr<AQF_FunctionNode>& node = m_nodes[description];
    if (!node) node = std::make_unique<AQF_FunctionNode>(*this, *description);
    return node.get();
}

AQF_FunctionDLL* AQF_FunctionDefinition::LibraryOf(const AQF_LibraryDescription& library) {
    BuildLibraries();
    return m_libraries.find(library.name)->second.get();
}

void AQF_FunctionDefinition::BuildLibraries() {
    if (m_librariesBuilt) return;
    for (const auto& [name, library] : m_pool->libraries)
        if (!m_libraries.contains(name)) m_libraries.emplace(name, std::make_unique<AQF_FunctionDLL>(*this, *library));
    m_librariesBuilt = true;
}

bool AQF_FunctionDefinition::IsVisible(const AQF_FunctionDescription& description) const {
    if (description.hidden && !m_showHidden) return false;
    if (m_dimensionalOnly && !description.dimensional) return false;
    return PassesKinds(description) && (m_contexts.empty() || PassesContexts(description)) &&
           (m_vendors.empty() || PassesVendors(description));
}

bool AQF_FunctionDefinition::PassesKinds(const AQF_FunctionDescription& description) const {
    if (m_functionKinds.empty()) return description.kind != FT_format;
    if (description.kind != FT_group) return Contains(m_functionKinds, description.kind);
    return description.kindCounts &&
           std::any_of(m_functionKinds.begin(), m_functionKinds.end(), [&description](EFunctionType kind) {
               return (*description.kindCounts)[static_cast<std::size_t>(kind)] != 0;
           });
}

// The nearest list on the way up rules alone.
bool AQF_FunctionDefinition::PassesContexts(const AQF_FunctionDescription& description) const {
    const AQF_FunctionDescription* nearest = &description;
    while (nearest != nullptr && nearest->contexts.empty())
        nearest = nearest->parent;
    return nearest == nullptr ||
           std::any_of(m_contexts.begin(), m_contexts.end(),
                       [nearest](const I18NString& context) { return Contains(nearest->contexts, context); });
}

// All lists on the way up count together.
bool AQF_FunctionDefinition::PassesVendors(const AQF_FunctionDescription& description) const {
    bool stated = false;
    for (const AQF_FunctionDescription* at = &description; at != nullptr; at = at->parent) {
        stated = stated || !at->vendors.empty();
        for (const I18NString& vendor : at->vendors)
            if (Contains(m_vendors, vendor)) return true;
    }
    return !stated;
}

const AQF_I_FunctionNode::EQoSLevel* AQF_FunctionDefinition::FindQosLevel(const I18NString& id) const {
    return FindInEither(m_mergedQosLevels, m_qosLevels, id);
}

const I18NString* AQF_FunctionDefinition::FindQosNote(const I18NString& id) const {
    return FindInEither(m_mergedQosNotes, m_qosNotes, id);
}
