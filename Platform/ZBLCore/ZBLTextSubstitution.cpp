#include "ZBLCore/ZBLTextSubstitution.h"

#include <string_view>

namespace {

constexpr std::size_t kPlaces = 16;

// Reads the digits behind a "%". Answers the place that they name, 0 if none, and how many digits belong to it.
std::size_t placeAt(std::string_view digits, std::size_t& digitCount) {
    const auto isDigit = [digits](std::size_t at) {
        return at < digits.size() && digits[at] >= '0' && digits[at] <= '9';
    };
    digitCount = 0;
    if (!isDigit(0) || digits[0] == '0') return 0;
    const auto first = static_cast<std::size_t>(digits[0] - '0');
    digitCount = 1;
    if (isDigit(1)) {
        const std::size_t both = first * 10 + static_cast<std::size_t>(digits[1] - '0');
        if (both <= kPlaces) {
            digitCount = 2;
            return both;
        }
    }
    return first;
}

} // namespace

I18NString ZBLSubstituteText(const I18NString& text, std::span<const I18NString* const> parameters,
                             std::uint32_t* used) {
    const std::string_view bytes = text.bytes();
    I18NString result;
    std::uint32_t putIn = 0;
    std::size_t copied = 0;
    std::size_t percent = bytes.find('%');
    while (percent != std::string_view::npos) {
        std::size_t digitCount = 0;
        const std::size_t place = placeAt(bytes.substr(percent + 1), digitCount);
        if (place != 0 && place <= parameters.size()) {
            result.appendValidUtf8(bytes.substr(copied, percent - copied));
            result.append(*parameters[place - 1]);
            copied = percent + 1 + digitCount;
            putIn |= std::uint32_t{1} << (place - 1);
        }
        percent = bytes.find('%', percent + 1);
    }
    result.appendValidUtf8(bytes.substr(copied));
    if (used != nullptr) *used = putIn;
    return result;
}

I18NString ZBLSubstituteAndAppend(const I18NString& text, std::span<const I18NString* const> parameters,
                                  bool keepEmpty) {
    std::uint32_t used = 0;
    I18NString result = ZBLSubstituteText(text, parameters, &used);
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        if (index < kPlaces && (used >> index & 1) != 0) continue;
        if (parameters[index]->empty() && !keepEmpty) continue;
        result.appendValidUtf8(" [");
        result.append(*parameters[index]);
        result.appendValidUtf8("]");
    }
    return result;
}
