// Elements are told apart by their tags. A group is put on the list of open groups and read on from there; an entry is
// read at once, with all its child elements.
#include "QFFunctionLoaderEntries.h"

#include <iterator>
#include <memory>
#include <string_view>

#include "Mortise/AUT_Text.h"

#include "QFFunctionLoaderOrder.h"

namespace {

// Child elements of an entry, in order of their tags.
enum class EField {
    canonical,
    canonicalExpression,
    context,
    dimensional,
    dll,
    format,
    formatType,
    hidden,
    interface,
    name,
    parameter,
    parameterType,
    qosLevel,
    returnType,
    vendor,
    none
};

constexpr std::string_view kFieldTags[] = {"canonical", "canonicalExpression", "context",  "dimensional", "dll",
                                           "format",    "formatType",          "hidden",   "interface",   "name",
                                           "parameter", "parameterType",       "qosLevel", "returnType",  "vendor"};
static_assert(std::size(kFieldTags) == static_cast<std::size_t>(EField::none));

// Most tags differ in their length from most others, so a walk along the table is quick.
EField FieldOf(std::string_view tag) {
    std::size_t field = 0;
    while (field < std::size(kFieldTags) && kFieldTags[field] != tag)
        ++field;
    return static_cast<EField>(field);
}

bool IsEntry(EFunctionType kind) { return kind != FT_unknown && kind != FT_group; }

// What begins with an element counts as no text, whatever follows.
I18NString TextOf(ZBLIDOM_View element) {
    const ZBLIDOM_View first = element.getFirstChild();
    switch (first.getNodeType()) {
    case ZBLIDOM_TEXT_NODE:
        return element.getElementText();
    case ZBLIDOM_CDATA_SECTION_NODE:
        return I18NString(first.getNodeValue());
    default:
        return {};
    }
}

I18NString IdOf(ZBLIDOM_View element) {
    for (ZBLIDOM_View child = element.getFirstElement(); child; child = child.getNextElement())
        if (child.getTagName() == "id") return TextOf(child);
    return {};
}

void SetOptional(AQF_ParameterDescription& parameter, std::string_view text) {
    if (text == "true")
        parameter.minOccurs = 0;
    else if (parameter.minOccurs == 0)
        parameter.minOccurs = 1;
}

} // namespace

void AQF_EntryReader::ReadRoot(ZBLIDOM_View element) {
    m_open.assign(1, {m_pool.root.get(), element.getFirstElement()});
    while (!m_open.empty()) {
        OpenGroup& open = m_open.back();
        if (!open.next) {
            m_open.pop_back();
            continue;
        }
        const ZBLIDOM_View child = open.next;
        open.next = child.getNextElement();
        if (AQF_FunctionDescription* const inner = ReadGroupChild(*open.group, child))
            m_open.push_back({inner, child.getFirstElement()});
    }
}

void AQF_EntryReader::Finish() {
    AQF_TextOrder order;
    order.Reserve(m_entries.size());
    for (const AQF_FunctionDescription* const entry : m_entries)
        order.Add(entry->id.bytes());
    for (const std::uint32_t place : order.Sort()) {
        AQF_FunctionDescription* const entry = m_entries[place];
        m_pool.entriesById.emplace_hint(m_pool.entriesById.end(), entry->id, entry);
    }
}

AQF_FunctionDescription* AQF_EntryReader::ReadGroupChild(AQF_FunctionDescription& group, ZBLIDOM_View child) {
    const std::string_view tag = child.getTagName();
    if (const EFunctionType kind = AQF_FunctionTypeOfWord(tag); kind == FT_group)
        return &FindOrMakeGroup(group, IdOf(child));
    else if (IsEntry(kind))
        ReadEntry(group, child, kind);
    else if (tag == "context")
        group.contexts.push_back(TextOf(child));
    else if (tag == "vendor")
        AddVendor(group, TextOf(child));
    else if (tag == "interface")
        group.SetInterfaces(TextOf(child));
    return nullptr;
}

// An entry may have the same id; nothing can be put into one, so it is never meant.
AQF_FunctionDescription& AQF_EntryReader::FindOrMakeGroup(AQF_FunctionDescription& parent, I18NString id) {
    const auto [place, isNew] = m_groups.try_emplace({&parent, std::move(id)}, nullptr);
    if (isNew)
        place->second =
            parent.AddChild(std::make_unique<AQF_FunctionDescription>(&m_pool, FT_group, place->first.second));
    return *place->second;
}

void AQF_EntryReader::ReadEntry(AQF_FunctionDescription& parent, ZBLIDOM_View element, EFunctionType kind) {
    const I18NString id = IdOf(element);
    if (id.empty() || m_ids.contains(id.bytes())) return;
    AQF_FunctionDescription& entry = *parent.AddChild(std::make_unique<AQF_FunctionDescription>(&m_pool, kind, id));
    I18NString libraryName;
    for (ZBLIDOM_View child = element.getFirstElement(); child; child = child.getNextElement())
        ReadEntryChild(entry, child, libraryName);
    m_ids.insert(entry.id.bytes());
    m_entries.push_back(&entry);
    if (!libraryName.empty()) AddToLibrary(entry, libraryName);
}

void AQF_EntryReader::ReadEntryChild(AQF_FunctionDescription& entry, ZBLIDOM_View child, I18NString& libraryName) {
    switch (FieldOf(child.getTagName())) {
    case EField::name:
        entry.name = TextOf(child);
        break;
    case EField::format:
    case EField::formatType:
        entry.formatType = TextOf(child);
        break;
    case EField::returnType:
        entry.returnType = TextOf(child);
        break;
    case EField::parameterType:
        entry.parameters.emplace_back().type = TextOf(child);
        break;
    case EField::parameter:
        ReadParameter(entry, child);
        break;
    case EField::canonical:
        entry.canonical = TextOf(child);
        break;
    case EField::canonicalExpression:
        entry.canonicalExpression = TextOf(child);
        break;
    case EField::dll:
        libraryName = TextOf(child);
        break;
    case EField::context:
        entry.contexts.push_back(TextOf(child));
        break;
    case EField::vendor:
        AddVendor(entry, TextOf(child));
        break;
    case EField::qosLevel:
        ReadRules(entry, child);
        break;
    case EField::interface:
        entry.SetInterfaces(TextOf(child));
        break;
    case EField::hidden:
        entry.hidden = true;
        break;
    case EField::dimensional:
        entry.dimensional = true;
        break;
    case EField::none:
        if (!entry.properties) entry.properties = std::make_unique<std::map<I18NString, I18NString>>();
        entry.properties->insert_or_assign(I18NString(child.getTagName()), TextOf(child));
        break;
    }
}

// Attributes come behind the children, so they have the last word.
void AQF_EntryReader::ReadParameter(AQF_FunctionDescription& entry, ZBLIDOM_View element) {
    AQF_ParameterDescription& parameter = entry.parameters.emplace_back();
    bool hasType = false;
    for (ZBLIDOM_View child = element.getFirstElement(); child; child = child.getNextElement()) {
        const std::string_view tag = child.getTagName();
        const I18NString text = child.getElementText();
        if (tag == "type") {
            if (std::exchange(hasType, true)) parameter.type.appendAscii(" | ");
            parameter.type.append(text);
        } else if (tag == "optional") {
            SetOptional(parameter, text.bytes());
        } else if (tag == "minOccurs") {
            parameter.minOccurs = AUT_ToInt(text);
        } else if (tag == "maxOccurs") {
            parameter.maxOccurs = AUT_ToInt(text);
        } else if (tag == "nullable") {
            parameter.nullable = text == "true" ? 1 : 2;
        }
    }
    if (const std::string_view type = element.getAttribute("type"); !type.empty()) parameter.type = I18NString(type);
    if (const std::string_view optional = element.getAttribute("optional"); !optional.empty())
        SetOptional(parameter, optional);
}

void AQF_EntryReader::ReadRules(AQF_FunctionDescription& entry, ZBLIDOM_View element) {
    int ordinal = 0;
    for (ZBLIDOM_View child = element.getFirstElement(); child; child = child.getNextElement()) {
        if (child.getTagName() != "rule") continue;
        ++ordinal;
        AQF_QosRule rule;
        if (ReadRule(rule, child))
            entry.rules.push_back(std::move(rule));
        else
            m_log.MalformedRule(ordinal, m_pool.currentFile, entry.id);
    }
}

// Whether the rule is complete. Of several selectors the last one decides, whatever those before it hold.
bool AQF_EntryReader::ReadRule(AQF_QosRule& rule, ZBLIDOM_View element) {
    bool hasValue = false;
    bool hasSelector = false;
    for (ZBLIDOM_View child = element.getFirstElement(); child; child = child.getNextElement()) {
        const std::string_view tag = child.getTagName();
        if (tag == "value") {
            hasValue = AQF_QosLevelOfWord(child.getElementText().bytes(), rule.level);
        } else if (tag == "default") {
            rule.kind = RK_default;
            rule.selector.clear();
            hasSelector = true;
        } else if (tag == "datasourceQueryType" || tag == "interface") {
            rule.kind = tag == "interface" ? RK_interface : RK_datasourceQueryType;
            rule.selector = child.getElementText();
            hasSelector = !rule.selector.empty();
            if (rule.kind == RK_interface && hasSelector)
                m_pool.interfaces.insert(AUT_ToUpper(rule.selector, AUT_DefaultLocale()));
        }
    }
    return hasValue && hasSelector;
}

void AQF_EntryReader::AddVendor(AQF_FunctionDescription& description, const I18NString& vendor) {
    description.vendors.push_back(vendor);
    if (m_vendors.insert(vendor).second) m_pool.vendors.push_back(vendor);
}

void AQF_EntryReader::AddToLibrary(AQF_FunctionDescription& entry, const I18NString& libraryName) {
    std::unique_ptr<AQF_LibraryDescription>& library = m_pool.libraries[libraryName];
    if (!library) library = std::make_unique<AQF_LibraryDescription>(AQF_LibraryDescription{libraryName, {}});
    library->entries.push_back(&entry);
    entry.library = library.get();
}
