// brindle functions: the function catalogue as a client sees it, as a list of entries, as a tree with its folders, or
// all that one entry or folder answers.
#include <algorithm>
#include <memory>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "AQF_I_FunctionDLL.h"
#include "AQF_I_FunctionDefinition.h"
#include "AQF_I_FunctionParameter.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "Files.h"
#include "Library.h"

namespace brindle_tool {
namespace {

using Definition = AQF_I_FunctionDefinition;
using Json = nlohmann::ordered_json;
using Node = AQF_I_FunctionNode;

struct Options {
    std::string view = "list";
    std::string id;
    std::string locale = "en-us";
    std::vector<std::string> interfaces, vendors, types, properties;
    bool hidden = false;
    bool json = false;
};

// A visible node and where it stands.
struct Place {
    Node* node;
    Node* folder;
    int depth; // 0 for what stands in the root
};

I18NString ToText(const std::string& argument) { return I18NString(std::string_view(argument)); }

Json OrNull(const I18NString& text) { return text.empty() ? Json() : Json(text.bytes()); }

std::string LevelWord(Node::EQoSLevel level) {
    constexpr const char* words[] = {"unavailable", "restricted", "limited", "ok"};
    return words[std::clamp<int>(level, 0, 3)];
}

std::vector<Node*> ChildrenOf(Node& folder) {
    std::vector<Node*> children;
    folder.GetChildren(children);
    return children;
}

std::string KnownAre(const std::vector<I18NString>& known) {
    std::string list;
    for (const I18NString& key : known)
        list += (list.empty() ? "; known are " : ", ") + Printable(key.bytes());
    return list;
}

// A client that asks for a vendor whom nobody knows sees everything, which isn't what was asked for.
void AddVendors(Definition& definition, const Options& options) {
    std::vector<I18NString> known, names;
    definition.GetVendors(known, names);
    for (const std::string& vendor : options.vendors) {
        if (std::find(known.begin(), known.end(), ToText(vendor)) == known.end())
            throw Failure("unknown vendor '" + Printable(vendor) + "'" + KnownAre(known));
        definition.AddVendor(ToText(vendor));
    }
}

// What the library does without a word.
void ShowNotes(Definition& definition, const Options& options) {
    const std::unique_ptr<Definition> unfiltered(Definition::Create());
    if (ChildrenOf(*unfiltered->GetRootNode()).empty())
        return ShowNote("the function catalogue in '" + ShownPath("../configuration/functions") + "' is empty");
    const auto language = [](std::string name) {
        name.resize(std::min(name.find_first_of("-_.@"), name.size()));
        return CLI::detail::to_lower(name);
    };
    const std::string found(definition.GetLocale().getName().bytes());
    if (language(options.locale) != language(found))
        ShowNote("no texts in the locale '" + Printable(options.locale) + "'; shown are those in '" + Printable(found) +
                 "'");
}

// Only the rules for all other interfaces hold for one that no entry names, as for one that is misspelt.
void AddInterfaces(Definition& definition, const Options& options) {
    std::vector<I18NString> known;
    definition.GetInterfaces(known);
    for (const std::string& code : options.interfaces) {
        const auto isCode = [lowered = CLI::detail::to_lower(code)](const I18NString& key) {
            return CLI::detail::to_lower(std::string(key.bytes())) == lowered;
        };
        if (!known.empty() && std::none_of(known.begin(), known.end(), isCode))
            ShowNote("the catalogue has nothing on the interface '" + Printable(code) + "'" + KnownAre(known));
        definition.AddInterface(ToText(code));
    }
}

std::unique_ptr<Definition> Define(const Options& options) {
    std::unique_ptr<Definition> definition(Definition::Create(ToText(options.locale)));
    ShowNotes(*definition, options);
    AddVendors(*definition, options);
    AddInterfaces(*definition, options);
    for (const std::string& type : options.types)
        definition->AddFunctionType(ToText(type));
    if (options.hidden) definition->ShowHiddenFunctions();
    return definition;
}

// Folders before what they hold.
std::vector<Place> Walk(Node& root) {
    std::vector<Place> places;
    std::vector<Place> pending{{&root, nullptr, -1}};
    while (!pending.empty()) {
        const Place place = pending.back();
        pending.pop_back();
        if (place.depth >= 0) places.push_back(place);
        const std::vector<Node*> children = ChildrenOf(*place.node);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({*child, place.node, place.depth + 1});
    }
    return places;
}

std::string ToLine(const Place& place, bool tree) {
    const std::string id = Printable(place.node->GetId().bytes());
    const std::string name = Printable(place.node->GetName().bytes());
    if (!tree) {
        const std::string word = Printable(place.node->GetProperty("type").bytes());
        return id + "\t" + word + "\t" + LevelWord(place.node->GetQosLevel()) + "\t" + name + "\n";
    }
    const std::string indent(2 * static_cast<std::size_t>(place.depth), ' ');
    return indent + id + (place.node->GetIsGroup() ? "/" : "") + (name.empty() ? "" : "  " + name) + "\n";
}

Json ToJson(const Place& place) {
    return {{"id", place.node->GetId().bytes()},
            {"type", place.node->GetProperty("type").bytes()},
            {"name", OrNull(place.node->GetName())},
            {"level", LevelWord(place.node->GetQosLevel())},
            {"folder", place.depth == 0 ? Json() : Json(place.folder->GetId().bytes())},
            {"depth", place.depth}};
}

std::string List(Definition& definition, const Options& options) {
    const bool tree = options.view == "tree";
    Json list = Json::array();
    std::string lines;
    for (const Place& place : Walk(*definition.GetRootNode())) {
        if (!tree && place.node->GetIsGroup()) continue;
        if (options.json) {
            list.push_back(ToJson(place));
        } else {
            lines += ToLine(place, tree);
        }
    }
    return options.json ? list.dump() : lines;
}

// An entry, visible or not, else a visible folder.
Node& Find(Definition& definition, const std::string& id) {
    if (Node* const entry = definition.GetFunctionById(ToText(id))) return *entry;
    for (const Place& place : Walk(*definition.GetRootNode()))
        if (place.node->GetId() == ToText(id)) return *place.node;
    throw Failure("no function or folder has the id '" + Printable(id) + "'");
}

Json ParametersOf(Node& node) {
    std::vector<AQF_I_FunctionParameter*> answered;
    node.GetParameters(answered);
    std::vector<std::unique_ptr<AQF_I_FunctionParameter>> parameters(answered.begin(), answered.end());
    Json list = Json::array();
    for (const auto& parameter : parameters) {
        std::vector<I18NString> types;
        parameter->GetTypes(types);
        Json alternatives = Json::array();
        for (const I18NString& type : types)
            alternatives.push_back(type.bytes());
        list.push_back({{"types", alternatives},
                        {"optional", parameter->GetIsOptional()},
                        {"minOccurs", parameter->GetMinOccurs()},
                        {"maxOccurs", parameter->GetMaxOccurs()},
                        {"nullable", parameter->GetIsNullable()}});
    }
    return list;
}

// All that the node answers.
Json Describe(Definition& definition, Node& node, const Options& options) {
    std::vector<I18NString> known;
    definition.GetInterfaces(known);
    Json interfaces = Json::array();
    for (const I18NString& code : known)
        if (node.GetIsSupportedByInterface(code)) interfaces.push_back(code.bytes());
    Json children = Json::array();
    for (Node* const child : ChildrenOf(node))
        children.push_back(child->GetId().bytes());
    Json properties = Json::object();
    for (const std::string& key : options.properties)
        properties[key] = OrNull(node.GetProperty(ToText(key)));
    AQF_I_FunctionDLL* const library = node.GetDLL();
    return {{"id", node.GetId().bytes()},
            {"type", node.GetProperty("type").bytes()},
            {"name", OrNull(node.GetName())},
            {"syntax", OrNull(node.GetSyntax())},
            {"tip", OrNull(node.GetTip())},
            {"canonical", OrNull(node.GetCanonical())},
            {"canonicalExpression", OrNull(node.GetCanonicalExpression())},
            {"returnType", OrNull(node.GetReturnType())},
            {"formatType", OrNull(node.GetFormatType())},
            {"library", library ? OrNull(library->GetName()) : Json()},
            {"level", LevelWord(node.GetQosLevel())},
            {"parameters", ParametersOf(node)},
            {"interfaces", interfaces},
            {"children", children},
            {"properties", properties}};
}

std::string ToLine(const std::string& member, const Json& value) {
    const std::string text = value.is_string() ? Printable(value.get_ref<const std::string&>(), value.dump().size())
                             : value.is_null() ? "-"
                                               : value.dump();
    return member + "\t" + text + "\n";
}

// A line for each member; each parameter and each property has one of its own.
std::string ToLines(const Json& description) {
    std::string lines;
    for (const auto& [member, value] : description.items()) {
        if (member == "parameters") {
            for (const Json& parameter : value)
                lines += ToLine("parameter", parameter);
        } else if (member == "properties") {
            for (const auto& [key, text] : value.items())
                lines += ToLine("property " + Printable(key), text);
        } else {
            lines += ToLine(member, value);
        }
    }
    return lines;
}

EExitStatus ShowFunctions(const Options& options) {
    const std::unique_ptr<Definition> definition = Define(options);
    if (options.view != "show") {
        WriteOutput(List(*definition, options));
        return kSuccess;
    }
    const Json description = Describe(*definition, Find(*definition, options.id), options);
    WriteOutput(options.json ? Json::array({description}).dump() : ToLines(description));
    return kSuccess;
}

} // namespace

Action DeclareFunctions(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    const auto take = [](std::vector<std::string>& values) {
        return [&values](const std::string& value) { values.push_back(value); };
    };
    AddText(parser, "VIEW", options->view, "",
            "list (unless given): the entries\ntree: the entries in their folders\n"
            "show: all about the entry or folder ID")
        ->option_text(" ")
        ->check(OneOf({"list", "tree", "show"}));
    CLI::Option* const id = AddText(parser, "ID", options->id, "", "what to show")->option_text(" ");
    AddText(parser, "--locale", options->locale, "LOCALE", "the language of names and tips, en-us unless given");
    AddRepeated(parser, "--interface", take(options->interfaces), "CODE", "an interface in use: levels are for it");
    AddRepeated(parser, "--vendor", take(options->vendors), "VENDOR", "what is meant for this vendor, or for all");
    AddRepeated(parser, "--type", take(options->types), "TYPE",
                "function, summary, operator, literal, operation or format")
        ->option_text("TYPE")
        ->check(OneOf({"function", "summary", "operator", "literal", "operation", "format"}));
    AddRepeated(parser, "--property", take(options->properties), "KEY", "with show: a further property");
    parser.add_flag("--hidden", options->hidden, "hidden entries too");
    parser.add_flag("--json", options->json, "give a JSON array of objects");
    parser.parse_complete_callback([options, id] {
        if ((options->view == "show") != (id->count() > 0))
            throw CLI::ValidationError("ID", "show needs one ID, list and tree take none");
        if (options->view != "show" && !options->properties.empty())
            throw CLI::ValidationError("--property", "only show answers properties");
    });
    return [options] { return ShowFunctions(*options); };
}

} // namespace brindle_tool
