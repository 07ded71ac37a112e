// The library started: what every command works in.
#pragma once

#include <string>

namespace brindle_tool {

// Starts the library, and ends it with the object. Throws Failure if it can't be started, and ZBLIDOM_Exception for a
// "VKEConfig.xml" that is not well-formed.
class Library {
public:
    Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();
};

// A path of the installation as it is shown; `fromPrograms` counts from the directory of the programs.
std::string ShownPath(const char* fromPrograms);

} // namespace brindle_tool
