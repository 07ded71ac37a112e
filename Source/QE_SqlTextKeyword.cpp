// The keywords, and how they are set into SQL.
#include "AQE_SqlTextKeyword.h"

#include <array>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string_view>

#include "QE_SqlTextOutput.h"

namespace {

using Keyword = AQE_SqlTextKeyword;

struct KeywordRow {
    std::string_view spelling;
    Keyword::ESqlSpaceDirective before;
    Keyword::ESqlSpaceDirective behind;
};

constexpr KeywordRow kRows[] = {
    {"AND", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"AS", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"ASC", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"AT", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"BETWEEN", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"AND", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"CASE", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"DESC", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"ELSE", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"END", Keyword::SpaceNewLine, Keyword::SpaceNone},
    {"EXCEPT", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"EXCEPT ALL", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"FILTER", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"FOR", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"FROM", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"FULL OUTER JOIN", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"GROUP BY", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"IF", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"IN", Keyword::SpaceBlank, Keyword::SpaceNewLineHanging},
    {"INNER JOIN", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"INTERSECT", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"INTERSECT ALL", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"LEFT OUTER JOIN", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"LOCAL", Keyword::SpaceBlank, Keyword::SpaceNone},
    {"NULLS LAST", Keyword::SpaceBlank, Keyword::SpaceNone},
    {"ON", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"ORDER BY", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"OVER", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"PARTITION BY", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"RIGHT OUTER JOIN", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"SELECT", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"SELECT DISTINCT", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"THEN", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"TOP", Keyword::SpaceBlank, Keyword::SpaceBlank},
    {"UNION", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"UNION ALL", Keyword::SpaceNewLine, Keyword::SpaceNewLine},
    {"WHEN", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"WHERE", Keyword::SpaceNewLine, Keyword::SpaceBlank},
    {"WITH", Keyword::SpaceNone, Keyword::SpaceBlank},
    {"WITHIN GROUP", Keyword::SpaceNewLine, Keyword::SpaceNone},
};
constexpr std::size_t kRowCount = std::size(kRows);
static_assert(kRowCount == Keyword::STK_WithinGroup + 1);

// Null for a value outside the enumeration.
const KeywordRow* RowOf(Keyword::ESqlTextKeyword value) {
    return static_cast<std::size_t>(value) < kRowCount ? &kRows[value] : nullptr;
}

void AppendSpace(I18NString& out, Keyword::ESqlSpaceDirective space, int indent) {
    constexpr long kHanging = 3;
    switch (space) {
    case Keyword::SpaceNone:
        return;
    case Keyword::SpaceNewLine:
        return brindle::AppendNewLine(out, indent);
    case Keyword::SpaceBlank:
        out.append(U' ');
        return;
    case Keyword::SpaceNewLineHanging:
        return brindle::AppendNewLine(out, indent + kHanging);
    }
    out.appendAscii("*E*unknownSpaceDirective*E*");
}

using Spellings = std::array<I18NString, kRowCount + 1>;

// Never freed: a text may be rendered while the process ends.
const Spellings& GetSpellings() {
    static const Spellings* const spellings = [] {
        auto filled = std::make_unique<Spellings>();
        for (std::size_t i = 0; i < kRowCount; ++i)
            (*filled)[i] = I18NString(kRows[i].spelling);
        return filled.release();
    }();
    return *spellings;
}

} // namespace

AQE_SqlTextKeyword::AQE_SqlTextKeyword(ESqlTextKeyword value) : keyword(value) {}

const I18NString& AQE_SqlTextKeyword::GetSpelling(ESqlTextKeyword value) {
    return GetSpellings()[RowOf(value) ? static_cast<std::size_t>(value) : kRowCount];
}

void AQE_SqlTextKeyword::StreamToXmlHtml(I18NString& out) {
    const KeywordRow* const row = RowOf(keyword);
    brindle::AppendElement(out, "<k>", row ? row->spelling : "UnknownKeyword");
}

void AQE_SqlTextKeyword::StreamToXmlDom(ZBLIDOM_Document& document, ZBLIDOM_Element& parent) {
    brindle::AppendElement(document, parent, "k", RowOf(keyword) ? GetSpelling(keyword) : "UnknownKeyword");
}

void AQE_SqlTextKeyword::StreamToSql(I18NString& out, int& indent) {
    if (const KeywordRow* const row = RowOf(keyword)) {
        AppendSpace(out, row->before, indent);
        out.appendAscii(row->spelling);
        AppendSpace(out, row->behind, indent);
    }
    out.append(U' ');
}
