#include "Mortise/AUT_I_UserConfiguration.h"

#include "Mortise/SettingsStore.h"

namespace {

constexpr int kUserRootKey = 1;

class UserConfiguration final : public AUT_I_UserConfiguration {
public:
    int GetInteger(const I18NString& section, const I18NString& name, int defaultValue) const override {
        return brindle_platform::findNumber<int>(section.bytes(), name.bytes()).value_or(defaultValue);
    }
    unsigned GetUnsigned(const I18NString& section, const I18NString& name, unsigned defaultValue) const override {
        return brindle_platform::findNumber<unsigned>(section.bytes(), name.bytes()).value_or(defaultValue);
    }
    I18NString GetString(const I18NString& section, const I18NString& name,
                         const I18NString& defaultValue) const override {
        const brindle_platform::Option* option = brindle_platform::findOption(section.bytes(), name.bytes());
        return option == nullptr ? defaultValue : option->text;
    }
};

class EmptyConfiguration final : public AUT_I_UserConfiguration {
public:
    int GetInteger(const I18NString&, const I18NString&, int defaultValue) const override { return defaultValue; }
    unsigned GetUnsigned(const I18NString&, const I18NString&, unsigned defaultValue) const override {
        return defaultValue;
    }
    I18NString GetString(const I18NString&, const I18NString&, const I18NString& defaultValue) const override {
        return defaultValue;
    }
};

} // namespace

AUT_I_UserConfiguration::~AUT_I_UserConfiguration() = default;

AUT_RefPtr<AUT_I_UserConfiguration> AUT_I_UserConfiguration::Create(int rootKey) {
    if (rootKey == kUserRootKey) return AUT_RefPtr<AUT_I_UserConfiguration>(new UserConfiguration());
    return AUT_RefPtr<AUT_I_UserConfiguration>(new EmptyConfiguration());
}
