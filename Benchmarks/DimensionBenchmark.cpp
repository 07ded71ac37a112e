// The dimension finder on groups of 20 out of twice as many items as groups, with half as many keys of one to three
// items; 1,000 groups are the size of the figure, and sizes around it tell the growth. Sets are drawn at random, but so
// that the analysis goes to its end: each group with a key is built around one, and draws its other items where no key
// has any. A tenth of the groups are parts of keys, which gives chains, and a tenth holds none. The peer is the same
// analysis by the letter (LiteralDimensions.h), up to 500 groups, since its time grows with their cube.
#include "ServicesBenchmarks.h"

#include <memory>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "Inputs.h"
#include "LiteralDimensions.h"

namespace brindle_benchmark {
namespace {

constexpr unsigned kGroupItems = 20;
constexpr unsigned kPeerLimit = 500;

DimensionInput MakeInput(unsigned groups) {
    std::mt19937 random(20240229);
    DimensionInput input;
    input.itemCount = 2 * groups;
    unsigned nextKeyItem = 1;
    for (unsigned made = 0; made < groups / 2; ++made) {
        std::vector<unsigned> key;
        for (std::size_t size = 1 + random() % 3; size > 0; --size)
            key.push_back(nextKeyItem++);
        input.keys.push_back(std::move(key));
    }
    const unsigned others = input.itemCount - nextKeyItem + 1;
    for (unsigned made = 0; made < groups; ++made) {
        const std::vector<unsigned>& key = input.keys[made % input.keys.size()];
        std::vector<unsigned> group;
        if (made % 10 == 1) {
            group.assign(key.begin(), key.size() > 1 ? key.end() - 1 : key.end());
        } else {
            if (made % 10 != 2) group = key;
            while (group.size() < kGroupItems)
                group.push_back(nextKeyItem + static_cast<unsigned>(random() % others));
        }
        input.groups.push_back(std::move(group));
    }
    return input;
}

// Small inputs of all shapes, most of which end early or in several hierarchies.
void CheckSmallInputs() {
    std::mt19937 random(7);
    for (int made = 0; made < 20000; ++made) {
        DimensionInput input;
        input.itemCount = static_cast<unsigned>(2 + random() % 7);
        const auto add = [&](std::vector<std::vector<unsigned>>& sets, unsigned largest) {
            std::vector<unsigned> set(1 + random() % largest);
            for (unsigned& item : set)
                item = static_cast<unsigned>(1 + random() % input.itemCount);
            sets.push_back(std::move(set));
        };
        for (std::size_t keys = random() % 4; keys > 0; --keys)
            add(input.keys, 3);
        for (std::size_t groups = 1 + random() % 6; groups > 0; --groups)
            add(input.groups, 5);
        RequireSame("dimensions, input " + std::to_string(made), FinderStructure(input), LiteralStructure(input));
    }
}

} // namespace

void RegisterDimensionRuns() {
    CheckSmallInputs();
    for (const unsigned groups : {250u, 500u, 1000u, 2000u, 4000u, 8000u}) {
        const auto input = std::make_shared<DimensionInput>(MakeInput(groups));
        const std::string size = "/" + std::to_string(groups);
        const auto add = [&input](const std::string& run, std::string (*find)(const DimensionInput&)) {
            benchmark::RegisterBenchmark(run.c_str(), [input, find](benchmark::State& state) {
                for (auto _ : state)
                    benchmark::DoNotOptimize(find(*input));
            });
        };
        add("dimensions/brindle" + size, FinderStructure);
        if (groups > kPeerLimit) continue;
        RequireSame("dimensions" + size, FinderStructure(*input), LiteralStructure(*input));
        add("dimensions/by the letter" + size, LiteralStructure);
    }
}

} // namespace brindle_benchmark
