// The trees that the grammar builds, their walk, the sets of parser objects that serve one run after the other, and
// what the built-in functions say of themselves.
#include <memory>

#include "AQM_I_MacroExpander.h"
#include "AQM_MacroExpr.h"

#include "QMMacroBuiltIns.h"
#include "QMMacroExpander.h"
#include "QMMacroParserPool.h"
#include "Support/FailingHeap.h"
#include "Support/FailureCheck.h"
#include "Support/Rows.h"
#include "Support/TreeDump.h"

namespace {

using namespace brindle_test;
using Node = AQM_MacroExprNode;

// The dumps of a text's blocks, a blank between two. A block that is one parameter has no tree and stands as its name.
std::string TreesOf(const std::string& text) {
    QMX_ParserSet set;
    set.Run(text, EMacroRunMode::expansion);
    std::string trees;
    for (const QMX_ParsedBlock& block : set.parser.GetBlocks())
        trees += (trees.empty() ? "" : " ") +
                 (block.expression ? TreeDump::Of(*block.expression) : "$" + std::string(block.parameter));
    return trees;
}

TEST(MacroTree, IsBuiltFromEachRule) {
    CheckRows(TreesOf, "no block -> ", "## # # -> <[]> <[]>", "#'a'# #\"\"# -> <['a']> <['']>",
              "#$a##$a ##@a##%a# -> $a <[$a]> <[@a]> <[%a]>", "#$[a b]##@[#]##%[a]]b]# -> <[$a b]> <[@#]> <[%a]]b]>",
              "#$a{'k'}##@[b]{$c}# -> <[$a{'k'}]> <[@b{$c}]>", "#$a+'b'+$c# -> <[201(201($a, 'b'), $c)]>",
              "#$a{@b{%c}+$d{f()}}# -> <[$a{201(@b{%c}, $d{f()})}]>",
              "#f()##f('a')##f('a';$b,@c)# -> <[f()]> <[f('a')]> <[f(@c, $b, 'a')]>",
              "#f('a'+g($b;%c),h())+'d'# -> <[201(f(h(), 201('a', g(%c, $b))), 'd')]>",
              "# $ a /**/ + //\n f ( 'b' ; @ c { 'k' } ) # -> <[201($a, f(@c{'k'}, 'b'))]>");
}

TEST(MacroTree, ListsMayBeLong) {
    constexpr int kArguments = 20000;
    std::string arguments, dump;
    for (int i = 0; i < kArguments; ++i) {
        arguments += (i ? ",'" : "'") + std::to_string(i) + "'";
        dump += (i ? ", '" : "'") + std::to_string(kArguments - 1 - i) + "'";
    }
    EXPECT_EQ(TreesOf("#f(" + arguments + ")#"), "<[f(" + dump + ")]>");
}

// The operation follows from the code alone, whatever the node's class.
TEST(MacroTree, WalkCallsTheOperationOfTheCode) {
    const std::unique_ptr<AQM_MacroExpr> expression(AQM_MacroExpr::Create());
    I18NString text("t");
    Node* const nodes[] = {expression->CreateParameterLookup(Node::MOC_None, text),
                           expression->CreateFn(text, {}, Node::MOC_None)};
    for (Node* const node : nodes) {
        const auto dump = [node](const std::string& code) {
            node->SetOpCode(static_cast<Node::EMacroOpCode>(std::stoi(code)));
            return TreeDump::Of(*node);
        };
        CheckRows(dump, "0 -> <none>", "99 -> <99()>", "100 -> <'t'>", "101 -> <101()>", "102 -> <102()>",
                  "103 -> <$t>", "104 -> <%t>", "105 -> <@t>", "106 -> <106()>", "200 -> <[]>", "201 -> <201()>",
                  "202 -> <$t{}>", "203 -> <@t{}>", "204 -> <204()>", "801 -> <801()>", "-1 -> <-1()>", "800 -> <t()>");
    }
    Node* const entry = expression->CreateParameterMapLookup(Node::MOC_ParameterMapLookup, text, nodes[0]);
    expression->AddChild(expression->CreateFn("f", {entry, nodes[1]}, Node::MOC_Function));
    EXPECT_EQ(TreeDump::Of(*expression), "<[f($t{t()}, t())]>");
    EXPECT_EQ(TreeDump::Of(*entry), "$t{t()}") << "a node with a parent has no frame";
}

// A tree that no parser made, without a coordinator and without functions.
TEST(MacroTree, HandMadeTreesAreExecuted) {
    const auto valueOf = [](AQM_MacroExprNode::EMacroOpCode op, bool isBelowRoot) {
        const std::unique_ptr<AQM_MacroExpr> expression(AQM_MacroExpr::Create());
        I18NString name("x");
        AQM_MacroExprNode* const node = expression->CreateUnaryOp(name, op);
        if (isBelowRoot) expression->AddChild(node);
        AQM_MacroExpander expander;
        const AQM_FunctionTable* const none = nullptr;
        AQM_MacroExprExecute visitor(&expander, nullptr, &none, ZBLIDOM_Document(), ZBLIDOM_Node());
        if (!isBelowRoot) node->Accept(visitor);
        return isBelowRoot ? AQM_ExecuteExpression(expression.get(), &expander, nullptr, nullptr)
                           : visitor.GetResultText();
    };
    EXPECT_EQ(valueOf(Node::MOC_Literal, true), "x");
    EXPECT_EQ(valueOf(Node::MOC_ParameterMapRef, true), "x");
    EXPECT_EQ(valueOf(Node::MOC_ParameterLookup, true), "");
    EXPECT_EQ(valueOf(Node::MOC_ParameterLookupArray, true), "array_tbd");
    EXPECT_EQ(valueOf(Node::MOC_ParameterLookupArray, false), "array") << "no frame turns it into a text";
    EXPECT_EQ(valueOf(Node::MOC_Literal, false), "") << "pushed into no frame";
    // Codes that the language has no use for compute nothing; from 200 on the frame that was opened for them is left
    // over.
    for (const int op : {1, 101, 102, 150, 999})
        EXPECT_EQ(valueOf(static_cast<AQM_MacroExprNode::EMacroOpCode>(op), false), op < 200 ? "" : "array") << op;
}

// Each case has a pool of its own.
class ParserPool : public testing::Test {
protected:
    ParserPool() { QMX_EndParserPool(); }
    ~ParserPool() override { QMX_EndParserPool(); }
};

TEST_F(ParserPool, SetComesBackAsNewFromEveryFailure) {
    for (const char* text : {"'", "a#$b{'x'", "#$[", "#$a+'b'#", "#f(/*c*/", "##\n#/*c*/\n+"})
        for (const EMacroRunMode mode : {EMacroRunMode::expansion, EMacroRunMode::positions, EMacroRunMode::document}) {
            FailureOf([&] { QMX_ParserSetLease()->Run(text, mode); });
            ASSERT_EQ(QMX_CountPooledSets(), 1U) << text;
            const QMX_ParserSetLease set;
            EXPECT_TRUE(set->parser.GetBlocks().empty() && set->lexer.GetPositions().empty()) << text;
            EXPECT_FALSE(set->lexer.GetDocument().IsStarted()) << text;
            EXPECT_EQ(set->error.GetErrorCount() + set->error.GetIsMacro() + set->lexer.GetLine(), 1) << text;
            EXPECT_EQ(set->error.GetPosition(), -1) << text;
            set->Run("#f($x,'y')#", EMacroRunMode::expansion);
            EXPECT_EQ(TreeDump::Of(*set->parser.GetBlocks().at(0).expression), "<[f('y', $x)]>") << text;
        }
}

TEST_F(ParserPool, GrowsToTheSetsInUseAtOnceAndGivesOutTheFirst) {
    const QMX_ParserSet *first = nullptr, *second = nullptr;
    {
        const QMX_ParserSetLease outer, inner;
        first = &*inner, second = &*outer;
        EXPECT_EQ(QMX_CountPooledSets(), 0U);
    }
    EXPECT_EQ(QMX_CountPooledSets(), 2U);
    EXPECT_EQ(&*QMX_ParserSetLease(), first) << "given back first, so it stands in front";
    EXPECT_EQ(&*QMX_ParserSetLease(), second) << "the other one went to the end";
    {
        const QMX_ParserSetLease late;
        EXPECT_EQ(QMX_EndParserPool(), 0);
    }
    EXPECT_EQ(QMX_CountPooledSets(), 0U) << "a set that comes back late is freed";
}

TEST(MacroSymbols, GiveTheirMemoryBackAfterALongOneOrMany) {
    const long before = blocksInUse;
    QMX_SymbolTable symbols;
    for (const int count : {1, 300}) {
        for (int i = 0; i < count; ++i)
            symbols.Enter(std::string(count == 1 ? 1000 : 1, 'x'));
        symbols.Clear();
        symbols.Enter("y"); // in the place of the first
        symbols.Shrink();
        EXPECT_EQ(blocksInUse, before) << count;
    }
}

TEST(ParserErrors, CodesOfTheRuntimeHaveAMessageOfTheirOwn) {
    QMX_ParserSet set;
    set.input.SetText("ab\u00e9z", 5);
    set.input.SetTokenEnd(4);
    EXPECT_EQ(FailureOf([&] { set.error.yy_err_report(0x191); }),
              "QEExceptionExtended 901 0x35da12be(401) @4 Source/QUYyError:293");
}

TEST(MacroBuiltIns, StandInTheOrderOfTheirRegistration) {
    std::string table;
    AQM_MacroValueString noFrame("x");
    for (AQM_I_MacroFunction* const function : QMGetBuiltInFunctions()) {
        EXPECT_FALSE(function->Execute(nullptr) || function->Execute(&noFrame));
        std::vector<int> types{0};
        function->GetParameterTypes(types);
        table += function->GetName().c_str() + std::string("(");
        for (const int type : types)
            table += std::to_string(type);
        table += ")" + std::to_string(function->GetReturnType()) + " ";
    }
    EXPECT_EQ(table, "sq(01)1 dq(01)1 sb(01)1 csv(02)1 array(01)2 sort(02)2 grep(012)2 substitute(0112)2 unique(02)2 "
                     "split(012)2 join(012)1 urlencode(01)1 ");
}

} // namespace
