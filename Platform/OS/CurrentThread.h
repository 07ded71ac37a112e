// The calling thread as the operating system knows it. Private to the platform library.
#pragma once

namespace brindle_platform {

// Differs between all threads that live at one time.
unsigned long currentThreadNumber();

} // namespace brindle_platform
