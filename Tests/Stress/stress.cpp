// Threads that use the library all at once: each starts it, does this and that in a random order, ends it and goes on
// without it. Every answer is checked, and in the end the performance files must hold every run whole.
//
//     brindle-stress [SECONDS [THREADS [SEED]]]
//
// Two seconds, or as many as BRINDLE_STRESS_SECONDS says, and 8 threads. What needs a started library is done between a
// start and its end, all else at any time, so that the library goes down and up again all the while.
#include <array>
#include <atomic>
#include <chrono>
#include <iostream>
#include <latch>
#include <random>
#include <set>
#include <thread>

#include "PlatformHooks.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"
#include "ZBLIDOM/ZBLIDOM_View.h"

#include "ABrindle.h"
#include "AQE_AutoPerformance.h"
#include "AQE_PerfData.h"
#include "AQE_SqlNames.h"
#include "AQF_I_FunctionDefinition.h"
#include "AQF_Initialize.h"
#include "AQM_I_MacroExpander.h"
#include "AQU_ParameterMapApp.h"
#include "QERes.h"
#include "TarnPerformance.h"

#include "Support/Catalogue.h"
#include "Support/FailureCheck.h"

namespace {

using std::to_string;

constexpr unsigned kFunctions = 60;

// None of these orders what the threads do, which would hide races.
constexpr std::memory_order kRelaxed = std::memory_order_relaxed;
std::atomic<int> nextRun = 0;
std::array<std::atomic<const I18NString*>, 524> strings{};

// A wrong answer ends the process.
void Check(const auto& found, const auto& expected) {
    if (found == expected) return;
    std::cerr << "found " << found << " for " << expected << std::endl;
    std::abort();
}

struct Worker {
    unsigned Below(unsigned bound) { return static_cast<unsigned>(m_random()) % bound; }
    I18NString Number(unsigned bound) { return to_string(Below(bound)).c_str(); }

    void Expand() {
        const I18NString number = Number(999);
        AQU_ParameterMapApp map("_env", 0);
        map.Set("p", "it's " + number), map.Set("nested", "#sq($p)#"), map.Set("strong", "mine");
        const std::unique_ptr<AQU_I_ParameterAccessCoordinator> maps(AQU_I_ParameterAccessCoordinator::Create());
        maps->AddParameterMap(&map);
        if (m_isStarted) maps->AddParameterAccessCoordinator(AQE_I_GetQueryEnginePAC());
        AQM_I_MacroExpander expander;
        Check(expander.Expand("#$nested + 'b'##join('-', split(',', 'a,b'))# #$strong##$weak#", maps.get()),
              "'it''s " + number + "'ba-b " + (m_isStarted ? "theirsfallback" : "mine"));
        if (Below(8) != 0) return; // what is logged passes one lock
        const std::string refused = brindle_test::FailureOf([&] { expander.Expand("ab#$# x", nullptr); });
        Check(refused, R"(QEExceptionExtended 901 0x35df687a(6, "ab#$#") @6 macro Source/QUYyError:251)");
    }
    void Quote() {
        const I18NString name = "ä] " + Number(999);
        std::vector<I18NString> parts;
        AQE_ExtractNamePartsFromString(AQE_MakeObjectName(name, "x"), parts), Check(parts.at(0), name);
        Check(AQE_MakeObjectName("x", name), "[x].[ä]]" + name.substring(2) + "]");
        Check(AQE_MakePhysicalSqlName(name) + AQE_MakePhysicalSqlName("SeLect") + AQE_MakePhysicalSqlName("x1"),
              "\"" + name + "\"\"SeLect\"x1");
    }
    void AskForString(unsigned number) {
        const I18NString* const string = &QERes::getString(number);
        const I18NString* known = nullptr;
        if (!strings[number].compare_exchange_strong(known, string, kRelaxed)) Check(string, known);
        Check(*string + QERes::getString(523) + AQE_GetErrorComponent(), *string + "nullableQE");
    }
    void Measure() {
        const int number = nextRun.fetch_add(1, kRelaxed);
        AQE_PerfData run;
        run.SetReportContext(I18NString(U'x', 1 + number % 999), "", "");
        run.SetReportName(m_isStarted ? "in" : "out"), run.SetRunNumber(number);
        const int component = TarnPerformance::RegisterComponent(&run, to_string(number % 50).c_str());
        const int function = TarnPerformance::RegisterComponentFunction(&run, component, to_string(number % 7).c_str());
        const int query = run.RegisterQuery("q");
        const AQE_AutoPerformance outer(&run, query, component, function), inner(&run, query, 0, 0);
    }
    void LookUp() {
        const I18NString locale = Below(2) ? "en-us" : "de", number = Number(kFunctions);
        const std::unique_ptr<AQF_I_FunctionDefinition> functions(AQF_I_FunctionDefinition::Create(locale));
        functions->AddInterface("or");
        AQF_I_FunctionNode* const node = functions->GetFunctionById(number);
        Check(node->GetName() + node->GetProperty("^" + number), locale + number);
        Check(functions->GetFunctionByName(locale + number)->GetId(), number);
        Check(AQF_I_FunctionDefinition::GetFunctionReturnType(locale + number), "t" + number);
    }

    void Some(unsigned count) {
        for (; count > 0; --count) {
            const unsigned kind = Below(m_isStarted ? 5 : 4); // the catalogue alone needs a started library
            if (kind == 0) Expand();
            if (kind == 1) Quote();
            if (kind == 2) AskForString(Below(strings.size()));
            if (kind == 3) Measure();
            if (kind == 4) LookUp();
        }
    }
    // The catalogue's own door may be used within, too.
    void Round() {
        Some(Below(32)), ABrindle_Initialize("");
        const bool throughBoth = Below(3) == 0;
        if (throughBoth) AQF_Initialize("");
        m_isStarted = true, Some(Below(10)), m_isStarted = false;
        if (throughBoth) AQF_Terminate("");
        ABrindle_Terminate("");
    }

    std::minstd_rand m_random;
    bool m_isStarted = false;
};

// Each run stands once in the files, and those of a started library with the names of what they have measured.
void CheckFiles() {
    std::set<int> found;
    for (const auto& file : std::filesystem::directory_iterator("logs")) {
        ZBLIDOM_Document document = ZBLIDOM_DOMImplementation::getInstance().createDocument("", "", {});
        ZBLIDOM_Parser(0).parse(file.path().c_str(), document);
        ZBLIDOM_View run = ZBLIDOM_View(document.getDocumentElement()).getFirstElement();
        while ((run = run.getNextElement())) {
            const int number = std::stoi(std::string(run.getAttribute("rN")));
            const ZBLIDOM_View own = run.getFirstElement().getNextElement().getFirstElement();
            Check(found.insert(number).second, true);
            if (run.getAttribute("n") == "out") continue;
            Check(own.getAttribute("n"), to_string(number % 50));
            Check(own.getFirstElement().getAttribute("n"), to_string(number % 7));
            Check(own.getNextElement().getFirstElement().getAttribute("n"), "sqlInitialize");
        }
    }
    Check(found.size(), static_cast<unsigned>(nextRun));
}

void Install(const brindle_test::TestCatalogue& catalogue) {
    std::string entries, texts[2];
    for (unsigned i = 0; i < kFunctions; ++i) {
        const std::string id = to_string(i), string = "<string id=\"" + id + "\">";
        entries += "<function><id>" + id + "</id><returnType>t" + id + "</returnType></function>";
        texts[0] += string + "en-us" + id + "</string>", texts[1] += string + "de" + id + "</string>";
    }
    catalogue.Fill(entries, {{"en-us", texts[0]}, {"de", texts[1]}});
    catalogue.Write("../VKEConfig.xml", R"(<c><section name="ParameterMaps"><map name="_env" priority="90">
<entry name="strong" value="theirs"/></map><map name="_env" priority="-90"><entry name="weak" value="fallback"/></map>
</section></c>)");
    std::filesystem::create_directory("bin");
    brindle_platform::setUserConfigurationFile((catalogue.Folder() + "/settings.toml").c_str());
    brindle_platform::setLoggerThreshold("Perf.QFS", 20000), brindle_platform::clearLogLevels();
}

} // namespace

int main(int argc, char** argv) {
    const char* const asked = argc > 1 ? argv[1] : std::getenv("BRINDLE_STRESS_SECONDS");
    const std::chrono::seconds time(asked ? std::atoi(asked) : 2);
    std::vector<Worker> workers(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 8);
    const unsigned seed = argc > 3 ? static_cast<unsigned>(std::atol(argv[3])) : std::random_device()();
    std::cout << "seed " << seed << std::endl;
    long starts = 0; // of the whole library; sinks are called one at a time
    const brindle_test::TestCatalogue catalogue;
    Install(catalogue);
    brindle_platform::setLogSink([&](const auto& record) { starts += record.text.find("VKE LogLevel=") == 0; });
    AQF_Terminate("test");

    std::latch all(static_cast<std::ptrdiff_t>(workers.size()));
    std::vector<std::jthread> threads;
    for (Worker& worker : workers) {
        worker.m_random.seed(seed + static_cast<unsigned>(threads.size()));
        threads.emplace_back([&worker, &all, end = std::chrono::steady_clock::now() + time] {
            all.arrive_and_wait();
            for (unsigned number = 0; number < strings.size(); ++number)
                worker.AskForString(number); // that all are made while others ask, too
            while (std::chrono::steady_clock::now() < end)
                worker.Round();
        });
    }
    threads.clear();
    const long before = starts;
    AQF_Initialize("test");
    Check(starts, before + 1); // every start had its end
    CheckFiles();
    std::cout << before << " starts of a library that was down, " << nextRun << " runs\n";
}
