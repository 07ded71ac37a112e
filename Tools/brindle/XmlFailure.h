// What is said of an XML file that can't be read or is not well-formed.
#pragma once

#include "Diagnostic.h"

class ZBLIDOM_Exception;

namespace brindle_tool {

// The file with the place, the parser's own words and the line. The line is left out if the file has gone since.
Diagnostic Describe(const ZBLIDOM_Exception& failure);

} // namespace brindle_tool
