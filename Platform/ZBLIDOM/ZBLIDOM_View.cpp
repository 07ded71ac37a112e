#include "ZBLIDOM/ZBLIDOM_View.h"

#include "ZBLIDOM/ZBLIDOM_Tree.h"

using zblidom::Access;
using zblidom::Attribute;
using zblidom::ElementData;
using zblidom::NodeData;

namespace {

const NodeData* elementFrom(const NodeData* node) noexcept {
    while (node && node->type != ZBLIDOM_ELEMENT_NODE)
        node = node->next;
    return node;
}

} // namespace

ZBLIDOM_View::ZBLIDOM_View(const ZBLIDOM_Node& node) noexcept
    : m_tree(Access::tree(node)), m_node(Access::node(node)) {}

int ZBLIDOM_View::getNodeType() const noexcept { return m_node ? m_node->type : ZBLIDOM_NO_NODE; }

std::string_view ZBLIDOM_View::getTagName() const noexcept {
    return getNodeType() == ZBLIDOM_ELEMENT_NODE ? *static_cast<const ElementData*>(m_node)->name : std::string_view();
}

std::string_view ZBLIDOM_View::getNodeValue() const noexcept {
    return m_node && zblidom::isText(*m_node) ? zblidom::textOf(*m_node) : std::string_view();
}

ZBLIDOM_View ZBLIDOM_View::getFirstChild() const noexcept {
    return {m_tree, m_node ? zblidom::firstChildOf(*m_node) : nullptr};
}

ZBLIDOM_View ZBLIDOM_View::getFirstElement() const noexcept {
    return {m_tree, m_node ? elementFrom(zblidom::firstChildOf(*m_node)) : nullptr};
}

ZBLIDOM_View ZBLIDOM_View::getNextElement() const noexcept {
    return {m_tree, m_node ? elementFrom(m_node->next) : nullptr};
}

ZBLIDOM_View ZBLIDOM_View::getNextInOrder() const noexcept {
    if (const ZBLIDOM_View child = getFirstChild()) return child;
    const NodeData* climber = m_node;
    while (climber && !climber->next)
        climber = climber->parent;
    return {m_tree, climber ? climber->next : nullptr};
}

std::string_view ZBLIDOM_View::getAttribute(std::string_view name) const noexcept {
    if (getNodeType() != ZBLIDOM_ELEMENT_NODE) return {};
    const Attribute* attribute = m_tree->findAttribute(static_cast<const ElementData&>(*m_node), name);
    return attribute ? attribute->value() : std::string_view();
}

I18NString ZBLIDOM_View::getElementText() const {
    I18NString joined;
    if (!m_node) return joined;
    for (const NodeData* child = zblidom::firstChildOf(*m_node); child; child = child->next)
        if (zblidom::isText(*child)) joined.appendUtf8(zblidom::textOf(*child));
    return joined;
}
