// Start and end of the library, and what it keeps for the whole process: the engine's own parameter maps, registers
// that callers fill and read, the module path and the locale operations.
//
//     if (ABrindle_Initialize("server") != 0) ...
//     coordinator->AddParameterAccessCoordinator(AQE_I_GetQueryEnginePAC());
//     ...
//     ABrindle_Terminate("server");
//
// Starts are counted: the first one starts the library and the last end ends it. A program that also starts the
// function catalogue itself ends the two in the reverse order of their starts. Otherwise one of the two counts can fall
// to -1, and the next start that it counts starts nothing.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQU_I_ParameterAccessCoordinator;

// The caller's name is not read. Any thread; a start or end waits for one that another thread is in. On the same
// thread, a start from inside a start does nothing, and neither does an end from inside a start or an end. A start from
// inside an end is counted, but the rest of that end takes down what it has started.

// Answers 0, or the result of the first step that failed. A failed first start counts like any other and is not undone:
// the next start answers 0 and retries nothing, so the caller has to end the library first. If the catalogue wasn't
// started because of the failure, that end is counted there all the same, and the next AQF_Initialize starts nothing.
// What a step throws passes out, above all ZBLIDOM_Exception of a "VKEConfig.xml" that is not well-formed; after that
// no start and no end does anything in this process.
BRINDLE_API long ABrindle_Initialize(const char* callerName);

// Always 0. An end without a start is not refused: the count falls to -1, and the next start starts nothing.
BRINDLE_API long ABrindle_Terminate(const char* callerName);

// The maps of "VKEConfig.xml", at priority 90 in front of every other map and at -90 behind them. Null before the first
// start; behind the last end the pointer is no longer valid. The coordinator and its maps are the library's, and the
// last end deletes also those that were added to it. No lock is taken: a thread that asks must know that no other one
// is in a start or end.
BRINDLE_API AQU_I_ParameterAccessCoordinator* AQE_I_GetQueryEnginePAC();

// Registers: set and answered as they are, null at first, never looked into and never freed. They take no lock, so they
// are set before the work begins that reads them.
BRINDLE_API void AQE_I_SetQueryEngineOverridePAC(AQU_I_ParameterAccessCoordinator* coordinator);
BRINDLE_API AQU_I_ParameterAccessCoordinator* AQE_I_GetQueryEngineOverridePAC();
BRINDLE_API void AQE_SetOPPerformanceCB(void* callback);
BRINDLE_API void AQE_SetDMBPerformanceCB(void* callback);
BRINDLE_API void AQE_SetMDDSPerformanceCB(void* callback);
BRINDLE_API void* AQE_GetOPPerformanceCB();
BRINDLE_API void* AQE_GetDMBPerformanceCB();
BRINDLE_API void* AQE_GetMDDSPerformanceCB();

// What follows may be called on any thread, whether the library is started or not.

// The directory of the running program, against which relative file names are completed.
BRINDLE_API I18NString AQE_GetModulePath();

// "QE", the component of the library's failures.
BRINDLE_API I18NString AQE_GetErrorComponent();

// Replaces the locale by the product locale that serves it. False if none does; `locale` then stays as it is. What the
// configuration service throws passes out.
BRINDLE_API bool AQE_GetProductLocale(I18NString& locale);

// Replaces the locale by the one of `supported` that serves it: the same locale, else its language, else one of the
// same language; without one, and for a locale that is no content locale, by the normalised `fallback`. False if that
// is empty. A ZBLConfigurationException is logged, `locale` becomes the normalised fallback and the answer is true.
BRINDLE_API bool AQE_GetContentLocale(I18NString& locale, const std::vector<I18NString>& supported,
                                      const I18NString& fallback);
