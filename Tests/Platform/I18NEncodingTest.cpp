// Text to and from other encodings: byte forms, what is replaced, refused names, and the default encoding.

#include <cstdlib>
#include <tuple>

#include <gtest/gtest.h>

#include "PlatformHooks.h"
#include "ZBLCore/I18NEncoding.h"
#include "ZBLCore/I18NString.h"

#include "Support/FailureCheck.h"

namespace {

using namespace std::string_literals;

I18NString decoded(const std::string& bytes, const char* encoding) { return {bytes.data(), bytes.size(), encoding}; }

TEST(I18NEncodingForms, TextBecomesItsBytesAndBytesWithoutMeaningBecomeReplacementCharacters) {
    using Row = std::tuple<const char*, const char*, std::string>;
    const Row both[] = {{"UTF_8", "\uFEFFz\u20AC", "\xEF\xBB\xBFz\xE2\x82\xAC"},
                        {"utf-16", "a\u20AC\U0001F600", "a\0\xAC\x20\x3D\xD8\x00\xDE"s},
                        {"Utf16LE", "\uFEFF\U00010000\U0010FFFF", "\xFF\xFE\x00\xD8\x00\xDC\xFF\xDB\xFF\xDF"s},
                        {"utf-16be", "\uFEFF\u20AC\U0001F600", "\xFE\xFF\x20\xAC\xD8\x3D\xDE\x00"s},
                        {"utf-32", "a\U0010FFFF", "a\0\0\0\xFF\xFF\x10\0"s},
                        {"utf_32_be", "\uFEFF\u20AC", "\0\0\xFE\xFF\0\0\x20\xAC"s}};
    for (const auto& [encoding, text, bytes] : both) {
        EXPECT_EQ(I18NString(text).encode(encoding), bytes) << encoding;
        EXPECT_EQ(decoded(bytes, encoding), text) << encoding;
    }
    const Row broken[] = {{"utf-16", "\uFFFD\uFFFD", "\x00\xD8z"s},
                          {"utf-16", "\uFFFD\uFFFDz\uFFFD\U00010000", "\x00\xDC\x00\xD8z\0\x00\xD8\x00\xD8\x00\xDC"s},
                          {"utf-16be", "\uFFFD\U0010FFFF", "\xDB\xFF\xDB\xFF\xDF\xFF"s},
                          {"utf-32", "\uFFFD\uFFFD\uFFFD\uFFFD", "\0\0\x11\0\0\xD8\0\0\xFF\xFF\xFF\xFFxyz"s},
                          {"Shift_JIS", "a\uFFFD", "a\x93"}};
    for (const auto& [encoding, text, bytes] : broken)
        EXPECT_EQ(decoded(bytes, encoding), text) << encoding << testing::PrintToString(bytes);
    EXPECT_EQ(I18NString("\x00\xD8\x00\xDC", 2, "utf-16"), "\uFFFD") << "the pair's second half lies behind the end";
    EXPECT_EQ(I18NString("\u3042").encode("iso-2022-jp"), "\x1B$B$\"\x1B(B") << "ends in the state that it began in";
}

// The second name of each pair is one that the library leaves to its converter.
TEST(I18NEncodingForms, SingleBytesAgreeWithAnotherDecoder) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    EXPECT_EQ(decoded(bytes, "windows-1252"), decoded(bytes, "cp1252"));
    EXPECT_EQ(decoded(bytes, "windows-1252").encode("windows-1252"), bytes);
    EXPECT_EQ(decoded(bytes, "iso-8859-1"), decoded(bytes, "latin1"));
    EXPECT_EQ(decoded(bytes, "us-ascii"), decoded(bytes, "ascii"));
}

TEST(I18NEncodingForms, CharactersThatAreLackingBecomeQuestionMarks) {
    // The soft hyphen and the joiner can be ignored in display; they are characters all the same.
    const I18NString text("\u00E4\u20AC\u0080\u00AD\u200D\U0001F600z");
    EXPECT_EQ(text.encode("us-ascii"), "??????z");
    EXPECT_EQ(text.encode("iso-8859-1"), "\xE4?\x80\xAD??z");
    EXPECT_EQ(text.encode("windows-1252"), "\xE4\x80?\xAD??z");
    // Longer than the converter's buffers.
    for (const char* start : {"", "a", "ab"}) {
        const I18NString longText = start + I18NString(U'\U0001F600', 2000) + I18NString(U'\u20AC', 2000);
        EXPECT_EQ(decoded(longText.encode("gb18030"), "gb18030"), longText);
        EXPECT_EQ(longText.encode("koi8-r"), start + std::string(4000, '?'));
    }
}

TEST(I18NEncodingNames, UnknownNamesAreRefusedByName) {
    const std::string longName(5000, 'x');
    for (const char* name : {"", "-", "utf-8x", "/no/such", longName.c_str(), static_cast<const char*>(nullptr)})
        for (const bool decode : {true, false})
            EXPECT_EQ(
                brindle_test::FailureOf([&] { decode ? decoded("a", name) : I18NString("a").encode(name).c_str(); }),
                "ZBLException -1 [text]" + std::string(name ? name : "") +
                    " Platform/ZBLCore/I18NEncoding:10[ZBLCore ZBL_THROW]");
}

TEST(I18NDefaultEncoding, TheHookTakesNarrowEncodingsAlone) {
    const std::pair<const char*, const char*> rows[] = {
        {"Shift_JIS", "Shift_JIS"}, {"utf_32be", "utf-8"}, {"ISO-10646-UCS-2", "utf-8"},
        {"klingon", "utf-8"},       {"", "utf-8"},         {"us-ascii", "us-ascii"},
        {nullptr, "utf-8"}};
    for (const auto& [hook, expected] : rows) {
        brindle_platform::setDefaultEncoding(hook);
        EXPECT_STREQ(I18NGetPlatformDefaultEncoding(), expected);
    }
}

// The variable is read once, so each value needs a process that hasn't asked yet.
TEST(I18NDefaultEncoding, TheEnvironmentNamesItBehindTheHook) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto answer = [](const char* variable) {
        setenv("BRINDLE_DEFAULT_ENCODING", variable, 1);
        brindle_platform::setDefaultEncoding("klingon");
        std::_Exit(std::string("iso-8859-15") == I18NGetPlatformDefaultEncoding() ? 15 : 8);
    };
    EXPECT_EXIT(answer("iso-8859-15"), testing::ExitedWithCode(15), "");
    EXPECT_EXIT(answer("utf-16le"), testing::ExitedWithCode(8), "");
}

} // namespace
