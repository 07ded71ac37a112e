// The configuration service: full paths, locales in their normal form, which of them count, and what they map to.
#include "PlatformHooks.h"
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"

#include "Support/Rows.h"

namespace {

using brindle_test::CheckRows;

const IZBLConfiguration& service = ZBLConfigurationFactory::getInstance();

// The full path and the completed name.
std::string Paths(const std::string& path) {
    I18NString completed(path.c_str());
    service.completeFileName(completed);
    return (service.getFullPath(path.c_str()) + " " + completed).c_str();
}

// The normal form, whether it is a content and a product locale, the product locale and the language it maps to.
std::string Kind(const std::string& text) {
    const I18NString locale = service.normalizeLocale(text.c_str()), language = service.mapToLanguage(locale, 0);
    const I18NString kinds =
        (service.isContentLocale(locale) ? " c" : "") + I18NString(service.isProductLocale(locale) ? "p " : " ");
    return (locale + kinds + service.mapToProductLocale(locale, 0) + " " + language).c_str();
}

TEST(ConfigurationService, PathsAreCompletedAgainstTheProgramDirectory) {
    brindle_platform::setProgramDirectory("/opt/./é/bin/");
    CheckRows(Paths, ". -> /opt/é/bin /opt/é/bin/.", " -> /opt/é/bin /opt/é/bin/", "../l -> /opt/é/l /opt/é/bin/../l",
              "a//./b/../c/ -> /opt/é/bin/a/c /opt/é/bin/a//./b/../c/", "../../../../x -> /x /opt/é/bin/../../../../x",
              "/a/../b/ -> /a/../b/ /opt/é/bin//a/../b/");
}

TEST(ConfigurationService, LocalesCountAndMap) {
    const std::string at64 = "en-1234567-1234567-1234567-1234567-1234567-1234567-1234567-12345";
    CheckRows(Kind, "en_US.UTF-8 -> en-us cp en en", " \tFR-ca\t  -> fr-ca cp fr fr", "de @euro -> de cp de de",
              "ÄÉ_x -> ÄÉ-x ÄÉ ÄÉ", " .x ->   ", "haw-12345678 -> haw-12345678 cp haw haw", "en- -> en- en en",
              "en-123456789 -> en-123456789 en en", "-us -> -us  ", "en--us -> en--us en en", "xx -> xx xx xx",
              "en-ü -> en-ü en en", at64 + " -> " + at64 + " cp en en", at64 + "6 -> " + at64 + "6 en en");
    brindle_platform::overrideOption("Locales", "ProductLocales", " en , ,ZH_Hans,zh-Hans-CN, pt_BR,en-u");
    CheckRows(Kind, "en-us -> en-us cp en en", "zh-hans-cn-x -> zh-hans-cn-x cp zh-hans-cn zh", "eng -> eng eng eng",
              "zh-tw -> zh-tw cp zh zh", "fr-ca -> fr-ca c fr fr", "pt-brx -> pt-brx cp pt pt");
}

} // namespace
