#include <memory>
#include <sstream>

#include <gtest/gtest.h>

#include "PlatformHooks.h"

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

namespace {

using Strings = std::vector<I18NString>;

// A coordinator of "_env" maps with a second one nested in it. "10 a" is a map of priority 10 with "a" as value of the
// key "k" and as default; "-" has neither, "=" an empty default alone, and "10 >30 a" got the priority 30 after it was
// added.
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

    I18NString AllEntries() const {
        std::vector<std::pair<I18NString, I18NString>> entries{{"kept", ""}};
        I18NString shown = outer->GetAllEntries("_env", entries) == 1 ? "found: " : "none: ";
        for (const auto& [key, value] : entries)
            shown += key + "=" + value + " ";
        return shown;
    }

    std::vector<std::unique_ptr<AQU_ParameterMapApp>> maps;
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> inner{AQU_I_ParameterAccessCoordinator::Create()};
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> outer{AQU_I_ParameterAccessCoordinator::Create()};
};

TEST(ParameterAccessCoordinator, PrioritySettlesBetweenValuesAndBetweenDefaults) {
    const char* const kDefaultA = "-1? -1? -1a -1a 1a 1a 1";
    const char* const kDefaultB = "-1? -1? -1b -1b 1b 1b 1";
    const char* const rows[][4] = {
        // own maps, nested maps, what becomes of the key "k", and of another key
        {"10 - 20 -", "5 -", "-1? -1? -1 -1? -1 -1? 1", "-1? -1? -1 -1? -1 -1? 1"},
        {"10 a", "20 b", "1b 1b by 20 1b 1b 1b 1b 1", kDefaultB},
        {"5 a 5 b", "", "1a 1a by 5 1a 1a 1a 1a 1", kDefaultB},
        {"-7 a -6 c -7 b", "", "1c 1c by -6 1c 1c 1c 1c 1", kDefaultB},
        {"10 = 20 b", "", "1b 1b by 20 1b 1b 1b 1b 1", "-1? -1? -1b -1 1b 1 1"},
        {"20 a", "20 b", "1a 1a by 20 1a 1a 1a 1a 1", kDefaultA},
        {"10 >30 a 20 b", "", "1a 1a by 30 1a 1a 1a 1a 1", kDefaultA},
        {"10 a 20 >10 b", "", "1a 1a by 10 1a 1a 1a 1a 1", kDefaultB},
    };
    for (const auto& [own, nested, value, byDefault] : rows) {
        const Stack stack(own, nested);
        EXPECT_EQ(stack.Ask("k"), value) << own << " / " << nested;
        EXPECT_EQ(stack.Ask("missing"), byDefault) << own << " / " << nested;
    }
}

TEST(ParameterAccessCoordinator, AMapMayAddToTheCoordinatorThatIsAskingIt) {
    struct AddingMap : AQU_ParameterMapApp {
        explicit AddingMap(Stack& stack) : AQU_ParameterMapApp("_env", 0), m_outer(*stack.outer) {}
        using AQU_ParameterMapApp::Get;
        int Get(const I18NString&, const I18NString&, I18NString&) override {
            m_outer.AddParameterAccessCoordinator(m_added.outer.get());
            return 0; // nothing but 1 counts
        }
        AQU_I_ParameterAccessCoordinator& m_outer;
        Stack m_added{"-5 a"};
    };
    Stack stack("");
    AddingMap map(stack);
    stack.inner->AddParameterMap(&map);
    EXPECT_EQ(stack.Ask("k").substr(0, 2), "1a") << "the walk goes on to what was added";
}

TEST(ParameterAccessCoordinator, MapsAreListedOnceInTheOrderOfTheirOldPriority) {
    const Stack stack("20 >1 - 10 >2 - 20 -", "5 -");
    AQU_I_ParameterMap *a = stack.maps[0].get(), *b = stack.maps[1].get(), *c = stack.maps[2].get();
    stack.inner->AddParameterMap(a);
    stack.outer->AddParameterMap(b);
    const Stack third("3 -");
    stack.inner->AddParameterAccessCoordinator(third.outer.get());
    std::vector<AQU_I_ParameterMap*> all{c};
    stack.outer->GetAllMaps(all);
    EXPECT_EQ(all, (decltype(all){c, b, a, stack.maps[3].get(), third.maps[0].get()}));
    EXPECT_TRUE(stack.outer->GetParameterMapWithPriority(20) == a && stack.outer->IsThereParameterMapWithPriority(10));
    EXPECT_FALSE(stack.outer->GetParameterMapWithPriority(1) || stack.outer->IsThereParameterMapWithPriority(1));
}

TEST(ParameterAccessCoordinator, AllEntriesComeFromTheStrongestMapOfEachKey) {
    brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "1");
    const Stack stack("5 c 5 d 20 f", "-1 e");
    for (const auto& map : stack.maps)
        map->Set("k", "again");
    for (const char* value : {"e1", "e2"})
        stack.maps[3]->Set("a", value);
    EXPECT_EQ(stack.AllEntries(), "found: kept= a=e1 a=e2 k=f k=again ");
    brindle_platform::overrideOption("General Options", "MultiValuesAllowed", "0");
    EXPECT_EQ(stack.AllEntries(), "found: kept= a=e2 k=again ");
    EXPECT_EQ(Stack("").AllEntries(), "none: kept= ");
}

} // namespace
