#include "AQU_UrlPrompt.h"

#include "Support/PageRows.h"

namespace {

TEST(UrlPrompt, NamesStandBetweenPairsFromTheLeft) {
    brindle_test::CheckBox("values.md", "prompts", [](const std::string& url) {
        std::vector<I18NString> names{"is overwritten"};
        AQU_UrlPrompt(url.c_str()).GetPrompts(names);
        std::string line;
        for (const I18NString& name : names)
            line += "[" + std::string(name.bytes()) + "]";
        return line;
    });
}

TEST(UrlPrompt, ValuesAreEncodedAndFillEveryPlace) {
    brindle_test::CheckBox("values.md", "filled", [](const std::string& row) {
        std::size_t at = row.find(';'), equals = 0;
        AQU_UrlPrompt url(row.substr(0, at).c_str());
        for (; (equals = row.find('=', at)) != row.npos; at = row.find(';', equals)) {
            const std::string name = row.substr(at + 1, equals - at - 1), value = row.substr(equals + 1);
            url.ReplacePromptsWithValue(name.c_str(), value.substr(0, value.find(';')).c_str());
        }
        return std::string(url.GetNewUrl().bytes());
    });
}

} // namespace
