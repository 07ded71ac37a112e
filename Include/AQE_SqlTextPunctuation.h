// A bracket or a comma in structured SQL.
#pragma once

#include "AQE_SqlTextFragment.h"
#include "BrindleApi.h"

class BRINDLE_API AQE_SqlTextPunctuation : public AQE_SqlTextFragment {
public:
    enum ESqlTextPunctuation : int { STP_OpeningBracket = 0, STP_ClosingBracket = 1, STP_Comma = 2 };

    // Any value is taken. One outside the enumeration renders as "***badPunctuation***".
    explicit AQE_SqlTextPunctuation(ESqlTextPunctuation value);

    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    // An opening bracket adds 1 to `indent`, a closing one takes 1 away, below zero too. A comma breaks the line.
    void StreamToSql(I18NString& out, int& indent) override;

private:
    const ESqlTextPunctuation punctuation;
};
