// Structured SQL: what a query generator fills on its way through a query.
//
//     AQE_SqlText statement("sql");
//     statement.AddKeyword(AQE_SqlTextKeyword::STK_Select);
//     statement.AddColumn("c.name");
//     statement.AddKeyword(AQE_SqlTextKeyword::STK_From);
//     statement.AddTable("customer c");
//     I18NString sql = statement.GetText();
//
// A text holds two things side by side: plain lines, each with an indentation, and a list of pieces, among which other
// texts may stand. A text with pieces renders from these and ignores its lines. The operations whose names end in Mig
// fill both.
//
// The name says what a text is, and is its element in the mark-up and in the document. Four names mean more, written
// exactly so:
//
//     sql      a statement: SQL begins with a version comment, mark-up with the reference to the style sheet
//     pss      SQL begins on a new line, with the indentation that stands there
//     i        SQL is indented by four blanks more
//     **d**    no element of its own: its pieces go straight into the element around it
#pragma once

#include <vector>

#include "Mortise/AUT_RefPtr.h"

#include "AQE_SqlLine.h"
#include "AQE_SqlTextFragment.h"
#include "AQE_SqlTextKeyword.h"
#include "AQE_SqlTextPunctuation.h"
#include "BrindleApi.h"

// Lines and pieces are shared: a copy of a text holds the same lines and pieces as the text itself, and an indentation
// or an append on the one is seen in the other. The handles' counters are plain, so texts that share anything stay on
// one thread.
//
// Rendering changes nothing. How deep texts are nested doesn't matter, to rendering and to destruction; only a class
// derived from this one costs machine stack for each level, since its own operations are called. A text must not stand
// in itself, directly or farther down.
class BRINDLE_API AQE_SqlText : public AQE_SqlTextFragment {
public:
    // The beginnings and ends of plain lines, in small letters and with their blanks: "order by ", " nulls last".
    enum sqlKeyword : int {
        SK_Select = 0,
        SK_Distinct = 1,
        SK_From = 2,
        SK_OrderBy = 3,
        SK_GroupBy = 4,
        SK_PartitionBy = 5,
        SK_Over = 6,
        SK_NullsLast = 7,
        SK_WithinGroup = 8
    };

    AQE_SqlText();
    explicit AQE_SqlText(const I18NString& textName);
    // The line number is an attribute of the element in the mark-up, and nowhere else; 0 is none.
    AQE_SqlText(const I18NString& textName, int number);
    AQE_SqlText(const AQE_SqlText& other);
    AQE_SqlText& operator=(const AQE_SqlText& other);
    ~AQE_SqlText() override;

    ESqlFragementType GetFragmentType() const override;
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    // Leaves `indent` as it is: what brackets inside do to the indentation ends with the text.
    void StreamToSql(I18NString& out, int& indent) override;

    // The SQL of the pieces if there are any. Otherwise the lines, each with its indentation, with a line break between
    // them, none behind the last; but if there is one line alone and its indentation isn't 0, a line break goes before
    // it.
    I18NString GetText();

    // Each appends one new piece.
    void AddBooleanOperator(const I18NString& text);
    void AddColumn(const I18NString& text);
    void AddFunction(const I18NString& text);
    void AddFunctionKeyword(const I18NString& text);
    void AddGeneral(const I18NString& text);
    void AddOperator(const I18NString& text);
    void AddTable(const I18NString& text);
    void AddKeyword(AQE_SqlTextKeyword::ESqlTextKeyword keyword);
    void AddPunctuation(AQE_SqlTextPunctuation::ESqlTextPunctuation punctuation);
    // Takes the child over, also when memory runs out; it is on the heap, and nobody else's. Null and the text itself
    // are ignored.
    void AddText(AQE_SqlText* child);

    // Each appends a line, which becomes the current one. A null handle is ignored.
    void AddLine();
    void AddLine(int indent, const I18NString& text);
    void AddLine(const AUT_RefPtr<AQE_SqlLine>& line);
    // Appends the other's lines, shared with it, and none of its pieces.
    void AddText(const AQE_SqlText& other);
    // The same, but the text of the other's first line goes to the end of the current line.
    void MergeText(const AQE_SqlText& other);
    // At the end of the current line, or in front of the first; either makes a line if there is none. A phrase outside
    // the enumeration is empty.
    void AppendString(const I18NString& text);
    void AppendKeyword(sqlKeyword phrase);
    void PrependString(const I18NString& text);
    // Adds to the indentation of the lines. It may get below zero.
    void Indent(int blanks);
    void IndentNotFirstLine(int blanks);

    // Whether there are no lines; whether there are no pieces.
    bool Empty();
    bool EmptyMig();
    int NumLines() const;

    // Each appends one piece as the operation without Mig does, and the same to the lines: columns, tables and keywords
    // begin a line, but for the keyword AS; all else goes to the end of the current one. An unknown piece of
    // punctuation is "*E*AddPunctuationMig*E*" there.
    void AddBooleanOperatorMig(const I18NString& text);
    void AddColumnMig(const I18NString& text);
    void AddFunctionMig(const I18NString& text);
    void AddFunctionKeywordMig(const I18NString& text);
    void AddGeneralMig(const I18NString& text);
    void AddOperatorMig(const I18NString& text);
    void AddTableMig(const I18NString& text);
    void AddKeywordMig(AQE_SqlTextKeyword::ESqlTextKeyword keyword);
    void AddPunctuationMig(AQE_SqlTextPunctuation::ESqlTextPunctuation punctuation);
    // Appends a copy of the other text as one piece; the lines stay as they are.
    void AddTextMig(const AQE_SqlText& other);

private:
    using Fragments = std::vector<AUT_RefPtr<AQE_SqlTextFragment>>;
    struct SqlForm;
    struct MarkupForm;
    struct DocumentForm;

    template <class Form>
    void Walk(Form form, typename Form::Level level);
    template <class Fragment, class Content>
    void AddFragment(const Content& content);

    std::vector<AUT_RefPtr<AQE_SqlLine>> lines;
    AUT_RefPtr<AQE_SqlLine> currentLine;
    Fragments fragments;
    I18NString name;
    int lineNumber = 0;
};
