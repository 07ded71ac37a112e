#include "TableScan.h"

#include <array>
#include <stdexcept>

namespace brindle_benchmark {
namespace {

constexpr std::array<bool, 256> MakeStopTable() {
    std::array<bool, 256> stops{};
    for (const char byte : {'#', '\'', '"', '[', '?', '/', '-'})
        stops[static_cast<unsigned char>(byte)] = true;
    return stops;
}

constexpr std::array<bool, 256> kStops = MakeStopTable();

const char* SkipThrough(const char* at, const char* end, char closing) {
    while (at != end && *at != closing)
        ++at;
    if (at == end) throw std::runtime_error("the text ends inside a protected form");
    return at + 1;
}

const char* SkipQuoted(const char* at, const char* end, char closing) {
    for (;;) {
        at = SkipThrough(at, end, closing);
        if (at == end || *at != closing) return at;
        ++at;
    }
}

const char* SkipComment(const char* at, const char* end) {
    do
        at = SkipThrough(at, end, '*');
    while (at == end || *at != '/');
    return at + 1;
}

const char* SkipLine(const char* at, const char* end) {
    while (at != end && *at != '\n' && *at != '\r')
        ++at;
    return at;
}

// Where the scan goes on behind the stop at `at`, which is no '#'.
const char* SkipForm(const char* at, const char* end) {
    const char first = *at++;
    const char second = at == end ? '\0' : *at;
    switch (first) {
    case '[':
        return SkipQuoted(at, end, ']');
    case '?':
        return SkipThrough(at == end ? at : at + 1, end, '?');
    case '/':
        return second == '*' ? SkipComment(at + 1, end) : at;
    case '-':
        return second == '-' ? SkipLine(at + 1, end) : at;
    default:
        return SkipQuoted(at, end, first);
    }
}

} // namespace

std::string ExpandByTable(std::string_view text, std::string_view value) {
    std::string result;
    result.reserve(text.size() + value.size());
    const char* const end = text.data() + text.size();
    const char* copied = text.data();
    const char* at = copied;
    for (;;) {
        while (at != end && !kStops[static_cast<unsigned char>(*at)])
            ++at;
        if (at == end) break;
        if (*at != '#') {
            at = SkipForm(at, end);
            continue;
        }
        result.append(copied, at);
        result.append(value);
        copied = at = SkipThrough(at + 1, end, '#');
    }
    result.append(copied, end);
    return result;
}

} // namespace brindle_benchmark
