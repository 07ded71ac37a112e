// An expression only ends its nodes: their memory goes as a whole. The walk keeps its open nodes in a list of its own,
// not on the machine stack.
#include "AQM_MacroExpr.h"

#include <array>
#include <new>
#include <typeinfo>

namespace {

// The memory that an expression of its own begins with.
constexpr std::size_t kFirstBlock = 512;
// Most blocks are a call or two, and have no more nodes than this.
constexpr std::size_t kFirstNodes = 8;

struct OpenNode {
    AQM_MacroExprNode* node;
    std::size_t nextChild;
};

// The open nodes of a walk, in place as long as they are few.
class OpenNodes {
public:
    bool IsEmpty() const { return m_size == 0; }
    OpenNode& Top() { return m_size <= m_first.size() ? m_first[m_size - 1] : m_more.back(); }
    void Push(AQM_MacroExprNode* node) {
        if (m_size < m_first.size())
            m_first[m_size] = {node, 0};
        else
            m_more.push_back({node, 0});
        ++m_size;
    }
    void Pop() {
        if (m_size > m_first.size()) m_more.pop_back();
        --m_size;
    }

private:
    std::array<OpenNode, 16> m_first;
    std::vector<OpenNode> m_more;
    std::size_t m_size = 0;
};

} // namespace

AQM_MacroExprNode::~AQM_MacroExprNode() = default;

AQM_MacroExprNode* AQM_MacroExprNode::GetParent() const { return parent; }

AQM_MacroExprNode::EMacroOpCode AQM_MacroExprNode::GetOpCode() const { return opCode; }

std::vector<AQM_MacroExprNode*> AQM_MacroExprNode::GetChildren() const { return {children.begin(), children.end()}; }

void AQM_MacroExprNode::SetParent(AQM_MacroExprNode* node) { parent = node; }

void AQM_MacroExprNode::SetOpCode(EMacroOpCode op) { opCode = op; }

void AQM_MacroExprNode::AddChild(AQM_MacroExprNode* node) {
    node->SetParent(this);
    children.push_back(node);
}

// The open nodes stand in a list instead of on the machine stack. A child without children of its own is visited in
// place, so a leaf costs no entry.
void AQM_MacroExprNode::Accept(AQM_I_MacroExprVisitor& visitor) {
    const auto begin = [&visitor](AQM_MacroExprNode* node) {
        if (!node->parent) visitor.StartExpression();
        visitor.PreVisit(node);
    };
    const auto end = [&visitor](AQM_MacroExprNode* node) {
        node->Dispatch(visitor);
        visitor.PostVisit(node);
        if (!node->parent) visitor.EndExpression();
    };

    OpenNodes open;
    begin(this);
    open.Push(this);
    while (!open.IsEmpty()) {
        OpenNode& top = open.Top();
        if (top.nextChild == top.node->children.size()) {
            AQM_MacroExprNode* const node = top.node;
            open.Pop();
            end(node);
            continue;
        }
        AQM_MacroExprNode* const child = top.node->children[top.nextChild++];
        begin(child);
        if (child->children.empty())
            end(child);
        else
            open.Push(child);
    }
}

void AQM_MacroExprNode::Dispatch(AQM_I_MacroExprVisitor& visitor) {
    switch (opCode) {
    case MOC_None:
        break;
    case MOC_Literal:
        visitor.VisitOpLiteral(opCode, Text());
        break;
    case MOC_ParameterLookup:
        visitor.VisitOpParameterLookup(opCode, Text());
        break;
    case MOC_ParameterMapRef:
        visitor.VisitOpParameterMapRef(opCode, Text());
        break;
    case MOC_ParameterLookupArray:
        visitor.VisitOpParameterLookupArray(opCode, Text());
        break;
    case MOC_Expression:
        visitor.VisitOpExpression(this);
        break;
    case MOC_ParameterMapLookup:
        visitor.VisitOpParameterMapLookup(opCode, Text());
        break;
    case MOC_ParameterMapLookupArray:
        visitor.VisitOpParameterMapLookupArray(opCode, Text());
        break;
    case MOC_Function:
        visitor.VisitOpFunction(this, static_cast<int>(children.size()), Text());
        break;
    case MOC_Concat:
    default:
        visitor.Binary(opCode);
        break;
    }
}

// Any class of node can bear any code, so the code doesn't tell whether there is a text. The exact classes are told by
// their type at the cost of a pointer comparison; a node without a text answers the empty string.
const I18NString& AQM_MacroExprNode::Text() const {
    static const I18NString& empty = *new I18NString();
    const std::type_info* const type = &typeid(*this);
    if (type == &typeid(AQM_MacroExprNodeParameterLookup) || type == &typeid(AQM_MacroExprNodeString))
        return static_cast<const AQM_MacroExprNodeString*>(this)->text;
    if (type == &typeid(AQM_MacroExprNodeParameterMapLookup))
        return static_cast<const AQM_MacroExprNodeParameterMapLookup*>(this)->text;
    if (type == &typeid(AQM_MacroExprNodeFunction)) return static_cast<const AQM_MacroExprNodeFunction*>(this)->text;
    if (const auto* leaf = dynamic_cast<const AQM_MacroExprNodeString*>(this)) return leaf->text;
    if (const auto* lookup = dynamic_cast<const AQM_MacroExprNodeParameterMapLookup*>(this)) return lookup->text;
    if (const auto* function = dynamic_cast<const AQM_MacroExprNodeFunction*>(this)) return function->text;
    return empty;
}

void AQM_MacroExprNodeString::AddChild(AQM_MacroExprNode*) {}

AQM_MacroExpr::AQM_MacroExpr()
    : m_own(std::make_unique<std::pmr::monotonic_buffer_resource>(kFirstBlock)), m_memory(m_own.get()),
      allNodes(m_memory) {
    SetOpCode(MOC_Expression);
}

AQM_MacroExpr::AQM_MacroExpr(std::pmr::memory_resource& memory)
    : AQM_MacroExprNode(&memory), m_memory(&memory), allNodes(&memory) {
    SetOpCode(MOC_Expression);
    allNodes.reserve(kFirstNodes);
}

AQM_MacroExpr* AQM_MacroExpr::Create() { return new AQM_MacroExpr; }

AQM_MacroExpr::~AQM_MacroExpr() {
    for (AQM_MacroExprNode* const node : allNodes)
        node->~AQM_MacroExprNode();
}

// The entry in the list of nodes is made first: nothing can throw between the node's construction and its registration.
template <class Node, class... Arguments>
Node* AQM_MacroExpr::Make(EMacroOpCode op, const Arguments&... arguments) {
    void* const place = m_memory->allocate(sizeof(Node), alignof(Node));
    allNodes.push_back(nullptr);
    Node* node = nullptr;
    try {
        node = ::new (place) Node(arguments..., m_memory);
    } catch (...) {
        allNodes.pop_back();
        throw;
    }
    allNodes.back() = node;
    node->SetOpCode(op);
    return node;
}

AQM_MacroExprNode* AQM_MacroExpr::CreateUnaryOp(I18NString& text, EMacroOpCode op) {
    return Make<AQM_MacroExprNodeString>(op, text);
}

AQM_MacroExprNode* AQM_MacroExpr::CreateParameterLookup(EMacroOpCode op, I18NString& name) {
    return Make<AQM_MacroExprNodeParameterLookup>(op, name);
}

AQM_MacroExprNode* AQM_MacroExpr::CreateParameterMapLookup(EMacroOpCode op, I18NString& name, AQM_MacroExprNode* key) {
    auto* const node = Make<AQM_MacroExprNodeParameterMapLookup>(op, name);
    node->AddChild(key);
    return node;
}

AQM_MacroExprNode* AQM_MacroExpr::CreateBinaryOp(AQM_MacroExprNode* left, AQM_MacroExprNode* right, EMacroOpCode op) {
    auto* const node = Make<AQM_MacroExprNode>(op);
    node->AddChild(left);
    node->AddChild(right);
    return node;
}

AQM_MacroExprNode* AQM_MacroExpr::CreateFn(const I18NString& name, const std::vector<AQM_MacroExprNode*>& arguments,
                                           EMacroOpCode op) {
    auto* const node = Make<AQM_MacroExprNodeFunction>(op, name);
    for (AQM_MacroExprNode* const argument : arguments)
        node->AddChild(argument);
    return node;
}

AQM_I_MacroExprVisitor::~AQM_I_MacroExprVisitor() = default;
void AQM_I_MacroExprVisitor::StartExpression() {}
void AQM_I_MacroExprVisitor::EndExpression() {}
void AQM_I_MacroExprVisitor::PreVisit(AQM_MacroExprNode*) {}
void AQM_I_MacroExprVisitor::PostVisit(AQM_MacroExprNode*) {}
void AQM_I_MacroExprVisitor::VisitOpExpression(AQM_MacroExprNode*) {}
void AQM_I_MacroExprVisitor::VisitOpLiteral(EMacroOpCode, const I18NString&) {}
void AQM_I_MacroExprVisitor::Binary(EMacroOpCode) {}
void AQM_I_MacroExprVisitor::VisitOpFunction(AQM_MacroExprNode*, int, const I18NString&) {}
void AQM_I_MacroExprVisitor::VisitOpParameterLookup(EMacroOpCode, const I18NString&) {}
void AQM_I_MacroExprVisitor::VisitOpParameterLookupArray(EMacroOpCode, const I18NString&) {}
void AQM_I_MacroExprVisitor::VisitOpParameterMapLookup(EMacroOpCode, const I18NString&) {}
void AQM_I_MacroExprVisitor::VisitOpParameterMapLookupArray(EMacroOpCode, const I18NString&) {}
void AQM_I_MacroExprVisitor::VisitOpParameterMapRef(EMacroOpCode, const I18NString&) {}
