// Levels of support: the table by which two make one, and the evaluation of a function's rules.
#include "QFQosRules.h"

#include <cstddef>

#include "AQF_I_FunctionDefinition.h"

using Level = AQF_I_FunctionNode::EQoSLevel;

namespace {

constexpr Level U = AQF_I_FunctionNode::EQoSUnavailable;
constexpr Level R = AQF_I_FunctionNode::EQoSRestricted;
constexpr Level L = AQF_I_FunctionNode::EQoSLimited;
constexpr Level K = AQF_I_FunctionNode::EQoSOk;

// Rows are the first level, columns the second; the last column is any value that is no level.
constexpr Level kConsolidated[4][5] = {
    {U, R, R, R, U},
    {R, R, R, R, R},
    {R, R, L, L, U},
    {R, R, L, K, U},
};

constexpr Level kUnset = static_cast<Level>(-1);

} // namespace

Level AQF_I_FunctionDefinition::ConsolidateQosLevels(Level a, Level b) {
    if (a < U) return b;
    const auto row = static_cast<std::size_t>(a > K ? K : a);
    const std::size_t column = b < U || b > K ? 4 : static_cast<std::size_t>(b);
    return kConsolidated[row][column];
}

Level AQF_EvaluateQosRules(const std::vector<AQF_QosRule>& rules, const std::set<I18NString>& queryTypes,
                           const std::set<I18NString>& interfaces) {
    Level fallback = K;
    Level merged = kUnset;
    bool matched = false;
    // The size of the set from which the last rule with a selector selects, and how many rules hit one in their set.
    std::size_t candidates = 0;
    std::size_t hits = 0;
    for (const AQF_QosRule& rule : rules) {
        if (rule.kind == RK_default) {
            fallback = rule.level;
            continue;
        }
        const std::set<I18NString>& set = rule.kind == RK_interface ? interfaces : queryTypes;
        candidates = set.size();
        const bool hit = set.contains(rule.selector);
        if (!hit && !set.empty()) continue;
        merged = AQF_I_FunctionDefinition::ConsolidateQosLevels(merged, rule.level);
        matched = true;
        if (hit) ++hits;
    }
    // Some of the data sources in use have no rule of their own; the default speaks for them.
    if (candidates > hits) return AQF_I_FunctionDefinition::ConsolidateQosLevels(merged, fallback);
    return matched ? merged : fallback;
}
