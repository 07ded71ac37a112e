// Counts the catalogue's starts and ends. The library's guard is always taken before the catalogue's own.
#include "AQF_Initialize.h"

#include <cstdint>

#include "ZBLCore/ZBLThread.h"

#include "ABrindle.h"

#include "QE_StartGuard.h"
#include "QFFunctionLoader.h"
#include "QFFunctionPool.h"

namespace {

constexpr const char* kComponent = "AQF_FunctionDescription";

// Taken behind QE_StartGuard, and recursive like it.
constinit ZBLThreadCriticalSection AQF_StartGuard{1};

// All guarded by AQF_StartGuard. The flags let the library, when it is started or ended from here, call back.
std::int32_t startCount = 0;
bool initializing = false;
bool terminating = false;

// Sets a flag for as long as it lives.
class Marked {
public:
    explicit Marked(bool& flag) : m_flag(flag) { m_flag = true; }
    ~Marked() { m_flag = false; }
    Marked(const Marked&) = delete;
    Marked& operator=(const Marked&) = delete;

private:
    bool& m_flag;
};

} // namespace

long AQF_Initialize(const char*) {
    const ZBLThreadGuard libraryGuard(QE_StartGuard);
    const ZBLThreadGuard guard(AQF_StartGuard);
    if (initializing) return 0;
    const Marked mark(initializing);
    if (startCount++ != 0) return 0;
    const long result = ABrindle_Initialize(kComponent);
    // A static vector that is made now, before any thread needs it.
    AQF_GetEmptyStringVector();
    return result;
}

long AQF_Terminate(const char*) {
    const ZBLThreadGuard libraryGuard(QE_StartGuard);
    const ZBLThreadGuard guard(AQF_StartGuard);
    if (initializing || terminating) return 0;
    const Marked mark(terminating);
    if (--startCount != 0) return 0;
    const long result = ABrindle_Terminate(kComponent);
    AQF_DeletePool();
    return result;
}

void AQF_SetInDevMode() { AQF_UseDevelopmentFiles(); }
