// The prompts of a URL. "?" is one byte that is part of no other character, so the URL is read as bytes.
#include "AQU_UrlPrompt.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "AQE_TextUtilities.h"
#include "AQE_UrlEncoding.h"

namespace {

constexpr std::string_view kMark = "??";

} // namespace

AQU_UrlPrompt::AQU_UrlPrompt(const I18NString& text) : url(text) { Analyze(text); }

void AQU_UrlPrompt::GetPrompts(std::vector<I18NString>& out) { out = prompts; }

void AQU_UrlPrompt::ReplacePromptsWithValue(const I18NString& name, const I18NString& value) {
    if (std::find(prompts.begin(), prompts.end(), name) == prompts.end()) return;
    const I18NString encoded = AQE_UrlEncode(value);
    if (newUrl.empty()) newUrl = url;
    const I18NString mark(kMark);
    AQE_SearchAndReplace(newUrl, mark + name + mark, encoded, newUrl);
}

I18NString AQU_UrlPrompt::GetNewUrl() {
    if (newUrl.empty()) newUrl = url;
    return newUrl;
}

void AQU_UrlPrompt::Analyze(const I18NString& text) {
    // With the blank there is a character behind a "??" at the end.
    const std::string bytes = std::string(text.bytes()) + ' ';
    for (std::size_t at = 0; (at = bytes.find(kMark, at)) != bytes.npos;) {
        const std::size_t begin = bytes[at + kMark.size()] == '?' ? at + 3 : at + 2;
        const std::size_t end = bytes.find(kMark, begin);
        if (end != bytes.npos) {
            prompts.push_back(I18NString(std::string_view(bytes).substr(begin, end - begin)));
            at = end + kMark.size();
        } else if (bytes.compare(at, 4, "????") == 0) {
            // Its second pair would open a prompt that nothing closes; so the first one does, and it has no name.
            prompts.emplace_back();
            at += 4;
        } else {
            return;
        }
    }
}
