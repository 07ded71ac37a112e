// The configuration service: where the files of the installation lie, and which locales it knows. It is reached through
// ZBLConfigurationFactory.
//
// A locale is in its normal form in small letters with "-" between its subtags: "en", "en-us", "zh-hans-cn". The
// product locales are those that the program itself speaks: the option "ProductLocales" of the section "Locales" of the
// user configuration lists them, with commas between them. Without that option every content locale is one.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"

// Paths have "/" as separator. The `mapping` arguments select nothing, 0 is the only value in use. What is said here of
// answers holds for the built-in service, which raises nothing (memory apart) and may be used on any thread.
class BRINDLE_PLATFORM_API IZBLConfiguration {
public:
    virtual ~IZBLConfiguration();

    // A relative path below the program directory, without "." and ".." (links aren't followed) and without "/" at the
    // end; "." is the program directory itself and "../logs" its neighbour. The empty path acts as ".". An absolute
    // path stays as it is.
    virtual I18NString getFullPath(const I18NString& relative) const = 0;

    // Puts the program directory and "/" in front of the name and changes nothing else, so that the name can be found
    // again at the end.
    virtual void completeFileName(I18NString& name) const = 0;

    // "en_US.UTF-8" gives "en-us": blanks around the name go, so does everything from the first "." or "@" on. The rest
    // isn't checked.
    virtual I18NString normalizeLocale(const I18NString& locale) const = 0;

    // Both tests take a locale in the normal form. A content locale has at most 64 characters in subtags of one to
    // eight letters or digits, and begins with a language that ISO 639 knows; a product locale is one whose language
    // stands in the list.
    virtual bool isProductLocale(const I18NString& normalized) const = 0;
    virtual bool isContentLocale(const I18NString& normalized) const = 0;

    // The longest entry of the list that is the locale or its beginning up to a "-"; without one the language.
    virtual I18NString mapToProductLocale(const I18NString& normalized, int mapping) const = 0;

    // The first subtag: "en-us" gives "en".
    virtual I18NString mapToLanguage(const I18NString& normalized, int mapping) const = 0;
};
