// The guard that measures one call. Only a refused guard touches strings.
#include "AQE_AutoPerformance.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "Mortise/AUT_Text.h"

#include "AQE_LogFile.h"
#include "AQE_PerfData.h"
#include "AQE_ResourcePerformance.h"

#include "QE_PerfRegistry.h"

namespace {

// A negative number is beyond the end, too.
template <class Table>
bool Has(const Table& table, int index) {
    return static_cast<std::size_t>(index) < table.size();
}

bool IsRegistered(const std::vector<AQE_QueryPerfData>& queries, int query, int component, int function) {
    if (!Has(queries, query)) return false;
    const std::vector<AQE_ComponentPerfData>& components = queries[static_cast<std::size_t>(query)].m_components;
    return Has(components, component) && Has(components[static_cast<std::size_t>(component)].m_functions, function);
}

// Which of the numbers is the first that the run doesn't have.
I18NString DescribeUnregistered(const std::vector<AQE_QueryPerfData>& queries, int query, int component, int function) {
    if (!Has(queries, query)) return "Query ID " + AUT_ToString(query) + " is not registered.";
    const std::vector<AQE_ComponentPerfData>& components = queries[static_cast<std::size_t>(query)].m_components;
    if (!Has(components, component)) return "Component ID" + AUT_ToString(component) + " is not registered.";
    const auto row = static_cast<std::size_t>(component);
    return "Function ID" + AUT_ToString(function) + " is not registered for provider " +
           QE_PerfCopyNames(row + 1).ComponentName(row);
}

void BookCall(AQE_QueryPerfData& query, std::size_t component, std::size_t function, std::int64_t elapsedTicks) {
    AQE_ComponentPerfData& componentData = query.m_components[component];
    ++componentData.m_calls;
    componentData.m_time += elapsedTicks;
    AQE_FunctionPerfData& functionData = componentData.m_functions[function];
    ++functionData.m_calls;
    functionData.m_time += elapsedTicks;
}

void TakeOff(AQE_QueryPerfData& query, std::size_t component, std::size_t function, std::int64_t elapsedTicks) {
    AQE_ComponentPerfData& componentData = query.m_components[component];
    componentData.m_time -= elapsedTicks;
    componentData.m_functions[function].m_time -= elapsedTicks;
}

} // namespace

void AQE_AutoPerformance::StartWithPool(AQU_ResourcePool* pool, int query, int component, int function) {
    m_data = AQE_ResourcePerformance::Get(pool);
    if (m_data != nullptr) StartInstrumentation(query, component, function);
}

void AQE_AutoPerformance::StartInstrumentation(int query, int component, int function) {
    AQE_PerfData& data = *m_data;
    if (!IsRegistered(data.m_queries, query, component, function)) return Refuse(query, component, function);
    AQE_CallStack& stack = data.m_callStack;
    if (stack.m_top + 1 >= AQE_CallStack::kDepth) {
        m_data = nullptr;
        return;
    }
    m_query = query;
    m_component = component;
    m_function = function;
    m_startTime = QE_PerfNow();
    stack.m_calls[static_cast<std::size_t>(++stack.m_top)] = {query, component, function, this};
}

// A function of its own, so that the start of a measurement has no strings in its frame.
void AQE_AutoPerformance::Refuse(int query, int component, int function) {
    const AQE_PerfData& data = *std::exchange(m_data, nullptr);
    AQE_LogFile("QE").Log(AUT_I_LogFile::ELL_Diagnostic,
                          "Performance internal error: " +
                              DescribeUnregistered(data.m_queries, query, component, function));
}

// The stack only tells who the caller is. The elapsed time is taken off the caller's now; the caller's own elapsed
// time, which contains it, is added when the caller ends.
void AQE_AutoPerformance::StopInstrumentation() {
    AQE_PerfData& data = *m_data;
    const std::int64_t elapsedTicks = QE_PerfNow() - m_startTime;
    const std::int32_t top = --data.m_callStack.m_top;
    ++data.m_numMeasurements;
    const auto component = static_cast<std::size_t>(m_component);
    const auto function = static_cast<std::size_t>(m_function);
    BookCall(data.m_summary, component, function, elapsedTicks);
    BookCall(data.m_queries[static_cast<std::size_t>(m_query)], component, function, elapsedTicks);
    if (top < 0) return;
    const AQE_CallStack::CallData& caller = data.m_callStack.m_calls[static_cast<std::size_t>(top)];
    const auto callerComponent = static_cast<std::size_t>(caller.m_component);
    const auto callerFunction = static_cast<std::size_t>(caller.m_function);
    TakeOff(data.m_summary, callerComponent, callerFunction, elapsedTicks);
    TakeOff(data.m_queries[static_cast<std::size_t>(caller.m_query)], callerComponent, callerFunction, elapsedTicks);
}
