#include "ZBLCore/ZBLMessageLines.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace {

std::optional<unsigned long> parseNumber(std::string_view text) {
    int radix = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        radix = 16;
        text.remove_prefix(2);
    }
    unsigned long number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number, radix);
    if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

I18NString unescape(std::string_view line) {
    std::string text;
    text.reserve(line.size());
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char escaped = line[at] == '\\' && at + 1 < line.size() ? line[at + 1] : '\0';
        switch (escaped) {
        case 'n':
            text += '\n';
            break;
        case 't':
            text += '\t';
            break;
        case '\\':
            text += '\\';
            break;
        default:
            text += line[at];
            continue;
        }
        ++at;
    }
    return I18NString(std::string_view(text));
}

} // namespace

ZBLMessageLines::ZBLMessageLines(std::string file) : m_content(std::move(file)) {
    const std::string_view content = m_content;
    std::size_t lineBegin = content.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    while (lineBegin < content.size()) {
        const std::size_t lineEnd = std::min(content.find('\n', lineBegin), content.size());
        std::string_view line = content.substr(lineBegin, lineEnd - lineBegin);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::size_t tab = line.find('\t');
        if (tab != std::string_view::npos) {
            if (const std::optional<unsigned long> number = parseNumber(line.substr(0, tab))) {
                m_entries.push_back({*number, static_cast<std::uint32_t>(lineBegin + tab + 1),
                                     static_cast<std::uint32_t>(line.size() - tab - 1)});
            }
        }
        lineBegin = lineEnd + 1;
    }
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& left, const Entry& right) {
        return left.number != right.number ? left.number < right.number : left.beginByte > right.beginByte;
    });
}

bool ZBLMessageLines::findText(unsigned long number, I18NString& text) const {
    const auto found = std::lower_bound(m_entries.begin(), m_entries.end(), number,
                                        [](const Entry& entry, unsigned long wanted) { return entry.number < wanted; });
    if (found == m_entries.end() || found->number != number) return false;
    text = unescape(std::string_view(m_content).substr(found->beginByte, found->byteCount));
    return true;
}
