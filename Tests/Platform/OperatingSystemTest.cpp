#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

#include "PlatformOs.h"
#include "ZBLCore/ZBLUtSystemInfo.h"

#include "Support/Directory.h"

namespace {

TEST(OperatingSystem, TimeStampsOfBothFormsAreOfNow) {
    for (const auto& [form, pattern, rest] : {std::tuple(0, "%Y%m%dT%H%M%SZ", 0), {1, "%Y-%m-%dT%H:%M:%S.", 4}}) {
        struct tm fields {};
        const I18NString stamp = ZBLUtSystemInfo::getTimeStamp(form);
        EXPECT_EQ(strptime(stamp.c_str(), pattern, &fields), stamp.c_str() + stamp.size() - rest) << stamp;
        EXPECT_LE(std::abs(timegm(&fields) - std::time(nullptr)), 2);
    }
}

TEST(OperatingSystem, BiasIsThatOfStandardTimeOnEitherSideOfTheEquator) {
    const auto check = [](const char* rules, LONG bias) {
        setenv("TZ", rules, 1);
        TIME_ZONE_INFORMATION zone{1, 1, 1};
        EXPECT_TRUE(GetTimeZoneInformation(&zone) == 0 && zone.Bias == bias && zone.DaylightBias == 0) << zone.Bias;
    };
    check("CET-1CEST,M3.5.0,M10.5.0/3", -60), check("AEST-10AEDT,M10.1.0,M4.1.0/3", -600);
    check("NST3:30NDT,M3.2.0,M11.1.0", 210);
    unsetenv("TZ"), tzset();
}

TEST(OperatingSystem, ModulesAreFoundByPathAlone) {
    const brindle_test::Directory directory;
    std::string found;
    for (const char* const name : {"libprefixed.so", "plain.so", "own.dll", "libm.so.6"})
        std::filesystem::copy(BRINDLE_CRYPTO_STAND_IN, name);
    directory.Write("own.so", "must not be tried");
    for (const char* const name : {"/plain.dll", "/plain.DLL", "/prefixed.dll", "/plain.so", "/own.dll", "/plain",
                                   "/plain.dl", "/.dll", "/prefixed.so", "/own.so", ""}) {
        HMODULE const module = LoadLibraryExA((directory.m_directory + name).c_str(), nullptr, 8);
        if (GetProcAddress(module, "KSM_Poll") != nullptr && FreeLibrary(module) != 0) found += name;
    }
    EXPECT_EQ(found, "/plain.dll/plain.DLL/prefixed.dll/plain.so/own.dll");
    EXPECT_EQ(LoadLibraryExA("libm.so.6", nullptr, 8), nullptr) << "no directories are searched";
    EXPECT_TRUE(_access("plain.so", 4) == 0 && _access(".", 4) == 0 && _access("absent", 4) == -1);
}

} // namespace
