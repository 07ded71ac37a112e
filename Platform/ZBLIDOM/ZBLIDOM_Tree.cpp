#include "ZBLIDOM/ZBLIDOM_Tree.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace zblidom {

namespace {

// Up to here a walk over the attributes beats the index.
constexpr std::uint32_t kMaxUnindexed = 32;

constexpr std::size_t kFirstChunk = 1024;
constexpr std::size_t kMaxChunk = 1024 * 1024;

void unlink(NodeData& child) noexcept {
    ContainerData& parent = *child.parent;
    if (parent.firstChild == &child)
        parent.firstChild = child.next;
    else
        child.previous->next = child.next;
    // The last child's follower, for the purpose of the previous link, is the first child.
    if (NodeData* follower = child.next ? child.next : parent.firstChild) follower->previous = child.previous;
    child.parent = nullptr;
    child.next = nullptr;
}

} // namespace

NodeData* nextInOrder(const NodeData& node, const NodeData& top) noexcept {
    if (NodeData* child = firstChildOf(node)) return child;
    const NodeData* climber = &node;
    while (climber != &top) {
        if (climber->next) return climber->next;
        climber = climber->parent;
    }
    return nullptr;
}

void append(ContainerData& parent, NodeData& child) noexcept {
    if (child.parent) unlink(child);
    if (NodeData* first = parent.firstChild) {
        first->previous->next = &child;
        child.previous = std::exchange(first->previous, &child);
    } else {
        parent.firstChild = child.previous = &child;
    }
    child.parent = &parent;
}

void Arena::rewind() noexcept {
    m_nextChunk = 0;
    m_next = m_end = nullptr;
}

// What is left of the chunk in use is lost until the arena is rewound.
void* Arena::takeFromNextChunk(std::size_t bytes) {
    while (m_nextChunk < m_chunks.size() && m_chunks[m_nextChunk].size < bytes)
        ++m_nextChunk;
    if (m_nextChunk == m_chunks.size()) {
        const std::size_t grown = m_chunks.empty() ? kFirstChunk : std::min(2 * m_chunks.back().size, kMaxChunk);
        const std::size_t size = std::max(grown, bytes);
        m_chunks.push_back({std::unique_ptr<std::byte[]>(new std::byte[size]), size});
    }
    const Chunk& chunk = m_chunks[m_nextChunk++];
    m_next = chunk.memory.get() + bytes;
    m_end = chunk.memory.get() + chunk.size;
    return chunk.memory.get();
}

Tree::Tree() noexcept {
    m_document.type = ZBLIDOM_DOCUMENT_NODE;
    m_index.emplace(m_arena);
}

void Tree::removeReference() noexcept {
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

ElementData* Tree::makeElement(std::string_view tag) {
    const Name* name = intern(tag);
    auto* element = ::new (m_arena.take(sizeof(ElementData), alignof(ElementData))) ElementData{};
    element->type = ZBLIDOM_ELEMENT_NODE;
    element->name = name;
    return element;
}

NodeData* Tree::makeText(ZBLIDOM_NodeType type, std::string_view text) {
    auto* node = ::new (m_arena.take(sizeof(NodeData) + text.size(), alignof(NodeData))) NodeData{};
    node->type = type;
    node->length = static_cast<std::uint32_t>(text.size());
    std::copy(text.begin(), text.end(), reinterpret_cast<char*>(node + 1));
    return node;
}

void Tree::addAttribute(ElementData& element, std::string_view name, std::string_view value) {
    const Name* interned = intern(name);
    char* bytes = copy(value);
    const auto length = static_cast<std::uint32_t>(value.size());
    auto* added =
        ::new (m_arena.take(sizeof(Attribute), alignof(Attribute))) Attribute{nullptr, interned, bytes, length, length};
    // The index comes first: it may run out of memory, and must not lack an attribute that hangs on the element.
    if (element.length >= kMaxUnindexed) index(element, *added);
    if (Attribute* last = element.lastAttribute)
        added->next = std::exchange(last->next, added);
    else
        added->next = added;
    element.lastAttribute = added;
    ++element.length;
}

void Tree::setAttribute(ElementData& element, std::string_view name, std::string_view value) {
    const Attribute* found = findAttribute(element, name);
    if (!found) return addAttribute(element, name, value);
    // An arena gives nothing back: a value that keeps changing gets room to grow, so that its waste stays bounded.
    auto& attribute = const_cast<Attribute&>(*found);
    if (value.size() > attribute.capacity) {
        const auto capacity = static_cast<std::uint32_t>(
            std::max<std::uint64_t>(value.size(), std::min<std::uint64_t>(2ULL * attribute.capacity, UINT32_MAX)));
        attribute.bytes = static_cast<char*>(m_arena.take(capacity, 1));
        attribute.capacity = capacity;
    }
    std::copy(value.begin(), value.end(), attribute.bytes);
    attribute.length = static_cast<std::uint32_t>(value.size());
}

const Attribute* Tree::findAttribute(const ElementData& element, std::string_view name) const noexcept {
    if (element.length > kMaxUnindexed) {
        const auto interned = m_index->names.find(name);
        if (interned == m_index->names.end()) return nullptr;
        const auto found = m_index->attributes.find(AttributeKey{&element, &*interned});
        return found == m_index->attributes.end() ? nullptr : found->second;
    }
    const Attribute* attribute = element.lastAttribute;
    for (std::uint32_t i = 0; i < element.length; ++i) {
        attribute = attribute->next;
        if (*attribute->name == name) return attribute;
    }
    return nullptr;
}

std::vector<NodeData*> Tree::elementsByTag(const NodeData& top, std::string_view tag) const {
    std::vector<NodeData*> found;
    const auto interned = m_index->names.find(tag);
    if (interned == m_index->names.end()) return found;
    for (NodeData* node = nextInOrder(top, top); node; node = nextInOrder(*node, top))
        if (node->type == ZBLIDOM_ELEMENT_NODE && static_cast<ElementData*>(node)->name == &*interned)
            found.push_back(node);
    return found;
}

void Tree::clear() noexcept {
    if (m_references.load(std::memory_order_acquire) <= 1) {
        m_document.firstChild = nullptr;
        m_index.reset();
        m_arena.rewind();
        m_index.emplace(m_arena);
        return;
    }
    while (NodeData* child = m_document.firstChild)
        unlink(*child);
}

char* Tree::copy(std::string_view text) {
    if (text.empty()) return nullptr;
    auto* bytes = static_cast<char*>(m_arena.take(text.size(), 1));
    std::memcpy(bytes, text.data(), text.size());
    return bytes;
}

const Name* Tree::intern(std::string_view text) {
    const std::size_t ends =
        text.empty() ? 0 : static_cast<unsigned char>(text.front()) + 4U * static_cast<unsigned char>(text.back());
    const Name*& recent = m_index->recentNames[(text.size() + ends) % m_index->recentNames.size()];
    if (recent && *recent == text) return recent;
    auto& names = m_index->names;
    const auto place = names.lower_bound(text);
    if (place != names.end() && *place == text) return recent = &*place;
    return recent = &*names.emplace_hint(place, copy(text), text.size());
}

void Tree::index(ElementData& element, Attribute& added) {
    auto& attributes = m_index->attributes;
    if (element.length == kMaxUnindexed) {
        Attribute* attribute = element.lastAttribute;
        do {
            attribute = attribute->next;
            attributes.insert_or_assign(AttributeKey{&element, attribute->name}, attribute);
        } while (attribute != element.lastAttribute);
    }
    attributes.insert_or_assign(AttributeKey{&element, added.name}, &added);
}

std::size_t Tree::AttributeKeyHash::operator()(const AttributeKey& key) const noexcept {
    const auto element = reinterpret_cast<std::uintptr_t>(key.element);
    const auto name = reinterpret_cast<std::uintptr_t>(key.name);
    return (element >> 3) * 0x9e3779b97f4a7c15U + (name >> 3);
}

ZBLIDOM_Node Access::handle(Tree* tree, NodeData* node) noexcept {
    return node ? ZBLIDOM_Node(tree, node) : ZBLIDOM_Node();
}

ZBLIDOM_NodeList Access::list(Tree* tree, std::vector<NodeData*> nodes) {
    ZBLIDOM_NodeList result;
    result.m_nodes = std::make_shared<const std::vector<NodeData*>>(std::move(nodes));
    result.m_owner = handle(tree, &tree->document());
    return result;
}

} // namespace zblidom
