#include "LiteralDimensions.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "AQU_I_DimensionInfoFinder.h"

namespace brindle_benchmark {
namespace {

using Items = std::set<unsigned>;
using Numbers = std::vector<unsigned>;

bool Contains(const Items& a, const Items& b) { return std::includes(a.begin(), a.end(), b.begin(), b.end()); }

Items Minus(const Items& a, const Items& b) {
    Items result;
    std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::inserter(result, result.end()));
    return result;
}

Items Common(const Items& a, const Items& b) {
    Items result;
    std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::inserter(result, result.end()));
    return result;
}

struct Level {
    bool unique;
    Numbers keyItems, properties;
};

class Literal {
public:
    explicit Literal(const DimensionInput& input) : m_itemCount(input.itemCount) {
        for (const Numbers& key : input.keys)
            m_keys.emplace(key.begin(), key.end());
        for (const Numbers& group : input.groups)
            m_groups.emplace(group.begin(), group.end());
    }

    void Analyse(Numbers& out) {
        if (m_groups.empty()) return;
        std::set<Items> found;
        bool isAnyWithout = false;
        for (const Items& group : m_groups) {
            const Items* const key = Split(group);
            if (key == nullptr) {
                isAnyWithout = true;
            } else {
                found.insert(*key);
            }
        }
        if (!isAnyWithout) return;
        for (const Items& key : m_keys)
            if (!found.contains(key)) m_groups.insert(key);
        Items key, attributes;
        bool hasKey;
        std::vector<Items> startGroups;
        while (PickStart(key, attributes, hasKey, startGroups)) {
            Numbers chain = Chain(true, startGroups, hasKey, key, attributes);
            for (const Items& group : startGroups)
                m_processed[group] = key;
            if (chain.empty()) return;
            std::reverse(chain.begin(), chain.end());
            const auto number = static_cast<unsigned>(hierarchies.size() + 1);
            hierarchies[number] = chain;
            out.push_back(number);
            if (!hasKey) m_noKey.insert(number);
            if (hasKey && m_single == -1 && chain.size() == 1) m_single = static_cast<int>(number);
        }
        Finish(out);
    }

    std::map<unsigned, Numbers> hierarchies;
    std::map<unsigned, Level> levels;

private:
    const Items* Split(const Items& group) const {
        for (const Items& key : m_keys)
            if (Contains(group, key)) return &key;
        return nullptr;
    }

    bool PickStart(Items& key, Items& attributes, bool& hasKey, std::vector<Items>& startGroups) const {
        key.clear(), attributes.clear(), startGroups.clear();
        hasKey = false;
        std::map<Items, Items> candidates;
        std::set<Items> keyless;
        for (const Items& group : m_groups) {
            if (m_processed.contains(group)) continue;
            const Items* const split = Split(group);
            if (split == nullptr) {
                keyless.insert(group);
            } else {
                candidates[group] = *split;
            }
        }
        if (!candidates.empty()) {
            for (const auto& [group, candidate] : candidates)
                if (candidate.size() > key.size()) key = candidate;
            for (const auto& [group, candidate] : candidates) {
                if (candidate != key) continue;
                startGroups.push_back(group);
                attributes.merge(Minus(group, key));
            }
            hasKey = true;
            return true;
        }
        std::map<unsigned, std::size_t> counts;
        for (const Items& group : keyless)
            for (const unsigned item : group)
                ++counts[item];
        std::size_t best = 0;
        for (const Items& group : keyless) {
            std::size_t score = 0;
            for (const unsigned item : group)
                score += counts[item];
            if (score > best) best = score, key = group;
        }
        if (!keyless.empty()) startGroups.push_back(key);
        return !keyless.empty();
    }

    Numbers Chain(bool first, const std::vector<Items>& chainGroups, bool hasKey, const Items& key,
                  const Items& attributes) {
        if (!m_memo[key].empty()) return m_memo[key];
        Items parentKey, parentAttributes;
        std::vector<Items> parentGroups;
        FindParent(chainGroups, hasKey, key, parentKey, parentAttributes, parentGroups);
        const Items levelKeys = Minus(key, parentKey);
        if (levelKeys.empty()) return {};
        const auto number = static_cast<unsigned>(levels.size() + 1);
        levels[number] = {first && hasKey && parentKey.empty(),
                          {levelKeys.begin(), levelKeys.end()},
                          {attributes.begin(), attributes.end()}};
        Numbers chain{number};
        if (!parentKey.empty()) {
            std::vector<Items> further = chainGroups;
            further.insert(further.end(), parentGroups.begin(), parentGroups.end());
            const Numbers above = Chain(false, further, hasKey, parentKey, parentAttributes);
            chain.insert(chain.end(), above.begin(), above.end());
            for (const Items& group : parentGroups)
                m_processed.try_emplace(group, parentKey);
        }
        m_memo[key] = chain;
        return chain;
    }

    void FindParent(const std::vector<Items>& chainGroups, bool hasKey, const Items& key, Items& parentKey,
                    Items& parentAttributes, std::vector<Items>& parentGroups) const {
        std::vector<Items> open;
        for (const Items& group : m_groups) {
            if (std::find(chainGroups.begin(), chainGroups.end(), group) != chainGroups.end()) continue;
            const auto known = m_processed.find(group);
            if (known == m_processed.end()) {
                open.push_back(group);
            } else if (Contains(key, known->second) && known->second.size() > parentKey.size()) {
                parentKey = known->second;
            }
        }
        if (open.empty()) return;
        std::set<Items> chosen;
        if (!parentKey.empty()) chosen.insert(parentKey);
        int best = parentKey.empty() ? -1 : static_cast<int>(parentKey.size());
        for (const Items& group : open) {
            const Items common = Common(key, group);
            const int size = static_cast<int>(common.size());
            if (common.empty() || (!hasKey && !Contains(common, group))) continue;
            if (best == -1 || best < size) parentKey = common, best = size, chosen = {group};
            if (best == size && common == parentKey) chosen.insert(group);
        }
        for (const Items& group : chosen) {
            parentGroups.push_back(group);
            parentAttributes.merge(Minus(group, parentKey));
        }
    }

    void Finish(Numbers& out) {
        if (!m_noKey.empty() && m_single != -1) {
            const auto single = static_cast<unsigned>(m_single);
            for (const unsigned number : m_noKey)
                hierarchies[number].push_back(hierarchies[single][0]);
            std::erase(out, single);
        }
        if (out.size() != 1 || !hierarchies.contains(out[0])) return;
        Items collected;
        for (const unsigned number : hierarchies[out[0]]) {
            collected.insert(levels[number].keyItems.begin(), levels[number].keyItems.end());
            collected.insert(levels[number].properties.begin(), levels[number].properties.end());
        }
        for (unsigned item = 1; item <= m_itemCount; ++item)
            if (!collected.contains(item)) levels[hierarchies[out[0]].back()].properties.push_back(item);
    }

    unsigned m_itemCount;
    std::set<Items> m_keys, m_groups;
    std::map<Items, Items> m_processed;
    std::map<Items, Numbers> m_memo;
    std::set<unsigned> m_noKey;
    int m_single = -1;
};

std::string Joined(const Numbers& numbers) {
    std::string text;
    for (const unsigned number : numbers)
        text += (text.empty() ? "" : ",") + std::to_string(number);
    return text;
}

std::string LevelText(unsigned number, const Level& level) {
    std::string text = " " + std::to_string(number) + (level.unique ? "*[" : "[") + Joined(level.keyItems);
    if (!level.properties.empty()) text += "|" + Joined(level.properties);
    return text + "]";
}

} // namespace

std::string LiteralStructure(const DimensionInput& input) {
    Literal literal(input);
    Numbers numbers;
    literal.Analyse(numbers);
    for (const auto& [number, chain] : literal.hierarchies)
        numbers.push_back(number);
    std::string text;
    for (const unsigned number : numbers) {
        text += std::to_string(number) + ":";
        for (const unsigned level : literal.hierarchies[number])
            text += LevelText(level, literal.levels[level]);
        text += "\n";
    }
    return text;
}

std::string FinderStructure(const DimensionInput& input) {
    const std::unique_ptr<AQU_I_DimensionInfoFinder> finder(AQU_I_DimensionInfoFinder::Create());
    for (unsigned item = 1; item <= input.itemCount; ++item)
        finder->SetItemName(item, std::to_string(item).c_str());
    for (const Numbers& key : input.keys)
        finder->AddKey(key);
    for (const Numbers& group : input.groups)
        finder->AddGroup(group);
    Numbers numbers, chain;
    finder->GetHierarchies(numbers);
    if (!numbers.empty()) finder->GetHierarchies(numbers);
    std::string text;
    for (const unsigned number : numbers) {
        text += std::to_string(number) + ":";
        finder->GetLevels(number, chain);
        for (const unsigned level : chain) {
            Level seen{};
            finder->GetLevelKeys(level, seen.keyItems, seen.unique);
            finder->GetLevelProperties(level, seen.properties);
            text += LevelText(level, seen);
        }
        text += "\n";
    }
    return text;
}

} // namespace brindle_benchmark
