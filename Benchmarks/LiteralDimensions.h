// The rules of the dimension finder done step by step on sets and maps, every group looked at each time: what the
// library's finder is compared with.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace brindle_benchmark {

struct DimensionInput {
    unsigned itemCount = 0; // items 1 to itemCount, each named by its number
    std::vector<std::vector<unsigned>> keys;
    std::vector<std::vector<unsigned>> groups;
};

// A line for each hierarchy that the first call of GetHierarchies gives, then one for each that the second gives:
// "1: 2[3,4|5] 1*[6]" is hierarchy 1 with the level 2, of the key items 3 and 4 and the property 5, above the level 1
// with the unique key item 6.
std::string LiteralStructure(const DimensionInput& input);
std::string FinderStructure(const DimensionInput& input);

} // namespace brindle_benchmark
