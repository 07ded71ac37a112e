// A keyword in structured SQL, with the line breaks and blanks that go around it.
#pragma once

#include "AQE_SqlTextFragment.h"
#include "BrindleApi.h"

class BRINDLE_API AQE_SqlTextKeyword : public AQE_SqlTextFragment {
public:
    // STK_And stands between conditions and begins a line; STK_BetweenAnd closes a BETWEEN and stays on its line.
    enum ESqlTextKeyword : int {
        STK_And = 0,
        STK_As = 1,
        STK_Asc = 2,
        STK_At = 3,
        STK_Between = 4,
        STK_BetweenAnd = 5,
        STK_Case = 6,
        STK_Desc = 7,
        STK_Else = 8,
        STK_End = 9,
        STK_Except = 10,
        STK_ExceptAll = 11,
        STK_Filter = 12,
        STK_For = 13,
        STK_From = 14,
        STK_FullOuterJoin = 15,
        STK_GroupBy = 16,
        STK_If = 17,
        STK_In = 18,
        STK_InnerJoin = 19,
        STK_Intersect = 20,
        STK_IntersectAll = 21,
        STK_LeftOuterJoin = 22,
        STK_Local = 23,
        STK_NullsLast = 24,
        STK_On = 25,
        STK_OrderBy = 26,
        STK_Over = 27,
        STK_PartitionBy = 28,
        STK_RightOuterJoin = 29,
        STK_Select = 30,
        STK_SelectDistinct = 31,
        STK_Then = 32,
        STK_Top = 33,
        STK_Union = 34,
        STK_UnionAll = 35,
        STK_When = 36,
        STK_Where = 37,
        STK_With = 38,
        STK_WithinGroup = 39
    };

    // What goes before or behind a keyword in SQL.
    enum ESqlSpaceDirective : int {
        SpaceNone = 0,
        SpaceNewLine = 1,       // a line break and the indentation
        SpaceBlank = 2,         // one blank
        SpaceNewLineHanging = 3 // a line break, the indentation and three blanks more
    };

    // Any value is taken. One outside the enumeration renders as "UnknownKeyword" in the mark-up and in the document,
    // and as one blank in SQL.
    explicit AQE_SqlTextKeyword(ESqlTextKeyword value);

    // The keyword in capitals, for the whole life of the process; empty for a value outside the enumeration. Any
    // thread.
    static const I18NString& GetSpelling(ESqlTextKeyword value);

    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    // Behind what the keyword's own spacing asks for there is always one blank more.
    void StreamToSql(I18NString& out, int& indent) override;

private:
    const ESqlTextKeyword keyword;
};
