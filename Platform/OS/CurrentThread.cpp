#include "OS/CurrentThread.h"

#include <unistd.h>

namespace brindle_platform {

// Asked for each time: a number kept in the thread would be the parent's in a forked child.
unsigned long currentThreadNumber() { return static_cast<unsigned long>(::gettid()); }

} // namespace brindle_platform
