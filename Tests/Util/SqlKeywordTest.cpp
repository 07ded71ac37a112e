#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "AQU_SQLKeyword.h"

namespace {

// First and last of the lists, the rows out of order, all cases; the Kelvin sign lowers to "k".
constexpr const char* kReserved[] = {
    "ABSOLUTE", "zone",   "diagnostics", "Dictionary", "free", "from", "SCOPE",    "scroll",           "select",
    "SELECT",   "SeLeCt", "END-EXEC",    "end-exec",   "As",   "KEY",  "\u212aey", "Current_Timestamp"};
constexpr const char* kQueryLanguageOnly[] = {"ln", "rsum", "XAVG", "_RowSet", "top", "character_length", "min"};
// Neither blanks nor quotes are removed, and a dotless or a dotted i isn't one of the alphabet.
constexpr const char* kNeither[] = {"",        "abc",        "selec",    "selects",  " select",
                                    "select ", "\"select\"", "end exec", "m\u0131n", "\u0130n"};

void Check() {
    for (const char* word : kReserved)
        EXPECT_TRUE(AQU_SQLKeyword::IsReservedKeyword(word) && AQU_SQLKeyword::IsKeyword(word)) << word;
    for (const char* word : kQueryLanguageOnly)
        EXPECT_TRUE(!AQU_SQLKeyword::IsReservedKeyword(word) && AQU_SQLKeyword::IsKeyword(word)) << word;
    for (const char* word : kNeither)
        EXPECT_FALSE(AQU_SQLKeyword::IsReservedKeyword(word) || AQU_SQLKeyword::IsKeyword(word)) << word;
    EXPECT_FALSE(AQU_SQLKeyword::IsKeyword(I18NString("in\0", 3))) << "a zero byte is part of the word";
}

// The lists are loaded by the first questions, here of several threads at once.
TEST(SqlKeywords, TellReservedFromQueryLanguageFromOtherWords) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(Check);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
