// Looking through a large document without counting handles: a view is a node's address and nothing more.
//
//     for (ZBLIDOM_View child = ZBLIDOM_View(element).getFirstElement(); child; child = child.getNextElement())
//         if (child.getTagName() == "string") Take(child.getAttribute("id"), child.getElementText());
//
// A view, and every std::string_view that it answers, holds as long as there is a handle of the document and the
// document isn't changed. Views of one document may be used on several threads at once. A null view answers empty or
// null to every query.
#pragma once

#include <string_view>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "PlatformApi.h"

class BRINDLE_PLATFORM_API ZBLIDOM_View {
public:
    ZBLIDOM_View() noexcept = default;
    explicit ZBLIDOM_View(const ZBLIDOM_Node& node) noexcept;

    explicit operator bool() const noexcept { return m_node != nullptr; }

    // A ZBLIDOM_NodeType.
    int getNodeType() const noexcept;
    // Empty if the node is no element.
    std::string_view getTagName() const noexcept;
    // The text of a text node or CDATA section; empty for the others.
    std::string_view getNodeValue() const noexcept;

    ZBLIDOM_View getFirstChild() const noexcept;
    // The same, passing over whatever is no element.
    ZBLIDOM_View getFirstElement() const noexcept;
    ZBLIDOM_View getNextElement() const noexcept;
    // The node behind this one in document order; null behind the last one of the document.
    ZBLIDOM_View getNextInOrder() const noexcept;

    // Empty if there is no such attribute.
    std::string_view getAttribute(std::string_view name) const noexcept;

    // As ZBLIDOM_Helper::getElementText answers it.
    I18NString getElementText() const;

private:
    ZBLIDOM_View(const zblidom::Tree* tree, const zblidom::NodeData* node) noexcept : m_tree(tree), m_node(node) {}

    const zblidom::Tree* m_tree = nullptr;
    const zblidom::NodeData* m_node = nullptr;
};
