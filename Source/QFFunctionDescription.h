// What the catalogue knows of its groups and entries: the tree of descriptions that every client's definition is a view
// of. It is filled while the files are read and doesn't change afterwards, so any thread may read it then.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionNode.h"

class AQF_FunctionDescription;
class AQF_FunctionPool;

inline constexpr int kFunctionTypeCount = 8;

// The element and word of a kind; "unknown" for a value that is none.
const I18NString& AQF_WordOfFunctionType(int kind);
// FT_unknown for a word that is none. "group" is a word like the others.
EFunctionType AQF_FunctionTypeOfWord(std::string_view word);

// Empty for a value that is no level.
const I18NString& AQF_WordOfQosLevel(int level);
// False, and `level` untouched, for a word that is none.
bool AQF_QosLevelOfWord(std::string_view word, AQF_I_FunctionNode::EQoSLevel& level);

enum EQosRuleKind : int { RK_default = 0, RK_datasourceQueryType = 1, RK_interface = 2 };

// A level of support, for every data source or for those that the selector names.
struct AQF_QosRule {
    EQosRuleKind kind = RK_default;
    I18NString selector; // empty for RK_default
    AQF_I_FunctionNode::EQoSLevel level = AQF_I_FunctionNode::EQoSOk;
};

struct AQF_ParameterDescription {
    I18NString type; // alternatives joined by " | "
    std::int32_t minOccurs = 1;
    std::int32_t maxOccurs = 1;
    std::int32_t nullable = 0; // 0 not stated, 1 true, 2 false
};

// A library is only a name with a list of its entries, in reading order.
struct AQF_LibraryDescription {
    I18NString name;
    std::vector<AQF_FunctionDescription*> entries;
};

// One group or entry. A plain record: whoever reads the files fills it in.
class AQF_FunctionDescription {
public:
    // The count of each kind.
    using KindCounts = std::array<std::uint32_t, kFunctionTypeCount>;

    AQF_FunctionDescription(AQF_FunctionPool* owningPool, EFunctionType itsKind, const I18NString& itsId);
    // Frees the subtree without recursion and without taking memory, however deep it is.
    ~AQF_FunctionDescription();
    AQF_FunctionDescription(const AQF_FunctionDescription&) = delete;
    AQF_FunctionDescription& operator=(const AQF_FunctionDescription&) = delete;

    // Appends the child, sets its parent, and counts it here and in every group above. Answers the child, or null if
    // this is no group; then the child is gone. The child must not have children yet: they wouldn't be counted.
    AQF_FunctionDescription* AddChild(std::unique_ptr<AQF_FunctionDescription> child);

    // Reads the text of an `interface` element: one code, one of the two sets, or all codes but one. Appends to the
    // interfaces here and inserts them into those of the pool.
    void SetInterfaces(const I18NString& text);

    AQF_FunctionPool* pool;
    AQF_FunctionDescription* parent = nullptr;
    I18NString id;
    I18NString name; // empty for groups
    EFunctionType kind;
    I18NString canonical;
    I18NString canonicalExpression;
    I18NString returnType;
    I18NString formatType;
    // Null until the first child arrives.
    std::unique_ptr<std::vector<std::unique_ptr<AQF_FunctionDescription>>> children;
    AQF_LibraryDescription* library = nullptr;
    std::vector<AQF_ParameterDescription> parameters;
    AQF_I_FunctionNode::EQoSLevel qosLevel = AQF_I_FunctionNode::EQoSOk;
    bool hidden = false;
    bool dimensional = false;
    std::vector<I18NString> vendors;
    std::vector<I18NString> contexts;
    std::vector<I18NString> interfaces;
    // Null until the first element that has no meaning of its own arrives.
    std::unique_ptr<std::map<I18NString, I18NString>> properties;
    // The descendants of each kind in the whole subtree; null until the first child of a group.
    std::unique_ptr<KindCounts> kindCounts;
    std::vector<AQF_QosRule> rules;
};
