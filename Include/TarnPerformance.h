// The process-wide register of what is measured: components and their functions, each known by a small number, with the
// verbosity at which the runs' records are written and the directory of the file that they go to.
//
// Four components stand in it from the library's start: 0 "UDA" with nine functions ("sqlInitialize",
// "sqlTerminate", "sqlMultiDbAttachDirect", "sqlStart", "sqlPrepareWithOptions", "sqlAOpen", "sqlOpenResult",
// "sqlScrollBulkFetch", "sqlGenericOther"), 1 "DMB" with "LoadData", 2 "MDDS" with "MDDSDoRequest", and 3 "BAPI"
// without any. A number never changes between start and end of the library, and all runs share it.
#pragma once

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQE_PerfData;

// How much of a run its record shows; a higher number shows more. From EPV_Queries on, messages are kept by query.
enum EPerformanceVerbosity : int {
    EPV_Total = 0,      // the run and its total time
    EPV_Components = 1, // and the components, summed over the run
    EPV_Queries = 2,    // the components of each query
    EPV_Functions = 3,  // and their functions
    EPV_Everything = 7  // and messages of every level
};

// Every operation may be called on any thread, but for those that take a run's data: that is used by one thread at a
// time.
class BRINDLE_API TarnPerformance {
public:
    // Does nothing: the level comes from the thresholds of the logger "Perf.QFS" at the library's start.
    static void SetVerbosityLevel(EPerformanceVerbosity verbosity);

    // The directory for the next performance file; "../logs" where none is set. A relative one is completed by the
    // configuration service. It holds to the end of the library.
    static void SetLogDir(const I18NString& directory);

    // The path of the performance file that records go to; empty as long as none is open, and once it could not be made
    // or written.
    static I18NString GetFileName();

    // The number of the component, which is entered if it isn't there; an empty name is entered each time.
    static int RegisterComponent(const I18NString& name);
    // The same, and the tables of the run, its queries included, are made long enough for it. Null data: -1, and
    // nothing is entered.
    static int RegisterComponent(AQE_PerfData* data, const I18NString& name);

    // The number of the function within the component, which need not be registered; an empty name is entered each
    // time. -1 for a component below 0 or above 65535.
    static int RegisterComponentFunction(int component, const I18NString& name);
    // The same, and the tables of those parts of the run that know the component are made long enough. Null data: -1,
    // and nothing is entered.
    static int RegisterComponentFunction(AQE_PerfData* data, int component, const I18NString& name);

    // Called at the library's start: forgets all names but the built-in ones, takes verbosity and unit of time from the
    // settings and looks for a clock. Answers 0; the argument isn't used.
    static long Initialize(const char* component);

    // Called at the library's end: forgets all names and the directory, and closes the performance file. A run that
    // ends later begins another file.
    static void Terminate();
};
