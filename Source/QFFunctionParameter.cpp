// Types of parameters and their alternatives.
#include "QFFunctionParameter.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "Mortise/AUT_Text.h"

namespace {

// What stands for a part of a data source, or for a word of the language, is never null.
constexpr std::string_view kNotNullable[] = {"dimension", "hierarchy", "level", "measure",   "member",
                                             "set",       "memberSet", "tuple", "queryItem", "keyword"};

// Calls `take` with each piece between separators, the empty ones too, until it answers false.
template <class Take>
void ForEachAlternative(std::string_view type, Take take) {
    constexpr std::string_view separator = " | ";
    for (;;) {
        const std::size_t end = type.find(separator);
        if (!take(type.substr(0, end)) || end == type.npos) return;
        type.remove_prefix(end + separator.size());
    }
}

} // namespace

AQF_I_FunctionParameter::~AQF_I_FunctionParameter() = default;

int AQF_I_FunctionParameter::GetMaxOccurs() { return 1; }

bool AQF_I_FunctionParameter::GetIsNullable() { return true; }

AQF_FunctionParameter::AQF_FunctionParameter(const AQF_ParameterDescription* description)
    : m_description(description) {}

void AQF_FunctionParameter::GetTypes(std::vector<I18NString>& types) {
    if (m_description == nullptr) return;
    ForEachAlternative(m_description->type.bytes(), [&types](std::string_view alternative) {
        types.push_back(I18NString::fromValidUtf8(std::string(alternative)));
        return true;
    });
}

const I18NString& AQF_FunctionParameter::GetType() {
    return m_description != nullptr ? m_description->type : AUT_GetEmptyString();
}

bool AQF_FunctionParameter::GetIsOptional() { return GetMinOccurs() == 0; }

int AQF_FunctionParameter::GetMinOccurs() { return m_description != nullptr ? m_description->minOccurs : 1; }

int AQF_FunctionParameter::GetMaxOccurs() {
    return m_description != nullptr ? m_description->maxOccurs : AQF_I_FunctionParameter::GetMaxOccurs();
}

bool AQF_FunctionParameter::GetIsNullable() {
    if (m_description == nullptr) return AQF_I_FunctionParameter::GetIsNullable();
    if (m_description->nullable != 0) return m_description->nullable == 1;
    bool nullable = true;
    ForEachAlternative(m_description->type.bytes(), [&nullable](std::string_view alternative) {
        nullable = std::find(std::begin(kNotNullable), std::end(kNotNullable), alternative) == std::end(kNotNullable);
        return nullable;
    });
    return nullable;
}
