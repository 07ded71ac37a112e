// Starts are taken one after the other: first every key that groups are split by, the largest first, then the groups
// without a key, the one first whose items occur most among them. From each start a chain climbs: the parent of a key
// is the largest part of it that another group shares.
//
// Groups and keys go by their places in the order of sets. Only groups that share an item with a key can matter to its
// parent, so those are found through the items; what else counts is whether there is an open group at all. A group is
// open until it has been given a key, in `m_keyOf`, which never takes one back; so the starts from keys can be put in
// order once, and the scores of the others only fall.
#include "QUDimensionAnalysis.h"

#include <algorithm>
#include <iterator>
#include <queue>
#include <unordered_map>
#include <utility>

using ItemSet = AQU_DimensionInfoFinder::ItemSet;

namespace {

constexpr int kNone = -1;

std::size_t Place(int number) { return static_cast<std::size_t>(number); }

ItemSet Difference(const ItemSet& a, const ItemSet& b) {
    ItemSet difference;
    std::ranges::set_difference(a, b, std::back_inserter(difference));
    return difference;
}

ItemSet Intersection(const ItemSet& a, const ItemSet& b) {
    ItemSet common;
    std::ranges::set_intersection(a, b, std::back_inserter(common));
    return common;
}

void SortUnique(std::vector<unsigned>& items) {
    std::ranges::sort(items);
    items.erase(std::unique(items.begin(), items.end()), items.end());
}

struct Start {
    ItemSet key;
    std::vector<unsigned> attributes;
    bool hasKey;
    std::vector<int> groups;
};

struct Parent {
    ItemSet key;
    std::vector<unsigned> attributes;
    std::vector<int> groups;
};

class Analysis {
public:
    Analysis(const std::set<ItemSet>& keys, const std::set<ItemSet>& groups);

    AQU_DimensionStructure Run();

private:
    struct Rank {
        std::size_t score;
        int group;
        // The highest score is on top, of equal ones the first group.
        bool operator<(const Rank& other) const {
            return score != other.score ? score < other.score : group > other.group;
        }
    };
    struct Link {
        ItemSet key;
        unsigned level;
        Parent parent;
    };

    const ItemSet& Items(int group) const { return m_groups[Place(group)]; }
    bool IsOpen(int group) const { return m_keyOf[Place(group)].empty(); }
    void Process(int group, const ItemSet& key);
    void EnterChain(int group);

    bool PickStart(Start& start);
    bool PickKeyStart(Start& start);
    bool PickKeylessStart(Start& start);
    void RankKeyless();
    std::size_t Score(int group) const;

    std::vector<unsigned> BuildChain(const Start& start);
    std::vector<int> Neighbours(const ItemSet& key);
    Parent FindParent(const ItemSet& key, bool hasKey);

    std::vector<ItemSet> m_keys;
    std::vector<ItemSet> m_groups;
    std::vector<int> m_split;
    std::unordered_map<unsigned, std::vector<int>> m_groupsWith; // by item
    std::vector<ItemSet> m_keyOf;                                // empty for an open group
    int m_openCount;

    std::vector<int> m_keyStarts; // groups with a key, in the order of starts
    std::size_t m_nextKeyStart = 0;
    std::vector<std::vector<int>> m_groupsOfKey;
    bool m_isRanked = false;
    std::priority_queue<Rank> m_ranks;                     // scores as they were, or higher
    std::unordered_map<unsigned, std::size_t> m_itemCount; // in open groups without a key

    // Of the chain that is being built.
    std::vector<char> m_isInChain; // by group
    std::vector<int> m_chainGroups;
    int m_openInChain = 0;

    std::vector<int> m_shared; // by group, the number of items shared with a key; 0 outside of FindParent
    std::map<ItemSet, std::vector<unsigned>> m_memo; // chains by key, top level first
    AQU_DimensionStructure m_found;
};

Analysis::Analysis(const std::set<ItemSet>& keys, const std::set<ItemSet>& groups)
    : m_keys(keys.begin(), keys.end()), m_groups(groups.begin(), groups.end()), m_split(AQU_SplitGroups(keys, groups)),
      m_keyOf(groups.size()), m_openCount(static_cast<int>(groups.size())), m_groupsOfKey(keys.size()),
      m_isInChain(groups.size()), m_shared(groups.size()) {
    for (int group = 0; group < m_openCount; ++group) {
        for (const unsigned item : Items(group))
            m_groupsWith[item].push_back(group);
        const int key = m_split[Place(group)];
        if (key == kNone) continue;
        m_keyStarts.push_back(group);
        m_groupsOfKey[Place(key)].push_back(group);
    }
    std::ranges::stable_sort(m_keyStarts, std::ranges::greater(),
                             [this](int group) { return m_keys[Place(m_split[Place(group)])].size(); });
}

AQU_DimensionStructure Analysis::Run() {
    for (Start start; PickStart(start);) {
        std::vector<unsigned> chain = BuildChain(start);
        for (const int group : start.groups)
            Process(group, start.key);
        if (chain.empty()) {
            m_found.complete = false;
            break;
        }
        const auto number = static_cast<unsigned>(m_found.hierarchies.size() + 1);
        if (!start.hasKey) m_found.withoutKey.push_back(number);
        if (start.hasKey && m_found.singleLevel == 0 && chain.size() == 1) m_found.singleLevel = number;
        m_found.hierarchies.emplace(number, std::move(chain));
    }
    return std::move(m_found);
}

void Analysis::Process(int group, const ItemSet& key) {
    if (IsOpen(group)) {
        --m_openCount;
        if (m_isRanked && m_split[Place(group)] == kNone)
            for (const unsigned item : Items(group))
                --m_itemCount[item];
    }
    m_keyOf[Place(group)] = key;
}

bool Analysis::PickStart(Start& start) {
    start = Start();
    return PickKeyStart(start) || PickKeylessStart(start);
}

bool Analysis::PickKeyStart(Start& start) {
    while (m_nextKeyStart < m_keyStarts.size() && !IsOpen(m_keyStarts[m_nextKeyStart]))
        ++m_nextKeyStart;
    if (m_nextKeyStart == m_keyStarts.size()) return false;
    const int key = m_split[Place(m_keyStarts[m_nextKeyStart])];
    start.key = m_keys[Place(key)];
    start.hasKey = true;
    for (const int group : m_groupsOfKey[Place(key)]) {
        if (!IsOpen(group)) continue;
        start.groups.push_back(group);
        std::ranges::set_difference(Items(group), start.key, std::back_inserter(start.attributes));
    }
    SortUnique(start.attributes);
    return true;
}

bool Analysis::PickKeylessStart(Start& start) {
    if (!m_isRanked) RankKeyless();
    while (!m_ranks.empty()) {
        const Rank rank = m_ranks.top();
        m_ranks.pop();
        if (!IsOpen(rank.group)) continue;
        const std::size_t score = Score(rank.group);
        if (score < rank.score) {
            m_ranks.push({score, rank.group});
            continue;
        }
        start.key = Items(rank.group);
        start.groups.push_back(rank.group);
        return true;
    }
    return false;
}

void Analysis::RankKeyless() {
    m_isRanked = true;
    std::vector<int> keyless;
    for (int group = 0; group < static_cast<int>(m_groups.size()); ++group)
        if (m_split[Place(group)] == kNone && IsOpen(group)) keyless.push_back(group);
    for (const int group : keyless)
        for (const unsigned item : Items(group))
            ++m_itemCount[item];
    for (const int group : keyless)
        m_ranks.push({Score(group), group});
}

std::size_t Analysis::Score(int group) const {
    std::size_t score = 0;
    for (const unsigned item : Items(group))
        score += m_itemCount.at(item);
    return score;
}

void Analysis::EnterChain(int group) {
    if (m_isInChain[Place(group)]) return;
    m_isInChain[Place(group)] = true;
    m_chainGroups.push_back(group);
    if (IsOpen(group)) ++m_openInChain;
}

// The levels above the start's and its own, top level first. Empty if nothing of the start's key remains for a level.
std::vector<unsigned> Analysis::BuildChain(const Start& start) {
    for (const int group : std::exchange(m_chainGroups, {}))
        m_isInChain[Place(group)] = false;
    m_openInChain = 0;
    for (const int group : start.groups)
        EnterChain(group);

    // Downward in the keys' size, upward in the hierarchy.
    std::vector<Link> links;
    std::vector<unsigned> chain;
    ItemSet key = start.key;
    std::vector<unsigned> attributes = start.attributes;
    while (!key.empty()) {
        if (const auto known = m_memo.find(key); known != m_memo.end()) {
            chain = known->second;
            break;
        }
        Parent parent = FindParent(key, start.hasKey);
        ItemSet levelKeys = Difference(key, parent.key);
        if (levelKeys.empty()) break;
        const bool unique = links.empty() && start.hasKey && parent.key.empty();
        const auto number = static_cast<unsigned>(m_found.levels.size() + 1);
        m_found.levels.emplace(number, AQU_DimensionInfoFinder::Level{unique, levelKeys, attributes});
        for (const int group : parent.groups)
            EnterChain(group);
        attributes = parent.attributes;
        links.push_back({std::move(key), number, std::move(parent)});
        key = links.back().parent.key;
    }
    for (; !links.empty(); links.pop_back()) {
        const Link& link = links.back();
        chain.push_back(link.level);
        for (const int group : link.parent.groups)
            if (IsOpen(group)) Process(group, link.parent.key);
        m_memo[link.key] = chain;
    }
    return chain;
}

// The groups outside of the chain that share an item with the key, in order; `m_shared` says how many.
std::vector<int> Analysis::Neighbours(const ItemSet& key) {
    std::vector<int> neighbours;
    for (const unsigned item : key)
        for (const int group : m_groupsWith[item])
            if (!m_isInChain[Place(group)] && m_shared[Place(group)]++ == 0) neighbours.push_back(group);
    std::ranges::sort(neighbours);
    return neighbours;
}

Parent Analysis::FindParent(const ItemSet& key, bool hasKey) {
    Parent parent;
    const std::vector<int> neighbours = Neighbours(key);
    for (const int group : neighbours) {
        const ItemSet& known = m_keyOf[Place(group)];
        if (known.size() > parent.key.size() && std::ranges::includes(key, known)) parent.key = known;
    }
    if (m_openCount > m_openInChain) {
        // A key taken over from a processed group stands among the groups as one of its own, if it is one.
        const auto own = std::ranges::lower_bound(m_groups, parent.key);
        if (own != m_groups.end() && *own == parent.key)
            parent.groups.push_back(static_cast<int>(own - m_groups.begin()));

        for (const int group : neighbours) {
            const auto shared = static_cast<std::size_t>(m_shared[Place(group)]);
            if (!IsOpen(group) || shared < parent.key.size()) continue;
            if (!hasKey && shared != Items(group).size()) continue;
            ItemSet common = Intersection(key, Items(group));
            if (shared > parent.key.size()) {
                parent.key = std::move(common);
                parent.groups = {group};
            } else if (common == parent.key) {
                parent.groups.push_back(group);
            }
        }
        for (const int group : parent.groups)
            std::ranges::set_difference(Items(group), parent.key, std::back_inserter(parent.attributes));
        SortUnique(parent.attributes);
    }
    for (const int group : neighbours)
        m_shared[Place(group)] = 0;
    return parent;
}

} // namespace

std::vector<int> AQU_SplitGroups(const std::set<ItemSet>& keys, const std::set<ItemSet>& groups) {
    // A key can only lie in a group that has its first item; keys with the same first item stand together.
    std::unordered_map<unsigned, std::pair<int, std::vector<const ItemSet*>>> keysFrom;
    int place = 0;
    for (const ItemSet& key : keys) {
        auto& [first, sameStart] = keysFrom[key.front()];
        if (sameStart.empty()) first = place;
        sameStart.push_back(&key);
        ++place;
    }
    const auto splitOf = [&keysFrom](const ItemSet& group) {
        for (const unsigned item : group) {
            const auto found = keysFrom.find(item);
            if (found == keysFrom.end()) continue;
            const auto& [first, sameStart] = found->second;
            const auto key = std::ranges::find_if(
                sameStart, [&group](const ItemSet* candidate) { return std::ranges::includes(group, *candidate); });
            if (key != sameStart.end()) return first + static_cast<int>(key - sameStart.begin());
        }
        return kNone;
    };
    std::vector<int> split;
    std::ranges::transform(groups, std::back_inserter(split), splitOf);
    return split;
}

AQU_DimensionStructure AQU_FindStructure(const std::set<ItemSet>& keys, const std::set<ItemSet>& groups) {
    return Analysis(keys, groups).Run();
}
