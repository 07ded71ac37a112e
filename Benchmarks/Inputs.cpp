#include "Inputs.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <vector>

namespace brindle_benchmark {

std::string ReadInput(const std::string& fileName) {
    std::ifstream file(BRINDLE_BENCHMARK_INPUTS "/" + fileName, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file || content.empty()) throw std::runtime_error("cannot read the input " + fileName);
    return content;
}

std::string MakeSqlText(const std::string& fileName, std::size_t byteCount) {
    const std::string content = ReadInput(fileName);
    std::vector<std::string_view> lines;
    for (std::string_view rest = content; !rest.empty(); rest.remove_prefix(lines.back().size()))
        lines.push_back(rest.substr(0, rest.find('\n') + 1));

    // The engine's own numbers are the same everywhere; those of the standard distributions are not.
    std::minstd_rand random(4711);
    std::string text;
    text.reserve(byteCount);
    for (;;) {
        const std::string_view line = lines[random() % lines.size()];
        if (text.size() + line.size() > byteCount) return text;
        text += line;
    }
}

std::string Repeat(std::string_view piece, std::size_t byteCount) {
    std::string text;
    text.reserve(byteCount);
    while (text.size() + piece.size() <= byteCount)
        text += piece;
    return text;
}

void RequireSame(const std::string& what, std::string_view actual, std::string_view expected) {
    if (actual == expected) return;
    const auto [difference, other] = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    const auto offset = static_cast<std::size_t>(difference - actual.begin());
    const auto around = [offset](std::string_view text) { return std::string(text.substr(offset, 40)); };
    throw std::runtime_error(what + ": the output differs from byte " + std::to_string(offset) + " on, '" +
                             around(actual) + "' instead of '" + around(expected) + "'");
}

} // namespace brindle_benchmark
