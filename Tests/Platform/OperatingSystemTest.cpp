#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "PlatformHooks.h"
#include "PlatformOs.h"
#include "ZBLCore/ZBLUtSystemInfo.h"

namespace {

namespace fs = std::filesystem;

TEST(OperatingSystem, TimeStampsOfBothFormsAreOfNow) {
    for (const auto& [form, pattern, rest] : {std::tuple(0, "%Y%m%dT%H%M%SZ", 0), {1, "%Y-%m-%dT%H:%M:%S.", 4}}) {
        struct tm fields {};
        const I18NString stamp = ZBLUtSystemInfo::getTimeStamp(form);
        EXPECT_EQ(strptime(stamp.c_str(), pattern, &fields), stamp.c_str() + stamp.size() - rest) << stamp;
        EXPECT_LE(std::abs(timegm(&fields) - std::time(nullptr)), 2);
    }
}

TEST(OperatingSystem, BiasIsThatOfStandardTimeOnEitherSideOfTheEquator) {
    for (const auto& [rules, bias] : {std::pair("UTC0", 0),
                                      {"CET-1CEST,M3.5.0,M10.5.0/3", -60},
                                      {"AEST-10AEDT,M10.1.0,M4.1.0/3", -600},
                                      {"NST3:30NDT,M3.2.0,M11.1.0", 210}}) {
        setenv("TZ", rules, 1);
        TIME_ZONE_INFORMATION zone{1, 1, 1};
        EXPECT_EQ(GetTimeZoneInformation(&zone), 0u);
        EXPECT_TRUE(zone.Bias == bias && zone.StandardBias == 0 && zone.DaylightBias == 0) << rules << zone.Bias;
    }
    unsetenv("TZ"), tzset();
}

TEST(OperatingSystem, ModulesAreFoundByPathAlone) {
    std::string root = testing::TempDir() + "brindle-XXXXXX";
    ASSERT_NE(mkdtemp(root.data()), nullptr);
    for (const char* const name : {"/libprefixed.so", "/plain.so", "/own.dll", "/libm.so.6"})
        fs::copy(BRINDLE_CRYPTO_STAND_IN, root + name);
    std::ofstream(root + "/own.so") << "must not be tried";
    const std::pair<const char*, bool> rows[] = {{"/plain.dll", true}, {"/plain.DLL", true}, {"/prefixed.dll", true},
                                                 {"/plain.so", true},  {"/own.dll", true},   {"/plain", false},
                                                 {"/plain.dl", false}, {"/.dll", false},     {"/prefixed.so", false},
                                                 {"/own.so", false},   {"", false}};
    for (const auto& [name, isFound] : rows) {
        HMODULE const module = LoadLibraryExA((root + name).c_str(), nullptr, 8);
        EXPECT_EQ(GetProcAddress(module, "KSM_Poll") != nullptr, isFound) << name;
        EXPECT_EQ(FreeLibrary(module) != 0, isFound);
    }
    fs::current_path(root);
    EXPECT_EQ(LoadLibraryExA("libm.so.6", nullptr, 8), nullptr) << "no directories are searched";
    for (const auto& [name, answer] : {std::pair("plain.so", 0), {".", 0}, {"absent", -1}})
        EXPECT_EQ(_access(name, 4), answer);
    fs::current_path("/");
    fs::remove_all(root);
}

} // namespace
