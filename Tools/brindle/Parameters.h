// The parameter options that several commands share, and the coordinator that answers from them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "AQU_I_ParameterAccessCoordinator.h"
#include "AQU_ParameterMapApp.h"

#include "ParameterFile.h"

namespace CLI {
class App;
}

namespace brindle_tool {

struct ParameterOptions {
    ParameterTable given; // on the command line
    std::vector<std::string> files;
    bool verbose = false;
};

// Adds -p, -m, --params and -v. `options` must outlive the parse.
void AddParameterOptions(CLI::App& parser, ParameterOptions& options);

// The values in force. Each later source replaces all values of a name that an earlier one gives: files in the order
// given, then the command line. Several values of one source make a list, so the process must have
// "MultiValuesAllowed" set. The maps of "VKEConfig.xml" stand in front of them and behind them, in lookups of one
// value; they belong to the library, which must be started.
class Parameters {
public:
    // Reads the files; with `verbose` notes each value that is a macro block itself.
    explicit Parameters(const ParameterOptions& options);

    const ParameterTable& GetTable() const { return m_table; }
    // The file, as it was given, or the options that the values of a name of the table come from.
    const std::string& GetSource(const ParameterName& name) const { return m_sources.at(name); }
    AQU_I_ParameterAccessCoordinator* GetCoordinator() { return m_coordinator.get(); }

private:
    void Replace(const ParameterTable& stronger, const std::string& source);

    ParameterTable m_table;
    std::map<ParameterName, std::string> m_sources;
    std::map<I18NString, AQU_ParameterMapApp> m_maps;
    std::unique_ptr<AQU_I_ParameterAccessCoordinator> m_coordinator;
};

} // namespace brindle_tool
