// Expected outputs are made with the standard library alone. Elements are at most 15 bytes long and carry a quote, so
// that csv has something to double; their numbers are 0 to n - 1 in a scattered order.
#include "GrowthCalls.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "Inputs.h"

namespace brindle_benchmark {
namespace {

using Texts = std::vector<std::string>;

std::string MakeElement(std::uint64_t number, bool ascii) {
    const std::string digits = std::to_string(number);
    return (ascii ? "d'or-" : "d'été-") + std::string(7 - digits.size(), '0') + digits;
}

// Every number below count / repetitions, each `repetitions` times.
Texts MakeElements(std::size_t count, bool ascii, std::size_t repetitions = 1) {
    // Has no factor in common with a count, so that no number is left out, and leaps far from each to the next.
    constexpr std::uint64_t kLeap = 2'654'435'761;
    Texts elements;
    elements.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i)
        elements.push_back(MakeElement(i * kLeap % count / repetitions, ascii));
    return elements;
}

std::vector<I18NString> ToList(const Texts& elements) {
    return std::vector<I18NString>(elements.begin(), elements.end());
}

std::string Join(const Texts& elements, std::string_view separator) {
    std::string joined;
    for (const std::string& element : elements)
        (joined.empty() ? joined : joined.append(separator)).append(element);
    return joined;
}

GrowthCall MakeText(std::size_t bytes, bool ascii) {
    const std::string text = MakeSqlText("plain-lines.sql", bytes / 2);
    // Both have a stop about every 20 bytes; beyond ASCII half of the text is the rest of the line comments.
    const std::string rest = Repeat(ascii ? "-- a plain line of text\n" : "-- größere Länge überall\n", bytes / 2);
    return {.text = text + rest + "#$value#", .list = {}, .value = "end", .expected = text + rest + "end"};
}

GrowthCall MakeBlocks(std::size_t bytes, bool ascii) {
    const std::string block = ascii ? "x = #$value# " : "größe = #$value# ";
    const std::string value = ascii ? "value" : "süß";
    const std::string text = Repeat(block, bytes);
    const std::string filled = block.substr(0, block.find('#')) + value + " ";
    return {.text = text,
            .list = {},
            .value = value,
            .expected = Repeat(filled, text.size() / block.size() * filled.size())};
}

GrowthCall MakeTerms(std::size_t bytes, bool ascii) {
    const std::string term = ascii ? "$value + 'and' + " : "$value + 'für' + ";
    const std::string value = ascii ? "value" : "süß";
    const std::string terms = Repeat(term, bytes);
    const std::string filled = value + (ascii ? "and" : "für");
    return {.text = "#" + terms + "'.'#",
            .list = {},
            .value = value,
            .expected = Repeat(filled, terms.size() / term.size() * filled.size()) + "."};
}

GrowthCall MakeSort(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii);
    Texts sorted = elements;
    std::sort(sorted.begin(), sorted.end());
    return {.text = "#join(',', sort(@list))#", .list = ToList(elements), .value = {}, .expected = Join(sorted, ",")};
}

GrowthCall MakeUnique(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii, 2);
    std::vector<bool> seen(count);
    Texts firsts;
    for (const std::string& element : elements) {
        const std::size_t number = std::stoul(element.substr(element.size() - 7));
        if (!seen[number]) firsts.push_back(element);
        seen[number] = true;
    }
    return {.text = "#join(',', unique(@list))#", .list = ToList(elements), .value = {}, .expected = Join(firsts, ",")};
}

GrowthCall MakeSplit(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii);
    return {.text = "#join(';', split(',', $value))#",
            .list = {},
            .value = Join(elements, ","),
            .expected = Join(elements, ";")};
}

GrowthCall MakeJoin(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii);
    return {.text = "#join(' or ', @list)#", .list = ToList(elements), .value = {}, .expected = Join(elements, " or ")};
}

GrowthCall MakeCsv(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii);
    Texts quoted;
    for (const std::string& element : elements)
        quoted.push_back("'d''" + element.substr(2) + "'");
    return {.text = "#csv(@list)#", .list = ToList(elements), .value = {}, .expected = Join(quoted, ",")};
}

GrowthCall MakeGrep(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii);
    Texts kept;
    for (const std::string& element : elements)
        if (element.find('7') != std::string::npos) kept.push_back(element);
    return {
        .text = "#join(',', grep('7', @list))#", .list = ToList(elements), .value = {}, .expected = Join(kept, ",")};
}

GrowthCall MakeSubstitute(std::size_t count, bool ascii) {
    const Texts elements = MakeElements(count, ascii);
    Texts replaced;
    for (const std::string& element : elements) {
        replaced.push_back(element);
        if (const std::size_t at = element.find('7'); at != std::string::npos) replaced.back().replace(at, 1, "seven");
    }
    return {.text = "#join(',', substitute('7', 'seven', @list))#",
            .list = ToList(elements),
            .value = {},
            .expected = Join(replaced, ",")};
}

} // namespace

const std::vector<GrowthRow>& GetGrowthRows() {
    static const std::vector<GrowthRow> rows{
        {"text", false, MakeText},    {"blocks", false, MakeBlocks},
        {"terms", false, MakeTerms},  {"sort", true, MakeSort},
        {"unique", true, MakeUnique}, {"split", true, MakeSplit},
        {"join", true, MakeJoin},     {"csv", true, MakeCsv},
        {"grep", true, MakeGrep},     {"substitute", true, MakeSubstitute},
    };
    return rows;
}

} // namespace brindle_benchmark
