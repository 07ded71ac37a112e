// Parameters for an expansion, written as a table:
//
//     Parameters parameters{{"year", "2024"}, {"list", "a"}, {"list", "b"}, {"m{key}", "value"}};
//     expander.Expand(text, parameters.Get());
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "PlatformHooks.h"

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

namespace brindle_test {

// A plain name belongs to "_env", "map{key}" to that map; a name given twice has two values. Allows several values for
// the whole process.
class Parameters {
public:
    Parameters(std::initializer_list<std::pair<const char*, const char*>> rows = {}) {
        brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
        for (const auto& [name, value] : rows)
            Set(name, value);
    }

    void Set(const std::string& name, const I18NString& value) {
        const std::size_t curly = name.find('{');
        const bool isPlain = curly == std::string::npos || name.back() != '}';
        const I18NString mapName = isPlain ? "_env" : name.substr(0, curly).c_str();
        const I18NString key = isPlain ? name.c_str() : name.substr(curly + 1, name.size() - curly - 2).c_str();
        Map(mapName).Set(mapName, key, value);
    }

    AQU_I_ParameterAccessCoordinator* Get() const { return m_coordinator.get(); }

private:
    AQU_ParameterMapApp& Map(const I18NString& name) {
        for (const auto& [mapName, map] : m_maps)
            if (mapName == name) return *map;
        m_maps.emplace_back(name, std::make_unique<AQU_ParameterMapApp>(name, 0));
        m_coordinator->AddParameterMap(m_maps.back().second.get());
        return *m_maps.back().second;
    }

    std::vector<std::pair<I18NString, std::unique_ptr<AQU_ParameterMapApp>>> m_maps;
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> m_coordinator{AQU_I_ParameterAccessCoordinator::Create()};
};

} // namespace brindle_test
