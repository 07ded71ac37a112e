// The load of a generated catalogue, beside Expat building bare trees of strings of the same files and keeping them.
// Either is done once in a process, as a program does it, and what it takes to free the result is left out. Behind the
// time, what the load has made is compared with the trees.
#include "CatalogueBenchmarks.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "PlatformHooks.h"

#include "AQF_I_FunctionDefinition.h"
#include "AQF_Initialize.h"

#include "BareTree.h"
#include "CatalogueFiles.h"
#include "Inputs.h"

namespace brindle_benchmark {
namespace {

using Definition = std::unique_ptr<AQF_I_FunctionDefinition>;

std::vector<BareElement> ReadTrees(const GeneratedCatalogue& files) {
    std::vector<BareElement> trees;
    trees.reserve(files.Files().size());
    for (const std::string& file : files.Files())
        trees.push_back(ReadBareTree(file));
    return trees;
}

std::size_t HeapBytes() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

// Compares each entry below the element, and answers how many there are.
std::size_t CheckEntries(const BareElement& element, AQF_I_FunctionDefinition& definition) {
    std::size_t count = 0;
    for (const BareElement& child : element.children) {
        if (child.tag == "group") count += CheckEntries(child, definition);
        if (child.tag != "function" && child.tag != "summary" && child.tag != "operator") continue;
        ++count;
        const std::string& id = child.TextOfChild("id");
        AQF_I_FunctionNode* const node = definition.GetFunctionById(ToText(id));
        if (!node) throw std::runtime_error("load: no entry " + id);
        RequireSame("load, kind of " + id, node->GetProperty("type").bytes(), child.tag);
        for (const char* const property : {"id", "example", "result"})
            RequireSame("load, property of " + id, node->GetProperty(property).bytes(), child.TextOfChild(property));
        RequireSame("load, expression of " + id, node->GetCanonicalExpression().bytes(),
                    child.TextOfChild("canonicalExpression"));
        const auto isParameter = [](const BareElement& part) { return part.tag == "parameter"; };
        if (static_cast<std::ptrdiff_t>(node->GetParameterTypes().size()) !=
            std::count_if(child.children.begin(), child.children.end(), isParameter))
            throw std::runtime_error("load: the parameters of " + id + " differ");
    }
    return count;
}

std::size_t CountEntries(AQF_I_FunctionNode& node) {
    std::vector<AQF_I_FunctionNode*> children;
    node.GetChildren(children);
    std::size_t count = node.GetIsGroup() ? 0 : 1;
    for (AQF_I_FunctionNode* const child : children)
        count += CountEntries(*child);
    return count;
}

void CheckTexts(const BareElement& element, AQF_I_FunctionDefinition& definition) {
    for (const BareElement& child : element.children)
        CheckTexts(child, definition);
    if (element.tag != "string") return;
    AQF_I_FunctionNode* const node = definition.GetFunctionById(ToText(element.attributes.at(0).second));
    RequireSame("load, name", node ? node->GetName().bytes() : "", element.text);
    std::vector<AQF_I_FunctionNode*> found;
    definition.GetFunctionsByName(ToText(element.text), found);
    if (std::find(found.begin(), found.end(), node) == found.end())
        throw std::runtime_error("load: nothing is found by the name " + element.text);
}

// The files are the list, the definitions, and a file of texts for each locale.
void CheckLoaded(const std::vector<BareElement>& trees) {
    const std::vector<std::string>& locales = GeneratedCatalogue::Locales();
    const Definition definition(AQF_I_FunctionDefinition::Create(locales.front().c_str()));
    const std::size_t firstTexts = trees.size() - locales.size();
    std::size_t count = 0;
    for (std::size_t file = 1; file < firstTexts; ++file)
        count += CheckEntries(trees[file], *definition);
    if (count != CountEntries(*definition->GetRootNode())) throw std::runtime_error("load: the entries differ");
    for (std::size_t locale = 0; locale < locales.size(); ++locale) {
        const Definition localized(AQF_I_FunctionDefinition::Create(locales[locale].c_str()));
        CheckTexts(trees[firstTexts + locale], *localized);
    }
}

} // namespace

void RegisterLoadRuns() {
    static const GeneratedCatalogue files;
    benchmark::RegisterBenchmark("load/brindle", [](benchmark::State& state) {
        brindle_platform::setProgramDirectory(files.ProgramDirectory().c_str());
        AQF_Initialize("benchmark");
        const std::size_t before = HeapBytes();
        Definition definition;
        for (auto _ : state)
            definition.reset(AQF_I_FunctionDefinition::Create("en-us"));
        state.counters["memory"] = static_cast<double>(HeapBytes() - before);
        CheckLoaded(ReadTrees(files));
        definition.reset();
        AQF_Terminate("benchmark");
    })->Iterations(1);
    benchmark::RegisterBenchmark("load/expat", [](benchmark::State& state) {
        const std::size_t before = HeapBytes();
        std::vector<BareElement> trees;
        for (auto _ : state)
            trees = ReadTrees(files);
        state.counters["memory"] = static_cast<double>(HeapBytes() - before);
    })->Iterations(1);
}

} // namespace brindle_benchmark
