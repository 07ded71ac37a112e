// One piece of structured SQL: a keyword, a column, a bracket, or a whole text of pieces. A piece renders itself in
// three forms: SQL with line breaks and indentation, mark-up for a style sheet, and a part of an XML document.
#pragma once

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class ZBLIDOM_Document;
class ZBLIDOM_Element;

// The base of all pieces; it renders to nothing. A piece doesn't change once it is made, so one piece may stand in
// several texts, and it may be rendered on any thread. What is rendered is appended. Nothing here fails but for want of
// memory, with std::length_error when `out` would grow beyond I18NString::kMaxBytes, or with ZBLIDOM_Exception when the
// document refuses the parent, as one of another document; what has been appended by then stays.
class BRINDLE_API AQE_SqlTextFragment {
public:
    // All pieces answer SFT_Fragment, but AQE_SqlText.
    enum ESqlFragementType : int { SFT_Fragment = 0, SFT_Text = 5 };

    virtual ~AQE_SqlTextFragment();

    virtual ESqlFragementType GetFragmentType() const;

    // Mark-up: an element around the piece's text. Nothing is escaped, save an operator that is "<" alone: texts with
    // "<" or "&" give mark-up that is not well-formed.
    virtual void StreamToXmlHtml(I18NString& out);

    // The same element, made by the document and appended to the parent. The text is taken as it is.
    virtual void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent);

    // SQL. A line that the piece begins starts with `indent` blanks, none if it is below zero; brackets change it for
    // the pieces behind them.
    virtual void StreamToSql(I18NString& out, int& indent);
};
