// How a query generator builds structured SQL, and the three forms that it gives: SQL for the database, mark-up that a
// browser shows by a style sheet, and a part of an XML document.
//
// Without an argument the program prints all three. With "sql", "markup" or "document" it prints that form alone, to
// the byte: `sqltext markup > page/statement.xml` is a page that a browser can open beside fixformatsql.xsl.
#include <iostream>
#include <memory>
#include <string_view>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "AQE_SqlText.h"

namespace {

using Keyword = AQE_SqlTextKeyword;
using Punctuation = AQE_SqlTextPunctuation;

void AddJoin(AQE_SqlText& text, Keyword::ESqlTextKeyword join, const I18NString& table, const I18NString& left,
             const I18NString& right) {
    text.AddKeyword(join);
    text.AddTable(table);
    text.AddKeyword(Keyword::STK_On);
    text.AddColumn(left);
    text.AddOperator("=");
    text.AddColumn(right);
}

// A call of one argument. Brackets are pieces of their own, since they set the indentation of what is between them.
void AddCall(AQE_SqlText& text, const I18NString& function, const I18NString& argument) {
    text.AddFunction(function);
    text.AddPunctuation(Punctuation::STP_OpeningBracket);
    text.AddColumn(argument);
    text.AddPunctuation(Punctuation::STP_ClosingBracket);
}

// Behind an expression: AS and its name, and the comma that begins the next line.
void AddAlias(AQE_SqlText& text, const I18NString& alias, bool more = true) {
    text.AddKeyword(Keyword::STK_As);
    text.AddColumn(alias);
    if (more) text.AddPunctuation(Punctuation::STP_Comma);
}

// case when sum(t.revenue) < 200 then 'small' else 'large' end
void AddSizeOfCustomer(AQE_SqlText& text) {
    text.AddKeyword(Keyword::STK_Case);
    text.AddKeyword(Keyword::STK_When);
    AddCall(text, "sum", "t.revenue");
    text.AddOperator("<");
    text.AddGeneral("200");
    text.AddKeyword(Keyword::STK_Then);
    text.AddGeneral("'small'");
    text.AddKeyword(Keyword::STK_Else);
    text.AddGeneral("'large'");
    text.AddKeyword(Keyword::STK_End);
}

// rank() over (partition by r.name order by sum(t.revenue) desc nulls last)
void AddRankInRegion(AQE_SqlText& text) {
    text.AddFunction("rank");
    text.AddPunctuation(Punctuation::STP_OpeningBracket);
    text.AddPunctuation(Punctuation::STP_ClosingBracket);
    text.AddKeyword(Keyword::STK_Over);
    text.AddPunctuation(Punctuation::STP_OpeningBracket);
    text.AddKeyword(Keyword::STK_PartitionBy);
    text.AddColumn("r.name");
    text.AddKeyword(Keyword::STK_OrderBy);
    AddCall(text, "sum", "t.revenue");
    text.AddKeyword(Keyword::STK_Desc);
    text.AddKeyword(Keyword::STK_NullsLast);
    text.AddPunctuation(Punctuation::STP_ClosingBracket);
}

// The revenue of each order. As a text named "i" it stands four blanks further in, whatever is around it.
std::unique_ptr<AQE_SqlText> MakeRevenueOfOrders() {
    auto orders = std::make_unique<AQE_SqlText>("i");
    orders->AddKeyword(Keyword::STK_Select);
    orders->AddColumn("l.order_id");
    orders->AddPunctuation(Punctuation::STP_Comma);
    AddCall(*orders, "sum", "l.net_price");
    AddAlias(*orders, "revenue", false);
    orders->AddKeyword(Keyword::STK_From);
    orders->AddTable("order_line l");
    orders->AddKeyword(Keyword::STK_GroupBy);
    orders->AddColumn("l.order_id");
    return orders;
}

// The orders of one year. As a text named "**d**" this is a group to the program alone: neither mark-up nor document
// has an element for it.
std::unique_ptr<AQE_SqlText> MakeYear(const I18NString& year) {
    auto condition = std::make_unique<AQE_SqlText>("**d**");
    condition->AddColumn("o.order_date");
    condition->AddKeyword(Keyword::STK_Between);
    condition->AddGeneral("'" + year + "-01-01'");
    condition->AddKeyword(Keyword::STK_BetweenAnd);
    condition->AddGeneral("'" + year + "-12-31'");
    return condition;
}

void AddColumns(AQE_SqlText& statement) {
    statement.AddKeyword(Keyword::STK_Select);
    statement.AddColumn("r.name");
    AddAlias(statement, "region");
    statement.AddColumn("c.name");
    AddAlias(statement, "customer");
    AddCall(statement, "sum", "t.revenue");
    AddAlias(statement, "revenue");
    AddSizeOfCustomer(statement);
    AddAlias(statement, "size");
    AddRankInRegion(statement);
    AddAlias(statement, "place", false);
}

void AddTables(AQE_SqlText& statement) {
    statement.AddKeyword(Keyword::STK_From);
    statement.AddTable("customer c");
    AddJoin(statement, Keyword::STK_InnerJoin, "region r", "r.region_id", "c.region_id");
    AddJoin(statement, Keyword::STK_InnerJoin, "sales_order o", "o.customer_id", "c.customer_id");
    statement.AddKeyword(Keyword::STK_LeftOuterJoin);
    statement.AddPunctuation(Punctuation::STP_OpeningBracket);
    statement.AddText(MakeRevenueOfOrders().release()); // the statement owns it from here on
    statement.AddPunctuation(Punctuation::STP_ClosingBracket);
    statement.AddTable(" t");
    statement.AddKeyword(Keyword::STK_On);
    statement.AddColumn("t.order_id");
    statement.AddOperator("=");
    statement.AddColumn("o.order_id");
}

void AddConditions(AQE_SqlText& statement) {
    statement.AddKeyword(Keyword::STK_Where);
    statement.AddText(MakeYear("2024").release());
    statement.AddBooleanOperator("and");
    statement.AddColumn("o.status");
    statement.AddKeyword(Keyword::STK_In);
    statement.AddPunctuation(Punctuation::STP_OpeningBracket);
    statement.AddGeneral("'paid'");
    statement.AddPunctuation(Punctuation::STP_Comma);
    statement.AddGeneral("'open'");
    statement.AddPunctuation(Punctuation::STP_ClosingBracket);
    statement.AddBooleanOperator("and");
    statement.AddColumn("c.name");
    statement.AddFunctionKeyword("not like");
    statement.AddGeneral("'Test%'");
}

// What each customer of the example database of Examples/sales bought in 2024, and the customer's place in its region.
AQE_SqlText MakeStatement() {
    // The line of its source at which the query begins goes into the mark-up.
    AQE_SqlText statement("sql", 12);
    AddColumns(statement);
    AddTables(statement);
    AddConditions(statement);
    statement.AddKeyword(Keyword::STK_GroupBy);
    statement.AddColumn("r.name");
    statement.AddPunctuation(Punctuation::STP_Comma);
    statement.AddColumn("c.name");
    statement.AddKeyword(Keyword::STK_OrderBy);
    statement.AddColumn("region");
    statement.AddPunctuation(Punctuation::STP_Comma);
    statement.AddColumn("place");
    return statement;
}

I18NString AsMarkup(AQE_SqlText& statement) {
    I18NString markup;
    statement.StreamToXmlHtml(markup);
    return markup;
}

I18NString AsDocument(AQE_SqlText& statement) {
    ZBLIDOM_Document document =
        ZBLIDOM_DOMImplementation::getInstance().createDocument("", "statements", ZBLIDOM_DocumentType());
    ZBLIDOM_Element root = document.getDocumentElement();
    statement.StreamToXmlDom(document, root);
    return ZBLIDOM_Helper::serialize(document);
}

} // namespace

int main(int argc, char** argv) {
    AQE_SqlText statement = MakeStatement();
    const std::string_view form = argc == 2 ? argv[1] : "";
    if (form == "sql") {
        std::cout << statement.GetText();
    } else if (form == "markup") {
        std::cout << AsMarkup(statement);
    } else if (form == "document") {
        std::cout << AsDocument(statement);
    } else if (argc == 1) {
        std::cout << "-- sql\n"
                  << statement.GetText() << "\n-- markup\n"
                  << AsMarkup(statement) << "\n-- document\n"
                  << AsDocument(statement) << '\n';
    } else {
        std::cerr << "usage: sqltext [sql|markup|document]\n";
        return 2;
    }
    return std::cout.flush() ? 0 : 1;
}
