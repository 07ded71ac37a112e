// Parameters for an expansion, written as a table; a plain name belongs to "_env", a name given twice has two values:
//
//     Parameters parameters{{"year", "2024"}, {"list", "a"}, {"list", "b"}, {"map{key}", "value"}};
#pragma once

#include <initializer_list>
#include <map>
#include <memory>
#include <string>

#include "PlatformHooks.h"

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

namespace brindle_test {

// Allows several values for the whole process.
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
        const std::string mapName = isPlain ? "_env" : name.substr(0, curly);
        const std::string key = isPlain ? name : name.substr(curly + 1, name.size() - curly - 2);
        std::unique_ptr<AQU_ParameterMapApp>& map = m_maps[mapName];
        if (!map)
            m_coordinator->AddParameterMap((map = std::make_unique<AQU_ParameterMapApp>(mapName.c_str(), 0)).get());
        map->Set(mapName.c_str(), key.c_str(), value);
    }

    AQU_I_ParameterAccessCoordinator* Get() const { return m_coordinator.get(); }

private:
    std::map<std::string, std::unique_ptr<AQU_ParameterMapApp>> m_maps;
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> m_coordinator{AQU_I_ParameterAccessCoordinator::Create()};
};

} // namespace brindle_test
