// Laws of the function catalogue over whatever files: the tree that a definition shows, what is found by id and by
// name, and the counters by which folders are hidden. The input is a definition file and, behind the first byte 0xFF, a
// string file. What entries there should be is read from the document once more, in the plainest way.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "PlatformHooks.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "AQF_I_FunctionDLL.h"
#include "AQF_I_FunctionDefinition.h"
#include "AQF_I_FunctionParameter.h"
#include "AQF_Initialize.h"

#include "FuzzCheck.h"
#include "Support/TemporaryDirectory.h"

namespace brindle_fuzz {
namespace {

using Definition = std::unique_ptr<AQF_I_FunctionDefinition>;
using Nodes = std::vector<AQF_I_FunctionNode*>;

constexpr const char* kKinds[] = {"function", "summary", "operator", "literal", "operation", "format"};

// An installation in a directory of its own.
class Home {
public:
    Home() {
        brindle_platform::setProgramDirectory(I18NString(std::string_view(m_directory.Path() + "/bin")));
        Write("FileList.xml", "<l><definition>functions.xml</definition><description><language>en-us</language>"
                              "<file>texts.xml</file></description></l>");
    }

    void Write(const std::string& name, std::string_view content) const { m_directory.Write(kFolder + name, content); }
    std::string PathOf(const std::string& name) const { return m_directory.Path() + "/" + kFolder + name; }

private:
    inline static const std::string kFolder = "configuration/functions/";

    brindle_test::TemporaryDirectory m_directory;
};

// The message of the failure; empty if the file was read.
std::string Read(const std::string& path, ZBLIDOM_Document& document) {
    document = ZBLIDOM_DOMImplementation::getInstance().createDocument("", "", ZBLIDOM_DocumentType());
    try {
        ZBLIDOM_Parser(0).parse(path.c_str(), document);
        return {};
    } catch (const ZBLIDOM_Exception& failure) {
        return std::string(failure.getMessage().bytes());
    }
}

I18NString TextOf(const ZBLIDOM_Node& element) {
    const ZBLIDOM_Node first = element.getFirstChild();
    if (first.getNodeType() == ZBLIDOM_TEXT_NODE) return ZBLIDOM_Helper::getElementText(element);
    return first.getNodeType() == ZBLIDOM_CDATA_SECTION_NODE ? first.getNodeValue() : I18NString();
}

I18NString IdOf(const ZBLIDOM_Node& element) {
    for (ZBLIDOM_Node child = element.getFirstChild(); child; child = child.getNextSibling())
        if (child.getNodeName() == "id" && child.getNodeType() == ZBLIDOM_ELEMENT_NODE) return TextOf(child);
    return {};
}

// The kinds of the entries by their ids.
std::map<I18NString, I18NString> ExpectedEntries(const ZBLIDOM_Document& document) {
    std::map<I18NString, I18NString> entries;
    const auto isKind = [](const I18NString& tag) {
        return std::find(std::begin(kKinds), std::end(kKinds), tag.bytes()) != std::end(kKinds);
    };
    // Each the next sibling that is to be read; those above wait until everything below is.
    std::vector<ZBLIDOM_Node> pending{document.getElementsByTagName("functionsRoot").item(0).getFirstChild()};
    while (!pending.empty()) {
        const ZBLIDOM_Node node = pending.back();
        pending.pop_back();
        if (!node) continue;
        pending.push_back(node.getNextSibling());
        if (node.getNodeType() != ZBLIDOM_ELEMENT_NODE) continue;
        const I18NString tag = node.getNodeName();
        if (tag == "group") pending.push_back(node.getFirstChild());
        if (const I18NString id = isKind(tag) ? IdOf(node) : I18NString(); !id.empty()) entries.emplace(id, tag);
    }
    return entries;
}

void RequireNode(AQF_I_FunctionDefinition& definition, AQF_I_FunctionNode& node) {
    const int level = node.GetQosLevel();
    Require(level >= AQF_I_FunctionNode::EQoSUnavailable && level <= AQF_I_FunctionNode::EQoSOk, "a level is a level");
    RequireSame(node.GetProperty("").bytes(), node.GetName().bytes(), "the empty property is the name");
    RequireSame(node.GetProperty("tip").bytes(), node.GetTip().bytes(), "without notes the tip is the text");
    RequireSame(node.GetProperty("^syntax").bytes(), node.GetSyntax().bytes(), "the syntax is a text");
    std::vector<AQF_I_FunctionParameter*> parameters;
    node.GetParameters(parameters);
    Require(parameters.size() == node.GetParameterTypes().size(), "each parameter has a type");
    for (AQF_I_FunctionParameter* const parameter : parameters) {
        const std::unique_ptr<AQF_I_FunctionParameter> owned(parameter);
        Require(owned->GetIsOptional() == (owned->GetMinOccurs() == 0), "optional is what may occur 0 times");
    }
    if (AQF_I_FunctionDLL* const library = node.GetDLL()) {
        Nodes functions;
        library->GetFunctions(functions);
        Require(std::count(functions.begin(), functions.end(), &node) == 1, "a library has its functions once");
    }
    if (node.GetIsGroup()) return;
    Require(definition.GetFunctionById(node.GetId()) == &node, "an entry is found by its id");
    Nodes found;
    definition.GetFunctionsByName(node.GetName(), found);
    Require(found.empty() || found.front() == definition.GetFunctionByName(node.GetName()), "the first one is found");
    for (AQF_I_FunctionNode* const other : found)
        Require(definition.GetFunctionById(other->GetId()) == other, "what has a name has an id");
}

// Walks all that is visible; answers the ids of the entries.
std::multiset<I18NString> Walk(AQF_I_FunctionDefinition& definition) {
    std::multiset<I18NString> ids;
    Nodes pending{definition.GetRootNode()};
    while (!pending.empty()) {
        AQF_I_FunctionNode& node = *pending.back();
        pending.pop_back();
        RequireNode(definition, node);
        const std::size_t before = pending.size();
        node.GetChildren(pending);
        if (!node.GetIsGroup())
            ids.insert(node.GetId());
        else
            Require(pending.size() > before || &node == definition.GetRootNode(),
                    "a folder that is shown holds something");
    }
    return ids;
}

// The definition file was read: what is shown is what stands in it, for all kinds and for each of them alone.
void RequireEntries(const std::map<I18NString, I18NString>& expected) {
    for (const char* const only : {"", "function", "summary", "operator", "literal", "operation", "format"}) {
        const Definition definition(AQF_I_FunctionDefinition::Create("en-us"));
        definition->ShowHiddenFunctions();
        for (const char* const kind : kKinds)
            if (*only == '\0' || std::string_view(only) == kind) definition->AddFunctionType(kind);
        std::multiset<I18NString> ids;
        for (const auto& [id, kind] : expected)
            if (*only == '\0' || kind == only) ids.insert(id);
        Require(Walk(*definition) == ids, "every entry of the file is reached from the root once, and none besides");
        for (const auto& [id, kind] : expected) {
            AQF_I_FunctionNode* const node = definition->GetFunctionById(id);
            Require(node && node->GetProperty("type") == kind, "every entry of the file is found by its id");
        }
    }
}

void Run(std::string_view definitions, std::string_view texts) {
    static const Home home;
    home.Write("functions.xml", definitions);
    home.Write("texts.xml", texts);
    ZBLIDOM_Document document;
    ZBLIDOM_Document strings;
    std::string failure = Read(home.PathOf("functions.xml"), document);
    if (failure.empty()) failure = Read(home.PathOf("texts.xml"), strings);

    AQF_Initialize("fuzz");
    for (int attempt = 0; attempt < 2; ++attempt) {
        std::string seen;
        try {
            const Definition definition(AQF_I_FunctionDefinition::Create("en-us"));
        } catch (const ZBLIDOM_Exception& refused) {
            seen = refused.getMessage().bytes();
        }
        RequireSame(seen, failure, "the load fails as the reader does, each time");
    }
    if (failure.empty()) RequireEntries(ExpectedEntries(document));
    AQF_Terminate("fuzz");
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find('\xFF');
    const bool hasTexts = end != std::string_view::npos;
    brindle_fuzz::Run(input.substr(0, end), hasTexts ? input.substr(end + 1) : std::string_view());
    return 0;
}
