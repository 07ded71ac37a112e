// The user's settings: options by section and name, with a default for what isn't set.
//
// The store is a TOML file, "brindle/settings.toml" in the user's configuration directory unless BRINDLE_SETTINGS or
// the test hook names another. A top-level table is a section, its keys are names, both case-sensitive. A file that is
// missing, unreadable, faulty or above 1 MiB is an empty store. It is read once, so that readers are made and asked in
// inner loops: neither takes a lock nor touches a file.
#pragma once

#include <atomic>
#include <cstdint>

#include "Mortise/AUT_RefPtr.h"
#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

class BRINDLE_PLATFORM_API AUT_I_UserConfiguration {
public:
    virtual ~AUT_I_UserConfiguration();

    // An integer, or a text of an optional sign and decimal digits. Anything else, or a number out of the type's range,
    // answers the default.
    virtual int GetInteger(const I18NString& section, const I18NString& name, int defaultValue) const = 0;
    virtual unsigned GetUnsigned(const I18NString& section, const I18NString& name, unsigned defaultValue) const = 0;

    // A text as it stands, an integer in decimal; of any other type the default.
    virtual I18NString GetString(const I18NString& section, const I18NString& name,
                                 const I18NString& defaultValue) const = 0;

    // Root key 1 is the user's store; under any other nothing is set. The object may be read on any thread, its handles
    // stay on one.
    static AUT_RefPtr<AUT_I_UserConfiguration> Create(int rootKey);
};

// One integer of the user's store, for code that asks for it again and again. It answers what a reader made at that
// moment would, but searches only if the options have changed since it was asked last. Borrows the two names. Any
// thread.
class BRINDLE_PLATFORM_API AUT_UserInteger {
public:
    constexpr AUT_UserInteger(const char* optionSection, const char* optionName, int optionDefault) noexcept
        : m_section(optionSection), m_name(optionName), m_default(optionDefault) {}
    int Get();

private:
    const char* m_section;
    const char* m_name;
    int m_default;
    // The last answer in the lower half, above it how often the options had changed by then; 0 before the first.
    std::atomic<std::uint64_t> m_answer{0};
};
