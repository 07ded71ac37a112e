// How a coordinator settles between the answers of its maps.
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

namespace {

using Strings = std::vector<I18NString>;
using Maps = std::vector<AQU_I_ParameterMap*>;

// Leaves out what a map may leave out, as the one behind the configuration file does.
struct OneValueMap : AQU_ParameterMapApp {
    using Base = AQU_I_ParameterMap;
    using AQU_ParameterMapApp::AQU_ParameterMapApp, AQU_ParameterMapApp::Get, AQU_ParameterMapApp::GetDefault;
    int Get(const I18NString& m, const I18NString& k, Strings& out) override { return Base::Get(m, k, out); }
    int GetDefault(const I18NString& m, Strings& out) override { return Base::GetDefault(m, out); }
};

// A coordinator of "_env" maps with a second one nested in it. "10 a" is a map of priority 10 with "a" as value of the
// key "k" and as default; "-" has neither, "=" an empty default alone, "z" stands in a OneValueMap, and "10 >30 a" got
// the priority 30 after it was added.
struct Stack {
    explicit Stack(const char* own, const char* nested = "") {
        outer->AddParameterAccessCoordinator(inner.get());
        Fill(*outer, own);
        Fill(*inner, nested);
    }

    void Fill(AQU_I_ParameterAccessCoordinator& coordinator, const char* contents) {
        std::istringstream in(contents);
        int priority;
        for (char text; in >> priority >> text;) {
            maps.emplace_back(new AQU_ParameterMapApp("_env", priority));
            if (text == 'z') maps.back() = std::make_unique<OneValueMap>("_env", priority);
            coordinator.AddParameterMap(maps.back().get());
            if (text == '>' && in >> priority >> text) maps.back()->SetPriority(priority);
            if (text >= 'a') maps.back()->Set("k", I18NString(&text, 1));
            if (text != '-') maps.back()->SetDefault("_env", text == '=' ? "" : I18NString(&text, 1));
        }
    }

    // Every form of lookup, each with its result and what stands in an output that held "?" before.
    std::string Ask(const I18NString& key) const {
        std::ostringstream out;
        AQU_I_ParameterMap* map = nullptr;
        I18NString v;
        Strings vs;
        out << outer->Get("_env", key, v = "?", map) << v << ' ' << outer->Get("_env", key, vs = {"?"}, map) << vs[0];
        if (map != nullptr) out << " by " << map->GetPriority();
        out << ' ' << outer->Get("_env", key, v = "?") << v << ' ' << outer->Get("_env", key, vs = {"?"}) << vs[0];
        out << ' ' << outer->Get(key, v = "?") << v << ' ' << outer->Get(key, vs = {"?"}) << vs[0] << ' ' << vs.size();
        return out.str();
    }

    // The entries of "_env" behind those that `entries` holds: "key=value " for each.
    std::string AllEntries() const {
        std::vector<std::pair<I18NString, I18NString>> entries{{"kept", ""}};
        std::ostringstream out;
        out << outer->GetAllEntries("_env", entries) << ": ";
        for (const auto& [key, value] : entries)
            out << key << '=' << value << ' ';
        return out.str();
    }

    std::vector<std::unique_ptr<AQU_ParameterMapApp>> maps;
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> inner{AQU_I_ParameterAccessCoordinator::Create()};
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> outer{AQU_I_ParameterAccessCoordinator::Create()};
};

TEST(ParameterAccessCoordinator, PrioritySettlesBetweenValuesAndBetweenDefaults) {
    const char* const kNothing = "-1? -1? -1 -1? -1 -1? 1";
    const char* const kDefaultA = "-1? -1? -1a -1a 1a 1a 1";
    const char* const kDefaultB = "-1? -1? -1b -1b 1b 1b 1";
    const char* const rows[][4] = {
        // own maps, nested maps, what becomes of the key "k", and of another key
        {"10 - 20 -", "5 -", kNothing, kNothing},
        {"10 a 20 b", "", "1b 1b by 20 1b 1b 1b 1b 1", kDefaultA},
        {"20 b 10 a", "", "1b 1b by 20 1b 1b 1b 1b 1", kDefaultA},
        {"5 a 5 b", "", "1a 1a by 5 1a 1a 1a 1a 1", kDefaultB},
        {"-7 a -6 c -7 b", "", "1c 1c by -6 1c 1c 1c 1c 1", kDefaultB},
        {"10 = 20 b", "", "1b 1b by 20 1b 1b 1b 1b 1", "-1? -1? -1b -1 1b 1 1"},
        {"10 a 20 z", "", "1z 1a by 10 1z 1a 1z 1a 1", kDefaultA},
        {"20 z 30 b", "", "1b 1b by 30 1b 1b 1b 1b 1", "-1? -1? -1z -1b 1z 1b 1"},
        {"10 a", "20 b", "1b 1b by 20 1b 1b 1b 1b 1", kDefaultB},
        {"20 a", "20 b", "1a 1a by 20 1a 1a 1a 1a 1", kDefaultA},
        {"50 -", "-3 b", "1b 1b by -3 1b 1b 1b 1b 1", kDefaultB},
        {"10 a 30 c", "20 b", "1c 1c by 30 1c 1c 1c 1c 1", kDefaultB},
        {"10 >30 a 20 b", "", "1a 1a by 30 1a 1a 1a 1a 1", kDefaultA},
        {"20 >1 b 10 >1 a", "", "1a 1a by 1 1a 1a 1a 1a 1", kDefaultB},
    };
    for (const auto& [own, nested, value, byDefault] : rows) {
        const Stack stack(own, nested);
        EXPECT_EQ(stack.Ask("k"), value) << own << " / " << nested;
        EXPECT_EQ(stack.Ask("missing"), byDefault) << own << " / " << nested;
    }
}

TEST(ParameterAccessCoordinator, ResultMayGoIntoAnArgument) {
    I18NString key = "k";
    EXPECT_EQ(Stack("10 a 20 b").outer->Get("_env", key, key), 1);
    EXPECT_EQ(key, "b");
}

TEST(ParameterAccessCoordinator, MapsAreListedOnceInTheOrderOfTheirOldPriority) {
    const Stack stack("20 >1 - 10 >2 - 20 -", "5 -");
    AQU_I_ParameterMap *a = stack.maps[0].get(), *b = stack.maps[1].get(), *c = stack.maps[2].get();
    stack.inner->AddParameterMap(a);
    stack.outer->AddParameterMap(b);
    Maps own, all{c};
    stack.outer->GetMaps(own);
    stack.outer->GetAllMaps(all);
    EXPECT_EQ(own, (Maps{b, a, c}));
    EXPECT_EQ(all, (Maps{c, b, a, stack.maps[3].get()}));
    EXPECT_EQ(stack.outer->GetParameterMapWithPriority(20), a);
    for (const int priority : {1, 5, 10})
        EXPECT_EQ(stack.outer->IsThereParameterMapWithPriority(priority), priority == 10);
    EXPECT_EQ(stack.outer->GetParameterMapWithPriority(5), nullptr);
}

TEST(ParameterAccessCoordinator, AllEntriesComeFromTheStrongestMapOfEachKey) {
    const auto allowMultiValues = [](const char* option) {
        brindle_platform::overrideOption("General Options", "MultiValuesAllowed", option);
    };
    allowMultiValues("1");
    const Stack stack("5 c 5 d -1 e", "20 f");
    for (const auto& map : stack.maps)
        map->Set("k", "again");
    for (const char* value : {"e1", "e2"})
        stack.maps[2]->Set("a", value);
    EXPECT_EQ(stack.AllEntries(), "1: kept= a=e1 a=e2 k=f k=again ");
    // The nested map falls to the bottom: only priority counts here.
    stack.maps[3]->SetPriority(-2);
    EXPECT_EQ(stack.AllEntries(), "1: kept= a=e1 a=e2 k=d k=again ");
    allowMultiValues("0");
    EXPECT_EQ(stack.AllEntries(), "1: kept= a=e2 k=again ");
    EXPECT_EQ(Stack("").AllEntries(), "0: kept= ");
}

} // namespace
