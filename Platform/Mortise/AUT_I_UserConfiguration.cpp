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

// The changes are counted before the search, so an answer that another change overtakes bears a count that is past.
int AUT_UserInteger::Get() {
    constexpr int kHalf = 32;
    const std::uint32_t changes = brindle_platform::countOptionChanges();
    const std::uint64_t last = m_answer.load(std::memory_order_relaxed);
    if (last >> kHalf == changes) return static_cast<int>(static_cast<std::uint32_t>(last));
    const int answer = brindle_platform::findNumber<int>(m_section, m_name).value_or(m_default);
    m_answer.store(std::uint64_t{changes} << kHalf | static_cast<std::uint32_t>(answer), std::memory_order_relaxed);
    return answer;
}
