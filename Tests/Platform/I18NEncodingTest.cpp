// Text to and from other encodings: byte forms, what is replaced, refused names, and the default encoding.

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "PlatformHooks.h"
#include "ZBLCore/I18NEncoding.h"
#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLException.h"

namespace {

using namespace std::string_literals;

I18NString decoded(const std::string& bytes, const char* encoding) { return {bytes.data(), bytes.size(), encoding}; }

TEST(I18NEncodingForms, TextBecomesItsBytesAndComesBack) {
    const struct {
        const char* encoding;
        const char* text;
        std::string bytes;
    } rows[] = {
        {"utf-8", "a\u20AC", "a\xE2\x82\xAC"},
        {"UTF_8", "\uFEFFz", "\xEF\xBB\xBFz"},
        {"utf-16", "a\u20AC\U0001F600", "a\0\xAC\x20\x3D\xD8\x00\xDE"s},
        {"Utf16LE", "\uFEFF\U00010000\U0010FFFF", "\xFF\xFE\x00\xD8\x00\xDC\xFF\xDB\xFF\xDF"s},
        {"utf-16be", "\uFEFF\u20AC\U0001F600", "\xFE\xFF\x20\xAC\xD8\x3D\xDE\x00"s},
        {"utf-32", "a\U0010FFFF", "a\0\0\0\xFF\xFF\x10\0"s},
        {"UTF-32LE", "\uFEFF", "\xFF\xFE\0\0"s},
        {"utf_32_be", "\uFEFF\u20AC", "\0\0\xFE\xFF\0\0\x20\xAC"s},
        {"us-ascii", "a~", "a~"},
        {"iso-8859-1", "\u0080\u00A4\u00FF", "\x80\xA4\xFF"},
        {"ISO8859_1", "\u00E4", "\xE4"},
        {"windows-1252", "\u20AC\u0081\u0178\u00A0\u00FF", "\x80\x81\x9F\xA0\xFF"},
        {"iso-8859-15", "\u20AC\u00E4", "\xA4\xE4"},
        {"Shift_JIS", "a\u65E5\u672C", "a\x93\xFA\x96\x7B"},
        {"gb18030", "\u20AC\U0001F600", "\xA2\xE3\x94\x39\xFC\x36"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.encoding) + " " + row.text);
        EXPECT_EQ(I18NString(row.text).encode(row.encoding), row.bytes);
        EXPECT_EQ(decoded(row.bytes, row.encoding), row.text);
    }
}

TEST(I18NEncodingForms, BytesWithoutMeaningBecomeReplacementCharacters) {
    const struct {
        const char* encoding;
        std::string bytes;
        const char* text;
    } rows[] = {
        {"utf-8", "a\xFF", "a\uFFFD"},
        {"utf-16", "a\0b"s, "a\uFFFD"},
        {"utf-16", "\x00\xD8"s, "\uFFFD"},
        {"utf-16", "\x00\xD8z"s, "\uFFFD\uFFFD"},
        {"utf-16", "\x00\xD8z\0"s, "\uFFFDz"},
        {"utf-16", "\x00\xDC\x00\xD8\x00\xD8\x00\xDC"s, "\uFFFD\uFFFD\U00010000"},
        {"utf-16be", "\xDB\xFF\xDB\xFF\xDF\xFF"s, "\uFFFD\U0010FFFF"},
        {"utf-32", "\0\0\x11\0\0\xD8\0\0\xFF\xFF\xFF\xFFxyz"s, "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"us-ascii", "a\x80\xFF", "a\uFFFD\uFFFD"},
        {"Shift_JIS", "a\x93", "a\uFFFD"},
        {"euc-jp", "\xFFz", "\uFFFDz"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(decoded(row.bytes, row.encoding), row.text) << row.encoding << testing::PrintToString(row.bytes);
    EXPECT_EQ(I18NString("\x00\xD8\x00\xDC", 2, "utf-16"), "\uFFFD") << "the pair's second half lies behind the end";
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
    EXPECT_EQ(text.encode("koi8-r"), "??????z");
    EXPECT_EQ(I18NString("a?\u20AC").encode("ibm-971"), "") << "double bytes alone: it has no question mark either";
    EXPECT_EQ(text.encode("ibm-37"), "\x43\x6F\x20\xCA\x6F\x6F\xA9");
}

TEST(I18NEncodingForms, LongTextsCrossTheConvertersBuffers) {
    for (const char* start : {"", "a", "ab"}) {
        const I18NString text = start + I18NString(U'\U0001F600', 2000) + I18NString(U'\u20AC', 2000);
        EXPECT_EQ(decoded(text.encode("gb18030"), "gb18030"), text);
        EXPECT_EQ(text.encode("koi8-r"), start + std::string(4000, '?'));
    }
}

TEST(I18NEncodingForms, AnyBytesDecodeToSoundText) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (const char* encoding :
         {"utf-16", "utf-32be", "gb18030", "iso-2022-jp", "utf-7", "hz", "scsu", "ibm-37", "big5"})
        for (int round = 0; round < 200; ++round) {
            std::string bytes(random() % 100, ' ');
            for (char& byte : bytes)
                byte = static_cast<char>(random() % (round % 2 ? 256 : 64));
            const I18NString text = decoded(bytes, encoding);
            ASSERT_EQ(text, I18NString(text.bytes())) << encoding;
            ASSERT_EQ(text.size(), I18NString(text.bytes()).size()) << encoding;
            ASSERT_NO_THROW(text.encode(encoding)) << encoding;
        }
}

TEST(I18NEncodingNames, UnknownNamesAreRefusedByName) {
    const std::string longName(5000, 'x');
    for (const char* name :
         {"", "-", "klingon", "utf-8x", "utf-64", "/no/such", longName.c_str(), static_cast<const char*>(nullptr)}) {
        for (const bool decode : {true, false})
            try {
                decode ? decoded("a", name) : I18NString(I18NString("a").encode(name));
                ADD_FAILURE() << "accepted " << (name ? name : "null");
            } catch (const ZBLException& failure) {
                EXPECT_EQ(failure.getSeverity(), ZBLSeverity::error);
                EXPECT_EQ(failure.getCode(), -1);
                EXPECT_STREQ(failure.getThrowableName(), "ZBLException");
                EXPECT_EQ(failure.getMessage(), name);
            }
    }
}

TEST(I18NDefaultEncoding, TheHookTakesNarrowEncodingsAlone) {
    const struct {
        const char* name;
        const char* expected;
    } rows[] = {
        {"windows-1252", "windows-1252"}, {"Shift_JIS", "Shift_JIS"},   {"UTF-16", "utf-8"},  {"utf_32be", "utf-8"},
        {"iso-8859-15", "iso-8859-15"},   {"ISO-10646-UCS-2", "utf-8"}, {"klingon", "utf-8"}, {"", "utf-8"},
        {"us-ascii", "us-ascii"},         {nullptr, "utf-8"},
    };
    for (const auto& row : rows) {
        brindle_platform::setDefaultEncoding(row.name);
        EXPECT_STREQ(I18NGetPlatformDefaultEncoding(), row.expected);
    }
}

TEST(I18NDefaultEncoding, AnAnswerOutlivesTheNameAndTheNextHook) {
    std::string name = "windows-1252";
    brindle_platform::setDefaultEncoding(name.c_str());
    const char* const answer = I18NGetPlatformDefaultEncoding();
    name.assign(name.size(), 'x');
    brindle_platform::setDefaultEncoding("us-ascii");
    EXPECT_STREQ(answer, "windows-1252");
    brindle_platform::setDefaultEncoding(nullptr);
}

// The variable is read once, so each value needs a process that hasn't asked yet.
TEST(I18NDefaultEncoding, TheEnvironmentNamesItBehindTheHook) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto answersFor = [](const char* variable, const char* hook) {
        setenv("BRINDLE_DEFAULT_ENCODING", variable, 1);
        brindle_platform::setDefaultEncoding(hook);
        std::fputs(I18NGetPlatformDefaultEncoding(), stderr);
        std::exit(0);
    };
    EXPECT_EXIT(answersFor("iso-8859-15", nullptr), testing::ExitedWithCode(0), "^iso-8859-15$");
    EXPECT_EXIT(answersFor("iso-8859-15", "us-ascii"), testing::ExitedWithCode(0), "^us-ascii$");
    EXPECT_EXIT(answersFor("iso-8859-15", "klingon"), testing::ExitedWithCode(0), "^iso-8859-15$");
    EXPECT_EXIT(answersFor("utf-16le", nullptr), testing::ExitedWithCode(0), "^utf-8$");
    EXPECT_EXIT(answersFor("klingon", nullptr), testing::ExitedWithCode(0), "^utf-8$");
}

} // namespace
