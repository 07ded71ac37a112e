// Lookups in a generated catalogue of 5,000 entries and ten locales, by id and by display name, beside a bare map of
// the same keys. Names are asked for as they are displayed; library and peer both make them lower case first. Keys come
// in a random order, and a run is one lookup of each. The argument "--figure NAME" in front of all others makes the
// inputs of one figure only.
#include "CatalogueBenchmarks.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "Mortise/AUT_Text.h"
#include "PlatformHooks.h"

#include "AQF_I_FunctionDefinition.h"
#include "AQF_Initialize.h"

#include "CatalogueFiles.h"
#include "Inputs.h"
#include "RunBenchmarks.h"

namespace brindle_benchmark {
namespace {

using Definition = AQF_I_FunctionDefinition;
using Node = AQF_I_FunctionNode;
using Nodes = std::vector<Node*>;
using Keys = std::vector<I18NString>;

// The catalogue with a definition over it, for as long as the program runs.
struct Started {
    Started() {
        brindle_platform::setProgramDirectory(files.ProgramDirectory().c_str());
        AQF_Initialize("benchmark");
        definition.reset(Definition::Create("en-us"));
    }
    ~Started() {
        definition.reset();
        AQF_Terminate("benchmark");
    }

    GeneratedCatalogue files;
    std::unique_ptr<Definition> definition;
};

struct Lookups {
    Keys ids, names;
    std::map<I18NString, Node*> byId;
    std::multimap<I18NString, Node*> byName; // in lower case
};

Nodes EntriesOf(Definition& definition) {
    Nodes entries;
    Nodes pending{definition.GetRootNode()};
    while (!pending.empty()) {
        Node* const node = pending.back();
        pending.pop_back();
        if (!node->GetIsGroup()) entries.push_back(node);
        node->GetChildren(pending);
    }
    return entries;
}

Lookups MakeLookups(Definition& definition) {
    Lookups lookups;
    std::set<I18NString> names;
    for (Node* const entry : EntriesOf(definition)) {
        lookups.ids.push_back(entry->GetId());
        lookups.byId.emplace(entry->GetId(), entry);
    }
    for (const std::string& locale : GeneratedCatalogue::Locales()) {
        const std::unique_ptr<Definition> localized(Definition::Create(locale.c_str()));
        for (const I18NString& id : lookups.ids)
            if (const I18NString& name = localized->GetFunctionById(id)->GetName(); names.insert(name).second)
                lookups.names.push_back(name);
    }
    std::set<I18NString> keys;
    for (const I18NString& name : lookups.names) {
        const I18NString key = AUT_ToLower(name, AUT_DefaultLocale());
        Nodes found;
        if (keys.insert(key).second) definition.GetFunctionsByName(name, found);
        for (Node* const node : found)
            lookups.byName.emplace(key, node);
    }
    std::mt19937 random(42);
    std::shuffle(lookups.ids.begin(), lookups.ids.end(), random);
    std::shuffle(lookups.names.begin(), lookups.names.end(), random);
    return lookups;
}

// What a run finds, as one text.
template <class Find>
std::string Found(const Keys& keys, Find find) {
    Nodes nodes;
    for (const I18NString& key : keys)
        find(key, nodes);
    std::string text;
    for (Node* const node : nodes)
        text.append(node->GetId().bytes()) += '\n';
    return text;
}

template <class Find>
void Register(const std::string& run, const Keys& keys, Find find) {
    benchmark::RegisterBenchmark(run.c_str(), [&keys, find](benchmark::State& state) {
        Nodes nodes;
        for (auto _ : state)
            for (const I18NString& key : keys) {
                nodes.clear();
                find(key, nodes);
                benchmark::DoNotOptimize(nodes.data());
            }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(keys.size()));
        state.counters["sites"] = static_cast<double>(keys.size());
    });
}

} // namespace

void RegisterLookupRuns() {
    static Started started;
    static const Lookups lookups = MakeLookups(*started.definition);
    const auto brindleById = [](const I18NString& id, Nodes& nodes) {
        nodes.push_back(started.definition->GetFunctionById(id));
    };
    const auto mapById = [](const I18NString& id, Nodes& nodes) { nodes.push_back(lookups.byId.find(id)->second); };
    const auto brindleByName = [](const I18NString& name, Nodes& nodes) {
        started.definition->GetFunctionsByName(name, nodes);
    };
    const auto mapByName = [](const I18NString& name, Nodes& nodes) {
        auto [entry, end] = lookups.byName.equal_range(AUT_ToLower(name, AUT_DefaultLocale()));
        for (; entry != end; ++entry)
            nodes.push_back(entry->second);
    };
    RequireSame("lookup-id", Found(lookups.ids, brindleById), Found(lookups.ids, mapById));
    RequireSame("lookup-name", Found(lookups.names, brindleByName), Found(lookups.names, mapByName));
    Register("lookup-id/brindle", lookups.ids, brindleById);
    Register("lookup-id/map", lookups.ids, mapById);
    Register("lookup-name/brindle", lookups.names, brindleByName);
    Register("lookup-name/map", lookups.names, mapByName);
}

} // namespace brindle_benchmark

int main(int argc, char** argv) {
    return brindle_benchmark::RunBenchmarks(argc, argv, [](std::string_view figure) {
        if (figure.empty() || figure == "load") brindle_benchmark::RegisterLoadRuns();
        if (figure.empty() || figure == "lookup") brindle_benchmark::RegisterLookupRuns();
    });
}
