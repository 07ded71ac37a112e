// The tree of one macro block: typed nodes, the root that owns them all, and the visitor that walks them.
//
// The walk is post-order: a node's own visit comes after those of all its children, which is what lets a visitor keep
// its values on a stack. It uses no machine stack, so a concatenation of a million terms, a tree as deep as it is long,
// is walked like any other.
#pragma once

#include <memory>
#include <memory_resource>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQM_I_MacroExprVisitor;

// One node. It owns neither its parent nor its children; the AQM_MacroExpr that made it does. One thread at a time.
class BRINDLE_API AQM_MacroExprNode {
public:
    enum EMacroOpCode : int {
        MOC_None = 0,
        MOC_Literal = 100,
        MOC_ParameterLookup = 103,
        MOC_ParameterMapRef = 104,
        MOC_ParameterLookupArray = 105,
        MOC_Expression = 200,
        MOC_Concat = 201,
        MOC_ParameterMapLookup = 202,
        MOC_ParameterMapLookupArray = 203,
        MOC_Function = 800
    };

    // The list of children lies in that memory, which outlives the node.
    explicit AQM_MacroExprNode(std::pmr::memory_resource* memory = std::pmr::get_default_resource())
        : children(memory) {}
    AQM_MacroExprNode(const AQM_MacroExprNode&) = delete;
    AQM_MacroExprNode& operator=(const AQM_MacroExprNode&) = delete;
    virtual ~AQM_MacroExprNode();

    virtual AQM_MacroExprNode* GetParent() const;
    virtual EMacroOpCode GetOpCode() const;
    // A copy: changing it leaves the tree as it is.
    virtual std::vector<AQM_MacroExprNode*> GetChildren() const;
    virtual void SetParent(AQM_MacroExprNode* node);
    virtual void SetOpCode(EMacroOpCode op);
    // Makes this node the child's parent and appends the child. A leaf ignores the call and leaves the child alone.
    virtual void AddChild(AQM_MacroExprNode* node);

    // Walks this node and all below it in post-order. A node without a parent is framed by StartExpression and
    // EndExpression. What the visitor throws passes out.
    void Accept(AQM_I_MacroExprVisitor& visitor);

private:
    void Dispatch(AQM_I_MacroExprVisitor& visitor);
    const I18NString& Text() const;

    AQM_MacroExprNode* parent = nullptr;
    EMacroOpCode opCode = MOC_None;
    std::pmr::vector<AQM_MacroExprNode*> children;
};

// A leaf with a text: a literal, or the name of a map reference.
class BRINDLE_API AQM_MacroExprNodeString : public AQM_MacroExprNode {
public:
    explicit AQM_MacroExprNodeString(const I18NString& nodeText,
                                     std::pmr::memory_resource* memory = std::pmr::get_default_resource())
        : AQM_MacroExprNode(memory), text(nodeText) {}
    void AddChild(AQM_MacroExprNode* node) override;

private:
    friend class AQM_MacroExprNode;
    I18NString text;
};

// A leaf that looks up a parameter, as one value or as all its values.
class BRINDLE_API AQM_MacroExprNodeParameterLookup : public AQM_MacroExprNodeString {
public:
    using AQM_MacroExprNodeString::AQM_MacroExprNodeString;
};

// A lookup in a named map; its one child is the key.
class BRINDLE_API AQM_MacroExprNodeParameterMapLookup : public AQM_MacroExprNode {
public:
    explicit AQM_MacroExprNodeParameterMapLookup(const I18NString& mapName,
                                                 std::pmr::memory_resource* memory = std::pmr::get_default_resource())
        : AQM_MacroExprNode(memory), text(mapName) {}

private:
    friend class AQM_MacroExprNode;
    I18NString text;
};

// A function call. Its children are the arguments, the last one as written first.
class BRINDLE_API AQM_MacroExprNodeFunction : public AQM_MacroExprNode {
public:
    explicit AQM_MacroExprNodeFunction(const I18NString& functionName,
                                       std::pmr::memory_resource* memory = std::pmr::get_default_resource())
        : AQM_MacroExprNode(memory), text(functionName) {}

private:
    friend class AQM_MacroExprNode;
    I18NString text;
};

// The root of one block's tree, and the owner of every node that its Create operations made, in the tree or not.
class BRINDLE_API AQM_MacroExpr : public AQM_MacroExprNode {
public:
    // A new empty expression; the caller owns it.
    static AQM_MacroExpr* Create();
    // An empty expression with all its nodes in that memory, which outlives it.
    explicit AQM_MacroExpr(std::pmr::memory_resource& memory);
    // Ends the nodes in the order in which they were made.
    ~AQM_MacroExpr() override;

    // Each answers a new node, which this expression owns and which hangs nowhere yet. The nodes that it takes as its
    // children, none of them null, get it as their parent.
    AQM_MacroExprNode* CreateUnaryOp(I18NString& text, EMacroOpCode op);
    AQM_MacroExprNode* CreateParameterLookup(EMacroOpCode op, I18NString& name);
    AQM_MacroExprNode* CreateParameterMapLookup(EMacroOpCode op, I18NString& name, AQM_MacroExprNode* key);
    AQM_MacroExprNode* CreateBinaryOp(AQM_MacroExprNode* left, AQM_MacroExprNode* right, EMacroOpCode op);
    // The arguments are added in the vector's order.
    AQM_MacroExprNode* CreateFn(const I18NString& name, const std::vector<AQM_MacroExprNode*>& arguments,
                                EMacroOpCode op);

private:
    AQM_MacroExpr();
    template <class Node, class... Arguments>
    Node* Make(EMacroOpCode op, const Arguments&... arguments);

    // Where the nodes lie: memory of its own unless another was given.
    std::unique_ptr<std::pmr::monotonic_buffer_resource> m_own;
    std::pmr::memory_resource* m_memory;

    std::pmr::vector<AQM_MacroExprNode*> allNodes;
};

// What a walk calls, on the walk's thread. Every operation has an empty body, so a visitor overrides what it needs.
class BRINDLE_API AQM_I_MacroExprVisitor {
public:
    using EMacroOpCode = AQM_MacroExprNode::EMacroOpCode;

    virtual ~AQM_I_MacroExprVisitor();
    // Around the walk of a node without a parent.
    virtual void StartExpression();
    virtual void EndExpression();
    // Before a node's children, and after the node's own visit.
    virtual void PreVisit(AQM_MacroExprNode* node);
    virtual void PostVisit(AQM_MacroExprNode* node);
    // The node's own visit, by operation code; Binary takes every code but 0 that has no operation of its own.
    virtual void VisitOpExpression(AQM_MacroExprNode* node);
    virtual void VisitOpLiteral(EMacroOpCode op, const I18NString& text);
    virtual void Binary(EMacroOpCode op);
    virtual void VisitOpFunction(AQM_MacroExprNode* node, int argumentCount, const I18NString& name);
    virtual void VisitOpParameterLookup(EMacroOpCode op, const I18NString& name);
    virtual void VisitOpParameterLookupArray(EMacroOpCode op, const I18NString& name);
    virtual void VisitOpParameterMapLookup(EMacroOpCode op, const I18NString& mapName);
    virtual void VisitOpParameterMapLookupArray(EMacroOpCode op, const I18NString& mapName);
    virtual void VisitOpParameterMapRef(EMacroOpCode op, const I18NString& name);
};
