// A URL and a value, parted by the first byte 0xFF. What is found must be what the URL is made of, and what is filled
// in must be what plain replacing gives.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "AQE_UrlEncoding.h"
#include "AQU_UrlPrompt.h"

#include "FuzzCheck.h"

namespace brindle_fuzz {
namespace {

using Names = std::vector<I18NString>;

Names PromptsOf(const I18NString& url) {
    Names names;
    AQU_UrlPrompt(url).GetPrompts(names);
    return names;
}

std::string Mark(const I18NString& name) { return "??" + std::string(name.bytes()) + "??"; }

// Takes the prompts off the URL from the left.
void RequireThatPromptsMakeUpTheUrl(std::string_view url, const Names& prompts) {
    for (const I18NString& name : prompts) {
        Require(name.bytes().find("??") == std::string_view::npos, "no name holds a pair");
        const std::size_t pair = url.find("??");
        Require(pair != url.npos, "a prompt begins with a pair");
        url.remove_prefix(pair);
        // Of three the first is text, unless there is nothing but four to make a prompt of.
        if (url.starts_with("???") && url.find("??", 3) != url.npos) url.remove_prefix(1);
        Require(url.starts_with(Mark(name)), "a prompt begins with the first pair, or the last of three");
        url.remove_prefix(Mark(name).size());
    }
    const std::size_t open = url.find("??");
    if (open == url.npos) return;
    Require(!url.substr(open).starts_with("????"), "four in a row are always a prompt");
    Require(url.find("??", open + 3) == url.npos, "behind the last prompt there is one open pair at most");
}

std::string Replaced(const std::string& text, const std::string& search, std::string_view value) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(search, from)) != text.npos; from = at + search.size())
        result.append(text, from, at - from).append(value);
    return result.append(text, from);
}

std::string Encoded(std::string_view value) {
    static constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._";
    std::string encoded;
    for (const char byte : value) {
        const auto number = static_cast<unsigned char>(byte);
        if (byte == ' ') {
            encoded += '+';
        } else if (kPlain.find(byte) != kPlain.npos) {
            encoded += byte;
        } else {
            encoded += {'%', "0123456789abcdef"[number / 16], "0123456789abcdef"[number % 16]};
        }
    }
    return encoded;
}

void RequireThatFillingIsReplacing(const I18NString& url, const Names& prompts, const I18NString& value) {
    AQU_UrlPrompt prompt(url);
    Require(prompt.GetNewUrl() == url, "without a value the URL is as it was");
    std::string expected(url.bytes());
    for (const I18NString& name : prompts) {
        expected = Replaced(expected, Mark(name), Encoded(value.bytes()));
        if (expected.empty()) expected = url.bytes();
        prompt.ReplacePromptsWithValue(name, value);
        RequireSame(prompt.GetNewUrl().bytes(), expected, "filling in is replacing by the encoded value");
    }
    const I18NString other = value + "??";
    prompt.ReplacePromptsWithValue(other, "x");
    RequireSame(prompt.GetNewUrl().bytes(), expected, "what is no prompt has no place");
    Require(PromptsOf(url) == prompts, "the prompts stay those of the URL");
    Require(AQE_UrlDecode(AQE_UrlEncode(value)) == value, "a value comes back from its encoded form");
}

void Run(std::string_view input) {
    const std::size_t part = std::min(input.find('\xFF'), input.size());
    const I18NString url(input.substr(0, part));
    const I18NString value(input.substr(std::min(part + 1, input.size())));
    const Names prompts = PromptsOf(url);
    RequireThatPromptsMakeUpTheUrl(url.bytes(), prompts);
    const std::size_t closed = PromptsOf(url + "??").size();
    Require(closed == prompts.size() || closed == prompts.size() + 1, "a further pair closes one prompt at most");
    RequireThatFillingIsReplacing(url, prompts, value);
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    brindle_fuzz::Run({reinterpret_cast<const char*>(data), size});
    return 0;
}
