// The handles of the XML document tree: nodes, elements, texts, documents and node lists.
//
// A handle is a reference: copying it copies no node, and any handle, of whatever node, keeps the whole document alive.
// A const member may therefore change the tree; const only means that the handle stays where it is. Names and values
// are UTF-8 and taken as they come: whoever builds a document decides whether it can be written as XML.
//
// The count of handles is atomic, so handles of one document may be copied, read and dropped on several threads at
// once. A document that is being changed belongs to one thread.
//
// On a null handle every query answers empty, null or 0; an operation that changes something throws. All failures are
// ZBLIDOM_Exception.
#pragma once

#include <memory>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "PlatformApi.h"

namespace zblidom {
class Tree;
struct NodeData;
struct Access;
} // namespace zblidom

class ZBLIDOM_Document;
class ZBLIDOM_NodeList;

enum ZBLIDOM_NodeType {
    ZBLIDOM_NO_NODE = 0,
    ZBLIDOM_ELEMENT_NODE = 1,
    ZBLIDOM_TEXT_NODE = 3,
    ZBLIDOM_CDATA_SECTION_NODE = 4,
    ZBLIDOM_DOCUMENT_NODE = 9
};

// Any node, or none.
class BRINDLE_PLATFORM_API ZBLIDOM_Node {
public:
    ZBLIDOM_Node() noexcept;
    ZBLIDOM_Node(const ZBLIDOM_Node& other) noexcept;
    ZBLIDOM_Node(ZBLIDOM_Node&& other) noexcept;
    ~ZBLIDOM_Node();
    ZBLIDOM_Node& operator=(const ZBLIDOM_Node& other) noexcept;
    ZBLIDOM_Node& operator=(ZBLIDOM_Node&& other) noexcept;

    bool isNull() const noexcept { return m_node == nullptr; }
    explicit operator bool() const noexcept { return m_node != nullptr; }
    // Whether both are handles of one and the same node, or both null.
    bool operator==(const ZBLIDOM_Node& other) const noexcept { return m_node == other.m_node; }

    // A ZBLIDOM_NodeType.
    int getNodeType() const noexcept;
    // The tag of an element, "#text", "#cdata-section" or "#document".
    I18NString getNodeName() const;
    // The text of a text node or CDATA section; empty for the others.
    I18NString getNodeValue() const;

    ZBLIDOM_Node getParentNode() const noexcept;
    ZBLIDOM_Node getFirstChild() const noexcept;
    ZBLIDOM_Node getNextSibling() const noexcept;
    // The children as they are now.
    ZBLIDOM_NodeList getChildNodes() const;
    // Of a document: itself.
    ZBLIDOM_Document getOwnerDocument() const noexcept;

    // Makes the child the last one of this node and answers it; a child that hangs somewhere is moved. Constant time,
    // but a child that has children of its own costs a walk from here up to the top. Throws, and changes nothing, if
    // the child is null, of another document, this node itself or above it, or a document; if this node is a text; if
    // this is a document and the child is no element or would be its second one.
    ZBLIDOM_Node appendChild(const ZBLIDOM_Node& child) const;

protected:
    ZBLIDOM_Node(zblidom::Tree* tree, zblidom::NodeData* node) noexcept;
    // A handle of the same node if it is accepted, else null.
    ZBLIDOM_Node(const ZBLIDOM_Node& other, bool accepted) noexcept;

private:
    friend struct zblidom::Access;

    // Both null, or neither.
    zblidom::Tree* m_tree = nullptr;
    zblidom::NodeData* m_node = nullptr;
};

class BRINDLE_PLATFORM_API ZBLIDOM_Element : public ZBLIDOM_Node {
public:
    ZBLIDOM_Element() noexcept = default;
    // Null if the node is no element.
    explicit ZBLIDOM_Element(const ZBLIDOM_Node& node) noexcept;

    I18NString getTagName() const;
    // Empty if there is no such attribute.
    I18NString getAttribute(const I18NString& name) const;
    // Appends an attribute, or replaces the value of the one with that name, which keeps its place.
    void setAttribute(const I18NString& name, const I18NString& value) const;
    // All elements below this one with exactly that tag, prefix included, in document order, as they are now.
    ZBLIDOM_NodeList getElementsByTagName(const I18NString& tag) const;
};

// A text node or a CDATA section; getNodeType tells which.
class BRINDLE_PLATFORM_API ZBLIDOM_Text : public ZBLIDOM_Node {
public:
    ZBLIDOM_Text() noexcept = default;
    // Null if the node is neither a text node nor a CDATA section.
    explicit ZBLIDOM_Text(const ZBLIDOM_Node& node) noexcept;
};

// Always null: documents with a document type are not read.
class BRINDLE_PLATFORM_API ZBLIDOM_DocumentType : public ZBLIDOM_Node {};

// Made by ZBLIDOM_DOMImplementation. Nodes that it creates belong to it from the start, but hang nowhere until they are
// appended. Their memory is given back with the document, not before.
class BRINDLE_PLATFORM_API ZBLIDOM_Document : public ZBLIDOM_Node {
public:
    ZBLIDOM_Document() noexcept = default;
    // Null if the node is no document.
    explicit ZBLIDOM_Document(const ZBLIDOM_Node& node) noexcept;

    // Null if there is none.
    ZBLIDOM_Element getDocumentElement() const noexcept;
    ZBLIDOM_Element createElement(const I18NString& tag) const;
    ZBLIDOM_Text createTextNode(const I18NString& text) const;
    ZBLIDOM_Text createCDATASection(const I18NString& text) const;
    // As for an element; the document element itself is among them.
    ZBLIDOM_NodeList getElementsByTagName(const I18NString& tag) const;
};

// A list of nodes, fixed when it was made; it keeps their document alive. Copies share it.
class BRINDLE_PLATFORM_API ZBLIDOM_NodeList {
public:
    ZBLIDOM_NodeList() noexcept = default;

    long getLength() const noexcept;
    // Counted from 0; null outside. Constant time.
    ZBLIDOM_Node item(long i) const noexcept;

private:
    friend struct zblidom::Access;

    ZBLIDOM_Node m_owner;
    std::shared_ptr<const std::vector<zblidom::NodeData*>> m_nodes;
};
