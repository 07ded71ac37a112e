// The built-in configuration service: files below the program directory, product locales from the user's settings. It
// keeps nothing, so what the program directory or the settings change to holds for the next call.
#pragma once

#include "ZBLCFGAPI/IZBLConfiguration.h"

namespace brindle_platform {

class ConfigurationService final : public IZBLConfiguration {
public:
    I18NString getFullPath(const I18NString& relative) const override;
    void completeFileName(I18NString& name) const override;
    I18NString normalizeLocale(const I18NString& locale) const override;
    bool isProductLocale(const I18NString& normalized) const override;
    bool isContentLocale(const I18NString& normalized) const override;
    I18NString mapToProductLocale(const I18NString& normalized, int mapping) const override;
    I18NString mapToLanguage(const I18NString& normalized, int mapping) const override;
};

} // namespace brindle_platform
