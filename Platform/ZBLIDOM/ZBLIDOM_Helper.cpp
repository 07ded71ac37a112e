#include "ZBLIDOM/ZBLIDOM_Helper.h"

#include <array>
#include <stdexcept>
#include <string>

#include "ZBLIDOM/ZBLIDOM_Tree.h"
#include "ZBLIDOM/ZBLIDOM_View.h"

using zblidom::Access;
using zblidom::Attribute;
using zblidom::ElementData;
using zblidom::NodeData;

namespace {

enum class Place { name, text, attribute, cdata };

// Bytes that have to be looked at in some place; all others are copied in runs.
constexpr std::array<bool, 256> kSpecial = [] {
    std::array<bool, 256> special{};
    for (unsigned c = 0; c < 0x20; ++c)
        special[c] = true;
    for (const char c : {'&', '<', '>', '"'})
        special[static_cast<unsigned char>(c)] = true;
    special[0xEF] = true; // begins U+FFFE and U+FFFF
    return special;
}();

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// What stands for the special byte at that offset; empty if it stands for itself.
std::string_view substitute(std::string_view text, std::size_t offset, Place place) noexcept {
    const bool attribute = place == Place::attribute;
    const bool escaped = attribute || place == Place::text;
    switch (text[offset]) {
    case '&':
        return escaped ? "&amp;" : "";
    case '<':
        return escaped ? "&lt;" : "";
    case '>':
        if (place == Place::cdata && offset >= 2 && text.substr(offset - 2, 2) == "]]") return "]]><![CDATA[>";
        return escaped ? "&gt;" : "";
    case '"':
        return attribute ? "&quot;" : "";
    case '\t':
        return attribute ? "&#9;" : "";
    case '\n':
        return attribute ? "&#10;" : "";
    case '\r':
        return escaped ? "&#13;" : "";
    case '\xEF': {
        const std::string_view character = text.substr(offset, 3);
        return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF" ? kReplacement : "";
    }
    default:
        return kReplacement;
    }
}

class Writer {
public:
    // The tag that opens an element, or the whole of a childless node.
    void open(const NodeData& node);
    void close(const NodeData& node);
    I18NString take() { return I18NString::fromValidUtf8(std::move(m_out)); }

private:
    void put(std::string_view raw);
    void put(std::string_view text, Place place);

    std::string m_out;
};

void Writer::open(const NodeData& node) {
    if (node.type == ZBLIDOM_TEXT_NODE) return put(zblidom::textOf(node), Place::text);
    if (node.type == ZBLIDOM_CDATA_SECTION_NODE) {
        put("<![CDATA[");
        put(zblidom::textOf(node), Place::cdata);
        return put("]]>");
    }
    if (node.type != ZBLIDOM_ELEMENT_NODE) return;
    const auto& element = static_cast<const ElementData&>(node);
    put("<");
    put(*element.name, Place::name);
    const Attribute* attribute = element.lastAttribute;
    for (std::uint32_t i = 0; i < element.length; ++i) {
        attribute = attribute->next;
        put(" ");
        put(*attribute->name, Place::name);
        put("=\"");
        put(attribute->value(), Place::attribute);
        put("\"");
    }
    put(element.firstChild ? ">" : "/>");
}

void Writer::close(const NodeData& node) {
    if (node.type != ZBLIDOM_ELEMENT_NODE) return;
    put("</");
    put(*static_cast<const ElementData&>(node).name, Place::name);
    put(">");
}

void Writer::put(std::string_view raw) {
    if (raw.size() > I18NString::kMaxBytes - m_out.size()) throw std::length_error("document too long to serialize");
    m_out.append(raw);
}

void Writer::put(std::string_view text, Place place) {
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!kSpecial[static_cast<unsigned char>(text[i])]) continue;
        const std::string_view other = substitute(text, i, place);
        if (other.empty()) continue;
        put(text.substr(copied, i - copied));
        put(other);
        copied = i + (text[i] == '\xEF' ? 3 : 1);
    }
    put(text.substr(copied));
}

} // namespace

I18NString ZBLIDOM_Helper::getElementText(const ZBLIDOM_Node& element) {
    return ZBLIDOM_View(element).getElementText();
}

I18NString ZBLIDOM_Helper::serialize(const ZBLIDOM_Node& top) {
    if (top.isNull()) return {};
    Writer writer;
    const NodeData& root = *Access::node(top);
    const NodeData* node = &root;
    for (;;) {
        writer.open(*node);
        if (const NodeData* child = zblidom::firstChildOf(*node)) {
            node = child;
            continue;
        }
        while (node != &root && !node->next) {
            node = node->parent;
            writer.close(*node);
        }
        if (node == &root) return writer.take();
        node = node->next;
    }
}
