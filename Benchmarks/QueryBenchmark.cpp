// 2 KB of SQL with eight sites: three parameters, two quoted ones, a quoted list of twenty, a lookup in a map and a
// text that is split and joined again.
//
// ctemplate reaches the same text in two ways. With sections its lists are dictionaries of their own, put between
// separators, and the program splits the text. With modifiers a list is one value, joined by the program with a byte
// that none of its parts holds, which a modifier takes apart again.
#include "ExpanderBenchmarks.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>
#include <ctemplate/per_expand_data.h>
#include <ctemplate/template.h>
#include <ctemplate/template_dictionary.h>
#include <ctemplate/template_emitter.h>
#include <ctemplate/template_modifiers.h>
#include <nlohmann/json.hpp>

#include "AQM_I_MacroExpander.h"
#include "AQU_ParameterMapApp.h"

#include "Inputs.h"

namespace brindle_benchmark {
namespace {

constexpr char kListSeparator = '\x1f';

// What the query is filled with, as its caller has it.
struct QueryValues {
    std::string schema, orderSchema, limit, country, status, conditions, closedOrders;
    std::vector<std::string> groups;
};

QueryValues ReadValues() {
    const auto file = nlohmann::json::parse(ReadInput("query.json"));
    const auto& names = file.at("_env");
    return {.schema = names.at("schema"),
            .orderSchema = names.at("schema_of_orders"),
            .limit = names.at("limit"),
            .country = names.at("country"),
            .status = names.at("status"),
            .conditions = names.at("conditions"),
            .closedOrders = file.at("order_tables").at("closed"),
            .groups = names.at("groups")};
}

I18NString ExpandWithBrindle(const std::string& query, const QueryValues& values) {
    AQU_ParameterMapApp parameters("_env", 0);
    parameters.Set("schema", ToText(values.schema));
    parameters.Set("schema_of_orders", ToText(values.orderSchema));
    parameters.Set("limit", ToText(values.limit));
    parameters.Set("country", ToText(values.country));
    parameters.Set("status", ToText(values.status));
    parameters.Set("conditions", ToText(values.conditions));
    for (const std::string& group : values.groups)
        parameters.Set("groups", ToText(group));
    AQU_ParameterMapApp tables("order_tables", 0);
    tables.Set("order_tables", "closed", ToText(values.closedOrders));
    const std::unique_ptr<AQU_I_ParameterAccessCoordinator> coordinator(AQU_I_ParameterAccessCoordinator::Create());
    coordinator->AddParameterMap(&parameters);
    coordinator->AddParameterMap(&tables);
    AQM_I_MacroExpander expander;
    return expander.Expand(ToText(query), coordinator.get());
}

void EmitQuoted(std::string_view text, ctemplate::ExpandEmitter* out) {
    out->Emit('\'');
    for (std::size_t quote; (quote = text.find('\'')) != std::string_view::npos; text.remove_prefix(quote + 1)) {
        out->Emit(text.data(), quote + 1);
        out->Emit('\'');
    }
    out->Emit(text.data(), text.size());
    out->Emit('\'');
}

// Calls `emit` for each part of a text and puts `between` between their outputs.
template <class Emit>
void EmitParts(std::string_view text, char separator, std::string_view between, ctemplate::ExpandEmitter* out,
               Emit emit) {
    for (std::size_t end; (end = text.find(separator)) != std::string_view::npos; text.remove_prefix(end + 1)) {
        emit(text.substr(0, end));
        out->Emit(between.data(), between.size());
    }
    emit(text);
}

class QuoteModifier : public ctemplate::TemplateModifier {
public:
    void Modify(const char* text, std::size_t size, const ctemplate::PerExpandData*, ctemplate::ExpandEmitter* out,
                const std::string&) const override {
        EmitQuoted({text, size}, out);
    }
};

class QuotedListModifier : public ctemplate::TemplateModifier {
public:
    void Modify(const char* text, std::size_t size, const ctemplate::PerExpandData*, ctemplate::ExpandEmitter* out,
                const std::string&) const override {
        EmitParts({text, size}, kListSeparator, ",", out, [out](std::string_view part) { EmitQuoted(part, out); });
    }
};

class ConditionsModifier : public ctemplate::TemplateModifier {
public:
    void Modify(const char* text, std::size_t size, const ctemplate::PerExpandData*, ctemplate::ExpandEmitter* out,
                const std::string&) const override {
        EmitParts({text, size}, ';', " or ", out,
                  [out](std::string_view part) { out->Emit(part.data(), part.size()); });
    }
};

void AddModifiers() {
    static QuoteModifier quote;
    static QuotedListModifier quotedList;
    static ConditionsModifier conditions;
    ctemplate::AddModifier("x-sq", &quote);
    ctemplate::AddModifier("x-csv", &quotedList);
    ctemplate::AddModifier("x-conditions", &conditions);
}

void SetSingleValues(const QueryValues& values, ctemplate::TemplateDictionary& dictionary) {
    dictionary.SetValue("schema", values.schema);
    dictionary.SetValue("schema_of_orders", values.orderSchema);
    dictionary.SetValue("limit", values.limit);
    dictionary.SetValue("country", values.country);
    dictionary.SetValue("status", values.status);
    dictionary.SetValue("closed_orders", values.closedOrders);
}

std::string ExpandTemplate(const std::string& text, const ctemplate::TemplateDictionary& dictionary) {
    const std::unique_ptr<ctemplate::Template> parsed(
        ctemplate::Template::StringToTemplate(text, ctemplate::DO_NOT_STRIP));
    std::string result;
    parsed->Expand(&result, &dictionary);
    return result;
}

std::string ExpandWithSections(const std::string& text, const QueryValues& values) {
    ctemplate::TemplateDictionary dictionary("query");
    SetSingleValues(values, dictionary);
    for (const std::string& group : values.groups)
        dictionary.AddSectionDictionary("group")->SetValue("name", group);
    const std::string_view conditions = values.conditions;
    for (std::size_t begin = 0, end = 0; end != std::string_view::npos; begin = end + 1) {
        end = conditions.find(';', begin);
        const std::string_view part = conditions.substr(begin, end - begin);
        dictionary.AddSectionDictionary("condition")
            ->SetValue("text", ctemplate::TemplateString(part.data(), part.size()));
    }
    return ExpandTemplate(text, dictionary);
}

std::string ExpandWithModifiers(const std::string& text, const QueryValues& values) {
    ctemplate::TemplateDictionary dictionary("query");
    SetSingleValues(values, dictionary);
    std::string groups;
    for (const std::string& group : values.groups)
        (groups.empty() ? groups : groups += kListSeparator) += group;
    dictionary.SetValue("groups", groups);
    dictionary.SetValue("conditions", values.conditions);
    return ExpandTemplate(text, dictionary);
}

// The query as code that was written for it alone: its text in pieces, the values appended in their places.
class PlainCode {
public:
    explicit PlainCode(const std::string& query) {
        std::vector<AQM_I_MacroExpander::PositionInfo> blocks;
        AQM_I_MacroExpander().GetMacroPositions(ToText(query), blocks);
        std::size_t copied = 0;
        for (const auto& block : blocks) {
            const auto start = static_cast<std::size_t>(block.startPosition);
            m_pieces.push_back(query.substr(copied, start - copied));
            copied = static_cast<std::size_t>(block.endPosition) + 1;
        }
        m_pieces.push_back(query.substr(copied));
    }

    std::string Expand(const QueryValues& values) const {
        std::string result = m_pieces[0];
        result.append(values.schema).append(m_pieces[1]);
        result.append(values.orderSchema).append(m_pieces[2]);
        result.append(values.closedOrders).append(m_pieces[3]);
        AppendQuoted(values.country, result);
        result.append(m_pieces[4]);
        AppendQuoted(values.status, result);
        result.append(m_pieces[5]);
        const char* separator = "";
        for (const std::string& group : values.groups) {
            result.append(separator);
            AppendQuoted(group, result);
            separator = ",";
        }
        result.append(m_pieces[6]);
        for (const char byte : values.conditions)
            byte == ';' ? result.append(" or ") : result.append(1, byte);
        result.append(m_pieces[7]).append(values.limit).append(m_pieces[8]);
        return result;
    }

private:
    static void AppendQuoted(std::string_view text, std::string& result) {
        result += '\'';
        for (const char byte : text)
            result.append(byte == '\'' ? 2 : 1, byte);
        result += '\'';
    }

    std::vector<std::string> m_pieces;
};

} // namespace

void RegisterQueryRuns() {
    AddModifiers();
    const std::string query = ReadInput("query.sql");
    const std::string sections = ReadInput("query.sections.tpl");
    const std::string modifiers = ReadInput("query.modifiers.tpl");
    const std::string expected = ReadInput("query.expected.sql");
    const QueryValues values = ReadValues();
    const PlainCode code(query);

    RequireSame("query/brindle", ExpandWithBrindle(query, values).bytes(), expected);
    RequireSame("query/ctemplate sections", ExpandWithSections(sections, values), expected);
    RequireSame("query/ctemplate modifiers", ExpandWithModifiers(modifiers, values), expected);
    RequireSame("query/plain code", code.Expand(values), expected);

    benchmark::RegisterBenchmark("query/brindle", [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandWithBrindle(query, values));
    });
    benchmark::RegisterBenchmark("query/ctemplate sections", [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandWithSections(sections, values));
    });
    benchmark::RegisterBenchmark("query/ctemplate modifiers", [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(ExpandWithModifiers(modifiers, values));
    });
    benchmark::RegisterBenchmark("query/plain code", [=](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(code.Expand(values));
    });
}

} // namespace brindle_benchmark
