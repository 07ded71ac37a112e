#include "ZBLIDOM/ZBLIDOM_Node.h"

#include <utility>

#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Tree.h"

using zblidom::Access;
using zblidom::Attribute;
using zblidom::ContainerData;
using zblidom::ElementData;
using zblidom::NodeData;
using zblidom::Tree;

namespace {

[[noreturn]] void refuse(const char* text, long line) {
    ZBLIDOM_Exception failure{I18NString(text)};
    ZBL_THROW(failure, "Platform/ZBLIDOM/ZBLIDOM_Node", line, "ZBLIDOM");
}

Tree& changeable(const ZBLIDOM_Node& handle) {
    if (handle.isNull()) refuse("a null node cannot be changed", 30);
    return *Access::tree(handle);
}

I18NString text(std::string_view utf8) { return I18NString(utf8); }

ZBLIDOM_NodeList elementsByTag(const ZBLIDOM_Node& top, const I18NString& tag) {
    if (top.isNull()) return {};
    Tree* tree = Access::tree(top);
    return Access::list(tree, tree->elementsByTag(*Access::node(top), tag.bytes()));
}

bool isAtOrAbove(const NodeData& candidate, const NodeData& node) noexcept {
    if (&candidate == &node) return true;
    // Building a document from the top down appends childless nodes only and never gets to the walk.
    if (!zblidom::firstChildOf(candidate)) return false;
    for (const NodeData* climber = node.parent; climber; climber = climber->parent)
        if (climber == &candidate) return true;
    return false;
}

bool fitsInDocument(const NodeData& child, const ContainerData& document) noexcept {
    return child.type == ZBLIDOM_ELEMENT_NODE && (!document.firstChild || document.firstChild == &child);
}

} // namespace

ZBLIDOM_Node::ZBLIDOM_Node() noexcept = default;

ZBLIDOM_Node::ZBLIDOM_Node(Tree* tree, NodeData* node) noexcept : m_tree(tree), m_node(node) {
    if (m_tree) m_tree->addReference();
}

ZBLIDOM_Node::ZBLIDOM_Node(const ZBLIDOM_Node& other) noexcept : ZBLIDOM_Node(other.m_tree, other.m_node) {}

ZBLIDOM_Node::ZBLIDOM_Node(ZBLIDOM_Node&& other) noexcept
    : m_tree(std::exchange(other.m_tree, nullptr)), m_node(std::exchange(other.m_node, nullptr)) {}

ZBLIDOM_Node::ZBLIDOM_Node(const ZBLIDOM_Node& other, bool accepted) noexcept
    : ZBLIDOM_Node(accepted ? other.m_tree : nullptr, accepted ? other.m_node : nullptr) {}

ZBLIDOM_Node::~ZBLIDOM_Node() {
    if (m_tree) m_tree->removeReference();
}

ZBLIDOM_Node& ZBLIDOM_Node::operator=(const ZBLIDOM_Node& other) noexcept { return *this = ZBLIDOM_Node(other); }

ZBLIDOM_Node& ZBLIDOM_Node::operator=(ZBLIDOM_Node&& other) noexcept {
    ZBLIDOM_Node taken(std::move(other));
    std::swap(m_tree, taken.m_tree);
    std::swap(m_node, taken.m_node);
    return *this;
}

int ZBLIDOM_Node::getNodeType() const noexcept { return m_node ? m_node->type : ZBLIDOM_NO_NODE; }

I18NString ZBLIDOM_Node::getNodeName() const {
    switch (getNodeType()) {
    case ZBLIDOM_ELEMENT_NODE:
        return text(*static_cast<ElementData*>(m_node)->name);
    case ZBLIDOM_TEXT_NODE:
        return "#text";
    case ZBLIDOM_CDATA_SECTION_NODE:
        return "#cdata-section";
    case ZBLIDOM_DOCUMENT_NODE:
        return "#document";
    default:
        return {};
    }
}

I18NString ZBLIDOM_Node::getNodeValue() const {
    return m_node && zblidom::isText(*m_node) ? text(zblidom::textOf(*m_node)) : I18NString();
}

ZBLIDOM_Node ZBLIDOM_Node::getParentNode() const noexcept {
    return Access::handle(m_tree, m_node ? m_node->parent : nullptr);
}

ZBLIDOM_Node ZBLIDOM_Node::getFirstChild() const noexcept {
    return Access::handle(m_tree, m_node ? zblidom::firstChildOf(*m_node) : nullptr);
}

ZBLIDOM_Node ZBLIDOM_Node::getNextSibling() const noexcept {
    return Access::handle(m_tree, m_node ? m_node->next : nullptr);
}

ZBLIDOM_NodeList ZBLIDOM_Node::getChildNodes() const {
    if (!m_node) return {};
    std::vector<NodeData*> children;
    for (NodeData* child = zblidom::firstChildOf(*m_node); child; child = child->next)
        children.push_back(child);
    return Access::list(m_tree, std::move(children));
}

ZBLIDOM_Document ZBLIDOM_Node::getOwnerDocument() const noexcept {
    return ZBLIDOM_Document(Access::handle(m_tree, m_tree ? &m_tree->document() : nullptr));
}

ZBLIDOM_Node ZBLIDOM_Node::appendChild(const ZBLIDOM_Node& child) const {
    const Tree& tree = changeable(*this);
    if (child.isNull()) refuse("a null node cannot be appended", 110);
    if (child.m_tree != &tree) refuse("a node of another document cannot be appended", 111);
    if (child.m_node->type == ZBLIDOM_DOCUMENT_NODE) refuse("a document cannot be appended", 115);
    if (zblidom::isText(*m_node)) refuse("a text cannot have children", 112);
    if (isAtOrAbove(*child.m_node, *m_node)) refuse("a node cannot be appended to itself or to a node below it", 113);
    auto& parent = static_cast<ContainerData&>(*m_node);
    if (m_node->type == ZBLIDOM_DOCUMENT_NODE && !fitsInDocument(*child.m_node, parent))
        refuse("a document takes one element and nothing else", 117);
    zblidom::append(parent, *child.m_node);
    return child;
}

ZBLIDOM_Element::ZBLIDOM_Element(const ZBLIDOM_Node& node) noexcept
    : ZBLIDOM_Node(node, node.getNodeType() == ZBLIDOM_ELEMENT_NODE) {}

I18NString ZBLIDOM_Element::getTagName() const { return getNodeName(); }

I18NString ZBLIDOM_Element::getAttribute(const I18NString& name) const {
    if (isNull()) return {};
    const auto& element = static_cast<const ElementData&>(*Access::node(*this));
    const Attribute* attribute = Access::tree(*this)->findAttribute(element, name.bytes());
    return attribute ? text(attribute->value()) : I18NString();
}

void ZBLIDOM_Element::setAttribute(const I18NString& name, const I18NString& value) const {
    Tree& tree = changeable(*this);
    tree.setAttribute(static_cast<ElementData&>(*Access::node(*this)), name.bytes(), value.bytes());
}

ZBLIDOM_NodeList ZBLIDOM_Element::getElementsByTagName(const I18NString& tag) const {
    return elementsByTag(*this, tag);
}

ZBLIDOM_Text::ZBLIDOM_Text(const ZBLIDOM_Node& node) noexcept
    : ZBLIDOM_Node(node, node.getNodeType() == ZBLIDOM_TEXT_NODE || node.getNodeType() == ZBLIDOM_CDATA_SECTION_NODE) {}

ZBLIDOM_Document::ZBLIDOM_Document(const ZBLIDOM_Node& node) noexcept
    : ZBLIDOM_Node(node, node.getNodeType() == ZBLIDOM_DOCUMENT_NODE) {}

ZBLIDOM_Element ZBLIDOM_Document::getDocumentElement() const noexcept { return ZBLIDOM_Element(getFirstChild()); }

ZBLIDOM_Element ZBLIDOM_Document::createElement(const I18NString& tag) const {
    Tree& tree = changeable(*this);
    return ZBLIDOM_Element(Access::handle(&tree, tree.makeElement(tag.bytes())));
}

ZBLIDOM_Text ZBLIDOM_Document::createTextNode(const I18NString& content) const {
    Tree& tree = changeable(*this);
    return ZBLIDOM_Text(Access::handle(&tree, tree.makeText(ZBLIDOM_TEXT_NODE, content.bytes())));
}

ZBLIDOM_Text ZBLIDOM_Document::createCDATASection(const I18NString& content) const {
    Tree& tree = changeable(*this);
    return ZBLIDOM_Text(Access::handle(&tree, tree.makeText(ZBLIDOM_CDATA_SECTION_NODE, content.bytes())));
}

ZBLIDOM_NodeList ZBLIDOM_Document::getElementsByTagName(const I18NString& tag) const {
    return elementsByTag(*this, tag);
}

long ZBLIDOM_NodeList::getLength() const noexcept { return m_nodes ? static_cast<long>(m_nodes->size()) : 0; }

ZBLIDOM_Node ZBLIDOM_NodeList::item(long i) const noexcept {
    if (i < 0 || i >= getLength()) return {};
    return Access::handle(Access::tree(m_owner), (*m_nodes)[static_cast<std::size_t>(i)]);
}
