// Start and end of the library; the configuration file's maps; the locale operations.
#include <thread>

#include "ZBLCFGAPI/ZBLConfigurationException.h"
#include "ZBLCFGAPI/ZBLConfigurationFactory.h"

#include "ABrindle.h"
#include "AQF_Initialize.h"
#include "AQM_I_MacroExpander.h"
#include "TarnPerformance.h"

#include "Support/FailureCheck.h"
#include "Util/InstallationFixture.h"

namespace {

constexpr auto L = ABrindle_Initialize, l = ABrindle_Terminate;

struct Lifecycle : InstallationTest {
    // The file with `e` at 90 and -90 and `weak` at -90.
    void Configure(const std::string& e) const {
        Write(m_file,
              R"(<c><section name="ParameterMaps"><map name="_env" priority="-90"><entry name="weak" value="w"/><entry
 name="e" value=""/></map><map name="_env" priority="90"><entry name="e" value=")" +
                  e + R"("/></map></section></c>)");
    }
    static std::string Expanded() {
        return AQM_I_MacroExpander().Expand("#$e# #$weak#", AQE_I_GetQueryEnginePAC()).c_str();
    }
    // Whether the call really starts the library, which shows in the log.
    bool Starts(long (*start)(const char*) = L) {
        m_log.clear();
        EXPECT_EQ(start("test"), 0);
        return m_log.find("VKE LogLevel=") != m_log.npos;
    }
};

TEST_F(Lifecycle, TwoStartsNeedTwoEnds) {
    Configure("first");
    EXPECT_TRUE(Starts() && m_log == "1VKE LogLevel=3;") << m_log;
    Configure("second");
    EXPECT_FALSE(Starts() || l("test") != 0);
    EXPECT_TRUE(Expanded() == "first w" && TarnPerformance::RegisterComponent("BAPI") == 3) << "one start is left";
    l("test");
    EXPECT_TRUE(AQE_I_GetQueryEnginePAC() && !TarnPerformance::RegisterComponent("BAPI")) << "stale, and ended";
    EXPECT_TRUE(Starts() && Expanded() == "second w");
}

TEST_F(Lifecycle, CallsFromInsideAStartChangeNoCountButAnEndWithoutAStartDoes) {
    brindle_platform::setLogSink([this](const brindle_platform::LogRecord& record) {
        m_log += record.text.c_str();
        EXPECT_EQ(L("nested") + L("nested") + l("nested"), 0);
    });
    EXPECT_TRUE(Starts() && l("test") == 0 && Starts() && l("test") == 0) << "one end was enough";
    EXPECT_FALSE(l("test") != 0 || Starts()) << "the count was -1";
    EXPECT_TRUE(Starts());
}

TEST_F(Lifecycle, WithoutTheFileAllWorksAndTheLogSaysSoForEachMap) {
    brindle_platform::setLogLevel("QueryEngine", 7);
    EXPECT_TRUE(Starts());
    EXPECT_EQ(m_log + Expanded(), "3QE 0x35dc43d6;3QE 0x35dc43d6;1VKE LogLevel=7; ");
}

TEST_F(Lifecycle, AnIllFormedFileEndsTheStartForGood) {
    Write(m_file, "<c>\n</d>");
    EXPECT_NE(brindle_test::FailureOf([] { L("test"); }).find("VKEConfig.xml:2:3: mismatched tag"), m_log.npos);
    Configure("mended");
    EXPECT_FALSE(Starts() || l("test") != 0 || l("test") != 0 || Starts() || Starts(AQF_Initialize));
    EXPECT_EQ(Expanded(), " ") << "the maps were never added";
    std::jthread([] { EXPECT_EQ(L("other"), 0) << "the guard is free"; });
}

TEST_F(Lifecycle, ARefusedStepLeavesOutTheStepsBehindItAndIsNotRetried) {
    Configure("e");
    brindle_platform::setNextInitializeResult(7);
    EXPECT_EQ(L("test"), 7);
    EXPECT_EQ(m_log + Expanded(), "1VKE LogLevel=3;e w");
    EXPECT_EQ(TarnPerformance::RegisterComponent("BAPI"), 0) << "not started";
    EXPECT_FALSE(Starts() || l("test") != 0 || l("test") != 0);
    EXPECT_FALSE(Starts(AQF_Initialize)) << "the catalogue was ended without having been started";
    EXPECT_TRUE(Starts()) << "behind the end all begins anew";
}

// "1" or "0" for whether there is one, and what the locale is then.
std::string Content(I18NString locale, const std::vector<I18NString>& supported, const char* fallback) {
    return std::to_string(AQE_GetContentLocale(locale, supported, fallback)).append(locale.c_str());
}
std::string Product(I18NString locale) { return std::to_string(AQE_GetProductLocale(locale)).append(locale.c_str()); }

struct FailingService : IZBLConfiguration {
    I18NString getFullPath(const I18NString& path) const override { return path; }
    void completeFileName(I18NString&) const override {}
    I18NString normalizeLocale(const I18NString& locale) const override { return locale + "+"; }
    bool isProductLocale(const I18NString&) const override { throw ZBLConfigurationException("no service"); }
    bool isContentLocale(const I18NString&) const override { return true; }
    I18NString mapToProductLocale(const I18NString& locale, int) const override { return locale; }
    I18NString mapToLanguage(const I18NString&, int) const override { throw ZBLConfigurationException("no service"); }
};

TEST_F(Lifecycle, LocalesAreReplacedByTheNearestThatServesOrAfterAFailureByTheDefault) {
    EXPECT_EQ(Content("en_US.UTF-8", {"de", "EN-us", "en"}, ""), "1en-us");
    EXPECT_EQ(Content("de-CH", {"de-AT", "DE"}, "fr"), "1de") << "the language itself first";
    EXPECT_EQ(Content("de-CH", {"fr", "de_AT", "de-DE"}, "fr"), "1de-at");
    EXPECT_EQ(Content("de-CH", {"den"}, "PT_br") + Content("de", {"fr"}, "") + Content("qq", {"qq"}, "x"), "1pt-br01x");
    brindle_platform::overrideOption("Locales", "ProductLocales", "en,fr,fr-CA");
    EXPECT_EQ(Product("en_GB") + Product("FR-ca-x") + Product("DE_ch"), "1en1fr-ca0DE_ch");

    ZBLConfigurationFactory::setInstance(std::make_shared<FailingService>());
    EXPECT_EQ(Content("de", {"fr"}, "en") + Content("de", {"fr"}, "") + Content("de", {"de"}, ""), "1en+1+1de+");
    EXPECT_EQ(m_log, "3qemsgs 0x35d3fe99 (\"no service\");3qemsgs 0x35d3fe99 (\"no service\");");
    EXPECT_THROW(Product("de"), ZBLConfigurationException);
}

} // namespace
