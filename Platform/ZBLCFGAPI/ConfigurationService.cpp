#include "ZBLCFGAPI/ConfigurationService.h"

#include <algorithm>
#include <string>
#include <string_view>

#include <unicode/uloc.h>

#include "Mortise/SettingsStore.h"
#include "OS/ProgramDirectory.h"

namespace brindle_platform {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr I18NString::index kLongestLocale = 64;
constexpr std::size_t kLongestSubtag = 8;

std::string_view languageOf(std::string_view locale) { return locale.substr(0, locale.find('-')); }

std::string normalForm(std::string_view locale) {
    locale = locale.substr(0, locale.find_first_of(".@"));
    const std::size_t first = locale.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    std::string result(locale.substr(first, locale.find_last_not_of(kBlanks) + 1 - first));
    for (char& c : result) {
        if (c == '_') c = '-';
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

bool isSubtag(std::string_view text) {
    return !text.empty() && text.size() <= kLongestSubtag && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    });
}

bool isKnownLanguage(std::string_view language) {
    for (const char* const* known = uloc_getISOLanguages(); *known != nullptr; ++known)
        if (language == *known) return true;
    return false;
}

// Calls the function with each product locale in the normal form; answers whether there is any.
template <class Function>
bool forEachProductLocale(Function function) {
    const Option* option = findOption("Locales", "ProductLocales");
    std::string_view rest = option == nullptr ? std::string_view() : option->text.bytes();
    bool any = false;
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        const std::string entry = normalForm(rest.substr(0, comma));
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
        if (entry.empty()) continue;
        any = true;
        function(std::string_view(entry));
    }
    return any;
}

// "en" leads to "en" and "en-us", but not to "eng".
bool leadsTo(std::string_view entry, std::string_view locale) {
    return locale.starts_with(entry) && (locale.size() == entry.size() || locale[entry.size()] == '-');
}

} // namespace

I18NString ConfigurationService::getFullPath(const I18NString& relative) const {
    return I18NString(std::string_view(completePath(relative.bytes())));
}

void ConfigurationService::completeFileName(I18NString& name) const {
    const std::string& directory = programDirectory();
    name.insert(0, I18NString(std::string_view(directory == "/" ? directory : directory + "/")));
}

I18NString ConfigurationService::normalizeLocale(const I18NString& locale) const {
    return I18NString(std::string_view(normalForm(locale.bytes())));
}

bool ConfigurationService::isProductLocale(const I18NString& normalized) const {
    if (!isContentLocale(normalized)) return false;
    const std::string_view wanted = languageOf(normalized.bytes());
    bool listed = false;
    const bool anyListed = forEachProductLocale([&](std::string_view entry) { listed |= languageOf(entry) == wanted; });
    return listed || !anyListed;
}

bool ConfigurationService::isContentLocale(const I18NString& normalized) const {
    if (normalized.size() > kLongestLocale) return false;
    std::string_view rest = normalized.bytes();
    if (!isKnownLanguage(languageOf(rest))) return false;
    for (;;) {
        const std::size_t hyphen = rest.find('-');
        if (!isSubtag(rest.substr(0, hyphen))) return false;
        if (hyphen == std::string_view::npos) return true;
        rest.remove_prefix(hyphen + 1);
    }
}

I18NString ConfigurationService::mapToProductLocale(const I18NString& normalized, int) const {
    const std::string_view locale = normalized.bytes();
    std::string_view longest;
    forEachProductLocale([&](std::string_view entry) {
        if (leadsTo(entry, locale) && entry.size() > longest.size()) longest = locale.substr(0, entry.size());
    });
    return I18NString(longest.empty() ? languageOf(locale) : longest);
}

I18NString ConfigurationService::mapToLanguage(const I18NString& normalized, int) const {
    return I18NString(languageOf(normalized.bytes()));
}

} // namespace brindle_platform
