#include "Library.h"

#include <filesystem>
#include <string>

#include "ABrindle.h"

#include "Diagnostic.h"

namespace brindle_tool {
namespace {

constexpr const char* kCaller = "brindle";

} // namespace

Library::Library() {
    if (const long result = ABrindle_Initialize(kCaller); result != 0) {
        ABrindle_Terminate(kCaller);
        throw Failure("the library cannot be started: result " + std::to_string(result));
    }
}

Library::~Library() { ABrindle_Terminate(kCaller); }

std::string ShownPath(const char* fromPrograms) {
    const std::filesystem::path programs(AQE_GetModulePath().bytes());
    return Printable((programs / fromPrograms).lexically_normal().string());
}

} // namespace brindle_tool
