// How an application measures where the time of a report goes. A small pipeline fetches rows of two queries, sorts them
// and lays them out; each step has a guard on the stack, guards lie within each other, and the library takes what a
// nested guard has measured off the one around it. The run's record is in the performance file when the run's data
// goes.
//
// The steps only pretend to work: they move a clock that the program has put in place of the machine's, so that the
// figures are the same whenever it runs. A real program leaves out what is marked as the clock's.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "Mortise/AUT_I_LogFile.h"
#include "PlatformHooks.h"
#include "ZBLCore/I18NString.h"

#include "ABrindle.h"
#include "AQE_AutoPerformance.h"
#include "AQE_PerfData.h"
#include "AQE_ResourcePerformance.h"
#include "AQU_ResourcePool.h"
#include "TarnPerformance.h"

namespace {

namespace fs = std::filesystem;

// The clock: nanoseconds.
std::int64_t now = 0;
void Work(int milliseconds) { now += std::int64_t{milliseconds} * 1'000'000; }

// The numbers by which the library knows a component and its functions. They hold for the whole process, so a component
// registers its names once and keeps the numbers.
struct Pipeline {
    int component = TarnPerformance::RegisterComponent("pipeline");
    int layOut = TarnPerformance::RegisterComponentFunction(component, "layOut");
    int fetch = TarnPerformance::RegisterComponentFunction(component, "fetch");
    int sort = TarnPerformance::RegisterComponentFunction(component, "sort");
};

// The components of one request share its pool. A guard finds the run's data in it; in a request that isn't measured
// there is none, or no pool at all, and a guard then costs next to nothing.
void Fetch(AQU_ResourcePool* request, const Pipeline& pipeline, int query, int milliseconds) {
    const AQE_AutoPerformance measured(request, query, pipeline.component, pipeline.fetch);
    Work(milliseconds);
}

void Sort(AQU_ResourcePool* request, const Pipeline& pipeline, int query) {
    const AQE_AutoPerformance measured(request, query, pipeline.component, pipeline.sort);
    Work(5);
    // The sort runs out of room and fetches the rest of the rows when it has made some.
    Fetch(request, pipeline, query, 20);
    Work(10);
}

// Lays out the orders, and in the middle of that the customers that are named in them.
void LayOut(AQU_ResourcePool* request, const Pipeline& pipeline, int orders, int customers) {
    const AQE_AutoPerformance measured(request, orders, pipeline.component, pipeline.layOut);
    Work(2);
    Fetch(request, pipeline, orders, 100);
    Sort(request, pipeline, orders);
    Fetch(request, pipeline, customers, 30);
    AQE_ResourcePerformance::AddProviderMessage(request, customers, pipeline.component, AUT_I_LogFile::ELL_Failure,
                                                "3 customers have no name");
    Work(6);
}

void RunReport() {
    const Pipeline pipeline;
    AQU_ResourcePool request;
    AQE_PerfData* const run = AQE_ResourcePerformance::Create(&request);
    run->SetReportName("orders by customer");
    AQE_ResourcePerformance::SetReportContext(&request, "/reports/orders <2024>", "session 17", "request 4");
    const int orders = run->RegisterQuery("orders");
    const int customers = run->RegisterQuery("customers");
    LayOut(&request, pipeline, orders, customers);
    run->SetSuccess();
    // The pool goes, the data with it, and the record is written.
}

// From the first line of a run to the last line of the file; what stands before is the same in every file.
void PrintRecords(const fs::path& file) {
    std::ifstream stream(file);
    bool isRecord = false;
    for (std::string line; std::getline(stream, line);) {
        isRecord = isRecord || line.find("<RP ") != line.npos;
        if (isRecord) std::cout << line << '\n';
    }
}

} // namespace

int main() {
    // The clock's: ticks, and the time stamps of the file's name and of its runs.
    brindle_platform::setPerformanceCounter([] { return now; });
    brindle_platform::setTimeStamp(
        [](int form) { return I18NString(form == 0 ? "20240401T120000Z" : "2024-04-01T12:00:00.000Z"); });

    // How much a record shows is read at the library's start. It is one of the user's settings,
    // [Instrumentation] "Perf.QFS" = 20000, which this program sets for itself.
    brindle_platform::overrideOption("Instrumentation", "Perf.QFS", "20000");
    if (ABrindle_Initialize("example") != 0) return 1;

    const fs::path program(std::string(AQE_GetModulePath().bytes()));
    fs::remove_all(program.parent_path() / "logs/example");
    TarnPerformance::SetLogDir("../logs/example");

    RunReport();

    const fs::path file(std::string(TarnPerformance::GetFileName().bytes()));
    ABrindle_Terminate("example");
    std::cout << "the run is recorded in " << file.lexically_relative(program).string() << '\n';
    PrintRecords(file);
    return std::cout.flush() ? 0 : 1;
}
