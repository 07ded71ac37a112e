// Text services: case mapping, comparison without case, numbers, literals, place holders, texts by number, directories.
#include <climits>

#include <gtest/gtest.h>

#include "Mortise/AUT_I_FileSupport.h"
#include "Mortise/AUT_Library.h"
#include "Mortise/AUT_Resource.h"
#include "Mortise/AUT_Text.h"

#include "Support/Directory.h"

namespace {

TEST(MortiseText, CaseMappingFollowsTheLanguage) {
    const I18NString rows[][4] = {
        {"en-us", I18NString("@AZ[\0`az{ 09", 12), I18NString("@az[\0`az{ 09", 12), I18NString("@AZ[\0`AZ{ 09", 12)},
        {"en-us", "straße \u0130", "straße i\u0307", "STRASSE \u0130"},
        {"en-us", "ΟΔΟΣ", "οδος", "ΟΔΟΣ"},
        {"TR-tr", "TiI", "ti\u0131", "T\u0130I"},
        {"trk", "Iié", "iié", "IIÉ"}};
    for (const auto& [locale, text, lower, upper] : rows) {
        EXPECT_EQ(AUT_ToLower(text, locale), lower) << locale << ": " << text;
        EXPECT_EQ(AUT_ToUpper(text, locale), upper) << locale << ": " << text;
    }
}

TEST(MortiseText, ComparisonWithoutCaseOrdersByFoldedCodePoints) {
    // Each text with an equal one; ascending.
    const char* const rows[][2] = {{"", ""},        {"[", "["},      {"_", "_"},        {"a", "A"},
                                   {"ABC", "aBc"},  {"k", "\u212A"}, {"\u212Ac", "KC"}, {"ss", "SS"},
                                   {"ß", "\u1E9E"}, {"É", "é"},      {"ς", "Σ"},        {"\U00010400", "\U00010428"}};
    EXPECT_NE(AUT_CaseInsensitiveCompare(I18NString("a\0b", 3), I18NString("a\0c", 3)), 0);
    const auto sign = [](std::ptrdiff_t number) { return (number > 0) - (number < 0); };
    for (const auto& left : rows)
        for (const auto& right : rows)
            EXPECT_EQ(sign(AUT_CaseInsensitiveCompare(left[0], right[1])), sign(&left - &right))
                << left[0] << " against " << right[1];
}

TEST(MortiseText, NumbersAreWrittenInAnyRadixAndReadUpToTheFirstOtherCharacter) {
    EXPECT_EQ(AUT_ToString(-255, 16) + AUT_ToString(35, 36), "-ffz");
    EXPECT_EQ(AUT_ToString(INT64_MIN, 2), ("-1" + std::string(63, '0')).c_str());
    for (const int radix : {1, 37, 0, -16})
        EXPECT_EQ(AUT_ToString(42, radix), "42") << radix;
    const auto expect = [](int value, std::initializer_list<const char*> texts) {
        for (const char* text : texts)
            EXPECT_EQ(AUT_ToInt(text), value) << "'" << text << "'";
    };
    expect(0, {"", "  ", "-", "+-1", "--1", "- 1", "x1", "\u00A01", "\u0661"});
    expect(7, {"7", " \t\n\v\f\r+7x9", "007", "7é", "7.9"});
    expect(INT_MAX, {"2147483647", "2147483648", "4294967297", "99999999999999999999999"});
    expect(INT_MIN, {"-2147483648", "-2147483649", "-99999999999999999999999 7"});
}

TEST(MortiseText, SixteenParametersComeInTheirOrderAndLatinBytesAreCodePoints) {
    EXPECT_EQ(AUT_I18NLatin1Literal("caf\xE9 \x80\xFF \xC3\xA9"), "caf\u00E9 \u0080\u00FF \u00C3\u00A9");
    I18NString text("%1%2%3%4%5%6%7%8%9%10%11%12%13%14%15%16%17");
    AUT_SimpleSubstituteText(text, "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "%1", text);
    EXPECT_EQ(text, "abcdefghijklmn%1%1%2%3%4%5%6%7%8%9%10%11%12%13%14%15%16%17a7");
}

TEST(MortiseLibrary, ATextWithoutACatalogueShowsFileAndNumberAndTheHookDecidesOneStart) {
    I18NString path("old"), text("NoSuchFile");
    EXPECT_FALSE(AUT_ResourceLoadString(text, path, -1, text)) << "the name may be the result";
    EXPECT_EQ(text + "/" + path, "NoSuchFile 0xffffffff/");
    brindle_platform::setNextInitializeResult(-7);
    EXPECT_EQ(AUT_Initialize("test"), -7);
    EXPECT_EQ(AUT_Initialize("test"), 0);
    AUT_Terminate("test");
}

TEST(MortiseFileSupport, DirectoriesAreMadeWithTheirParents) {
    const brindle_test::Directory directory;
    const auto at = [&directory](const char* name) { return directory.Path(name); };
    for (const char* name : {"a/é/c", "a/é/c", "b/d/"})
        EXPECT_TRUE(AUT_I_FileSupport::MakeDirectory(at(name)) && AUT_I_FileSupport::DirectoryExists(at(name)));
    std::filesystem::create_symlink("nowhere", "broken");
    for (const I18NString& refused : {at("broken"), at("broken/x"), I18NString(), at("z") + I18NString("\0/y", 3)})
        EXPECT_FALSE(AUT_I_FileSupport::MakeDirectory(refused) || AUT_I_FileSupport::DirectoryExists(refused));
}

} // namespace
