#include <gtest/gtest.h>

#include "AQU_SQLKeyword.h"

namespace {

constexpr const char* kReserved[] = {"ABSOLUTE", "zone", "free", "from", "SELECT", "SeLeCt", "end-exec", "\u212aey"};
constexpr const char* kQueryLanguageOnly[] = {"ln", "rsum", "XAVG", "_RowSet", "character_length", "min"};
// Neither blanks nor quotes are removed, and a dotless or a dotted i isn't one of the alphabet.
constexpr const char* kNeither[] = {"", "selec", "selects", " as", "as ", "\"as\"", "end exec", "m\u0131n", "\u0130n"};

TEST(SqlKeywords, TellReservedFromQueryLanguageFromOtherWords) {
    for (const char* word : kReserved)
        EXPECT_TRUE(AQU_SQLKeyword::IsReservedKeyword(word) && AQU_SQLKeyword::IsKeyword(word)) << word;
    for (const char* word : kQueryLanguageOnly)
        EXPECT_TRUE(!AQU_SQLKeyword::IsReservedKeyword(word) && AQU_SQLKeyword::IsKeyword(word)) << word;
    for (const char* word : kNeither)
        EXPECT_FALSE(AQU_SQLKeyword::IsReservedKeyword(word) || AQU_SQLKeyword::IsKeyword(word)) << word;
    EXPECT_FALSE(AQU_SQLKeyword::IsKeyword(I18NString("in\0", 3))) << "a zero byte is part of the word";
}

} // namespace
