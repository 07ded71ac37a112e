#include "BareTree.h"

#include <fstream>
#include <memory>
#include <stdexcept>

#include <expat.h>

namespace brindle_benchmark {
namespace {

struct Builder {
    BareElement root;
    // The open elements. A vector that grows moves the elements in it, but those that are open are each the last of
    // their parent, which doesn't grow as long as they are.
    std::vector<BareElement*> open{&root};
};

void OnStart(void* data, const char* name, const char** attributes) {
    Builder& builder = *static_cast<Builder*>(data);
    BareElement& element = builder.open.back()->children.emplace_back();
    element.tag = name;
    for (; *attributes; attributes += 2)
        element.attributes.emplace_back(attributes[0], attributes[1]);
    builder.open.push_back(&element);
}

void OnEnd(void* data, const char*) { static_cast<Builder*>(data)->open.pop_back(); }

void OnText(void* data, const char* bytes, int count) {
    static_cast<Builder*>(data)->open.back()->text.append(bytes, static_cast<std::size_t>(count));
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::string content(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
    file.seekg(0);
    if (!file.read(content.data(), static_cast<std::streamsize>(content.size())))
        throw std::runtime_error("cannot read " + path);
    return content;
}

} // namespace

const std::string& BareElement::TextOfChild(const char* wanted) const {
    static const std::string none;
    for (const BareElement& child : children)
        if (child.tag == wanted) return child.text;
    return none;
}

BareElement ReadBareTree(const std::string& path) {
    const std::string content = ReadFile(path);
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                              &XML_ParserFree);
    if (!parser) throw std::bad_alloc();
    Builder builder;
    XML_SetUserData(parser.get(), &builder);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    if (XML_Parse(parser.get(), content.data(), static_cast<int>(content.size()), XML_TRUE) != XML_STATUS_OK)
        throw std::runtime_error(path + " isn't well-formed");
    return std::move(builder.root.children.at(0));
}

} // namespace brindle_benchmark
