// The nodes of one document behind their handles; for the files of this folder alone.
//
// All nodes, attributes, texts and names of a document come from one arena and go with it, so that nothing is freed one
// by one, and destroying a document, however deep, is no walk. Children form a list in which the first child's previous
// link is the last child: appending and unlinking take constant time without a further field. Names are interned; the
// attributes of an element are a ring of which the element holds the last one. An element with many attributes has them
// in an index too, so that neither setting nor finding them is a walk.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ZBLIDOM/ZBLIDOM_Node.h"

namespace zblidom {

// An interned name; equal names of one tree are one object.
using Name = std::string_view;

struct ContainerData;

struct NodeData {
    ContainerData* parent;
    NodeData* next;
    NodeData* previous; // of a first child: the last child
    ZBLIDOM_NodeType type;
    std::uint32_t length; // of a text: its bytes, which follow the node; of an element: the number of its attributes
};

// A document or an element.
struct ContainerData : NodeData {
    NodeData* firstChild;
};

struct Attribute {
    Attribute* next;
    const Name* name;
    char* bytes;
    std::uint32_t length;
    std::uint32_t capacity;

    std::string_view value() const noexcept { return {bytes, length}; }
};

struct ElementData : ContainerData {
    const Name* name;
    Attribute* lastAttribute; // its next is the first one
};

inline bool isText(const NodeData& node) noexcept {
    return node.type == ZBLIDOM_TEXT_NODE || node.type == ZBLIDOM_CDATA_SECTION_NODE;
}

inline std::string_view textOf(const NodeData& node) noexcept {
    return {reinterpret_cast<const char*>(&node + 1), node.length};
}

inline NodeData* firstChildOf(const NodeData& node) noexcept {
    return isText(node) ? nullptr : static_cast<const ContainerData&>(node).firstChild;
}

// The node behind this one in document order, below top; null behind the last.
NodeData* nextInOrder(const NodeData& node, const NodeData& top) noexcept;

// Makes the child, wherever it hangs, the last one of the parent. It must not be the parent or above it.
void append(ContainerData& parent, NodeData& child) noexcept;

// Memory that is given back as a whole: with the arena, or for use again by rewind(). A document that is filled over
// and over then takes memory from the system once.
class Arena : public std::pmr::memory_resource {
public:
    void* take(std::size_t bytes, std::size_t alignment) {
        const std::size_t padding = (alignment - reinterpret_cast<std::uintptr_t>(m_next)) & (alignment - 1);
        if (bytes + padding > static_cast<std::size_t>(m_end - m_next)) return takeFromNextChunk(bytes);
        std::byte* const taken = m_next + padding;
        m_next = taken + bytes;
        return taken;
    }
    // All that was taken is taken no longer.
    void rewind() noexcept;

private:
    struct Chunk {
        std::unique_ptr<std::byte[]> memory; // aligned for anything
        std::size_t size;
    };

    void* takeFromNextChunk(std::size_t bytes);
    void* do_allocate(std::size_t bytes, std::size_t alignment) override { return take(bytes, alignment); }
    void do_deallocate(void*, std::size_t, std::size_t) override {}
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }

    std::vector<Chunk> m_chunks;
    std::size_t m_nextChunk = 0;
    std::byte* m_next = nullptr;
    std::byte* m_end = nullptr;
};

class Tree {
public:
    Tree() noexcept;
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    void addReference() noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
    // Deletes the tree when the last reference goes.
    void removeReference() noexcept;

    ContainerData& document() noexcept { return m_document; }

    // What is made hangs nowhere.
    ElementData* makeElement(std::string_view tag);
    NodeData* makeText(ZBLIDOM_NodeType type, std::string_view text);

    // For a name that the element doesn't have yet.
    void addAttribute(ElementData& element, std::string_view name, std::string_view value);
    void setAttribute(ElementData& element, std::string_view name, std::string_view value);
    // Null if there is none.
    const Attribute* findAttribute(const ElementData& element, std::string_view name) const noexcept;

    // The elements below top with that tag, in document order.
    std::vector<NodeData*> elementsByTag(const NodeData& top, std::string_view tag) const;

    // Leaves an empty document. The memory of the former nodes is used again if there is one reference at most, since
    // nothing but the document can then be in anybody's hands; else they stay as they are, but hang nowhere.
    void clear() noexcept;

private:
    struct AttributeKey {
        const ElementData* element;
        const Name* name;
        bool operator==(const AttributeKey&) const = default;
    };
    struct AttributeKeyHash {
        std::size_t operator()(const AttributeKey& key) const noexcept;
    };
    struct Index {
        explicit Index(Arena& arena) : names(&arena), attributes(&arena) {}

        // Ordered, not hashed: names are foreign text, and no choice of names makes this slow.
        std::pmr::set<Name> names;
        // The name that was met last for each sum of a length, a first and a last byte: in a document that repeats its
        // few names it is mostly the one that is sought.
        std::array<const Name*, 64> recentNames{};
        std::pmr::unordered_map<AttributeKey, Attribute*, AttributeKeyHash> attributes;
    };

    char* copy(std::string_view text);
    const Name* intern(std::string_view text);
    void index(ElementData& element, Attribute& added);

    std::atomic<long> m_references{0};
    ContainerData m_document{};
    Arena m_arena;
    std::optional<Index> m_index; // never empty but in clear()
};

// The one way from handles to nodes and back.
struct Access {
    // Null for a null node.
    static ZBLIDOM_Node handle(Tree* tree, NodeData* node) noexcept;
    static ZBLIDOM_NodeList list(Tree* tree, std::vector<NodeData*> nodes);
    static Tree* tree(const ZBLIDOM_Node& handle) noexcept { return handle.m_tree; }
    static NodeData* node(const ZBLIDOM_Node& handle) noexcept { return handle.m_node; }
};

} // namespace zblidom
