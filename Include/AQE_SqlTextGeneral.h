// The pieces of structured SQL that hold a text of the caller. They differ in how they render only:
//
//     class                         element   as SQL
//     AQE_SqlTextGeneral            g         the text
//     AQE_SqlTextColumn             d         the text
//     AQE_SqlTextFunction           f         the text
//     AQE_SqlTextTable              t         the text
//     AQE_SqlTextFunctionKeyword    fk        the text between two blanks
//     AQE_SqlTextOperator           op        the text between two blanks
//     AQE_SqlTextBooleanOperator    bop       on a new line, a blank behind it
#pragma once

#include "AQE_SqlTextFragment.h"
#include "BrindleApi.h"

class BRINDLE_API AQE_SqlTextGeneral : public AQE_SqlTextFragment {
public:
    explicit AQE_SqlTextGeneral(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    void StreamToSql(I18NString& out, int& indent) override;

protected:
    const I18NString text;
};

class BRINDLE_API AQE_SqlTextBooleanOperator : public AQE_SqlTextGeneral {
public:
    explicit AQE_SqlTextBooleanOperator(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    void StreamToSql(I18NString& out, int& indent) override;
};

class BRINDLE_API AQE_SqlTextColumn : public AQE_SqlTextGeneral {
public:
    explicit AQE_SqlTextColumn(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
};

class BRINDLE_API AQE_SqlTextFunction : public AQE_SqlTextGeneral {
public:
    explicit AQE_SqlTextFunction(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
};

class BRINDLE_API AQE_SqlTextFunctionKeyword : public AQE_SqlTextGeneral {
public:
    explicit AQE_SqlTextFunctionKeyword(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    void StreamToSql(I18NString& out, int& indent) override;
};

// In the mark-up the operator "<" becomes "&lt;"; longer ones, as "<=", stay as they are.
class BRINDLE_API AQE_SqlTextOperator : public AQE_SqlTextGeneral {
public:
    explicit AQE_SqlTextOperator(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
    void StreamToSql(I18NString& out, int& indent) override;
};

class BRINDLE_API AQE_SqlTextTable : public AQE_SqlTextGeneral {
public:
    explicit AQE_SqlTextTable(const I18NString& fragmentText);
    void StreamToXmlHtml(I18NString& out) override;
    void StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) override;
};
