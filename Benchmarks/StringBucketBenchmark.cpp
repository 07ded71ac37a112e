// A million strings interned, 200,000 of them distinct: names of 20 to 40 bytes in random order, as I18NStrings that
// the caller has. The peers copy each distinct string once, too, and find it by a map of pointers ordered by the
// strings behind them, or by a hash map. Everything is freed inside the time.
#include "ServicesBenchmarks.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include "AQU_I_StringBucket.h"

#include "Inputs.h"

namespace brindle_benchmark {
namespace {

constexpr std::size_t kStrings = 1000000;
constexpr std::size_t kDistinct = 200000;

using Strings = std::vector<I18NString>;

Strings MakeStrings() {
    std::mt19937 random(20240229);
    Strings strings;
    strings.reserve(kStrings);
    for (std::size_t made = 0; made < kStrings; ++made) {
        const std::size_t id = made < kDistinct ? made : random() % kDistinct;
        strings.push_back(
            ToText("[sales].[order " + std::to_string(id % 977) + "].[amount " + std::to_string(id) + "]"));
    }
    std::shuffle(strings.begin(), strings.end(), random);
    return strings;
}

// The numbers in the order of the strings, summed up so that their order counts.
using Sum = std::size_t;
Sum Add(Sum sum, long number) { return sum * 31 + static_cast<Sum>(number); }

Sum InternWithBrindle(const Strings& strings) {
    const AUT_RefPtr<AQU_I_StringBucket> bucket = AQU_I_StringBucket::Create();
    Sum sum = 0;
    for (const I18NString& text : strings)
        sum = Add(sum, bucket->GetIndex(text));
    return sum;
}

Sum InternWithMap(const Strings& strings) {
    const auto less = [](const I18NString* a, const I18NString* b) { return *a < *b; };
    std::map<const I18NString*, long, decltype(less)> index(less);
    std::vector<std::unique_ptr<const I18NString>> copies;
    Sum sum = 0;
    for (const I18NString& text : strings) {
        auto found = index.lower_bound(&text);
        if (found == index.end() || less(&text, found->first)) {
            copies.push_back(std::make_unique<const I18NString>(text));
            found = index.emplace_hint(found, copies.back().get(), static_cast<long>(index.size()));
        }
        sum = Add(sum, found->second);
    }
    return sum;
}

struct Hash {
    std::size_t operator()(const I18NString& text) const { return std::hash<std::string_view>()(text.bytes()); }
};

Sum InternWithHashMap(const Strings& strings) {
    std::unordered_map<I18NString, long, Hash> index;
    Sum sum = 0;
    for (const I18NString& text : strings)
        sum = Add(sum, index.try_emplace(text, static_cast<long>(index.size())).first->second);
    return sum;
}

} // namespace

void RegisterStringBucketRuns() {
    const auto strings = std::make_shared<Strings>(MakeStrings());
    const std::string expected = std::to_string(InternWithMap(*strings));
    struct Run {
        const char* who;
        Sum (*intern)(const Strings& strings);
    };
    for (const auto& [who, intern] :
         {Run{"brindle", InternWithBrindle}, Run{"ordered map", InternWithMap}, Run{"hash map", InternWithHashMap}}) {
        const std::string run = std::string("intern/") + who;
        RequireSame(run, std::to_string(intern(*strings)), expected);
        benchmark::RegisterBenchmark(run.c_str(), [strings, intern = intern](benchmark::State& state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(intern(*strings));
        });
    }
}

} // namespace brindle_benchmark
