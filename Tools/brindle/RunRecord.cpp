#include "RunRecord.h"

#include <CLI/CLI.hpp>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "PlatformHooks.h"

#include "TarnPerformance.h"

#include "Diagnostic.h"
#include "Library.h"

namespace brindle_tool {
namespace {

constexpr int kShowFunctions = 20000; // threshold of the logger that decides the verbosity
constexpr const char* kUnitSection = "General Options";
constexpr const char* kUnitOption = "PerformanceTimeUnitFactor";
constexpr const char* kMicroseconds = "1000000";                             // units in a second
constexpr const char* kStepNames[] = {"expansion", "execution", "printing"}; // by EStep

// Fit for a CDATA section.
std::string WithoutSectionEnd(std::string text) {
    for (std::size_t at = 0; (at = text.find("]]>", at)) != text.npos;)
        text.insert(at + 2, " ");
    return text;
}

void ShowStepsOfOneRun() {
    brindle_platform::setLoggerThreshold("Perf.QFS", kShowFunctions);
    // A run's steps would mostly take no milliseconds at all.
    const bool hasUnit = AUT_I_UserConfiguration::Create(1)->GetUnsigned(kUnitSection, kUnitOption, 0) != 0;
    if (!hasUnit) brindle_platform::overrideOption(kUnitSection, kUnitOption, kMicroseconds);
}

} // namespace

void AddPerformanceOption(CLI::App& parser, bool& wanted) {
    parser.add_flag_callback(
        "--performance",
        [&wanted] {
            wanted = true;
            ShowStepsOfOneRun();
        },
        "record in the logs directory where the run's time went, in microseconds");
}

RunRecord::RunRecord(bool wanted, const std::string& command) {
    if (!wanted) return;
    m_data = std::make_unique<AQE_PerfData>();
    m_data->SetReportName(command.c_str());
    m_query = m_data->RegisterQuery("text");
    m_component = TarnPerformance::RegisterComponent(m_data.get(), "brindle");
    for (const char* const name : kStepNames)
        TarnPerformance::RegisterComponentFunction(m_data.get(), m_component, name);
}

RunRecord::~RunRecord() {
    if (m_data == nullptr) return;
    try {
        // The failure that ends the run is what the exit status tells; this is a note beside it.
        if (const std::string path = Write(); !path.empty()) ShowNote("performance of the failed run in " + path);
    } catch (...) {
    }
}

void RunRecord::SetFile(const std::string& name) {
    if (m_data != nullptr) m_data->SetReportContext(WithoutSectionEnd(Printable(name)).c_str(), "", "");
}

void RunRecord::End() {
    if (m_data == nullptr) return;
    m_data->SetSuccess();
    const std::string path = Write();
    if (path.empty()) throw Failure({ShownPath("../logs"), "cannot write the performance record"});
    ShowNote("performance of the run in " + path);
}

std::string RunRecord::Write() {
    m_data.reset();
    return Printable(TarnPerformance::GetFileName().bytes());
}

} // namespace brindle_tool
