// Structured SQL: each piece in its three forms, what the names of texts do, lines and their sharing, deep texts.
#include <climits>
#include <memory>
#include <new>
#include <random>
#include <regex>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQE_SqlText.h"
#include "AQE_SqlTextGeneral.h"

#include "Support/FailingHeap.h"

namespace {

using Fragment = std::shared_ptr<AQE_SqlTextFragment>;

// All three operations append: what stands there before is seen to stay.
std::string Sql(AQE_SqlTextFragment& fragment, int& indent) {
    I18NString out = "§";
    fragment.StreamToSql(out, indent);
    return std::string(out.bytes());
}

std::string Markup(AQE_SqlTextFragment& fragment) {
    I18NString out = "§";
    fragment.StreamToXmlHtml(out);
    return std::string(out.bytes());
}

std::string Document(AQE_SqlTextFragment& fragment) {
    ZBLIDOM_Document document = ZBLIDOM_DOMImplementation::getInstance().createDocument("", "r", {});
    ZBLIDOM_Element root = document.getDocumentElement();
    root.appendChild(document.createTextNode("§"));
    fragment.StreamToXmlDom(document, root);
    const std::string xml(ZBLIDOM_Helper::serialize(root).bytes());
    return xml.substr(3, xml.size() - 7);
}

auto KeywordOf(int value) { return static_cast<AQE_SqlTextKeyword::ESqlTextKeyword>(value); }
auto PunctuationOf(int value) { return static_cast<AQE_SqlTextPunctuation::ESqlTextPunctuation>(value); }
Fragment Keyword(int value) { return std::make_shared<AQE_SqlTextKeyword>(KeywordOf(value)); }
Fragment Punctuation(int value) { return std::make_shared<AQE_SqlTextPunctuation>(PunctuationOf(value)); }

template <class Class>
Fragment Of(const char* text) {
    return std::make_shared<Class>(text);
}

TEST(SqlFragments, RenderInThreeForms) {
    struct Row {
        Fragment fragment;
        int indent;
        std::string sql;
        int indentBehind;
        std::string markup, document = markup;
    } const rows[] = {
        {Of<AQE_SqlTextGeneral>("a<b"), 2, "a<b", 2, "<g>a<b</g>", "<g>a&lt;b</g>"},
        {Of<AQE_SqlTextBooleanOperator>("or"), 200, "\n" + std::string(200, ' ') + "or ", 200, "<bop>or</bop>"},
        {Of<AQE_SqlTextColumn>("Größe"), 2, "Größe", 2, "<d>Größe</d>"},
        {Of<AQE_SqlTextFunction>("max"), 2, "max", 2, "<f>max</f>"},
        {Of<AQE_SqlTextFunctionKeyword>("from"), 2, " from ", 2, "<fk>from</fk>"},
        {Of<AQE_SqlTextTable>("a&b"), 2, "a&b", 2, "<t>a&b</t>", "<t>a&amp;b</t>"},
        {Of<AQE_SqlTextOperator>("<"), 2, " < ", 2, "<op>&lt;</op>"},
        {Of<AQE_SqlTextOperator>("<="), 2, " <= ", 2, "<op><=</op>", "<op>&lt;=</op>"},
        {Punctuation(0), INT_MAX, "(", INT_MIN, "<p>(</p>"},
        {Punctuation(0), -1, "(", 0, "<p>(</p>"},
        {Punctuation(1), 0, ")", -1, "<p>)</p>"},
        {Punctuation(1), INT_MIN, ")", INT_MAX, "<p>)</p>"},
        {Punctuation(2), 3, ",\n   ", 3, "<p>,</p>"},
        {Punctuation(2), -3, ",\n", -3, "<p>,</p>"},
        {Punctuation(3), 3, "***badPunctuation***", 3, "<p>***badPunctuation***</p>"},
        {Keyword(38), 2, "WITH  ", 2, "<k>WITH</k>"},
        {Keyword(18), 4, " IN\n        ", 4, "<k>IN</k>"},
        {Keyword(18), -2, " IN\n  ", -2, "<k>IN</k>"},
        {Keyword(40), 2, " ", 2, "<k>UnknownKeyword</k>"},
        {std::make_shared<AQE_SqlLine>(2, "x"), 2, "", 2, ""},
    };
    for (const Row& row : rows) {
        int indent = row.indent;
        EXPECT_EQ(Sql(*row.fragment, indent), "§" + row.sql) << row.markup << " at " << row.indent;
        EXPECT_EQ(indent, row.indentBehind) << row.markup;
        EXPECT_EQ(Markup(*row.fragment), "§" + row.markup);
        EXPECT_EQ(Document(*row.fragment), "§" + row.document);
    }
}

TEST(SqlFragments, KeywordsHaveTheirSpacing) {
    I18NString rendered;
    for (int value = 0, indent = 1; value <= 40; ++value, rendered.append("|"))
        Keyword(value)->StreamToSql(rendered, indent);
    EXPECT_EQ(
        rendered.bytes(),
        "\n AND  | AS  | ASC  |\n AT  | BETWEEN  | AND  |\n CASE  | DESC  |\n ELSE  |\n END |\n EXCEPT\n  |"
        "\n EXCEPT ALL\n  |\n FILTER  |\n FOR  |\n FROM  |\n FULL OUTER JOIN\n  |\n GROUP BY  |\n IF  | IN\n     |"
        "\n INNER JOIN\n  |\n INTERSECT\n  |\n INTERSECT ALL\n  |\n LEFT OUTER JOIN\n  | LOCAL | NULLS LAST |"
        "\n ON  |\n ORDER BY  |\n OVER  |\n PARTITION BY  |\n RIGHT OUTER JOIN\n  |\n SELECT  |\n SELECT DISTINCT"
        "\n  | THEN  | TOP  |\n UNION\n  |\n UNION ALL\n  |\n WHEN  |\n WHERE  |WITH  |\n WITHIN GROUP | |");
    EXPECT_EQ(AQE_SqlTextKeyword::GetSpelling(KeywordOf(39)), "WITHIN GROUP");
    EXPECT_TRUE(AQE_SqlTextKeyword::GetSpelling(KeywordOf(-1)).empty());
}

TEST(SqlTexts, NamesDecideHowTheyRender) {
    struct Loud : AQE_SqlText { // one that renders in its own way
        void StreamToSql(I18NString& out, int&) override { out.append("g"); }
    };
    const char* const rows[][5] = {
        {"", "x", ",\n((,\n  ,\n g", "<>", "</>"},
        {"sql", "i", "/* version 1.1 */\n,\n((,\n      ,\n g",
         "<?xml-stylesheet type=\"text/xsl\" href=\".\\fixformatsql.xsl\"?>\n<sql line=\"-7\">", "</sql>"},
        {"**d**", "pss", ",\n(\n (,\n  ,\n g", "", ""},
        {"SQL", "I", ",\n((,\n  ,\n g", "<SQL line=\"-7\">", "</SQL>"},
    };
    for (const auto& [name, childName, sql, opening, closing] : rows) {
        AQE_SqlText text(name, *name ? -7 : 0);
        AQE_SqlText* const child = new AQE_SqlText(childName);
        text.AddPunctuationMig(PunctuationOf(2)); // its line doesn't count beside pieces
        text.AddPunctuation(PunctuationOf(0));
        text.AddText(child);
        child->AddPunctuation(PunctuationOf(0)); // not closed: it ends with the child
        child->AddPunctuation(PunctuationOf(2));
        text.AddPunctuation(PunctuationOf(2));
        text.AddText(new Loud);
        EXPECT_EQ(text.GetText().bytes(), sql);
        const std::string inner = "<" + std::string(childName) + "><p>(</p><p>,</p></" + childName + ">";
        EXPECT_EQ(Markup(text), std::string("§") + opening + "<p>,</p><p>(</p>" + inner + "<p>,</p><></>" + closing);
        int indent = -1;
        Sql(text, indent);
        EXPECT_EQ(indent, -1);
    }
}

TEST(SqlLines, RenderWithTheirIndentation) {
    AQE_SqlText text;
    EXPECT_EQ(text.GetText(), "");
    text.PrependString("x");
    EXPECT_EQ(text.GetText(), "x");
    text.Indent(-1);
    EXPECT_EQ(text.GetText(), "\nx");
    text.Indent(3);
    EXPECT_EQ(text.GetText(), "\n  x") << "one line with an indentation begins with a line break";
    text.AddLine(-1, "b");
    for (int phrase = -1; phrase <= 9; ++phrase)
        text.AppendKeyword(static_cast<AQE_SqlText::sqlKeyword>(phrase));
    text.PrependString("<");
    const I18NString phrases = "select distinct from order by group by partition by  over  nulls last within group ";
    EXPECT_EQ(text.GetText(), "  <x\nb" + phrases);
    for (const int blanks : {INT_MAX, INT_MIN, -1}) // -2 in all
        text.Indent(blanks);
    text.IndentNotFirstLine(4);
    EXPECT_EQ(text.GetText(), "<x\n b" + phrases) << "the indentation had got below zero";
    text.AddLine();
    text.AddLine(AUT_RefPtr<AQE_SqlLine>());
    EXPECT_TRUE(text.NumLines() == 3 && text.EmptyMig() && !text.Empty());
}

TEST(SqlLines, AreSharedByCopiesAndMerges) {
    AQE_SqlText text("n", 3), assigned, merged, empty, one;
    one.AddLine(0, "0");
    text.AddLine(0, "a");
    text.AddLine(1, "b");
    AQE_SqlText copy(text);
    assigned = text;
    merged.MergeText(empty);
    EXPECT_TRUE(merged.Empty());
    merged.MergeText(one);
    merged.MergeText(text); // "a" is appended, so copied; "b" is shared
    copy.Indent(2);
    assigned.AppendString("!");
    EXPECT_EQ(text.GetText(), "  a\n   b!");
    EXPECT_EQ(assigned.GetText(), "  a\n   b!");
    EXPECT_EQ(merged.GetText(), "0a\n   b!");
    EXPECT_EQ(Markup(assigned), "§<n line=\"3\"></n>");

    auto piece = std::make_unique<AQE_SqlText>(text);
    brindle_test::allocationsLeft = 0;
    text = *&text;                                               // needs no memory
    EXPECT_THROW(text.AddText(piece.release()), std::bad_alloc); // and has freed the piece

    text.MergeText(text);
    EXPECT_EQ(text.GetText(), "  a\n   b!a\n   b!a") << "the last line is the second one once more";
    text.AddText(text);
    text.AddText(&text);
    text.AddText(static_cast<AQE_SqlText*>(nullptr));
    EXPECT_TRUE(text.NumLines() == 6 && text.EmptyMig());
}

TEST(SqlLines, AreFilledBesideThePieces) {
    AQE_SqlText text, inner("**d**"), linesOnly;
    inner.AddGeneralMig("1");
    text.AddKeywordMig(KeywordOf(30));
    text.AddColumnMig("c");
    text.AddKeywordMig(KeywordOf(1));
    text.AddGeneralMig("d");
    text.AddBooleanOperatorMig("or");
    text.AddOperatorMig("<");
    text.AddFunctionMig("f");
    for (const int value : {0, 1, 2, 3})
        text.AddPunctuationMig(PunctuationOf(value));
    text.AddFunctionKeywordMig("for");
    text.AddTextMig(inner);
    inner.AddGeneral("2"); // not in the copy any more
    text.AddKeywordMig(KeywordOf(40));
    text.AddTableMig("t");
    linesOnly.AddText(text);
    EXPECT_EQ(linesOnly.GetText(), "SELECT \nc AS d or  < f(),*E*AddPunctuationMig*E* for \n \nt");
    EXPECT_EQ(Markup(text),
              "§<><k>SELECT</k><d>c</d><k>AS</k><g>d</g><bop>or</bop><op>&lt;</op><f>f</f><p>(</p><p>)</p>"
              "<p>,</p><p>***badPunctuation***</p><fk>for</fk><g>1</g><k>UnknownKeyword</k><t>t</t></>");
}

TEST(SqlTexts, TheThreeFormsHoldTheSame) {
    constexpr const char* words[] = {"a", "Größe", "'x y'", "=", "(,)", "", "i", "pss", "**d**", "SQL"};
    const std::regex tagOrBlank("<[^>]*>|[ \n]");
    for (unsigned seed = 1; seed <= 200; ++seed) {
        std::mt19937 random(seed);
        AQE_SqlText text("x");
        std::vector<AQE_SqlText*> texts{&text};
        for (int count = 0; count < 200; ++count) {
            AQE_SqlText& into = *texts[random() % texts.size()];
            const int kind = static_cast<int>(random() % 9), value = static_cast<int>(random() % 40);
            if (kind < 4) into.AddGeneral(words[value % 10]);
            if (kind == 4) into.AddBooleanOperator(words[value % 10]);
            if (kind == 5) into.AddOperator(words[value % 10]);
            if (kind == 6) into.AddKeyword(KeywordOf(value));
            if (kind == 7) into.AddPunctuation(PunctuationOf(value % 4));
            if (kind < 8) continue;
            texts.push_back(new AQE_SqlText(words[5 + value % 5]));
            texts.back()->AddGeneral("not empty, which an XML document would show");
            into.AddText(texts.back());
        }
        const std::string sql = "§" + std::string(text.GetText().bytes());
        EXPECT_EQ(std::regex_replace(Markup(text), tagOrBlank, ""), std::regex_replace(sql, tagOrBlank, "")) << seed;
        EXPECT_EQ(Markup(text), Document(text)) << seed;
    }
}

TEST(SqlTexts, NestAsDeepAsTheyLike) {
    constexpr std::size_t depth = 200'000;
    auto text = std::make_unique<AQE_SqlText>("x");
    for (std::size_t level = 0; level < depth; ++level) {
        auto around = std::make_unique<AQE_SqlText>("y");
        around->AddGeneral("a");
        around->AddText(text.release());
        around->AddText(new AQE_SqlText("**d**"));
        around->AddGeneral("b");
        text = std::move(around);
    }
    AQE_SqlText shared(*text);
    text.reset();
    EXPECT_EQ(shared.GetText().bytes(), std::string(depth, 'a') + std::string(depth, 'b'));
    EXPECT_EQ(Markup(shared).size(),
              std::string("§<x></x>").size() + depth * std::string("<y><g>a</g><g>b</g></y>").size());
    EXPECT_EQ(Document(shared).size(), Markup(shared).size() - 3) << "<x/> in place of <x></x>";
    AQE_SqlText* const child = new AQE_SqlText("z");
    child->AddText(new AQE_SqlText(shared));
    shared.AddText(child);
    shared = *child; // which goes with the former pieces
    EXPECT_TRUE(shared.Empty() && !shared.EmptyMig()) << "pieces, but no lines";
    EXPECT_EQ(Markup(shared).substr(0, 11), "§<z><y><g>");
}

} // namespace
