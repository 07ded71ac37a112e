// What the fuzzer's bytes mean to the target of the expander: records, parted by bytes 0xFF, which occur in no text.
// The first is the text that is expanded; each further one is a parameter, `name=value` or `map{key}=value`, or `?=N`,
// which sets the user option "ExprDisplayLimit".
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

namespace brindle_fuzz {

// Thrown by a map when an operation has made too many lookups: values that name each other a few times each would have
// an expansion go on for years. It is no exception of the library, so it also tests that such ones pass through.
struct LookupsSpent {};

// The parameters of one input. They allow a bounded number of lookups between two calls of Refill.
class BoundedParameters {
public:
    // A map beyond the sixth is left out.
    void Add(const I18NString& map, const I18NString& key, const I18NString& value);
    void Refill() { m_lookups = kLookups; }
    AQU_I_ParameterAccessCoordinator* Get() const { return m_coordinator.get(); }

private:
    class Map;
    static constexpr int kLookups = 300;
    static constexpr std::size_t kMaps = 6;

    int m_lookups = kLookups;
    std::map<I18NString, std::unique_ptr<AQU_ParameterMapApp>> m_maps;
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> m_coordinator{AQU_I_ParameterAccessCoordinator::Create()};
};

struct ExpanderInput {
    explicit ExpanderInput(std::string_view bytes);

    I18NString text;
    // The keys of the parameters in "_env".
    std::vector<I18NString> names;
    BoundedParameters parameters;
};

} // namespace brindle_fuzz
