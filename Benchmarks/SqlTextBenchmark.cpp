// Structured SQL rendered to one text, beside the same pieces appended to one std::string that was reserved beforehand.
//
// The text is one statement of 40 fragments, a subquery in brackets among them, joined to itself by UNION ALL; its
// names differ from one to the next. The peer has one string for each fragment, spacing included. Both have what they
// need in memory: building the fragments is outside the time, as making the pieces is.
#include <array>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "AQE_SqlText.h"
#include "AQE_SqlTextGeneral.h"

#include "Inputs.h"
#include "RunBenchmarks.h"

namespace brindle_benchmark {
namespace {

using Keyword = AQE_SqlTextKeyword;
using Punctuation = AQE_SqlTextPunctuation;

// Puts fragments into a text and, rendered one by one, into a list of pieces.
class Builder {
public:
    Builder(AQE_SqlText& text, int indent, std::vector<std::string>& pieces)
        : m_text(text), m_indent(indent), m_pieces(pieces) {}

    int GetIndent() const { return m_indent; }

    void Add(Keyword::ESqlTextKeyword keyword) {
        m_text.AddKeyword(keyword);
        Record(Keyword(keyword));
    }
    void Add(Punctuation::ESqlTextPunctuation punctuation) {
        m_text.AddPunctuation(punctuation);
        Record(Punctuation(punctuation));
    }
    void Column(const std::string& name) {
        m_text.AddColumn(ToText(name));
        Record(AQE_SqlTextColumn(ToText(name)));
    }
    void Table(const std::string& name) {
        m_text.AddTable(ToText(name));
        Record(AQE_SqlTextTable(ToText(name)));
    }
    void Function(const char* name) {
        m_text.AddFunction(name);
        Record(AQE_SqlTextFunction(name));
    }
    void Operator(const char* name) {
        m_text.AddOperator(name);
        Record(AQE_SqlTextOperator(name));
    }
    void BooleanOperator(const char* name) {
        m_text.AddBooleanOperator(name);
        Record(AQE_SqlTextBooleanOperator(name));
    }
    void General(const char* text) {
        m_text.AddGeneral(text);
        Record(AQE_SqlTextGeneral(text));
    }

private:
    void Record(AQE_SqlTextFragment&& fragment) {
        I18NString piece;
        fragment.StreamToSql(piece, m_indent);
        m_pieces.emplace_back(piece.bytes());
    }

    AQE_SqlText& m_text;
    int m_indent;
    std::vector<std::string>& m_pieces;
};

void AddSubquery(AQE_SqlText& text, int indent, const std::string& number, std::vector<std::string>& pieces) {
    auto subquery = std::make_unique<AQE_SqlText>("i");
    Builder builder(*subquery, indent + 4, pieces);
    builder.Add(Keyword::STK_Select);
    builder.Column("s.customer_id");
    builder.Add(Keyword::STK_From);
    builder.Table("shipment_" + number + " s");
    builder.Add(Keyword::STK_Where);
    builder.Column("s.quantity");
    builder.Operator(">");
    builder.General("10");
    text.AddText(subquery.release());
}

void AddStatement(AQE_SqlText& text, const std::string& number, std::vector<std::string>& pieces) {
    Builder builder(text, 0, pieces);
    builder.Add(Keyword::STK_Select);
    builder.Column("o.customer_id");
    builder.Add(Keyword::STK_As);
    builder.Column("customer_" + number);
    builder.Add(Punctuation::STP_Comma);
    builder.Function("sum");
    builder.Add(Punctuation::STP_OpeningBracket);
    builder.Column("o.amount");
    builder.Operator("*");
    builder.Column("o.exchange_rate_of_day");
    builder.Add(Punctuation::STP_ClosingBracket);
    builder.Add(Keyword::STK_From);
    builder.Table("sales_order_" + number + " o");
    builder.Add(Keyword::STK_Where);
    builder.Column("o.country");
    builder.Operator("=");
    builder.General("'DE'");
    builder.BooleanOperator("and");
    builder.Column("o.status");
    builder.Operator("<>");
    builder.General("'cancelled'");
    builder.BooleanOperator("and");
    builder.Column("o.customer_id");
    builder.Add(Keyword::STK_In);
    builder.Add(Punctuation::STP_OpeningBracket);
    AddSubquery(text, builder.GetIndent(), number, pieces);
    builder.Add(Punctuation::STP_ClosingBracket);
    builder.Add(Keyword::STK_GroupBy);
    builder.Column("o.customer_id");
    builder.Add(Keyword::STK_UnionAll);
}

constexpr std::size_t kFragmentsOfStatement = 40;

struct Input {
    AQE_SqlText text;
    std::vector<std::string> pieces;
    std::size_t byteCount = 0;
};

std::string AppendPieces(const Input& input) {
    std::string result;
    result.reserve(input.byteCount);
    for (const std::string& piece : input.pieces)
        result.append(piece);
    return result;
}

std::shared_ptr<Input> MakeInput(std::size_t fragments) {
    auto input = std::make_shared<Input>();
    for (std::size_t made = 0; made < fragments; made += kFragmentsOfStatement)
        AddStatement(input->text, std::to_string(made), input->pieces);
    for (const std::string& piece : input->pieces)
        input->byteCount += piece.size();
    RequireSame("sqltext", input->text.GetText().bytes(), AppendPieces(*input));
    return input;
}

void RegisterRuns() {
    for (const std::size_t fragments : std::array<std::size_t, 3>{500'000, 1'000'000, 2'000'000}) {
        const std::shared_ptr<Input> input = MakeInput(fragments);
        const std::string size = "/" + std::to_string(fragments);
        benchmark::RegisterBenchmark(("sqltext/brindle" + size).c_str(), [=](benchmark::State& state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(input->text.GetText());
        });
        benchmark::RegisterBenchmark(("sqltext/std string" + size).c_str(), [=](benchmark::State& state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(AppendPieces(*input));
        });
    }
}

} // namespace
} // namespace brindle_benchmark

int main(int argc, char** argv) {
    return brindle_benchmark::RunBenchmarks(argc, argv, [](std::string_view) { brindle_benchmark::RegisterRuns(); });
}
