// A locale as a value: a name such as "en-us", and nothing else.

#pragma once

#include <compare>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

// Keeps its name exactly as given, so that the name can serve as a map key. Bringing a name into its normal form is the
// configuration service's work. Order and equality are those of the names.
class BRINDLE_PLATFORM_API I18NLocale {
public:
    I18NLocale() = default;
    I18NLocale(const I18NString& name) : m_name(name) {}
    I18NLocale(const char* name) : m_name(name) {}

    const I18NString& getName() const { return m_name; }

    friend bool operator==(const I18NLocale& a, const I18NLocale& b) noexcept = default;
    friend std::strong_ordering operator<=>(const I18NLocale& a, const I18NLocale& b) noexcept = default;

private:
    I18NString m_name;
};
