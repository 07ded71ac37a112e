// Start and end of the function catalogue.
//
// Starts and ends are counted, apart from those of the library. The first start of either starts the other, too, and
// the last end likewise. A program that starts both itself ends them in the reverse order. Ended in the order of the
// starts, one of the two counts goes below zero, and the next start of that one starts nothing: after
// ABrindle_Initialize, AQF_Initialize, ABrindle_Terminate, AQF_Terminate it is the library's, after AQF_Initialize,
// ABrindle_Initialize, AQF_Terminate, ABrindle_Terminate the catalogue's.
//
// Safe on any thread. The library's start guard is taken before the catalogue's, so the two doors don't block each
// other.
#pragma once

#include "BrindleApi.h"

// Answers 0, or on the first start what ABrindle_Initialize answers. No file is read: the catalogue loads on its first
// use. The caller's name is not used.
BRINDLE_API long AQF_Initialize(const char* callerName);

// Answers 0, or on the last end what ABrindle_Terminate answers. The last end frees what was loaded, and everything
// that still refers to it dangles; a later use loads again. There is no test against an end without a start.
BRINDLE_API long AQF_Terminate(const char* callerName);

// From now on the catalogue's files are sought where they lie in a tree of sources instead of an installation: in
// "../../src/vke/Utility/FDS" below the program directory, those with texts in the folder "res" of it. It can't be
// taken back, and changes nothing for a catalogue that is loaded.
BRINDLE_API void AQF_SetInDevMode();
