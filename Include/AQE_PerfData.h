// What one report run has measured: calls and times by component and function, for the whole run and for each of its
// queries, with the messages that providers have left. Its destructor appends the run's record to the performance file.
//
// Queries, components and functions are numbers here, and every table is sized when a name is registered, so that a
// measurement touches no string and allocates nothing. A run's data belongs to one thread at a time.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include "Mortise/AUT_I_LogFile.h"
#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQE_AutoPerformance;
class TarnPerformance;
struct QE_PerfNames;

// Times are in units of the clock that measures, and are self times: what a nested measurement took is not in them.
class BRINDLE_API AQE_FunctionPerfData {
public:
    AQE_FunctionPerfData() = default;
    AQE_FunctionPerfData(const AQE_FunctionPerfData&) = default;
    AQE_FunctionPerfData& operator=(const AQE_FunctionPerfData&) = default;
    virtual ~AQE_FunctionPerfData();

    std::int32_t m_calls = 0;
    std::int64_t m_time = 0;
};

class BRINDLE_API AQE_ComponentPerfData {
public:
    AQE_ComponentPerfData() = default;
    AQE_ComponentPerfData(const AQE_ComponentPerfData&) = default;
    AQE_ComponentPerfData(AQE_ComponentPerfData&&) noexcept = default;
    AQE_ComponentPerfData& operator=(const AQE_ComponentPerfData&) = default;
    AQE_ComponentPerfData& operator=(AQE_ComponentPerfData&&) noexcept = default;
    virtual ~AQE_ComponentPerfData();

    std::int32_t m_calls = 0;
    std::int64_t m_time = 0;
    std::vector<AQE_FunctionPerfData> m_functions; // by function number
};

class BRINDLE_API AQE_QueryPerfData {
public:
    // The tables have room for all that is registered now.
    explicit AQE_QueryPerfData(const I18NString& name);
    AQE_QueryPerfData(const AQE_QueryPerfData&) = default;
    AQE_QueryPerfData(AQE_QueryPerfData&&) noexcept = default;
    AQE_QueryPerfData& operator=(const AQE_QueryPerfData&) = default;
    AQE_QueryPerfData& operator=(AQE_QueryPerfData&&) noexcept = default;
    virtual ~AQE_QueryPerfData();

    I18NString m_name;
    std::vector<AQE_ComponentPerfData> m_components; // by component number
    std::vector<std::vector<I18NString>> m_messages; // by component number, each in the order of arrival
};

// The measurements that are running, each begun within the one below it.
class AQE_CallStack {
public:
    // A measurement nested deeper is not made.
    static constexpr std::int32_t kDepth = 50;

    struct CallData {
        int m_query = -1;
        int m_component = -1;
        int m_function = -1;
        AQE_AutoPerformance* m_guard = nullptr;
    };

    std::vector<CallData> m_calls = std::vector<CallData>(kDepth);
    std::int32_t m_top = -1; // index of the innermost one, -1 if none is running
};

// In the record names stand in attributes, context and messages in CDATA sections, all as they are: a double quote or
// "<" in the ones, or a "]]>" in the others, makes a file that is not well-formed.
class BRINDLE_API AQE_PerfData {
public:
    // A run named "Report" that begins now and counts as failed until SetSuccess.
    AQE_PerfData();
    AQE_PerfData(const AQE_PerfData&) = delete;
    AQE_PerfData& operator=(const AQE_PerfData&) = delete;
    // Measurements that are still running are logged, noted as messages of their queries, and cut loose, so that their
    // ends touch nothing. Then the run's record is written; one that can't be made or written is lost.
    virtual ~AQE_PerfData();

    void SetReportName(const I18NString& name);
    void SetSuccess();
    void SetRunNumber(int number); // 1 where none is set
    void SetReportContext(const I18NString& reportContext, const I18NString& sessionID, const I18NString& requestID);

    // Whether a measurement is running.
    bool IsBeingInstrumented() const;

    // The number of the query, which is entered if there is none of this name.
    int RegisterQuery(const I18NString& name);

    // Keeps a message whose level isn't above the verbosity; from verbosity 7 on, a message of any level. Below
    // verbosity 2 it is kept with the run as a whole. A message for a query or component that the run doesn't have is
    // dropped.
    void AddProviderMessage(int query, int component, AUT_I_LogFile::ELogLevel level, const I18NString& text);

private:
    friend class AQE_AutoPerformance;
    friend class TarnPerformance;

    void CutGuardsLoose();
    void CreateXMLFile();
    void ToXMLFile();
    void OutputQueryData(std::ostream& stream, AQE_QueryPerfData& query, int tabs, const QE_PerfNames& names);

    AQE_CallStack m_callStack;
    AQE_QueryPerfData m_summary;              // all queries together; its name is the report's
    std::vector<AQE_QueryPerfData> m_queries; // by query number
    int m_numMeasurements = 0;
    I18NString m_startTime;
    I18NString m_endTime;
    bool m_success = false;
    int m_runNumber = 1;
    I18NString m_reportContext;
    I18NString m_sessionID;
    I18NString m_requestID;
};
