// The tree of descriptions, and the words for kinds and levels.
#include "QFFunctionDescription.h"

#include <set>
#include <utility>

#include "Mortise/AUT_Text.h"

#include "QFFunctionPool.h"
#include "QFInterfaceSets.h"

namespace {

// Words by value. They are answered by reference, so they stand in strings that are never destroyed.
template <std::size_t Count>
using Words = std::array<I18NString, Count>;

const Words<kFunctionTypeCount>& KindWords() {
    static const auto* const words = new Words<kFunctionTypeCount>{"unknown",  "group",   "function",  "summary",
                                                                   "operator", "literal", "operation", "format"};
    return *words;
}

const Words<4>& LevelWords() {
    static const auto* const words = new Words<4>{"unavailable", "restricted", "limited", "ok"};
    return *words;
}

// -1 if the word isn't among them.
template <std::size_t Count>
int PlaceOf(std::string_view word, const Words<Count>& words) {
    for (std::size_t place = 0; place < Count; ++place)
        if (words[place].bytes() == word) return static_cast<int>(place);
    return -1;
}

} // namespace

const I18NString& AQF_WordOfFunctionType(int kind) {
    const auto& words = KindWords();
    return words[kind > 0 && kind < kFunctionTypeCount ? static_cast<std::size_t>(kind) : 0];
}

EFunctionType AQF_FunctionTypeOfWord(std::string_view word) {
    const int kind = PlaceOf(word, KindWords());
    return kind > 0 ? static_cast<EFunctionType>(kind) : FT_unknown;
}

const I18NString& AQF_WordOfQosLevel(int level) {
    const auto& words = LevelWords();
    return level >= 0 && level < static_cast<int>(words.size()) ? words[static_cast<std::size_t>(level)]
                                                                : AUT_GetEmptyString();
}

bool AQF_QosLevelOfWord(std::string_view word, AQF_I_FunctionNode::EQoSLevel& level) {
    const int place = PlaceOf(word, LevelWords());
    if (place < 0) return false;
    level = static_cast<AQF_I_FunctionNode::EQoSLevel>(place);
    return true;
}

AQF_FunctionDescription::AQF_FunctionDescription(AQF_FunctionPool* owningPool, EFunctionType itsKind,
                                                 const I18NString& itsId)
    : pool(owningPool), id(itsId), kind(itsKind) {}

// Goes down to a leaf, frees it, and goes on at its parent, which has lost it by then.
AQF_FunctionDescription::~AQF_FunctionDescription() {
    AQF_FunctionDescription* at = this;
    for (;;) {
        if (at->children && !at->children->empty()) {
            AQF_FunctionDescription* const child = at->children->back().release();
            at->children->pop_back();
            at = child;
        } else if (at == this) {
            return;
        } else {
            AQF_FunctionDescription* const leaf = std::exchange(at, at->parent);
            delete leaf;
        }
    }
}

AQF_FunctionDescription* AQF_FunctionDescription::AddChild(std::unique_ptr<AQF_FunctionDescription> child) {
    if (kind != FT_group) return nullptr;
    if (!children) children = std::make_unique<std::vector<std::unique_ptr<AQF_FunctionDescription>>>();
    for (AQF_FunctionDescription* group = this; group != nullptr; group = group->parent)
        if (!group->kindCounts) group->kindCounts = std::make_unique<KindCounts>(KindCounts{});
    children->push_back(std::move(child));
    AQF_FunctionDescription* const added = children->back().get();
    added->parent = this;
    for (AQF_FunctionDescription* group = this; group != nullptr; group = group->parent)
        ++(*group->kindCounts)[static_cast<std::size_t>(added->kind)];
    return added;
}

void AQF_FunctionDescription::SetInterfaces(const I18NString& text) {
    const auto append = [this](const auto& codes) {
        interfaces.insert(interfaces.end(), codes.begin(), codes.end());
        pool->interfaces.insert(codes.begin(), codes.end());
    };
    if (AUT_CaseInsensitiveCompare(text, "all_rel") == 0) return append(AQF_GetRelationalInterfaces());
    if (AUT_CaseInsensitiveCompare(text, "all_olap") == 0) return append(AQF_GetMultidimensionalInterfaces());
    if (text.find("!") < 0) {
        interfaces.push_back(text);
        pool->interfaces.insert(AUT_ToUpper(text, AUT_DefaultLocale()));
        return;
    }
    // A "!" anywhere makes it an exclusion, but the code always begins at the second character.
    std::set<I18NString> others(AQF_GetRelationalInterfaces().begin(), AQF_GetRelationalInterfaces().end());
    others.insert(AQF_GetMultidimensionalInterfaces().begin(), AQF_GetMultidimensionalInterfaces().end());
    others.erase(text.substring(1));
    append(others);
}
