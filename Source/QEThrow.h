// The one way in which the library throws: the failure is logged at the place where it arises, not where it is caught,
// and the copy that is thrown notes that place in its back-trace.
#pragma once

#include <cstdlib>

#include "Mortise/AUT_LogException.h"
#include "ZBLCore/ZBLException.h"

// Logs the exception and throws a copy of its own class. The path is the source's path below the library's root without
// extension; path and line are literals at the site and name the failure in the log for good, so the line stays as it
// is when the code around it moves.
[[noreturn]] inline void QELogAndThrow(ZBLException& exception, const char* path, long line) {
    AUT_LogException(exception, path, line);
    exception.hurl(ZBLFileLocation(path, line), "QE", "ZBL_THROW");
    // Never reached; the compiler doesn't take a virtual function's word for it.
    std::abort();
}
