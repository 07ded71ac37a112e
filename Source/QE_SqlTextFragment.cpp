// The pieces of structured SQL but for the keywords.
#include "AQE_SqlTextFragment.h"

#include "AQE_SqlTextGeneral.h"
#include "AQE_SqlTextPunctuation.h"

#include "QE_SqlTextOutput.h"

using brindle::AppendElement;
using brindle::AppendNewLine;
using brindle::ShiftedIndent;

AQE_SqlTextFragment::~AQE_SqlTextFragment() = default;
AQE_SqlTextFragment::ESqlFragementType AQE_SqlTextFragment::GetFragmentType() const { return SFT_Fragment; }
void AQE_SqlTextFragment::StreamToXmlHtml(I18NString&) {}
void AQE_SqlTextFragment::StreamToXmlDom(ZBLIDOM_Document&, ZBLIDOM_Element&) {}
void AQE_SqlTextFragment::StreamToSql(I18NString&, int&) {}

AQE_SqlTextGeneral::AQE_SqlTextGeneral(const I18NString& fragmentText) : text(fragmentText) {}
void AQE_SqlTextGeneral::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<g>", text.bytes()); }
void AQE_SqlTextGeneral::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "g", text);
}
void AQE_SqlTextGeneral::StreamToSql(I18NString& out, int&) { out.append(text); }

AQE_SqlTextBooleanOperator::AQE_SqlTextBooleanOperator(const I18NString& fragmentText)
    : AQE_SqlTextGeneral(fragmentText) {}
void AQE_SqlTextBooleanOperator::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<bop>", text.bytes()); }
void AQE_SqlTextBooleanOperator::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "bop", text);
}
void AQE_SqlTextBooleanOperator::StreamToSql(I18NString& out, int& indent) {
    AppendNewLine(out, indent);
    out.append(text).append(U' ');
}

AQE_SqlTextColumn::AQE_SqlTextColumn(const I18NString& fragmentText) : AQE_SqlTextGeneral(fragmentText) {}
void AQE_SqlTextColumn::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<d>", text.bytes()); }
void AQE_SqlTextColumn::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "d", text);
}

AQE_SqlTextFunction::AQE_SqlTextFunction(const I18NString& fragmentText) : AQE_SqlTextGeneral(fragmentText) {}
void AQE_SqlTextFunction::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<f>", text.bytes()); }
void AQE_SqlTextFunction::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "f", text);
}

AQE_SqlTextFunctionKeyword::AQE_SqlTextFunctionKeyword(const I18NString& fragmentText)
    : AQE_SqlTextGeneral(fragmentText) {}
void AQE_SqlTextFunctionKeyword::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<fk>", text.bytes()); }
void AQE_SqlTextFunctionKeyword::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "fk", text);
}
void AQE_SqlTextFunctionKeyword::StreamToSql(I18NString& out, int&) { out.append(U' ').append(text).append(U' '); }

AQE_SqlTextOperator::AQE_SqlTextOperator(const I18NString& fragmentText) : AQE_SqlTextGeneral(fragmentText) {}
void AQE_SqlTextOperator::StreamToXmlHtml(I18NString& out) {
    AppendElement(out, "<op>", text == "<" ? "&lt;" : text.bytes());
}
void AQE_SqlTextOperator::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "op", text);
}
void AQE_SqlTextOperator::StreamToSql(I18NString& out, int&) { out.append(U' ').append(text).append(U' '); }

AQE_SqlTextTable::AQE_SqlTextTable(const I18NString& fragmentText) : AQE_SqlTextGeneral(fragmentText) {}
void AQE_SqlTextTable::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<t>", text.bytes()); }
void AQE_SqlTextTable::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "t", text);
}

namespace {

const char* SymbolOf(AQE_SqlTextPunctuation::ESqlTextPunctuation punctuation) {
    switch (punctuation) {
    case AQE_SqlTextPunctuation::STP_OpeningBracket:
        return "(";
    case AQE_SqlTextPunctuation::STP_ClosingBracket:
        return ")";
    case AQE_SqlTextPunctuation::STP_Comma:
        return ",";
    }
    return "***badPunctuation***";
}

} // namespace

AQE_SqlTextPunctuation::AQE_SqlTextPunctuation(ESqlTextPunctuation value) : punctuation(value) {}
void AQE_SqlTextPunctuation::StreamToXmlHtml(I18NString& out) { AppendElement(out, "<p>", SymbolOf(punctuation)); }
void AQE_SqlTextPunctuation::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    AppendElement(document, parent, "p", SymbolOf(punctuation));
}
void AQE_SqlTextPunctuation::StreamToSql(I18NString& out, int& indent) {
    out.appendAscii(SymbolOf(punctuation));
    if (punctuation == STP_OpeningBracket) indent = ShiftedIndent(indent, 1);
    if (punctuation == STP_ClosingBracket) indent = ShiftedIndent(indent, -1);
    if (punctuation == STP_Comma) AppendNewLine(out, indent);
}
