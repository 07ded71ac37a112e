// Inputs of the measuring programs, and the check that what they measure is right.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ZBLCore/I18NString.h"

namespace brindle_benchmark {

// The content of a file of the folder Inputs/. A missing file throws std::runtime_error.
std::string ReadInput(const std::string& fileName);

// Whole lines of a file of the folder Inputs/, drawn at random with a fixed seed, until less than a line is missing to
// `byteCount`; the same text on every run.
std::string MakeSqlText(const std::string& fileName, std::size_t byteCount);

// `piece` over and over, as often as it fits into `byteCount`.
std::string Repeat(std::string_view piece, std::size_t byteCount);

inline I18NString ToText(std::string_view bytes) { return I18NString(bytes); }

// Throws std::runtime_error, naming the place of the first difference, unless both are the same bytes.
void RequireSame(const std::string& what, std::string_view actual, std::string_view expected);

} // namespace brindle_benchmark
