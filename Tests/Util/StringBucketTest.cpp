// Strings and the numbers that stand for them.
#include "AQU_I_StringBucket.h"

#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Support/FailureCheck.h"

namespace {

TEST(StringBucket, CountsFirstAppearances) {
    const auto bucket = AQU_I_StringBucket::Create();
    I18NString text("first");
    const I18NString same(text);
    EXPECT_TRUE(bucket->GetIndex(text) == 0 && bucket->GetIndex(nullptr) == 1 && bucket->GetIndex(I18NString()) == 2);
    text += "!";
    EXPECT_TRUE(bucket->GetIndex(&text) == 3 && bucket->GetIndex(&same) == 0 && bucket->GetIndex(nullptr) == 1);
    EXPECT_TRUE(*bucket->GetString(0) == "first" && bucket->GetString(0) != &same && !bucket->GetString(1));
    EXPECT_TRUE(bucket->GetIndex("") == 2 && *bucket->GetString(2) == "" && *bucket->GetString(3) == "first!");
    for (const long number : {-1L, 4L})
        EXPECT_EQ(brindle_test::FailureOf([&] { bucket->GetString(number); }),
                  "QEException 2100 0x35d6063c(\"" + std::to_string(number) + "\") Source/QUStringBucket:82");
}

TEST(StringBucket, ManyStringsKeepTheirNumbersAndPlaces) {
    for (const std::size_t step : {1u, 1024u}) { // with the second one all want the same place
        std::vector<I18NString> names;
        for (int id = 0; names.size() < (step == 1 ? 32000 : 300); ++id) {
            const std::string name = "name " + std::to_string(id);
            if (std::hash<std::string_view>()(name) % step == 0) names.emplace_back(name.c_str());
        }
        const auto bucket = AQU_I_StringBucket::Create();
        std::minstd_rand random(7);
        long count = 0;
        std::vector<long> numberOf(names.size(), -1);
        for (int call = 0; call < 200000; ++call) {
            const std::size_t id = random() % names.size();
            if (numberOf[id] < 0) numberOf[id] = count++;
            ASSERT_TRUE(bucket->GetIndex(names[id]) == numberOf[id] && *bucket->GetString(numberOf[id]) == names[id]);
        }
    }
}

} // namespace
