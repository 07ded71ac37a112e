// The library started: what every command works in.
#pragma once

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

} // namespace brindle_tool
