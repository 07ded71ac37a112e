// The options behind AUT_I_UserConfiguration: the settings file with the overrides of the test hooks in front of it.
//
// Readers see an immutable table through one atomic pointer. What changes the options withdraws the table; whoever
// reads next builds and publishes another under the store's lock. Tables are never freed, so what a reader found stays
// valid.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "Mortise/SettingsFile.h"

namespace brindle_platform {

// Null if the option isn't set, or neither text nor integer. Valid for ever. Any thread; no lock once the file was
// read.
const Option* findOption(std::string_view section, std::string_view name);

// How often the options have changed, counted from 1. What is found after it was asked for holds as long as it stays.
// Any thread; one load.
std::uint32_t countOptionChanges();

// The option as a number that fits the type; none if it is anything else.
template <class Integer>
std::optional<Integer> findNumber(std::string_view section, std::string_view name) {
    const Option* option = findOption(section, name);
    if (option == nullptr || !option->number || !std::in_range<Integer>(*option->number)) return std::nullopt;
    return static_cast<Integer>(*option->number);
}

} // namespace brindle_platform
