// The data of a run: its tables, its messages, and what its end does to measurements that still run.
#include "AQE_PerfData.h"

#include <algorithm>

#include "AQE_AutoPerformance.h"
#include "AQE_LogFile.h"
#include "TarnPerformance.h"

#include "QE_PerfRegistry.h"

namespace {

bool Admits(std::int32_t verbosity, int level) { return verbosity >= level || verbosity >= EPV_Everything; }

} // namespace

AQE_FunctionPerfData::~AQE_FunctionPerfData() = default;

AQE_ComponentPerfData::~AQE_ComponentPerfData() = default;

AQE_QueryPerfData::AQE_QueryPerfData(const I18NString& name) : m_name(name) { QE_PerfFitToRegistry(*this); }

AQE_QueryPerfData::~AQE_QueryPerfData() = default;

AQE_PerfData::AQE_PerfData() : m_summary("Report"), m_startTime(QE_PerfTimeStamp()) {}

// Nothing may leave a destructor; the second step is made whatever becomes of the first.
AQE_PerfData::~AQE_PerfData() {
    try {
        CutGuardsLoose();
    } catch (...) {
    }
    try {
        ToXMLFile();
    } catch (...) {
    }
}

void AQE_PerfData::SetReportName(const I18NString& name) { m_summary.m_name = name; }

void AQE_PerfData::SetSuccess() { m_success = true; }

void AQE_PerfData::SetRunNumber(int number) { m_runNumber = number; }

void AQE_PerfData::SetReportContext(const I18NString& reportContext, const I18NString& sessionID,
                                    const I18NString& requestID) {
    m_reportContext = reportContext;
    m_sessionID = sessionID;
    m_requestID = requestID;
}

bool AQE_PerfData::IsBeingInstrumented() const { return m_callStack.m_top >= 0; }

int AQE_PerfData::RegisterQuery(const I18NString& name) {
    const auto found = std::find_if(m_queries.begin(), m_queries.end(),
                                    [&name](const AQE_QueryPerfData& query) { return query.m_name == name; });
    const auto index = static_cast<int>(found - m_queries.begin());
    if (found == m_queries.end()) {
        // Held over both steps: another thread may be registering, and the summary must not be shorter than a query.
        const ZBLThreadGuard guard(QE_PerfLock);
        QE_PerfFitToRegistry(m_summary);
        m_queries.emplace_back(name);
    }
    return index;
}

void AQE_PerfData::AddProviderMessage(int query, int component, AUT_I_LogFile::ELogLevel level,
                                      const I18NString& text) {
    const std::int32_t verbosity = QE_PerfVerbosity;
    // A negative number is beyond the end, too.
    const auto queryAt = static_cast<std::size_t>(query), at = static_cast<std::size_t>(component);
    if (!Admits(verbosity, level) || queryAt >= m_queries.size()) return;
    AQE_QueryPerfData& messagesOf = m_queries[queryAt];
    if (at >= messagesOf.m_messages.size()) return;
    (verbosity >= EPV_Queries ? messagesOf : m_summary).m_messages[at].push_back(text);
}

// The guards come first and without anything that could fail, since they outlive this object.
void AQE_PerfData::CutGuardsLoose() {
    if (!IsBeingInstrumented()) return;
    const std::int32_t running = m_callStack.m_top;
    for (std::int32_t i = running; i >= 0; --i)
        m_callStack.m_calls[static_cast<std::size_t>(i)].m_guard->m_data = nullptr;
    m_callStack.m_top = -1;

    const I18NString text = "Performance internal Error: Performance object is destructed while being instrumented.";
    AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_Failure, text);
    for (std::int32_t i = running; i >= 0; --i) {
        const AQE_CallStack::CallData& call = m_callStack.m_calls[static_cast<std::size_t>(i)];
        AddProviderMessage(call.m_query, call.m_component, AUT_I_LogFile::ELL_Failure, text);
    }
}
