// The trees that the grammar builds, their walk, and the sets of parser objects that serve one run after the other.
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "AQM_I_MacroExpander.h"
#include "AQM_MacroExpr.h"

#include "QMMacroParserPool.h"
#include "Support/FailureCheck.h"
#include "Support/TreeDump.h"

namespace {

using brindle_test::FailureOf;
using brindle_test::TreeDump;
using Node = AQM_MacroExprNode;

// The dumps of a text's blocks, a blank between two.
std::string TreesOf(const std::string& text) {
    QMX_ParserSet set;
    set.Run(text, EMacroRunMode::expansion);
    std::string trees;
    for (const auto& expression : set.parser.GetExpressions())
        trees += (trees.empty() ? "" : " ") + TreeDump::Of(*expression);
    return trees;
}

std::string Repeated(const std::string& piece, int count) {
    std::string text;
    for (; count > 0; --count)
        text += piece;
    return text;
}

TEST(MacroTree, IsBuiltFromEachRule) {
    const char* const rows[][2] = {
        {"no block", ""},
        {"## # #", "200 200"},
        {"#'a'# #\"\"#", "200(100:a) 200(100:)"},
        {"#$a##@a##%a#", "200(103:a) 200(105:a) 200(104:a)"},
        {"#$[a b]##@[#]##%[a]]b]#", "200(103:a b) 200(105:#) 200(104:a]]b)"},
        {"#$a{'k'}##@[b]{$c}#", "200(202:a(100:k)) 200(203:b(103:c))"},
        {"#$a{@b{%c}+$d{f()}}#", "200(202:a(201(203:b(104:c), 202:d(800:f))))"},
        {"#$a+'b'+$c#", "200(201(201(103:a, 100:b), 103:c))"},
        {"#f()##f('a')##f('a';$b,@c)#", "200(800:f) 200(800:f(100:a)) 200(800:f(105:c, 103:b, 100:a))"},
        {"#f('a'+g($b;%c),h())+'d'#", "200(201(800:f(800:h, 201(100:a, 800:g(104:c, 103:b))), 100:d))"},
        {"# $ a /**/ + //\n f ( 'b' ; @ c { 'k' } ) #", "200(201(103:a, 800:f(203:c(100:k), 100:b)))"},
    };
    for (const auto& [text, trees] : rows)
        EXPECT_EQ(TreesOf(text), trees) << text;
}

// The grammar bounds nesting, but not the length of a list.
TEST(MacroTree, ListsMayBeLongAndNestingIsBounded) {
    constexpr int kArguments = 20000;
    std::string arguments, dump;
    for (int i = 0; i < kArguments; ++i) {
        arguments += (i ? ",'" : "'") + std::to_string(i) + "'";
        dump += (i ? ", 100:" : "100:") + std::to_string(kArguments - 1 - i);
    }
    EXPECT_EQ(TreesOf("#f(" + arguments + ")#"), "200(800:f(" + dump + "))");

    const std::string tooComplex = "QEException 901 0x35d5e2f1(\"text too complex\") Source/QUYyError:76";
    const struct {
        const char *open, *middle, *close;
    } kinds[] = {{"$a{", "''", "}"}, {"@a{", "''", "}"}, {"f(", "", ")"}, {"f('',", "''", ")"}, {"f(''+", "''", ")"}};
    for (const auto& [open, middle, close] : kinds) {
        for (const int depth : {1000, 9000, 1000000}) {
            const std::string text = "#" + Repeated(open, depth) + middle + Repeated(close, depth) + "#";
            QMX_ParserSet set;
            const std::string failure = FailureOf([&] { set.Run(text, EMacroRunMode::expansion); });
            EXPECT_EQ(failure, depth == 1000 ? "nothing thrown" : tooComplex) << open << " " << depth;
        }
    }
}

// Notes the operations of a walk in order: "<" and ">" around it, "[" and "]" around each node.
struct Trace : AQM_I_MacroExprVisitor {
    std::string calls;
    void StartExpression() override { calls += '<'; }
    void EndExpression() override { calls += '>'; }
    void PreVisit(Node*) override { calls += '['; }
    void PostVisit(Node*) override { calls += ']'; }
    void VisitOpExpression(Node*) override { calls += "expr"; }
    void Binary(EMacroOpCode op) override { calls += "binary" + std::to_string(op); }
    void VisitOpLiteral(EMacroOpCode op, const I18NString& text) override { Note("lit", op, text); }
    void VisitOpFunction(Node* node, int count, const I18NString& name) override {
        Note("fn", node->GetOpCode(), name);
        calls += std::to_string(count);
    }
    void VisitOpParameterLookup(EMacroOpCode op, const I18NString& name) override { Note("par", op, name); }
    void VisitOpParameterLookupArray(EMacroOpCode op, const I18NString& name) override { Note("arr", op, name); }
    void VisitOpParameterMapLookup(EMacroOpCode op, const I18NString& name) override { Note("map", op, name); }
    void VisitOpParameterMapLookupArray(EMacroOpCode op, const I18NString& name) override { Note("maparr", op, name); }
    void VisitOpParameterMapRef(EMacroOpCode op, const I18NString& name) override { Note("ref", op, name); }
    void Note(const char* what, EMacroOpCode op, const I18NString& text) {
        calls += what + std::to_string(op) + std::string(text.bytes());
    }
};

std::string TraceOf(Node& node) {
    Trace trace;
    node.Accept(trace);
    return trace.calls;
}

// The operation follows from the code alone, whatever the node's class.
TEST(MacroTree, WalkCallsTheOperationOfTheCode) {
    const std::unique_ptr<AQM_MacroExpr> expression(AQM_MacroExpr::Create());
    EXPECT_EQ(TraceOf(*expression), "<[expr]>");
    I18NString text("t");
    Node* const key = expression->CreateUnaryOp(text, Node::MOC_Literal);
    Node* const nodes[] = {expression->CreateParameterLookup(Node::MOC_None, text),
                           expression->CreateFn(text, {}, Node::MOC_None)};
    for (Node* const node : nodes) {
        const std::pair<int, const char*> rows[] = {
            {0, ""},
            {1, "binary1"},
            {99, "binary99"},
            {100, "lit100t"},
            {101, "binary101"},
            {102, "binary102"},
            {103, "par103t"},
            {104, "ref104t"},
            {105, "arr105t"},
            {106, "binary106"},
            {199, "binary199"},
            {200, "expr"},
            {201, "binary201"},
            {202, "map202t"},
            {203, "maparr203t"},
            {204, "binary204"},
            {799, "binary799"},
            {801, "binary801"},
            {-1, "binary-1"},
            {800, "fn800t0"},
        };
        for (const auto& [code, calls] : rows) {
            node->SetOpCode(static_cast<Node::EMacroOpCode>(code));
            EXPECT_EQ(TraceOf(*node), "<[" + std::string(calls) + "]>") << code;
        }
    }
    Node* const entry = expression->CreateParameterMapLookup(Node::MOC_ParameterMapLookup, text, key);
    expression->AddChild(expression->CreateFn("f", {entry, nodes[0]}, Node::MOC_Function));
    EXPECT_EQ(TraceOf(*expression), "<[[[[lit100t]map202t][fn800t0]fn800f2]expr]>");
    EXPECT_EQ(TraceOf(*entry), "[[lit100t]map202t]") << "a node with a parent has no frame";
}

TEST(MacroTree, LeavesTakeNoChildrenAndChildrenAreAnsweredAsACopy) {
    const std::unique_ptr<AQM_MacroExpr> expression(AQM_MacroExpr::Create());
    I18NString text("t");
    Node* const orphan = expression->CreateUnaryOp(text, Node::MOC_Literal);
    for (Node* const leaf : {expression->CreateUnaryOp(text, Node::MOC_Literal),
                             expression->CreateParameterLookup(Node::MOC_ParameterLookup, text)}) {
        leaf->AddChild(orphan);
        EXPECT_EQ(leaf->GetChildren().size() + (orphan->GetParent() ? 1U : 0U), 0U);
    }
    expression->AddChild(orphan);
    expression->GetChildren().clear();
    EXPECT_EQ(TreeDump::Of(*expression), "200(100:t)");
}

// A concatenation is a tree as deep as it is long.
TEST(MacroTree, DepthCostsNoMachineStack) {
    constexpr int kTerms = 1'000'000;
    QMX_ParserSet set;
    set.Run("#''" + Repeated("+''", kTerms - 1) + "#", EMacroRunMode::expansion);
    struct : AQM_I_MacroExprVisitor {
        int literals = 0, sums = 0;
        void VisitOpLiteral(EMacroOpCode, const I18NString&) override { ++literals; }
        void Binary(EMacroOpCode) override { ++sums; }
    } count;
    set.parser.GetExpressions()[0]->Accept(count);
    EXPECT_EQ(count.literals - count.sums, 1);
    EXPECT_EQ(count.literals, kTerms);
}

// Takes its own pool of sets, which it ends.
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
            EXPECT_TRUE(set->parser.GetExpressions().empty() && set->lexer.GetPositions().empty()) << text;
            EXPECT_TRUE(!set->lexer.GetDocument().IsStarted() && set->errorBuffer.GetContent().empty()) << text;
            EXPECT_EQ(set->error.GetErrorCount() + set->error.GetIsMacro(), 0) << text;
            EXPECT_EQ(set->error.GetPosition(), -1) << text;
            EXPECT_EQ(set->lexer.GetLine(), 1) << text;
            set->Run("#f($x,'y')#", EMacroRunMode::expansion);
            EXPECT_EQ(TreeDump::Of(*set->parser.GetExpressions().at(0)), "200(800:f(100:y, 103:x))") << text;
        }
}

TEST_F(ParserPool, GrowsToTheSetsInUseAtOnceAndGivesOutTheFirst) {
    const QMX_ParserSet *first = nullptr, *second = nullptr;
    {
        const QMX_ParserSetLease outer;
        const QMX_ParserSetLease inner;
        first = &*inner;
        second = &*outer;
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
    EXPECT_EQ(QMX_StartParserPool() + QMX_StartParserPool(), 0);
}

TEST_F(ParserPool, ServesSeveralThreadsAtOnce) {
    std::vector<std::thread> threads;
    std::atomic<int> failures = 0;
    for (int id = 0; id < 4; ++id)
        threads.emplace_back([id, &failures] {
            AQM_I_MacroExpander expander;
            for (int i = 0; i < 200; ++i) {
                const std::string text = std::to_string(id * 1000 + i);
                if (expander.Expand(("<#'" + text + "'#>").c_str(), nullptr) != ("<" + text + ">").c_str()) ++failures;
                if (FailureOf([&] { expander.Expand("#$#", nullptr); }).find("@4 macro") == std::string::npos)
                    ++failures;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_LE(QMX_CountPooledSets(), threads.size());
}

TEST(ParserErrors, StreamAndReportsOfTheRuntimeAreBounded) {
    QMX_ParserSet set;
    const auto print = [&set](const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        set.error.yy_err_vprintf(format, arguments);
        va_end(arguments);
    };
    print("%s", "");
    print("%d %s;", 7, "seven");
    EXPECT_EQ(set.errorBuffer.GetContent(), "7 seven;");
    for (int i = 0; i < 10; ++i)
        print("%s", std::string(20000, 'x').c_str());
    EXPECT_EQ(set.errorBuffer.GetContent().size(), 32768U);
    set.input.SetText("ab\xc3\xa9z", 5);
    set.input.SetTokenEnd(4);
    EXPECT_EQ(FailureOf([&] { set.error.yy_err_report(0x191); }),
              "QEExceptionExtended 901 0x35da12be(401) @4 Source/QUYyError:293");
    EXPECT_EQ(set.error.GetErrorCount(), 1);
}

} // namespace
