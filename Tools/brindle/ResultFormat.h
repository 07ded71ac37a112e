// The rows of a query as text, in one of three formats.
//
// table: for the eye. Numbers stand right, reals have 15 digits, NULL is the word; what would move the cursor or steer
// a terminal is replaced by a visible character.
//
// csv: a header line, then the rows; lines end with CR LF, a field is quoted if it has to be. NULL is an empty field,
// the empty text is "".
//
// json: an array with one object to a line. Of columns that share a name the second gets the suffix "_2" and so on.
//
// In csv and json a number has all its digits, so that nothing is lost. Infinity is Inf, in json a text. A blob is
// x'..' with hexadecimal digits in all three.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Database.h"

namespace brindle_tool {

// One result: the columns once, then its rows in order, then the text.
class ResultWriter {
public:
    virtual ~ResultWriter() = default;
    virtual void SetColumns(const std::vector<std::string>& names) = 0;
    virtual void AddRow(const std::vector<Value>& row) = 0;
    virtual std::string TakeText() = 0;
};

// The names of the formats, the default one first.
std::vector<std::string> FormatNames();

// Null for an unknown name.
std::unique_ptr<ResultWriter> MakeResultWriter(const std::string& format);

} // namespace brindle_tool
