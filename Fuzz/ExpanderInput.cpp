#include "ExpanderInput.h"

#include <algorithm>

#include "PlatformHooks.h"

namespace brindle_fuzz {
namespace {

constexpr char kRecordSeparator = '\xFF';

std::string_view CutRecord(std::string_view& rest) {
    const std::string_view record = rest.substr(0, rest.find(kRecordSeparator));
    rest.remove_prefix(std::min(record.size() + 1, rest.size()));
    return record;
}

} // namespace

// The coordinator asks through these two operations only.
class BoundedParameters::Map : public AQU_ParameterMapApp {
public:
    Map(const I18NString& name, int& lookups) : AQU_ParameterMapApp(name, 0), m_lookups(lookups) {}

    int Get(const I18NString& map, const I18NString& key, std::vector<I18NString>& values) override {
        Count();
        return AQU_ParameterMapApp::Get(map, key, values);
    }
    int Get(const I18NString& map, const I18NString& key, I18NString& value) override {
        Count();
        return AQU_ParameterMapApp::Get(map, key, value);
    }

private:
    void Count() {
        if (m_lookups-- <= 0) throw LookupsSpent();
    }

    int& m_lookups;
};

void BoundedParameters::Add(const I18NString& map, const I18NString& key, const I18NString& value) {
    auto found = m_maps.find(map);
    if (found == m_maps.end()) {
        if (m_maps.size() == kMaps) return;
        found = m_maps.emplace(map, std::make_unique<Map>(map, m_lookups)).first;
        m_coordinator->AddParameterMap(found->second.get());
    }
    found->second->Set(map, key, value);
}

ExpanderInput::ExpanderInput(std::string_view bytes) : text(CutRecord(bytes)) {
    I18NString displayLimit("0");
    while (!bytes.empty()) {
        const std::string_view record = CutRecord(bytes);
        const std::string_view name = record.substr(0, record.find('='));
        const I18NString value(record.substr(std::min(name.size() + 1, record.size())));
        const std::size_t curly = name.find('{');
        if (name == "?") {
            displayLimit = value;
        } else if (curly != std::string_view::npos && name.back() == '}') {
            const std::string_view key = name.substr(curly + 1, name.size() - curly - 2);
            parameters.Add(I18NString(name.substr(0, curly)), I18NString(key), value);
        } else {
            names.emplace_back(name);
            parameters.Add("_env", names.back(), value);
        }
    }
    brindle_platform::overrideOption("General Options", "ExprDisplayLimit", displayLimit);
}

} // namespace brindle_fuzz
