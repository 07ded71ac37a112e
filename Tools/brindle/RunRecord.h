// A command's own run, measured by the library's instrumentation and recorded in its performance file if the command
// line asks for that.
#pragma once

#include <memory>
#include <string>

#include "AQE_AutoPerformance.h"
#include "AQE_PerfData.h"

namespace CLI {
class App;
}

namespace brindle_tool {

// What a run's time goes to; the steps of a run may lie within each other.
enum EStep : int { kExpansion = 0, kExecution = 1, kPrinting = 2 };

// Adds --performance. It sets verbosity and unit of time for the process, unless the user's settings give a unit, and
// so takes effect only if the library starts after the parse. `wanted` must outlive the parse.
void AddPerformanceOption(CLI::App& parser, bool& wanted);

// Needs the library. A record that isn't wanted costs and does nothing.
class RunRecord {
public:
    RunRecord(bool wanted, const std::string& command);
    RunRecord(const RunRecord&) = delete;
    RunRecord& operator=(const RunRecord&) = delete;
    // A run that ends without End has failed.
    ~RunRecord();

    // The file that the run is about, as it is shown.
    void SetFile(const std::string& name);

    // The time from now on belongs to the step, to the end of the guard.
    AQE_AutoPerformance Measure(EStep step) { return {m_data.get(), m_query, m_component, step}; }

    // The run was a success: writes the record and notes where it is. Throws Failure if it could not be written.
    void End();

private:
    // Empty if nothing was written.
    std::string Write();

    std::unique_ptr<AQE_PerfData> m_data; // null if no record is wanted, and behind Write
    int m_query = 0;
    int m_component = 0;
};

} // namespace brindle_tool
