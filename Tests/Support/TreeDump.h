// A macro tree on one line, much as it is written: <[201($a, f(@c, 'b'))]> is the block "#$a + f('b', @c)#". Angle
// brackets frame the walk, square ones are the root; a binary operation is its code; children come in the walk's order.
#pragma once

#include <string>
#include <vector>

#include "AQM_MacroExpr.h"

namespace brindle_test {

// Collects the dump from the calls of a walk. "!" marks a child whose parent isn't the node above it, "?" an operation
// that was told a code or a number of arguments that isn't the node's.
class TreeDump : public AQM_I_MacroExprVisitor {
public:
    static std::string Of(AQM_MacroExprNode& root) {
        TreeDump dump;
        dump.m_open.push_back({root.GetParent(), "", "", ""});
        root.Accept(dump);
        return dump.m_open.size() == 1 ? dump.m_open[0].line : "unbalanced";
    }

    void StartExpression() override { m_open.back().line += '<'; }
    void EndExpression() override { m_open.back().line += '>'; }
    void PreVisit(AQM_MacroExprNode* node) override { m_open.push_back({node, "none", "", ""}); }
    void PostVisit(AQM_MacroExprNode* node) override {
        const Open done = m_open.back();
        m_open.pop_back();
        std::string& line = m_open.back().line;
        if (!line.empty() && line.back() != '<') line += ", ";
        if (done.node != node || node->GetParent() != m_open.back().node) line += '!';
        line += done.head + done.line + done.tail;
    }
    void VisitOpExpression(AQM_MacroExprNode* node) override { Note(node->GetOpCode(), "", "", "[]"); }
    void VisitOpLiteral(EMacroOpCode op, const I18NString& text) override { Note(op, "'", text + "'"); }
    void Binary(EMacroOpCode op) override { Note(op, "", std::to_string(op).c_str(), "()"); }
    void VisitOpFunction(AQM_MacroExprNode* node, int count, const I18NString& name) override {
        Note(node->GetOpCode(), static_cast<int>(node->GetChildren().size()) == count ? "" : "?", name, "()");
    }
    void VisitOpParameterLookup(EMacroOpCode op, const I18NString& name) override { Note(op, "$", name); }
    void VisitOpParameterLookupArray(EMacroOpCode op, const I18NString& name) override { Note(op, "@", name); }
    void VisitOpParameterMapLookup(EMacroOpCode op, const I18NString& name) override { Note(op, "$", name, "{}"); }
    void VisitOpParameterMapLookupArray(EMacroOpCode op, const I18NString& name) override { Note(op, "@", name, "{}"); }
    void VisitOpParameterMapRef(EMacroOpCode op, const I18NString& name) override { Note(op, "%", name); }

private:
    struct Open {
        const AQM_MacroExprNode* node;
        std::string head, line, tail;
    };

    void Note(EMacroOpCode op, const std::string& sigil, const I18NString& text, const std::string& pair = "") {
        Open& top = m_open.back();
        top.head = (op == top.node->GetOpCode() ? "" : "?") + sigil + std::string(text.bytes()) + pair.substr(0, 1);
        top.tail = pair.substr(pair.size() / 2);
    }

    std::vector<Open> m_open;
};

} // namespace brindle_test
