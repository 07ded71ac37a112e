// A macro tree on one line: 200(201(103:a, 100:b)) is the block "#$a + 'b'#". A node is its operation code, its text
// and, in parentheses, its children in the order of the walk.
#pragma once

#include <string>
#include <vector>

#include "AQM_MacroExpr.h"

namespace brindle_test {

// Collects the dump by walking the tree. A child whose parent is another node is marked with "!".
class TreeDump : public AQM_I_MacroExprVisitor {
public:
    static std::string Of(AQM_MacroExprNode& root) {
        TreeDump dump;
        root.Accept(dump);
        return dump.m_done.size() == 1 ? dump.m_done[0] : "no tree";
    }

    void PostVisit(AQM_MacroExprNode* node) override {
        std::string line = std::to_string(node->GetOpCode()) + m_text;
        m_text.clear();
        const std::vector<AQM_MacroExprNode*> children = node->GetChildren();
        const std::size_t first = m_done.size() - children.size();
        for (std::size_t i = 0; i < children.size(); ++i)
            line += (i ? ", " : "(") + std::string(children[i]->GetParent() == node ? "" : "!") + m_done[first + i];
        m_done.resize(first);
        m_done.push_back(children.empty() ? line : line + ")");
    }
    void VisitOpLiteral(EMacroOpCode, const I18NString& text) override { Note(text); }
    void VisitOpFunction(AQM_MacroExprNode* node, int count, const I18NString& name) override {
        Note(name);
        if (node->GetChildren().size() != static_cast<std::size_t>(count)) m_text += "[" + std::to_string(count) + "]";
    }
    void VisitOpParameterLookup(EMacroOpCode, const I18NString& name) override { Note(name); }
    void VisitOpParameterLookupArray(EMacroOpCode, const I18NString& name) override { Note(name); }
    void VisitOpParameterMapLookup(EMacroOpCode, const I18NString& name) override { Note(name); }
    void VisitOpParameterMapLookupArray(EMacroOpCode, const I18NString& name) override { Note(name); }
    void VisitOpParameterMapRef(EMacroOpCode, const I18NString& name) override { Note(name); }

private:
    void Note(const I18NString& text) { m_text = ":" + std::string(text.bytes()); }

    std::string m_text;
    std::vector<std::string> m_done;
};

} // namespace brindle_test
